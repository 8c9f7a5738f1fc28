// Loads the foundations of a model, takes over what an exchange document has besides, finds or
// creates one, prunes what nobody uses and saves the rest in all three forms:
//   minimal_host MODEL EXCHANGE OUT      writes OUT.xml, OUT.exchange.xml and OUT.kvml
#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "found/kvml_writer.h"
#include "found/read_messenger.h"

using Found::Foundation;
using Found::FoundationManager;

/// A slab of the host's model, which stands on one foundation.
class Slab : public Found::FoundationUser {
 public:
  bool usesFoundation(const Foundation* candidate) override { return candidate == bedding; }
  Foundation* bedding = nullptr;
};

/// Tells the user what an exchange document holds but cannot be read.
class Messenger : public Found::Umo::ReadMessenger {
 public:
  void onReadFinished(std::size_t count) override { std::cout << count << " beddings read\n"; }
  void onUnknownElement(const std::string& element) override { skip("<" + element + ">"); }
  void onMissingName(int number) override { skip("number " + std::to_string(number)); }
  void onMissingBeddingName() override { skip("a bedding without a name"); }
  void onEmptyName(int number, const std::string&) override { onMissingName(number); }
  void onEmptyBeddingName(const std::string&) override { onMissingBeddingName(); }
  void onMissingNumber(const std::string& element) override { skip("<" + element + ">"); }
  void onInvalidNumber(const std::string& element, int number) override {
    skip("<" + element + "> " + std::to_string(number));
  }
  void onNameChanged(const std::string& oldName, const std::string& newName) override {
    std::cout << oldName << " is now " << newName << "\n";
  }

 private:
  static void skip(const std::string& what) { std::cout << "skipped: " << what << "\n"; }
};

/// That a disk is full may show only when the file is closed.
static void close(std::ofstream& file, const std::string& path) {
  file.close();
  if (!file) throw std::runtime_error(path + " cannot be written");
}

/// Adds the beddings of an exchange document that the model does not have by their values. Into a
/// manager that has their numbers already they could not be read, hence one of their own.
static void takeOver(FoundationManager& manager, const std::string& exchange) {
  std::ifstream file(exchange);
  if (!file) throw std::runtime_error(exchange + " cannot be opened");
  const KvXmlN::Document document(file);  // throws KvXmlError when it is no XML
  const std::vector<KvXmlN::Data*>& containers = document.getRoot().getChildren();
  if (containers.empty()) throw std::runtime_error(exchange + " holds no beddings");
  const Tools::VersionText version("2.0");
  FoundationManager imported;
  Messenger messenger;
  Found::Umo::BeddingReader reader(imported, version);
  reader.setMessenger(&messenger);
  reader.read(*containers.front());

  for (Foundation* f : imported.getFoundations()) {
    if (manager.findFoundation(*f) != nullptr) continue;
    f->setName(f->getName() + ", imported");
    std::cout << "new: " << manager.giveFoundation(*f, false)->getName() << "\n";
  }
}

/// What pruning takes out of the manager belongs to the host from then on.
static void prune(FoundationManager& manager) {
  const std::vector<Foundation*> before = manager.getFoundations();
  manager.removeAllNotUsedGenerated();
  const std::vector<Foundation*>& kept = manager.getFoundations();
  for (const Foundation* f : before)
    if (std::find(kept.begin(), kept.end(), f) == kept.end()) delete f;
  std::cout << before.size() << " foundations, " << kept.size() << " kept\n";
}

static void save(const FoundationManager& manager, const std::string& out) {
  std::ofstream legacy(out + ".xml");
  manager.writeXml(legacy);
  close(legacy, out + ".xml");

  KvXmlN::Document beddings("Beddings");
  const Tools::VersionText version("2.0");
  Found::Umo::BeddingWriter(manager, version).write(beddings.getRoot());
  std::ofstream exchange(out + ".exchange.xml");
  beddings.putToStream(exchange);
  close(exchange, out + ".exchange.xml");

  KvXmlN::Document listing("Kvml");
  const std::set<Foundation*> all(manager.getFoundations().begin(), manager.getFoundations().end());
  Found::KvmlWriter().write(listing.getRoot(), all, all);
  std::ofstream kvml(out + ".kvml");
  listing.putToStream(kvml);
  close(kvml, out + ".kvml");
}

int main(int argc, char** argv) {
  try {
    if (argc != 4) throw std::runtime_error("usage: minimal_host MODEL EXCHANGE OUT");
    FoundationManager manager;
    if (!manager.readXml(argv[1]))
      throw std::runtime_error(argv[1] + std::string(" cannot be opened or is no XML file"));
    takeOver(manager, argv[2]);

    Slab slab;
    manager.addUser(&slab);
    const KvVector3D gravel(0.0, 0.0, 30000.0);  // kN/m^3
    Foundation wanted;
    wanted.setDispArea(&gravel);
    slab.bedding = manager.giveFoundation(wanted, true);  // one that is there already, or a new one
    std::cout << "the slab stands on " << slab.bedding->getName() << "\n";

    prune(manager);
    save(manager, argv[3]);
    manager.removeUser(&slab);  // before the slab goes away
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "minimal_host: " << error.what() << "\n";
    return 2;
  }
}
