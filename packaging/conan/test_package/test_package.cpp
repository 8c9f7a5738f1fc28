#include <sstream>

#include "found/foundation_manager.h"
#include "kv/xml_tree.h"

// Calls both libraries: fails when what is read is not what was written.
int main() {
  std::istringstream text("<SMOD><FOUNDATIONS><FOUND FZAREA='62500'/></FOUNDATIONS></SMOD>");
  const KvXmlTree tree(text);
  Found::FoundationManager manager;
  manager.createFromXml(tree.findRoot("SMOD", true));
  const Found::Foundation* const gravel = manager.findFoundation(1);
  return gravel != nullptr && gravel->getDispAreaZ() == 62500.0 ? 0 : 1;
}
