// A host with companion libraries of its own: fills a tree of theirs, reads it back, and sees that
// its own vectors and elements did the work.
#include <iostream>

#include "found/foundation_manager.h"
#include "kv/xml_tree.h"
#include "recording.h"

int main() {
  Found::FoundationManager model;
  Found::Foundation gravel(KvVector3D(0.0, 0.0, 62500.0));
  gravel.setName("Gravel");
  model.giveFoundation(gravel, false);

  KvXmlTree tree;
  tree.open("SMOD", false);
  model.updateXml(&tree);
  Found::FoundationManager copy;
  copy.createFromXml(tree.findRoot("SMOD", true));

  const Found::Foundation* const found = copy.findFoundation("Gravel");
  if (found == nullptr || found->getDispAreaZ() != 62500.0) return 1;
  std::cout << found->getName() << ": " << found->getDispAreaZ() << " after "
            << (Recording::getLog().empty() ? "no calls" : "calls of the host's own libraries")
            << "\n";
}
