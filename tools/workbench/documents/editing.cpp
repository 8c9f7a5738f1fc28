#include "documents/editing.h"

#include <algorithm>
#include <functional>
#include <map>
#include <new>
#include <optional>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

#include "documents/edit.h"
#include "documents/layout.h"
#include "documents/spelling.h"
#include "documents/vocabulary.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "foundations/parts.h"
#include "spreadsheets/csv_writer.h"
#include "spreadsheets/json_writer.h"

namespace Editing {
namespace {

namespace Exchange = Documents::Exchange;
namespace Legacy = Documents::Legacy;
using Documents::AttributeWord;
using Documents::Document;
using Documents::Edit;
using Documents::Element;
using Documents::ElementWord;
using Documents::Entries;
using Documents::Entry;
using Documents::Form;
using Documents::Kind;
using Found::Foundation;
using Fate = Entry::Fate;

/// What happens to the element of a foundation.
struct Change {
  bool isRemoved = false;
  std::vector<std::string> siblings;  // new elements behind it
};

/// Foundations for which more is written than what changes, since the result would otherwise be
/// read with other values.
struct Pins {
  std::set<const Foundation*> identities;
  std::set<const Foundation*> values;  // only in attributes that exist already

  std::size_t size() const { return identities.size() + values.size(); }
};

class Editor {
 public:
  Editor(Document& document, const Wish& wished, const Pins& pinned)
      : base(document),
        text(document.getContent().bytes),
        layout(text),
        wish(wished),
        pins(pinned) {
    for (const Matching::Pair& pair : wish.pairs)
      if (pair.first != nullptr) wanted.emplace(pair.first, pair.second);
    for (const Entries& entries : base.getEntries())
      for (const Entry& entry : entries)
        if (entry.fate == Fate::otherPart) inTwoParts.insert(entry.foundation);
  }

  std::string run() {
    changeEntries();
    addNew();
    for (const auto& [entry, change] : changes) applyChange(*entry, change);
    if (base.getForm() == Form::legacy) changeCurrent();
    return edit.apply(text);
  }

 private:
  // --- Existing elements

  void changeEntries() {
    for (const Entries& entries : base.getEntries())
      for (const Entry& entry : entries)
        if (entry.foundation != nullptr)
          changeFoundation(entry, *entry.foundation);
        else if (entry.fate == Fate::numberTaken)
          changeWithHolder(entry);
  }

  void changeFoundation(const Entry& entry, Foundation& before) {
    Foundation* const after = wanted.at(&before);
    if (after == nullptr || losesPart(entry, before, *after)) {
      changes[&entry].isRemoved = true;
    } else {
      changeAttributes(entry, before, *after);
    }
    if (after == nullptr) return;
    if (const ElementWord* const part = findNewPart(entry, before, *after))
      addSibling(entry, *part, *after);
  }

  /// True for the element of a part that the foundation has lost, unless it is the only element. A
  /// part whose stiffness becomes zero keeps its element, which may hold unknown attributes.
  bool losesPart(const Entry& entry, const Foundation& before, Foundation& after) const {
    const bool isInTwoParts = inTwoParts.count(&before) > 0;
    const std::string& name = entry.element.getName();
    if (name == Exchange::curve.name)
      return !Parts::tellsLine(after) &&
             (isInTwoParts ? Parts::tellsArea(after) : after.hasAreaValues());
    return name == Exchange::surface.name && !Parts::tellsArea(after) &&
           (isInTwoParts ? Parts::tellsLine(after) : after.hasLineValues());
  }

  /// The description of the element for a part that the foundation has gained; null when it has
  /// not.
  const ElementWord* findNewPart(const Entry& entry, const Foundation& before,
                                 const Foundation& after) const {
    if (inTwoParts.count(&before) > 0) return nullptr;
    const std::string& name = entry.element.getName();
    if (name == Exchange::surface.name && after.hasLineValues()) return &Exchange::curve;
    if (name == Exchange::curve.name && after.hasAreaValues()) return &Exchange::surface;
    return nullptr;
  }

  void addSibling(const Entry& entry, const ElementWord& word, Foundation& foundation) {
    const Markup::StartTag tag = base.readTag(entry.element);
    changes[&entry].siblings.push_back(
        Spelling::makeElement(word, foundation, layout.findStyle(tag), base.getCharset()));
  }

  void changeWithHolder(const Entry& entry) {
    const Foundation* const holder = entry.numberHolder->foundation;
    const Foundation* const after = wanted.at(holder);
    if (after == nullptr) {
      changes[&entry].isRemoved = true;
    } else if (after->getNumber() != holder->getNumber() &&
               entry.element.getName() != Exchange::whole.name) {
      setAttribute(base.readTag(entry.element), Exchange::number,
                   std::to_string(after->getNumber()));
    }
  }

  void changeAttributes(const Entry& entry, Foundation& before, Foundation& after) {
    // The two parts of a foundation must have the same name.
    const bool isNamedAnew =
        entry.fate == Fate::renamed && findNewPart(entry, before, after) != nullptr;
    const bool isPinned = isNamedAnew || pins.identities.count(&before) > 0;
    const bool isRespelled = pins.values.count(&before) > 0;
    std::optional<Markup::StartTag> tag;
    for (const AttributeWord& word : findWord(entry).attributes) {
      const Fields::Field& field = *Fields::find(word.field);
      const bool stays = Fields::areAlike(field.get(before), field.get(after));
      const bool isIdentity = word.kind == Kind::identity;
      if (stays && !(isIdentity ? isPinned : isRespelled)) continue;
      if (!tag) tag = base.readTag(entry.element);
      if (stays && !isIdentity && tag->find(word.name) == nullptr) continue;
      setAttribute(*tag, word.name, Spelling::spell(word, after));
    }
  }

  const ElementWord& findWord(const Entry& entry) const {
    if (base.getForm() == Form::legacy) return Legacy::foundation;
    const std::string& name = entry.element.getName();
    return name == Exchange::whole.name   ? Exchange::whole
           : name == Exchange::curve.name ? Exchange::curve
                                          : Exchange::surface;
  }

  /// `value` is in UTF-8; none removes the attribute.
  void setAttribute(const Markup::StartTag& tag, const char* name,
                    const std::optional<std::string>& value) {
    const Markup::Attribute* const old = tag.find(name);
    if (old == nullptr) {
      if (value) edit.insert(layout.findAttributeEnd(tag), makeAttribute(tag, name, *value));
      return;
    }
    if (!value) return edit.erase(old->all);
    if (readValue(*old) == *value) return;
    edit.replace(old->value, base.getCharset().writeValue(*value, old->quote));
  }

  /// The value in UTF-8.
  std::string readValue(const Markup::Attribute& attribute) const {
    const Markup::Range& value = attribute.value;
    return base.getCharset().readValue(text.substr(value.begin, value.end - value.begin));
  }

  std::string makeAttribute(const Markup::StartTag& tag, const char* name,
                            const std::string& value) const {
    const Documents::TagStyle style = layout.findStyle(tag);
    return style.separator + name + "=" + style.quote +
           base.getCharset().writeValue(value, style.quote) + style.quote;
  }

  // --- New foundations

  void addNew() {
    std::vector<const Foundation*> added;
    const Entry* const last = findLast();
    Documents::TagStyle style;
    if (last != nullptr) style = layout.findStyle(base.readTag(last->element));
    std::vector<std::string> elements;
    for (const Matching::Pair& pair : wish.pairs)
      if (pair.first == nullptr)
        for (const ElementWord* word : listWords(*pair.second))
          elements.push_back(Spelling::makeElement(*word, *pair.second, style, base.getCharset()));
    if (elements.empty()) return;
    if (last != nullptr) {
      std::vector<std::string>& siblings = changes[last].siblings;
      siblings.insert(siblings.end(), elements.begin(), elements.end());
    } else {
      const std::vector<Element> lists = base.listLists();
      if (lists.empty())
        addList(elements);
      else
        layout.addChildren(base.locate(lists.back()), elements, edit);
    }
  }

  /// The element behind which new ones belong; null when there is none.
  const Entry* findLast() {
    const std::size_t lists = base.listLists().size();
    if (lists == 0 || base.getEntries()[lists - 1].empty()) return nullptr;
    return &base.getEntries()[lists - 1].back();
  }

  /// The elements that a foundation needs in this form; none when the form stores nothing of it.
  std::vector<const ElementWord*> listWords(const Foundation& foundation) const {
    if (base.getForm() == Form::legacy) return {&Legacy::foundation};
    if (base.getForm() == Form::firstExchange) return {&Exchange::whole};
    std::vector<const ElementWord*> words;
    if (foundation.hasLineValues()) words.push_back(&Exchange::curve);
    if (foundation.hasAreaValues()) words.push_back(&Exchange::surface);
    return words;
  }

  /// Adds a list to a document without one. The list of a model names the current foundation, too.
  void addList(const std::vector<std::string>& elements) {
    const bool isModel = base.getForm() == Form::legacy;
    const char* const name = isModel ? Legacy::list.name : Exchange::container;
    std::string start = std::string("<") + name;
    if (isModel && wish.current != nullptr)
      start += std::string(" ") + Legacy::current + "=\"" +
               base.getCharset().writeValue(wish.current->getName(), '"') + '"';
    layout.addChild(base.locate(base.getRoot()), start + ">", elements,
                    std::string("</") + name + ">", edit);
  }

  void applyChange(const Entry& entry, const Change& change) {
    const Markup::Range range = base.locate(entry.element);
    const std::size_t lineEnd = layout.findLineEnd(range.end);
    const bool endsLine = lineEnd != Markup::nowhere;
    const std::string between = endsLine ? layout.findIndentation(range.begin) : "";
    std::string siblings;
    for (const std::string& element : change.siblings)
      siblings += (siblings.empty() && change.isRemoved ? "" : between) + element;
    if (!change.isRemoved)
      edit.insert(endsLine ? lineEnd : range.end, siblings);
    else if (siblings.empty())
      edit.erase(layout.widenToLines(range));
    else
      edit.replace(range, siblings);
  }

  // --- The current foundation of a model

  void changeCurrent() {
    const std::vector<Element> lists = base.listLists();
    if (lists.empty()) return;
    const Markup::StartTag tag = base.readTag(lists.front());
    const Markup::Attribute* const attribute = tag.find(Legacy::current);
    const std::string old = attribute != nullptr ? readValue(*attribute) : "";
    if (wish.current != nullptr) {
      const Foundation* const before = base.getFoundations().getCurrentFoundation();
      const bool stays = before != nullptr && wanted.at(before) == wish.current &&
                         before->getName() == wish.current->getName();
      if (stays) return;
    } else if (old.empty() || !namesAny(old)) {
      return;
    }
    setAttribute(tag, Legacy::current, wish.current != nullptr ? wish.current->getName() : "");
  }

  /// True when a foundation of the document has this name before or after the change.
  bool namesAny(const std::string& name) const {
    return std::any_of(wish.pairs.begin(), wish.pairs.end(), [&name](const Matching::Pair& pair) {
      return (pair.first != nullptr && pair.first->getName() == name) ||
             (pair.second != nullptr && pair.second->getName() == name);
    });
  }

  Document& base;
  std::string_view text;
  Documents::Layout layout;
  const Wish& wish;
  const Pins& pins;
  std::set<const Foundation*> inTwoParts;
  std::map<const Foundation*, Foundation*> wanted;
  std::map<const Entry*, Change> changes;
  Edit edit;
};

/// True when a foundation of the result has the expected name and number. The first version has no
/// numbers.
bool isNamedAs(const Foundation& read, const Foundation& wanted, Form form) {
  return read.getName() == wanted.getName() &&
         (form == Form::firstExchange || read.getNumber() == wanted.getNumber());
}

bool canBeWritten(const Foundation& foundation, Form form) {
  return form != Form::exchange || foundation.hasLineValues() || foundation.hasAreaValues();
}

/// The foundations that the result should hold, in its order: the old ones that stay, then the new.
std::vector<Matching::Pair> listExpected(const Wish& wish, Form form) {
  std::vector<Matching::Pair> expected;
  for (const Matching::Pair& pair : wish.pairs)
    if (pair.second != nullptr && (pair.first != nullptr || canBeWritten(*pair.second, form)))
      expected.push_back(pair);
  return expected;
}

/// Adds the foundations that `made` does not hold as expected: default numbers and names depend on
/// the other foundations, and a name that is taken is changed. In a model, a value that is no
/// number keeps the reader from reading others. Returns true when it added any.
bool addPins(Document& made, const std::vector<Matching::Pair>& expected, Pins& pins) {
  const std::vector<Foundation*>& read = made.getFoundations().getFoundations();
  if (read.size() > expected.size())
    throw DocumentError(made.getShownPath(), {},
                        "cannot be edited: other beddings in it would be read, too");
  const std::size_t before = pins.size();
  for (std::size_t i = 0; i < read.size(); ++i)
    if (expected[i].first != nullptr) {
      Foundation& wanted = *expected[i].second;
      if (!isNamedAs(*read[i], wanted, made.getForm()))
        pins.identities.insert(expected[i].first);
      else if (made.getForm() == Form::legacy && !Fields::compare(*read[i], wanted).empty())
        pins.values.insert(expected[i].first);
    }
  return pins.size() > before;
}

bool areSame(const Wish& wish, const Foundation* current) {
  const auto isUnchanged = [&](const Matching::Pair& pair) {
    const auto [old, now] = pair;
    return old != nullptr && now != nullptr && Fields::compare(*old, *now).empty() &&
           (old == current) == (now == wish.current);
  };
  return std::all_of(wish.pairs.begin(), wish.pairs.end(), isUnchanged);
}

void copy(const Wish& wish, Found::FoundationManager& target) {
  for (const Matching::Pair& pair : wish.pairs) {
    if (pair.second == nullptr) continue;
    auto copied = std::make_unique<Foundation>(*pair.second);
    copied->setNumber(pair.second->getNumber());
    if (pair.second == wish.current) target.setCurrentFoundation(copied.get());
    target.add(std::move(copied));
  }
}

/// What a table or data becomes. Data holds nothing but foundations and is written anew.
std::string printSheet(Document& base, const Wish& wish,
                       Spreadsheets::Rows rewritten = Spreadsheets::Rows::changed) {
  const Spreadsheets::Sheet& sheet = *base.getSheet();
  const Found::FoundationManager& before = base.getFoundations();
  const Units units = wish.units.value_or(sheet.units);
  if (base.getForm() == Form::csv) {
    const std::string rows = Spreadsheets::editCsv(base.getContent().bytes, base.getCharset(),
                                                   sheet, wish.pairs, before.getCurrentFoundation(),
                                                   wish.current, rewritten, base.getShownPath());
    // Which stand before all rows of foundations, so that their place stays.
    return Spreadsheets::editUnits(rows, base.getCharset(), sheet, units, base.getShownPath());
  }
  if (areSame(wish, before.getCurrentFoundation()) && units == sheet.units)
    return base.getContent().bytes;
  std::ostringstream json;
  Found::FoundationManager after;
  copy(wish, after);
  Spreadsheets::writeJson(after, units, json);
  if (!json) throw std::bad_alloc();  // or the text would end where memory runs out
  return json.str();
}

/// Null where the user has to say what stands before the decimals of the table.
std::unique_ptr<Document> openSheet(const Document& base, const std::string& bytes,
                                    const std::optional<char>& decimal) {
  Documents::ReadOptions options;
  options.form = base.getForm();
  options.dialect = {base.getSheet()->dialect.separator, decimal};
  try {
    return std::make_unique<Document>(Files::Content{base.getShownPath(), "", bytes}, options);
  } catch (const UserError&) {
    if (decimal) throw;
    return nullptr;
  }
}

std::unique_ptr<Document> editSheet(Document& base, const Wish& wish) {
  const std::string& before = base.getContent().bytes;
  const std::string after = printSheet(base, wish);
  if (after == before) return nullptr;
  if (auto edited = openSheet(base, after, std::nullopt)) return edited;
  // The number that told what stands before decimals may be gone. Numbers that are written here
  // tell it, each of them.
  const bool toldIt = openSheet(base, before, std::nullopt) != nullptr;
  return openSheet(base, toldIt ? printSheet(base, wish, Spreadsheets::Rows::all) : after,
                   base.getSheet()->dialect.decimal);
}

}  // namespace

Draft::Draft(Document& document) {
  const Found::FoundationManager& manager = document.getFoundations();
  for (Foundation* foundation : manager.getFoundations()) {
    auto copy = std::make_unique<Foundation>(*foundation);
    copy->setNumber(foundation->getNumber());
    all.push_back({foundation, copy.get()});
    if (foundation == manager.getCurrentFoundation()) copies.setCurrentFoundation(copy.get());
    copies.add(std::move(copy));
  }
}

/// Deletes the copies that are not left. Nothing may be allocated here, such as a set of those.
Draft::~Draft() {
  const auto comesFirst = [](const Matching::Pair& a, const Matching::Pair& b) {
    return std::less<>()(a.second, b.second);
  };
  std::sort(all.begin(), all.end(), comesFirst);
  for (Foundation* left : copies.getFoundations()) {
    const Matching::Pair wanted = {nullptr, left};
    const auto range = std::equal_range(all.begin(), all.end(), wanted, comesFirst);
    if (range.first != range.second) range.first->first = nullptr;
  }
  for (const Matching::Pair& pair : all)
    if (pair.first != nullptr) delete pair.second;
}

void Draft::remove(Foundation& foundation) {
  const bool isCopy = std::any_of(all.begin(), all.end(), [&foundation](const auto& pair) {
    return pair.second == &foundation;
  });
  copies.remove(&foundation, !isCopy, false);
}

Wish Draft::makeWish() const {
  std::set<Foundation*> left(copies.getFoundations().begin(), copies.getFoundations().end());
  Wish wish;
  for (const Matching::Pair& pair : all)
    wish.pairs.push_back({pair.first, left.erase(pair.second) > 0 ? pair.second : nullptr});
  for (Foundation* foundation : copies.getFoundations())
    if (left.count(foundation) > 0) wish.pairs.push_back({nullptr, foundation});
  wish.current = copies.getCurrentFoundation();
  return wish;
}

std::vector<const Entry*> listUnreadThatGo(Document& base, const Wish& wish) {
  std::set<const Foundation*> leaving;
  for (const Matching::Pair& pair : wish.pairs)
    if (pair.second == nullptr) leaving.insert(pair.first);
  std::vector<const Entry*> unread;
  for (const Entries& entries : base.getEntries())
    for (const Entry& entry : entries)
      if (entry.fate == Fate::numberTaken && leaving.count(entry.numberHolder->foundation) > 0)
        unread.push_back(&entry);
  return unread;
}

std::unique_ptr<Document> edit(Document& base, const Wish& wish) {
  if (base.getSheet() != nullptr) return editSheet(base, wish);
  const std::vector<Matching::Pair> expected = listExpected(wish, base.getForm());
  Pins pins;
  while (true) {
    std::string bytes = Editor(base, wish, pins).run();
    if (bytes == base.getContent().bytes) return nullptr;
    auto result = std::make_unique<Document>(
        Files::Content{base.getShownPath(), "", std::move(bytes)}, base.getForm());
    if (!addPins(*result, expected, pins)) return result;
  }
}

}  // namespace Editing
