#include "writing.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <set>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/kvml_writer.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "losses.h"
#include "paths.h"

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

// --- Files

[[noreturn]] void fail(const std::string& shownPath, const std::string& reason) {
  throw UserError(shownPath + ": cannot be written: " + reason);
}

void copyTo(std::ostream& out, const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::array<char, 1 << 16> buffer{};
  while (in.read(buffer.data(), buffer.size()) || in.gcount() > 0)
    out.write(buffer.data(), in.gcount());
  out.flush();
}

/// The file that is meant, also by a link, which stays a link; empty for what is no file.
std::string findTarget(const std::string& asked) {
  if (asked.empty()) throw UserError("the name of the file to write is empty");
  std::error_code error;
  fs::path path = Paths::fromText(asked);
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) fail(asked, error.message());
  if (fs::is_directory(status)) throw UserError(asked + ": this is a folder, not a file");
  if (fs::is_regular_file(status)) return Paths::toText(fs::canonical(path));
  if (fs::exists(status)) return "";
  while (fs::is_symlink(fs::symlink_status(path)))
    path = path.parent_path() / fs::read_symlink(path);
  return Paths::toText(path);
}

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
    : shownPath(asked), form(written), isStandard(asked == "-" || asked == "/dev/stdout") {
  if (isStandard)
    shownPath = "standard output";
  else
    target = findTarget(asked);
  if (fs::exists(Paths::fromText(target))) protect(isSameFile(in) ? version : std::nullopt);
  const std::string folder = findFolder();
  try {
    file.emplace(folder,
                 target.empty() ? TemporaryFile::Readers::owner : TemporaryFile::Readers::everyone);
  } catch (const std::system_error& error) {
    fail(shownPath, "no file can be made in " + folder + ": " + error.code().message());
  }
}

void Output::protect(const std::optional<std::string>& version) {
  if (!std::fstream(target, std::ios::in | std::ios::out)) fail(shownPath, std::strerror(errno));
  const std::optional<Documents::Tree> tree = parse(shownPath, version);
  if (!tree) return;
  isThere = tree->form == form;
  if (isThere || holdsOnlyBeddings(*tree)) return;
  throw UserError(shownPath + (tree->form == Form::legacy
                                   ? ": this is a legacy model, which a document of another form "
                                     "would destroy; name another file"
                                   : ": this holds more than beddings, which a document of another "
                                     "form would destroy; name another file"));
}

std::string Output::findFolder() const {
  if (target.empty()) return TemporaryFile::findFolder();
  const std::string folder = Paths::toText(Paths::fromText(target).parent_path());
  return folder.empty() ? "." : folder;
}

bool Output::isSameFile(const Documents::Input& input) const {
  std::error_code ignored;
  return !target.empty() &&
         fs::equivalent(Paths::fromText(target), Paths::fromText(input.getPath()), ignored);
}

std::ofstream Output::open() const {
  std::ofstream out(file->getPath(), std::ios::binary);
  if (!out) fail(shownPath, std::strerror(errno));
  return out;
}

void Output::close(std::ofstream& out) const {
  out.close();
  if (!out) fail(shownPath, std::strerror(errno));
}

void Output::write(const FoundationManager& manager) {
  std::ofstream out = open();
  if (form == Form::legacy)
    manager.writeXml(out);
  else if (form == Form::kvml)
    writeKvml(manager, out);
  else
    writeExchange(manager, form, out);
  close(out);
}

void Output::update(const FoundationManager& manager) {
  std::ofstream out = open();
  Updating::update(Documents::Input(target), form, manager, out);
  close(out);
}

void Output::prune(const Documents::Input& base, const std::vector<Updating::Change>& changes,
                   const FoundationManager& manager) {
  std::ofstream out = open();
  Updating::prune(base, form, changes, manager, out);
  close(out);
}

std::vector<std::string> Output::listLosses(const FoundationManager& manager) const {
  using Matching::Key;
  if (form == Form::kvml) return Losses::listOfKvml(manager);
  FoundationManager written;
  readBack(file->getPath(), form, written);
  if (form == Form::firstExchange) return Losses::list(manager, written, {Key::name, Key::place});
  return Losses::list(manager, written, {Key::number, Key::name});
}

void Output::commit() {
  if (isStandard) {
    copyTo(std::cout, file->getPath());
  } else if (target.empty()) {
    std::ofstream device(shownPath, std::ios::binary);
    copyTo(device, file->getPath());
    if (!device) fail(shownPath, std::strerror(errno));
  } else {
    try {
      file->replace(target);
    } catch (const std::system_error& error) {
      fail(shownPath, error.code().message());
    }
  }
}

}  // namespace Writing
