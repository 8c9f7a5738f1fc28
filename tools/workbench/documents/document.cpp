#include "documents/document.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "documents/containers.h"
#include "documents/markup.h"
#include "documents/vocabulary.h"
#include "files/memory_stream.h"
#include "files/user_error.h"
#include "kv/version_text.h"
#include "spreadsheets/csv_reader.h"
#include "spreadsheets/json_reader.h"
#include "text/utf8.h"
#include "text/wording.h"

namespace Documents {
namespace {

using Files::MemoryStream;

[[noreturn]] void fail(const std::string& shownPath, const KvXmlError& error) {
  throw DocumentError(shownPath, {error.getLine(), error.getColumn()}, error.getReason());
}

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Of `shownPath`, where memory runs out in `run`.
template <class Run>
void tellMemory(const std::string& shownPath, const Run& run) {
  try {
    run();
  } catch (const std::bad_alloc&) {
    throw FileError(shownPath, "is too large for the memory of this machine", ENOMEM);
  }
}

/// False for what no parser needs to be shown, however long it is. A NUL it finds in the start.
bool canBeXml(std::string_view start) {
  const bool isWhole = start.size() < Files::lengthOfStart;
  return start.find('\0') == start.npos && (isWhole || start.find('<') != start.npos);
}

/// Behind white space and byte order marks; none where there is nothing else.
std::optional<char> findFirst(std::string_view bytes) {
  constexpr std::string_view skipped = " \t\n\v\f\r\xEF\xBB\xBF\xFE\xFF";
  const std::size_t first = bytes.find_first_not_of(skipped);
  if (first == bytes.npos) return std::nullopt;
  return bytes[first];
}

/// False when the text cannot be meant as XML; what is wrong with it otherwise, the parser tells.
bool isMeantAsXml(std::string_view bytes) {
  const std::optional<char> first = findFirst(bytes);
  if (!first) return bytes.size() < Files::lengthOfStart;
  return *first == '<' || *first == '\0';
}

// --- Tables and data

bool endsWith(const std::string& path, std::string_view ending) {
  return path.size() >= ending.size() && std::equal(ending.rbegin(), ending.rend(), path.rbegin(),
                                                    [](char a, char b) { return a == toLower(b); });
}

/// None for XML. `named` is the form that is asked for or that the name tells.
std::optional<Form> recogniseSpreadsheet(std::string_view bytes, std::optional<Form> named) {
  const std::optional<char> first = findFirst(bytes);
  if (first == '<') return std::nullopt;
  return first == '{' ? Form::json : named;
}

std::optional<Form> readEnding(const std::string& path) {
  if (endsWith(path, ".csv")) return Form::csv;
  if (endsWith(path, ".json")) return Form::json;
  return std::nullopt;
}

bool canBeText(std::string_view start) { return start.find('\0') == start.npos; }

/// The same where nothing tells what the bytes are.
bool canBeAny(std::string_view start) {
  return canBeXml(start) || (canBeText(start) && findFirst(start) == '{');
}

// --- Models

/// Where the second line starts. What stands before it is not read of a model.
std::size_t findSecondLine(std::string_view bytes) {
  const std::size_t end = bytes.find('\n');
  return end == bytes.npos ? bytes.size() : end + 1;
}

/// The model below the root that is parsed from `start` on; null when there is none.
std::unique_ptr<KvXmlTree> parseModel(std::string_view bytes, std::size_t start) {
  try {
    MemoryStream in(bytes);
    in.seekg(static_cast<std::streamoff>(start));
    auto tree = std::make_unique<KvXmlTree>(in);
    return tree->findRoot(Legacy::root, true) != nullptr ? std::move(tree) : nullptr;
  } catch (const KvXmlError&) {
    return nullptr;
  }
}

/// Null when the library would find no model in a file that holds `bytes`.
std::unique_ptr<KvXmlTree> parseModel(std::string_view bytes) {
  const std::size_t second = findSecondLine(bytes);
  const std::string_view read = bytes.substr(second);
  const std::size_t root = Markup::findRoot(read);
  if (root == Markup::nowhere || Markup::readName(read, root) != Legacy::root) return nullptr;
  // Parsed as a whole where that makes no difference, so that what stands on the first line stays
  // when the model is printed.
  if (Markup::isProlog(bytes.substr(0, second)))
    if (auto tree = parseModel(bytes, 0)) return tree;
  return parseModel(bytes, second);
}

/// Reads the first line as the library does, which is all by which it recognises a file.
void requireFirstLine(const Files::Content& content) {
  MemoryStream in(content.bytes);
  std::array<char, 1024> line{};
  in.getline(line.data(), line.size());
  std::transform(line.begin(), line.end(), line.begin(), toLower);
  if (std::string_view(line.data(), line.size()).find("xml") == std::string_view::npos)
    throw DocumentError(content.shownPath, {},
                        "the first line must be an XML declaration, <?xml version=\"1.0\"?>");
  if (!in.fail()) return;
  try {
    const KvXmlTree refused(in);  // a line that is too long leaves nothing to be read
  } catch (const KvXmlError& error) {
    fail(content.shownPath, error);
  }
}

// --- Exchange documents

[[noreturn]] void failWithoutBeddings(const std::string& shownPath, const std::string& root) {
  throw DocumentError(
      shownPath, {},
      "there are no beddings in <" + root +
          ">; a legacy model or an exchange document can be read, a Kvml listing cannot");
}

std::unique_ptr<KvXmlN::Document> parseExchange(const Files::Content& content) {
  try {
    MemoryStream in(content.bytes);
    return std::make_unique<KvXmlN::Document>(in);
  } catch (const KvXmlError& error) {
    fail(content.shownPath, error);
  }
}

/// Numbers with a point between them.
bool isVersion(const std::string& text) {
  bool isNumber = false;
  for (const char c : text) {
    const bool isDigit = c >= '0' && c <= '9';
    if (!isDigit && (c != '.' || !isNumber)) return false;
    isNumber = isDigit;
  }
  return isNumber;
}

bool isFirstVersion(const std::vector<KvXmlN::Data*>& containers,
                    const std::optional<std::string>& version) {
  if (version) {
    if (!isVersion(*version))
      throw UserError("\"" + *version + "\" is no version; give 1.0, or a later one such as 2.0");
    return Tools::VersionText(*version).isEqualTo(firstVersion);
  }
  return std::any_of(containers.begin(), containers.end(), [](const KvXmlN::Data* container) {
    return hasChild(*container, isWholeBedding);
  });
}

}  // namespace

Document::Document(Files::Content read, const ReadOptions& options)
    : content(std::move(read)),
      charset(Charset::recognise(Markup::readEncoding(content.bytes), content.bytes)) {
  tellMemory(content.shownPath, [&] { open(options); });
}

Document::Document(Files::Content written, Form known)
    : content(std::move(written)),
      charset(Charset::recognise(Markup::readEncoding(content.bytes), content.bytes)),
      form(known) {
  tellMemory(content.shownPath, [this] {
    if (isSpreadsheet(form)) {
      readSheet({});
    } else if (form == Form::legacy) {
      model = parseModel(content.bytes);
      // A host may give foundations names that no document can hold.
      if (model == nullptr)
        throw DocumentError(content.shownPath, {},
                            "cannot be written so that it can be read again");
    } else {
      exchange = parseExchange(content);
      containers = listContainers(exchange->getRoot());
    }
  });
}

void Document::open(const ReadOptions& options) {
  const std::optional<Form> named = options.form ? options.form : readEnding(getShownPath());
  if (const std::optional<Form> recognised = recogniseSpreadsheet(content.bytes, named)) {
    form = *recognised;
    return readSheet(options.dialect);
  }
  model = parseModel(content.bytes);
  if (model != nullptr)
    form = Form::legacy;
  else
    openExchange(options.version);
}

void Document::readSheet(const Spreadsheets::Dialect& dialect) {
  auto read = std::make_unique<Reading>();
  sheet = std::make_unique<Spreadsheets::Sheet>(
      form == Form::csv ? Spreadsheets::readCsv(content.bytes, charset, dialect, getShownPath(),
                                                read->foundations)
                        : Spreadsheets::readJson(content.bytes, getShownPath(), read->foundations));
  reading = std::move(read);
}

void Document::openExchange(const std::optional<std::string>& version) {
  if (!isMeantAsXml(content.bytes))
    throw DocumentError(
        getShownPath(), {},
        std::string(
            "this is no XML document (a table or JSON needs the ending .csv or .json, or ") +
            Wording::get().form + ")");
  exchange = parseExchange(content);
  KvXmlN::Data& root = exchange->getRoot();
  if (root.getName() == Legacy::root)
    throw DocumentError(getShownPath(), {},
                        std::string("<") + Legacy::root +
                            "> must start on a line of its own, behind the line of the XML "
                            "declaration");
  containers = listContainers(root);
  if (!containers.empty())
    form = isFirstVersion(containers, version) ? Form::firstExchange : Form::exchange;
  else if (root.getName() == Kvml::root)
    form = Form::kvml;
  else
    failWithoutBeddings(getShownPath(), root.getName());
}

Element Document::getRoot() const {
  return model != nullptr ? Element(model->findRoot(Legacy::root, true), &charset)
                          : Element(&exchange->getRoot(), &charset);
}

Units Document::getLabels() const {
  if (model == nullptr) return getUnits();
  for (const Element& child : getRoot().listChildren()) {
    if (child.getName() != Legacy::project) continue;
    const std::string force = child.readText(Legacy::unitOfForce).value_or("");
    const std::string length = child.readText(Legacy::unitOfLength).value_or("");
    if (!Utf8::isBlank(force) && !Utf8::isBlank(length)) return {force, length};
  }
  return {};
}

KvXmlData* Document::findList() const {
  return model->findRoot(Legacy::root, true)->findTree(Legacy::list.name, true);
}

std::vector<Element> Document::listLists() const {
  std::vector<Element> lists;
  if (form != Form::legacy)  // tables and data have no containers
    for (const KvXmlN::Data* container : containers) lists.emplace_back(container, &charset);
  else if (KvXmlData* const list = findList())
    lists.emplace_back(list, &charset);
  return lists;
}

void Document::requireReadable() const {
  if (sheet != nullptr) return;
  if (form == Form::kvml) failWithoutBeddings(getShownPath(), exchange->getRoot().getName());
  if (form == Form::legacy) requireFirstLine(content);
}

void Document::readInto(Reading& target) const {
  target.entries =
      form == Form::legacy
          ? readModel(*model->findRoot(Legacy::root, true), findList(), charset, target.foundations)
          : readBeddings(exchange->getRoot(), containers, form, charset, target.foundations);
  if (charset.isUtf8()) return;
  for (const Entries& entries : target.entries)
    for (const Entry& entry : entries)
      if (entry.foundation != nullptr && entry.fate != Entry::Fate::otherPart) decodeName(entry);
}

/// The library gives a name in bytes, those of UTF-8 for references to what the encoding lacks, and
/// appends a number to one that is taken.
void Document::decodeName(const Entry& entry) const {
  const char* const attribute = form == Form::legacy ? Legacy::name : Exchange::name;
  const Markup::StartTag tag = readTag(entry.element);
  const Markup::Attribute* const name = tag.find(attribute);
  if (name == nullptr || name->value.begin == name->value.end) return;
  const std::string_view written =
      std::string_view(content.bytes)
          .substr(name->value.begin, name->value.end - name->value.begin);
  const std::size_t length = entry.element.measureText(attribute);
  entry.foundation->setName(charset.readValue(written) +
                            entry.foundation->getName().substr(length));
}

Document::Reading& Document::readAll() {
  if (reading != nullptr) return *reading;
  tellMemory(getShownPath(), [this] {
    auto read = std::make_unique<Reading>();
    readInto(*read);
    reading = std::move(read);
  });
  return *reading;
}

void Document::keep(const Selection& selection) {
  if (selection.isOfAll()) return;
  Reading& all = readAll();
  if (const std::optional<int> missing = selection.findMissing(all.foundations.getFoundations()))
    throw UserError(fmt::format("{}: there is no foundation number {}", getShownPath(), *missing));
  const std::vector<Found::Foundation*> foundations = all.foundations.getFoundations();
  std::vector<Spreadsheets::Origin> left;
  for (std::size_t i = 0; i < foundations.size(); ++i) {
    Found::Foundation* const foundation = foundations[i];
    const bool isSelected = selection.includes(*foundation);
    if (isSelected && sheet != nullptr) left.push_back(sheet->origins[i]);
    if (isSelected) continue;
    all.unselected.emplace_back(foundation);
    all.foundations.remove(foundation, false, false);
  }
  if (sheet != nullptr) sheet->origins = std::move(left);
  if (all.foundations.getFoundations().empty())
    throw UserError(getShownPath() + ": no foundation is selected");
}

void Document::forgetElements() {
  if (reading != nullptr) reading->entries.clear();
  containers.clear();
  exchange.reset();
  model.reset();
}

std::size_t Document::findBegin(const Element& element) const {
  const std::string& bytes = content.bytes;
  if (lineStarts.empty()) {
    lineStarts.push_back(0);
    for (std::size_t end = bytes.find('\n'); end != bytes.npos; end = bytes.find('\n', end + 1))
      lineStarts.push_back(end + 1);
  }
  const KvXmlPosition position = element.getPosition();
  return lineStarts.at(position.line - 1) + position.column - 1;
}

ByteRange Document::locate(const Element& element) const {
  const std::size_t begin = findBegin(element);
  return {begin, Markup::findElementEnd(content.bytes, begin)};
}

Markup::StartTag Document::readTag(const Element& element) const {
  return Markup::readStartTag(content.bytes, findBegin(element));
}

Files::Content readFile(const std::string& path, const std::optional<Form>& form) {
  return Files::read(path, form || readEnding(path) ? canBeText : canBeAny);
}

}  // namespace Documents
