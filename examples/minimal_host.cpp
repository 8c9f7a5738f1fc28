// Loads the foundations of a model, finds or creates one, prunes what nobody uses and saves the
// rest: minimal_host IN OUT
#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>

#include "found/foundation_manager.h"
#include "found/foundation_user.h"

/// A slab of the host's model, which stands on one foundation.
class Slab : public Found::FoundationUser {
 public:
  bool usesFoundation(const Found::Foundation* candidate) override { return candidate == bedding; }
  Found::Foundation* bedding = nullptr;
};

static void run(const std::string& in, const std::string& out) {
  Found::FoundationManager manager;
  Slab slab;
  manager.addUser(&slab);
  if (!manager.readXml(in))
    throw std::runtime_error(in + " cannot be opened or is no XML document");

  // Gravel bed of 30,000 kN/m^3: the one that the model has already, or a new one.
  const KvVector3D gravel(0.0, 0.0, 30000.0);
  Found::Foundation wanted;
  wanted.setDispArea(&gravel);
  slab.bedding = manager.giveFoundation(wanted, true);
  std::cout << "the slab stands on " << slab.bedding->getName() << "\n";

  // What pruning takes out of the manager belongs to the host from then on.
  const std::vector<Found::Foundation*> before = manager.getFoundations();
  manager.removeAllNotUsedGenerated();
  const std::vector<Found::Foundation*>& kept = manager.getFoundations();
  for (const Found::Foundation* f : before)
    if (std::find(kept.begin(), kept.end(), f) == kept.end()) delete f;
  std::cout << before.size() << " foundations, " << kept.size() << " kept\n";

  std::ofstream file(out);
  manager.writeXml(file);
  if (!file.flush()) throw std::runtime_error(out + " cannot be written");
}

int main(int argc, char** argv) {
  try {
    if (argc != 3) throw std::runtime_error("usage: minimal_host IN OUT");
    run(argv[1], argv[2]);
    return 0;
  } catch (const std::exception& error) {  // KvXmlError tells line and column
    std::cerr << "minimal_host: " << error.what() << "\n";
    return 2;
  }
}
