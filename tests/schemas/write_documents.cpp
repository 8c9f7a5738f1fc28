// Writes random documents in every form, to be validated against the schemas:
//   write_documents FOLDER COUNT
// The folder has one of each form, and every one of these gets COUNT documents. They are the same
// in each run and on every machine.

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <limits>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "found/kvml_writer.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "support/double_bits.h"
#include "support/random.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;
using TestSupport::Random;
using Limits = std::numeric_limits<double>;

constexpr int largestInt = std::numeric_limits<int>::max();
constexpr int smallestInt = std::numeric_limits<int>::min();

/// Every double there is, the special ones more often.
double makeDouble(Random& random) {
  static const double special[] = {0.0,
                                   -0.0,
                                   1e-10,
                                   9.9e-11,
                                   -1.1e-10,
                                   0.1,
                                   1.0 / 3.0,
                                   1e21,
                                   Limits::infinity(),
                                   -Limits::infinity(),
                                   Limits::quiet_NaN(),
                                   -Limits::quiet_NaN(),
                                   Limits::denorm_min(),
                                   Limits::min(),
                                   Limits::max(),
                                   Limits::lowest()};
  if (random.oneIn(3)) return random.pick(special);
  if (random.oneIn(2)) return random.between(-100000, 100000) / 8.0;
  std::uint64_t bits = 0;
  for (int i = 0; i < 4; ++i) bits = bits << 16U | random.below(0x10000);
  return TestSupport::fromBits(bits);
}

/// Letters, markup, white space, control characters, other alphabets, and bytes that are no UTF-8.
std::string makeName(Random& random) {
  static const std::string likely[] = {"A", "B", "Found0001", " ", "", "none", "-1"};
  static const std::string odd[] = {"<",
                                    ">",
                                    "&",
                                    "\"",
                                    "'",
                                    "]]>",
                                    "&amp;",
                                    "&#10;",
                                    "<!--",
                                    "\t",
                                    "\n",
                                    "\r\n",
                                    "  ",
                                    "\x01",
                                    "\x1F",
                                    "\x7F",
                                    "\x81",
                                    "\xE4",
                                    "\xC3\xBC",
                                    "\xE2\x82\xAC",
                                    "\xF0\x9F\x8F\x97",
                                    "\xEF\xBF\xBE",
                                    "\xED\xA0\x80",
                                    "\xC0\x80",
                                    "\xC2\x85",
                                    "\xE2\x80\xA8"};
  if (random.oneIn(3)) return random.pick(likely);
  std::string name;
  for (std::size_t left = random.below(12); left > 0; --left)
    name += random.oneIn(3) ? random.pick(odd)
                            : std::string(1, static_cast<char>(random.between(0x20, 0x7E)));
  return name;
}

/// Mostly what users give, now and then what only a program can.
int makeNumber(Random& random) {
  static const int special[] = {0, -1, -7, largestInt, smallestInt};
  return random.oneIn(10) ? random.pick(special) : random.between(1, 12);
}

Foundation::Failure makeFailure(Random& random) {
  static const int modes[] = {-1, 0, 1, -1, 0, 1, 2, -2, largestInt, smallestInt};
  return static_cast<Foundation::Failure>(random.pick(modes));
}

using Setter = void (Foundation::*)(const KvVector3D*);

void giveVector(Random& random, Foundation& foundation, Setter setter) {
  if (random.oneIn(3)) return;
  KvVector3D v;
  v.x = makeDouble(random);
  v.y = makeDouble(random);
  v.z = makeDouble(random);
  (foundation.*setter)(&v);
}

void addFoundation(Random& random, FoundationManager& manager) {
  auto made = std::make_unique<Foundation>();
  made->setNumber(makeNumber(random));
  made->setName(makeName(random));
  for (const Setter setter :
       {&Foundation::setDispArea, &Foundation::setDispLine, &Foundation::setRotLine})
    giveVector(random, *made, setter);
  made->setFailAreaZ(makeFailure(random));
  made->setFailLineX(makeFailure(random));
  made->setFailLineY(makeFailure(random));
  made->setFailLineZ(makeFailure(random));
  made->setFactorArea(makeDouble(random));
  made->setFactorLine(makeDouble(random));
  made->setGenerated(random.oneIn(3));
  manager.add(std::move(made));
}

/// One folder for each form.
class Folders {
 public:
  explicit Folders(const std::string& top) : folder(top) {}

  void startDocument() { ++count; }

  std::ofstream open(const std::string& form) const {
    const std::string path = folder + "/" + form + "/" + std::to_string(count) + ".xml";
    std::ofstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot write " + path);
    return file;
  }

 private:
  const std::string folder;
  int count = 0;
};

/// Into the document of a host, which has foundations of its own.
void updateModel(const FoundationManager& manager, std::ostream& out) {
  std::istringstream text(
      "<SMOD VERSION=\"12\" xmlns:h=\"urn:host\">text<NODES><FOUND X=\"1\"/></NODES><h:GROUP>"
      "<FOUNDATIONS CURRENT=\"gone\" h:seen=\"yes\"><!-- kept --><FOUND NUMBER=\"3\" FXLINE=\"8\" "
      "FAILXLINE=\"1\"/><FOUND NUMBER=\" +40 \"/></FOUNDATIONS></h:GROUP><LOADS/></SMOD>");
  KvXmlTree tree(text);
  KvXmlData* const model = tree.findRoot("SMOD", true);
  tree.setCurrent(model->getChildren().at(1));
  manager.updateXml(&tree);
  tree.putToStream(out);
}

void writeModel(Random& random, const FoundationManager& manager, std::ofstream out) {
  if (random.oneIn(4))
    updateModel(manager, out);
  else
    manager.writeXml(out);
}

void writeExchange(Random& random, const FoundationManager& manager, const char* text,
                   std::ofstream out) {
  const Tools::VersionText version(text);
  const bool isRoot = random.oneIn(4);
  KvXmlN::Document document(isRoot ? "Beddings" : "Exchange");
  KvXmlN::Data& root = document.getRoot();
  if (!isRoot) root.setAttribute("Version", std::string(text), true);
  Found::Umo::BeddingWriter(manager, version).write(isRoot ? root : *root.createChild("Beddings"));
  document.putToStream(out);
}

void writeListing(Random& random, const FoundationManager& manager, std::ofstream out) {
  std::set<Foundation*> areas;
  std::set<Foundation*> beams;
  for (Foundation* foundation : manager.getFoundations()) {
    if (!random.oneIn(4)) areas.insert(foundation);
    if (!random.oneIn(4)) beams.insert(foundation);
  }
  KvXmlN::Document document("Kvml");
  Found::KvmlWriter().write(document.getRoot(), areas, beams);
  document.putToStream(out);
}

void writeAll(Random& random, const Folders& folders) {
  FoundationManager manager;
  for (std::size_t left = random.below(6); left > 0; --left) addFoundation(random, manager);
  const auto& foundations = manager.getFoundations();
  if (!foundations.empty() && !random.oneIn(3))
    manager.setCurrentFoundation(random.pick(foundations));
  writeModel(random, manager, folders.open("legacy"));
  writeExchange(random, manager, "2.0", folders.open("exchange"));
  writeExchange(random, manager, "1.0", folders.open("exchange-1.0"));
  writeListing(random, manager, folders.open("kvml"));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "write_documents FOLDER COUNT\n";
    return 2;
  }
  Folders folders(argv[1]);
  Random random(1);
  for (int left = std::atoi(argv[2]); left > 0; --left) {
    folders.startDocument();
    writeAll(random, folders);
  }
}
