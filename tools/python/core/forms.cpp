#include "forms.h"

#include "documents/markup.h"
#include "files/memory_stream.h"
#include "files/user_error.h"
#include "foundation_object.h"
#include "foundations/copying.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "text.h"
#include "text/charset.h"
#include "text/utf8.h"

namespace Python::Forms {
namespace {

bool isControl(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 && code != '\t' && code != '\n' && code != '\r';
}

void requireName(const Found::Foundation& foundation) {
  const std::string& name = foundation.getName();
  const std::string whose =
      "the name of foundation number " + std::to_string(foundation.getNumber());
  if (!Utf8::isValid(name)) throw UserError(whose + " is no text");
  for (const char character : name)
    if (isControl(character))
      throw UserError(whose + " has a control character, which a document cannot hold");
}

}  // namespace

std::string toUtf8(const std::string& bytes) {
  const std::string_view encoding = Markup::readEncoding(bytes);
  const Charset charset = Charset::recognise(encoding, bytes);
  std::string text = charset.toUtf8(bytes);
  if (encoding.empty() || charset.isUtf8() || !Utf8::isValid(text)) return text;
  // The declaration is ASCII, which every encoding that is known here writes alike.
  const auto place = static_cast<std::size_t>(encoding.data() - bytes.data());
  text.replace(place, encoding.size(), "UTF-8");
  return text;
}

namespace {

/// Large documents are seldom anything else, and looking through one again takes a while. Bytes
/// that are no UTF-8 are not recognised as such, whatever is declared.
bool isUtf8(const std::string& bytes) {
  return Charset::recognise(Markup::readEncoding(bytes), bytes).isUtf8();
}

}  // namespace

template <class Tree>
std::unique_ptr<Tree> parse(const Given& given) {
  if (isWide(given.bytes)) throw DocumentError(given.shownPath, {}, wideIsRefused);
  try {
    try {
      const std::string converted = isUtf8(given.bytes) ? std::string() : toUtf8(given.bytes);
      Files::MemoryStream stream(converted.empty() ? given.bytes : converted);
      return std::make_unique<Tree>(stream);
    } catch (const KvXmlError&) {
      // Again as it was given, for the position in that.
      Files::MemoryStream stream(given.bytes);
      const Tree malformed(stream);
      throw;
    }
  } catch (const KvXmlError& error) {
    if (given.shownPath.empty()) throw;
    throw DocumentError(given.shownPath, {error.getLine(), error.getColumn()}, error.getReason());
  }
}

template std::unique_ptr<KvXmlTree> parse<KvXmlTree>(const Given& given);
template std::unique_ptr<KvXmlN::Document> parse<KvXmlN::Document>(const Given& given);

void requireNames(const Found::FoundationManager& manager) {
  for (const Found::Foundation* foundation : manager.getFoundations()) requireName(*foundation);
}

Snapshot::Snapshot(const Found::FoundationManager& other) {
  for (const Found::Foundation* foundation : other.getFoundations()) {
    Found::Foundation* const copy = add(*foundation);
    if (foundation == other.getCurrentFoundation()) manager.setCurrentFoundation(copy);
  }
}

Found::Foundation* Snapshot::add(const Found::Foundation& other) {
  manager.add(Copying::duplicate(other));
  return manager.getFoundations().back();
}

}  // namespace Python::Forms
