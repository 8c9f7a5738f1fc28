// What is no number, infinite or a negative zero goes through the library unchanged.
#include <iostream>
#include <sstream>

#include "found/foundation_manager.h"
#include "kv/xml_tree.h"

int main() {
  std::istringstream text(
      "<SMOD><FOUNDATIONS><FOUND NUMBER=\"1\" FXAREA=\"nan\" FYAREA=\"-inf\" FZAREA=\"-0\"/>"
      "</FOUNDATIONS></SMOD>");
  const KvXmlTree tree(text);
  Found::FoundationManager model;
  model.createFromXml(tree.findRoot("SMOD", true));

  KvXmlTree saved;
  saved.open("SMOD", true);
  model.updateXml(&saved);
  saved.putToStream(std::cout);
}
