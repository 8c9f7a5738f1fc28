#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "any_document.h"
#include "bytes.h"
#include "documents/editing.h"
#include "documents/markup.h"
#include "files/user_error.h"
#include "property.h"
#include "support/comma_locale.h"
#include "workbench/documents/random_edit.h"

// A document of any form is opened and edited in place. The first line of an input chooses what
// changes; the rest is the document.

namespace {

using Documents::Document;
using Fuzz::require;

/// The document as it is wanted; none where it is refused.
std::optional<std::unique_ptr<Document>> tryToEdit(Document& base, const Editing::Wish& wish) {
  try {
    return Editing::edit(base, wish);
  } catch (const UserError&) {
    return std::nullopt;
  }
}

/// Where the encoding is not known or not declared, bytes and references for the same character are
/// different names to the library.
bool isSpelledAlike(const Document& document) {
  const std::string encoding(Markup::readEncoding(document.getContent().bytes));
  return document.getCharset().isUtf8() || KvCodePage::find(encoding).has_value();
}

void checkChange(Document& base, Fuzz::Bytes& choices) {
  Editing::Draft draft(base);
  RandomEdit::changeAll(draft, base.getForm(),
                        [&choices](std::size_t count) { return choices.below(count); });
  const Editing::Wish wish = draft.makeWish();
  const auto edited = tryToEdit(base, wish);
  if (!edited) return;
  Document& result = *edited != nullptr ? **edited : base;
  require(RandomEdit::findDifference(wish, result).empty(), "what was wanted reads back",
          RandomEdit::findDifference(wish, result) + "\n" + result.getContent().bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TestSupport::CommaLocale comma;
  const std::string input = Fuzz::takeAll(data, size);
  const std::size_t end = input.find('\n');
  if (end == input.npos) return 0;
  const auto base = Fuzz::open(input.substr(end + 1));
  if (base == nullptr) return 0;

  const Editing::Draft same(*base);
  require(Editing::edit(*base, same.makeWish()) == nullptr, "nothing changes without a change");
  Fuzz::Bytes choices(data, end);
  if (isSpelledAlike(*base)) checkChange(*base, choices);
  return 0;
}
