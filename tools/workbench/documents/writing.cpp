#include "documents/writing.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "documents/losses.h"
#include "files/paths.h"
#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/kvml_writer.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"

namespace Writing {
namespace {

namespace fs = std::filesystem;

using Documents::Form;
using Found::Foundation;
using Found::FoundationManager;

void writeExchange(const FoundationManager& manager, Form form, std::ostream& out) {
  KvXmlN::Document document(Documents::emptyContainer);
  const Tools::VersionText version(Documents::getVersion(form));
  Found::Umo::BeddingWriter(manager, version).write(document.getRoot());
  document.putToStream(out);
}

void writeKvml(const FoundationManager& manager, std::ostream& out) {
  std::set<Foundation*> areas;
  std::set<Foundation*> lines;
  for (Foundation* wanted : manager.getFoundations()) {
    if (wanted->hasAreaValues()) areas.insert(wanted);
    if (wanted->hasLineValues()) lines.insert(wanted);
  }
  KvXmlN::Document document(Documents::listingRoot);
  Found::KvmlWriter().write(document.getRoot(), areas, lines);
  document.putToStream(out);
}

void readBack(const std::string& path, Form form, FoundationManager& manager) {
  if (form == Form::legacy) {
    manager.readXml(path);
    return;
  }
  std::ifstream in(path);
  const KvXmlN::Document document(in);
  const Tools::VersionText version(Documents::getVersion(form));
  Found::Umo::BeddingReader reader(manager, version);
  for (const KvXmlN::Data* container : Documents::listContainers(document.getRoot()))
    reader.read(*container);
}

// --- What is there

/// True for a file that is empty or a listing, which is only written and never read.
bool isReplaceable(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (in.peek() == std::ifstream::traits_type::eof()) return true;
  try {
    return KvXmlN::Document(in).getRoot().getName() == Documents::listingRoot;
  } catch (const KvXmlError&) {
    return false;
  }
}

/// The document that stands in a file; none when no harm is done when the file goes. Throws
/// UserError when it is something that cannot be read.
std::optional<Documents::Tree> parse(const std::string& path,
                                     const std::optional<std::string>& version) {
  try {
    return Documents::parse(path, version);
  } catch (const UserError& error) {
    if (isReplaceable(path)) return std::nullopt;
    throw UserError(std::string(error.what()) +
                    "; it was not replaced: mend or remove it, or name another file");
  }
}

/// True for a document like those that are written here.
bool holdsOnlyBeddings(const Documents::Tree& tree) {
  const KvXmlN::Data& root = tree.document->getRoot();
  const std::vector<KvXmlN::Data*>& children = root.getChildren();
  return root.getName() == Documents::emptyContainer && root.getAttributeNames().empty() &&
         std::all_of(children.begin(), children.end(),
                     [](const KvXmlN::Data* child) { return Documents::isBedding(*child); });
}

}  // namespace

Output::Output(const std::string& asked, Form written, const Documents::Input& in,
               const std::optional<std::string>& version)
    : file(asked), form(written) {
  if (fs::exists(Paths::fromText(file.getTarget())))
    protect(isSameFile(in) ? version : std::nullopt);
  file.create();
}

void Output::protect(const std::optional<std::string>& version) {
  const std::string& path = file.getShownPath();
  const std::optional<Documents::Tree> tree = parse(path, version);
  if (!tree) return;
  isThere = tree->form == form;
  if (isThere || holdsOnlyBeddings(*tree)) return;
  throw UserError(path + (tree->form == Form::legacy
                              ? ": this is a legacy model, which a document of another form "
                                "would destroy; name another file"
                              : ": this holds more than beddings, which a document of another "
                                "form would destroy; name another file"));
}

bool Output::isSameFile(const Documents::Input& input) const {
  std::error_code ignored;
  const std::string& target = file.getTarget();
  return !target.empty() &&
         fs::equivalent(Paths::fromText(target), Paths::fromText(input.getPath()), ignored);
}

void Output::write(const FoundationManager& manager) {
  std::ofstream out = file.open();
  if (form == Form::legacy)
    manager.writeXml(out);
  else if (form == Form::kvml)
    writeKvml(manager, out);
  else
    writeExchange(manager, form, out);
  file.close(out);
}

void Output::update(const FoundationManager& manager) {
  std::ofstream out = file.open();
  Updating::update(Documents::Input(file.getTarget()), form, manager, out);
  file.close(out);
}

void Output::prune(const Documents::Input& base, const std::vector<Updating::Change>& changes,
                   const FoundationManager& manager) {
  std::ofstream out = file.open();
  Updating::prune(base, form, changes, manager, out);
  file.close(out);
}

std::vector<std::string> Output::listLosses(const FoundationManager& manager) const {
  using Matching::Key;
  if (form == Form::kvml) return Losses::listOfKvml(manager);
  FoundationManager written;
  readBack(file.getWrittenPath(), form, written);
  if (form == Form::firstExchange) return Losses::list(manager, written, {Key::name, Key::place});
  return Losses::list(manager, written, {Key::number, Key::name});
}

}  // namespace Writing
