#include "documents/writing.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <utility>

#include "documents/containers.h"
#include "documents/losses.h"
#include "documents/vocabulary.h"
#include "files/paths.h"
#include "files/user_error.h"
#include "found/bedding_writer.h"
#include "found/kvml_writer.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"

namespace Writing {
namespace {

namespace fs = std::filesystem;

using Documents::Document;
using Documents::Form;
using Found::Foundation;
using Found::FoundationManager;

template <class Tree>
std::string print(const Tree& tree) {
  std::ostringstream out;
  out.exceptions(std::ios::badbit);  // or the text would end where memory runs out
  tree.putToStream(out);
  return out.str();
}

std::string writeModel(const FoundationManager& manager) {
  KvXmlTree tree;
  tree.open(Documents::Legacy::root, false);
  manager.updateXml(&tree);
  return print(tree);
}

std::string writeExchange(const FoundationManager& manager, Form form) {
  KvXmlN::Document document(Documents::Exchange::container);
  const Tools::VersionText version(Documents::getVersion(form));
  Found::Umo::BeddingWriter(manager, version).write(document.getRoot());
  return print(document);
}

std::string writeKvml(const FoundationManager& manager) {
  std::set<Foundation*> areas;
  std::set<Foundation*> lines;
  for (Foundation* wanted : manager.getFoundations()) {
    if (wanted->hasAreaValues()) areas.insert(wanted);
    if (wanted->hasLineValues()) lines.insert(wanted);
  }
  KvXmlN::Document document(Documents::Kvml::root);
  Found::KvmlWriter().write(document.getRoot(), areas, lines);
  return print(document);
}

/// True for a document like those that are written here.
bool holdsOnlyBeddings(const Document& document) {
  if (document.getForm() == Form::legacy) return false;
  const KvXmlN::Data& root = document.getExchange()->getRoot();
  const std::vector<KvXmlN::Data*>& children = root.getChildren();
  return root.getName() == Documents::Exchange::container && root.getAttributeNames().empty() &&
         std::all_of(children.begin(), children.end(),
                     [](const KvXmlN::Data* child) { return Documents::isBedding(*child); });
}

}  // namespace

Output::Output(OutputFile& to, Form written, Document& read) : in(read), file(to), form(written) {
  if (fs::exists(Paths::fromText(file.getTarget()))) protect();
  file.create();
}

/// Opens nothing where no harm is done when the file goes: an empty file, or a listing, which is
/// only written and never read.
void Output::openOld() {
  std::error_code ignored;
  const std::string& path = in.getContent().path;
  if (!path.empty() &&
      fs::equivalent(Paths::fromText(file.getTarget()), Paths::fromText(path), ignored)) {
    old = &in;
    return;
  }
  Files::Content content = Documents::readFile(getShownPath());
  if (content.bytes.empty()) return;
  try {
    other = std::make_unique<Document>(std::move(content));
  } catch (const UserError& error) {
    throw UserError(std::string(error.what()) +
                    "; it was not replaced: mend or remove it, or name another file");
  }
  if (other->getForm() != Form::kvml) old = other.get();
}

void Output::protect() {
  openOld();
  if (old == nullptr) return;
  isThere = old->getForm() == form;
  if (isThere || holdsOnlyBeddings(*old)) return;
  throw UserError(getShownPath() + (old->getForm() == Form::legacy
                                        ? ": this is a legacy model, which a document of another "
                                          "form would destroy; name another file"
                                        : ": this holds more than beddings, which a document of "
                                          "another form would destroy; name another file"));
}

void Output::write(const FoundationManager& manager) {
  in.forgetElements();  // before there are those of another document
  if (form == Form::legacy)
    file.write(writeModel(manager));
  else if (form == Form::kvml)
    file.write(writeKvml(manager));
  else
    file.write(writeExchange(manager, form));
}

void Output::update(const FoundationManager& manager) {
  if (!isSameFile()) in.forgetElements();
  file.write(Updating::update(*old, manager));
}

void Output::prune(const std::vector<Updating::Change>& changes, const FoundationManager& manager) {
  file.write(Updating::prune(in, changes, manager));
}

std::vector<std::string> Output::listLosses(const FoundationManager& manager) const {
  using Matching::Key;
  if (form == Form::kvml) return Losses::listOfKvml(manager);
  Document written({getShownPath(), "", file.getText()}, form);
  const Key second = form == Form::firstExchange ? Key::place : Key::name;
  const Key first = form == Form::firstExchange ? Key::name : Key::number;
  return Losses::list(manager, written.getFoundations(), {first, second});
}

}  // namespace Writing
