#include "documents/writing.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <set>
#include <sstream>
#include <utility>

#include <fmt/format.h>

#include "documents/containers.h"
#include "documents/losses.h"
#include "documents/vocabulary.h"
#include "files/content.h"
#include "files/paths.h"
#include "files/user_error.h"
#include "found/bedding_writer.h"
#include "found/kvml_writer.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "spreadsheets/csv_writer.h"
#include "spreadsheets/json_writer.h"

namespace Writing {
namespace {

namespace fs = std::filesystem;

using Documents::Document;
using Documents::Form;
using Found::Foundation;
using Found::FoundationManager;

template <class Write>
std::string print(const Write& write) {
  std::ostringstream out;
  write(out);
  if (!out) throw std::bad_alloc();  // or the text would end where memory runs out
  return out.str();
}

template <class Tree>
std::string printTree(const Tree& tree) {
  return print([&tree](std::ostream& out) { tree.putToStream(out); });
}

std::string writeModel(const FoundationManager& manager) {
  KvXmlTree tree;
  tree.open(Documents::Legacy::root, false);
  manager.updateXml(&tree);
  return printTree(tree);
}

std::string writeExchange(const FoundationManager& manager, Form form) {
  KvXmlN::Document document(Documents::Exchange::container);
  const Tools::VersionText version(Documents::getVersion(form));
  Found::Umo::BeddingWriter(manager, version).write(document.getRoot());
  return printTree(document);
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
  return printTree(document);
}

/// True for a document like those that writeExchange() makes.
bool holdsOnlyBeddings(const Document& document) {
  if (document.getForm() == Form::legacy) return false;
  if (document.getSheet() != nullptr) return true;
  const KvXmlN::Data& root = document.getExchange()->getRoot();
  const std::vector<KvXmlN::Data*>& children = root.getChildren();
  return root.getName() == Documents::Exchange::container && root.getAttributeNames().empty() &&
         std::all_of(children.begin(), children.end(),
                     [](const KvXmlN::Data* child) { return Documents::isBedding(*child); });
}

}  // namespace

Output::Output(OutputFile& to, Form written, Document& read, const Spreadsheets::Dialect& tables)
    : in(read), file(to), form(written), dialect(tables) {
  if (fs::exists(Paths::fromText(file.getTarget()))) protect();
  file.create();
}

/// Leaves `old` null when the file can be replaced without harm: an empty file, or a listing, which
/// is only written and never read.
void Output::openOld() {
  std::error_code ignored;
  const std::string& path = in.getContent().path;
  if (!path.empty() &&
      fs::equivalent(Paths::fromText(file.getTarget()), Paths::fromText(path), ignored)) {
    old = &in;
    return;
  }
  Documents::ReadOptions options;
  if (Documents::isSpreadsheet(form)) options.form = form;
  options.dialect = dialect;
  Files::Content content = Documents::readFile(getShownPath(), options.form);
  if (content.bytes.empty()) return;
  try {
    other = std::make_unique<Document>(std::move(content), options);
  } catch (const DocumentError& error) {
    throw DocumentError(
        error.getPath(), error.getPosition(),
        error.getSentence() + "; it was not replaced: mend or remove it, or name another file");
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

std::string Output::print(FoundationManager& manager) const {
  const Units named = units.value_or(in.getUnits());
  switch (form) {
    case Form::legacy:
      return writeModel(manager);
    case Form::kvml:
      return writeKvml(manager);
    case Form::csv:
      return Writing::print(
          [&](std::ostream& out) { Spreadsheets::writeCsv(manager, dialect, named, out); });
    case Form::json:
      return Writing::print(
          [&](std::ostream& out) { Spreadsheets::writeJson(manager, named, out); });
    default:
      return writeExchange(manager, form);
  }
}

void Output::write(FoundationManager& manager) {
  in.forgetElements();  // first, so that two documents never have elements at once
  std::string bytes = print(manager);
  edited = std::make_unique<Document>(Files::Content{getShownPath(), "", std::move(bytes)}, form);
  made = edited.get();
}

std::vector<Matching::Key> Output::listKeys() const {
  using Matching::Key;
  const bool hasNumbers = form != Form::firstExchange && in.getForm() != Form::firstExchange;
  if (hasNumbers) return {Key::number, Key::name};
  return {Key::name, Key::place};
}

void Output::update(const FoundationManager& manager) {
  Editing::Wish wish;
  wish.pairs =
      Matching::match(old->getFoundations().getFoundations(), manager.getFoundations(), listKeys());
  wish.current = manager.getCurrentFoundation();
  wish.units = units.value_or(in.getUnits());
  edit(*old, wish);
}

void Output::edit(Document& base, const Editing::Wish& wish) {
  unread = Losses::listUnread(Editing::listUnreadThatGo(base, wish));
  edited = Editing::edit(base, wish);
  made = edited != nullptr ? edited.get() : &base;
}

std::vector<Losses::Loss> Output::listLosses(const FoundationManager& manager) {
  if (form == Form::kvml) return Losses::listOfKvml(manager);
  return Losses::list(manager, made->getFoundations(), listKeys());
}

std::vector<Losses::Loss> Output::listReplaced() {
  return Losses::listReplaced(old->getFoundations(), made->getFoundations(), in.getForm(),
                              listKeys());
}

std::vector<Losses::Loss> Output::listAllLosses(const FoundationManager& manager) {
  std::vector<Losses::Loss> losses = listLosses(manager);
  const auto append = [&losses](const std::vector<Losses::Loss>& more) {
    losses.insert(losses.end(), more.begin(), more.end());
  };
  if (isUpdate() && !isSameFile()) append(listReplaced());
  append(unread);
  if (form == Form::exchange && !isSameFile()) append(Losses::listHalved(*made));
  return losses;
}

std::vector<Losses::Loss> Output::listLossesOfEdit(const FoundationManager& manager) {
  std::vector<Losses::Loss> losses = listLosses(manager);
  const auto isOfNumber = [](const Losses::Loss& loss) { return loss.kind == "number changes"; };
  if (form == Form::firstExchange)
    losses.erase(std::remove_if(losses.begin(), losses.end(), isOfNumber), losses.end());
  return losses;
}

void Output::requireAll(const FoundationManager& manager) {
  for (const Losses::Loss& loss : listLossesOfEdit(manager)) {
    throw UserError(fmt::format("{}: was not written, since something would be lost: {}: {}",
                                getShownPath(), loss.foundation, loss.sentence));
  }
}

void Output::commit() {
  const std::string& bytes = made->getContent().bytes;
  if (old != nullptr) {
    if (old->getContent().bytes == bytes) return;
    if (Files::read(file.getTarget()).bytes != old->getContent().bytes)
      throw UserError(getShownPath() +
                      ": was changed by another program meanwhile; nothing was written, try again");
  }
  file.write(bytes);
  file.commit();
}

}  // namespace Writing
