#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bindings.h"
#include "documents/containers.h"
#include "documents/vocabulary.h"
#include "errors.h"
#include "files/user_error.h"
#include "forms.h"
#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/kvml_writer.h"
#include "given.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "manager_object.h"
#include "messenger.h"
#include "numbers.h"
#include "text.h"
#include "threads.h"

namespace Python {
namespace {

using Forms::Snapshot;
using Found::Foundation;
using Found::FoundationManager;
using Foundations = std::vector<std::unique_ptr<Foundation>>;

// What is done without the interpreter's lock, on data that nobody else sees.

std::string printLegacy(const FoundationManager& manager) {
  Forms::requireNames(manager);
  KvXmlTree tree;
  tree.open(Documents::Legacy::root, false);
  manager.updateXml(&tree);
  return Forms::print(tree);
}

std::string updateLegacy(const Given& given, const std::string& element,
                         const FoundationManager& manager) {
  Forms::requireNames(manager);
  const auto tree = Forms::parse<KvXmlTree>(given);
  if (tree->open(element, false) == nullptr)
    throw DocumentError(given.shownPath, {}, "the root is no <" + element + ">");
  manager.updateXml(tree.get());
  return Forms::print(*tree);
}

std::string printExchange(const FoundationManager& manager, const std::string& version,
                          const std::string& root) {
  Forms::requireNames(manager);
  KvXmlN::Document document(root);
  const Tools::VersionText text(version);
  Found::Umo::BeddingWriter(manager, text).write(document.getRoot());
  return Forms::print(document);
}

void parseExchange(const Given& given, const std::string& version, Recorder& recorder,
                   FoundationManager& manager) {
  const auto document = Forms::parse<KvXmlN::Document>(given);
  const Tools::VersionText text(version);
  Found::Umo::BeddingReader reader(manager, text);
  reader.setMessenger(&recorder);
  for (const KvXmlN::Data* container : Documents::listContainers(document->getRoot()))
    reader.read(*container);
}

struct Listing {
  Snapshot owner;
  std::set<Foundation*> areas;
  std::set<Foundation*> beams;
};

std::string printKvml(const Listing& listing) {
  KvXmlN::Document document(Documents::Kvml::root);
  Found::KvmlWriter().write(document.getRoot(), listing.areas, listing.beams);
  return Forms::print(document);
}

template <class Work>
auto runUnlocked(const Work& work) {
  const Unlocked unlocked;
  return work();
}

// What Python calls.

std::size_t readLegacy(ManagerObject& self, py::handle source) {
  const Given given = readGiven(source);
  FoundationManager fresh;
  {
    const ManagerObject::Use use(self);
    runUnlocked([&] {
      const auto tree = Forms::parse<KvXmlTree>(given);
      fresh.createFromXml(tree->findRoot(Documents::Legacy::root, true));
    });
  }
  const std::size_t count = fresh.getFoundations().size();
  self.exchange(fresh);
  return count;
}

void writeLegacy(ManagerObject& self, py::handle target, py::handle replace) {
  const bool replaces = toBool(replace, "replace");
  Snapshot snapshot(self.get());
  writeGiven(target, runUnlocked([&] { return printLegacy(snapshot.get()); }), replaces);
}

py::bytes updateXml(ManagerObject& self, py::handle source, py::handle element) {
  const std::string name = encode(element, "element");
  const Given given = readGiven(source);
  Snapshot snapshot(self.get());
  return runUnlocked([&] { return updateLegacy(given, name, snapshot.get()); });
}

/// What the reader has added behind the foundations that it had to know.
Foundations takeNew(FoundationManager& manager, std::size_t known) {
  const std::vector<Foundation*> all = manager.getFoundations();
  Foundations taken(all.size());
  manager = FoundationManager();  // an assignment drops what was listed
  for (std::size_t i = 0; i < all.size(); ++i) taken[i].reset(all[i]);
  taken.erase(taken.begin(), taken.begin() + static_cast<std::ptrdiff_t>(known));
  return taken;
}

std::size_t readExchange(ManagerObject& self, py::handle source, py::handle version,
                         const py::object& messenger) {
  const std::string wanted = encode(version, "version");
  if (!messenger.is_none()) requireMessenger(messenger);
  const Given given = readGiven(source);
  self.requireUnused();
  Foundations read;
  {
    // Nobody changes the list, so that what is read fits it in the end.
    const ManagerObject::Use use(self);
    Snapshot known(self.get());
    const std::size_t count = known.get().getFoundations().size();
    Recorder recorder;
    runUnlocked([&] { parseExchange(given, wanted, recorder, known.get()); });
    read = takeNew(known.get(), count);
    if (!messenger.is_none()) recorder.replay(messenger);
  }
  const std::size_t count = read.size();
  self.addAll(std::move(read));
  return count;
}

void writeExchange(ManagerObject& self, py::handle target, py::handle version, py::handle root,
                   py::handle replace) {
  const bool replaces = toBool(replace, "replace");
  const std::string wanted = encode(version, "version");
  const std::string name = encode(root, "root");
  Snapshot snapshot(self.get());
  writeGiven(target, runUnlocked([&] { return printExchange(snapshot.get(), wanted, name); }),
             replaces);
}

std::vector<py::object> collect(py::handle foundations, const char* what) {
  std::vector<py::object> collected;
  if (foundations.is_none()) return collected;
  for (const py::handle foundation : py::iter(foundations)) {
    toFoundation(foundation, what);
    collected.push_back(py::reinterpret_borrow<py::object>(foundation));
  }
  return collected;
}

std::set<Foundation*> copyTo(Snapshot& owner, const std::vector<py::object>& foundations) {
  std::set<Foundation*> copies;
  std::set<const Foundation*> seen;
  for (const py::object& one : foundations) {
    const Foundation& foundation = toFoundation(one, "foundation").get();
    if (seen.insert(&foundation).second) copies.insert(owner.add(foundation));
  }
  return copies;
}

void writeKvml(ManagerObject& self, py::handle target, py::handle areas, py::handle beams,
               py::handle replace) {
  const bool replaces = toBool(replace, "replace");
  const std::vector<py::object> wantedAreas = collect(areas, "areas");
  const std::vector<py::object> wantedBeams = collect(beams, "beams");
  Listing listing;
  listing.areas = copyTo(listing.owner, wantedAreas);
  listing.beams = copyTo(listing.owner, wantedBeams);
  for (const Foundation* foundation : self.getList()) {
    if (areas.is_none() && foundation->hasAreaValues())
      listing.areas.insert(listing.owner.add(*foundation));
    if (beams.is_none() && foundation->hasLineValues())
      listing.beams.insert(listing.owner.add(*foundation));
  }
  const std::string text = runUnlocked([&] {
    Forms::requireNames(listing.owner.get());
    return printKvml(listing);
  });
  writeGiven(target, text, replaces);
}

}  // namespace

void bindForms(py::class_<ManagerObject>& bound) {
  bound.def(
      "read_xml", &readLegacy, py::arg("source"),
      "read_xml($module, self, source)\n--\n\n"
      "Replace the foundations and the current one by those of a legacy document, and return\n"
      "how many there are.\n\n"
      "source is a path, a binary file object or bytes; names come out right whatever its\n"
      "encoding. Without the list of a legacy model there are none. Raises DocumentError for\n"
      "what is not well-formed and OSError for what cannot be read; then nothing has changed.");
  bound.def(
      "write_xml", &writeLegacy, py::arg("target"), py::kw_only(), py::arg("replace") = false,
      "write_xml($module, self, target, *, replace=False)\n--\n\n"
      "Write a legacy document of the foundations to a path, as a whole or not at all, or to a\n"
      "binary file object.\n\n"
      "Raises DocumentError for names that it cannot hold (control characters), OSError:\n"
      "FileExistsError for a file that is there unless replace.");
  bound.def(
      "update_xml", &updateXml, py::arg("source"), py::arg("element") = "SMOD",
      "update_xml($module, self, source, element='SMOD')\n--\n\n"
      "The bytes of a legacy document, given like the one of read_xml(), with the foundations\n"
      "written below its root.\n\n"
      "Elements of numbers in use are updated, others appended; what is absent by now stays as\n"
      "it was. Raises DocumentError also when the root has another name than element.");
  bound.def(
      "read_exchange", &readExchange, py::arg("source"), py::arg("version") = "2.0", py::kw_only(),
      py::arg("messenger") = py::none(),
      "read_exchange($module, self, source, version='2.0', *, messenger=None)\n--\n\n"
      "Add the foundations of an exchange document and return how many were added.\n\n"
      "source is a path, a binary file object or bytes. Version '1.0' reads <Bedding> too. An\n"
      "element with a number in use is refused, one with a name in use gets another name; the\n"
      "messenger is told, see ReadMessenger. A curve and a surface bedding of the same number\n"
      "make one: only the first is read; kvfound.open() joins them. Raises DocumentError and\n"
      "OSError, and what the messenger raises; then nothing has changed.");
  bound.def(
      "write_exchange", &writeExchange, py::arg("target"), py::arg("version") = "2.0",
      py::kw_only(), py::arg("root") = "Beddings", py::arg("replace") = false,
      "write_exchange($module, self, target, version='2.0', *, root='Beddings', "
      "replace=False)\n--\n\n"
      "Write an exchange document to a path, as a whole or not at all, or to a binary file.\n\n"
      "Lost are fail_line_x, rotation about y and z, the flags, in version '1.0' the number, in\n"
      "every other version foundations without stiffness. Raises DocumentError for names that\n"
      "it cannot hold, ValueError for a root that is no XML name, OSError: FileExistsError for a\n"
      "file that is there unless replace.");
  bound.def(
      "write_kvml", &writeKvml, py::arg("target"), py::kw_only(), py::arg("areas") = py::none(),
      py::arg("beams") = py::none(), py::arg("replace") = false,
      "write_kvml($module, self, target, *, areas=None, beams=None, replace=False)\n--\n\n"
      "Write a Kvml listing, made to be read by people, to a path or a binary file object.\n\n"
      "areas and beams are iterables of the foundations to show, of this manager or not; None\n"
      "shows those of this manager that have area or line values. Raises FileExistsError for a\n"
      "file that is there unless replace.");
}

}  // namespace Python
