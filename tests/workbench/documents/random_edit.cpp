#include "workbench/documents/random_edit.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <vector>

#include "documents/vocabulary.h"
#include "workbench/documents/draft.h"

namespace RandomEdit {
namespace {

namespace Exchange = Documents::Exchange;
namespace Legacy = Documents::Legacy;
using Documents::Document;
using Documents::ElementWord;
using Documents::Form;
using Documents::Kind;
using Editing::Draft;
using Found::Foundation;

template <class Choices>
const auto& pick(const Choices& choices, const Choose& choose) {
  return choices[choose(std::size(choices))];
}

// --- Documents

struct Encoding {
  const char* declaration;
  std::vector<const char*> names;
};

const Encoding encodings[] = {
    {"<?xml version=\"1.0\"?>",
     {"A", "B &amp; C", "&#8364;",
      "R\xC3\xBC"
      "ck"}},
    {"\xEF\xBB\xBF<?xml version='1.0'?>", {"A", "&lt;&#x41;", "\xE2\x82\xAC"}},
    {"<?xml version='1.0' encoding='UTF-8'?>", {"A", " b ", "&quot;", "\xC5\x91"}},
    {"<?xml version='1.0' encoding='ISO-8859-1'?>", {"A", "M\xFCller", "&#8364; 500", "\xE4"}},
    {"<?xml version='1.0' encoding='ISO-8859-2'?>", {"A", "\xF5\xFC", "&#241;", "\xA1"}},
    {"<?xml version='1.0' standalone='yes'?><!-- a -->",
     {"A",
      "Stra\xDF"
      "e",
      "\x80", "C"}},
};

class Writer {
 public:
  Writer(bool isSpelledOut, const Choose& choice)
      : spelledOut(isSpelledOut),
        choose(choice),
        encoding(pick(encodings, choice)),
        lineEnd(choice(2) == 0 ? "\n" : "\r\n") {}

  std::string writeModel() {
    std::string text = encoding.declaration + lineEnd + "<SMOD VERSION='1'>" + writeOther();
    if (choose(8) > 0) {
      const std::string current =
          choose(2) == 0 ? "" : " CURRENT='" + std::string(pick(encoding.names, choose)) + "'";
      text += writeHolder("FOUNDATIONS" + current, {&Legacy::foundation});
    }
    text += writeOther();
    if (!spelledOut && choose(4) == 0) text += "<FOUNDATIONS><FOUND NUMBER='1'/></FOUNDATIONS>";
    return text + "</SMOD>" + lineEnd;
  }

  std::string writeExchange(bool isFirst) {
    std::vector<const ElementWord*> words = {&Exchange::curve, &Exchange::surface};
    if (isFirst) words = {&Exchange::whole};
    std::string text = encoding.declaration + lineEnd + "<X Version='1'>" + writeOther();
    for (std::size_t i = 0; i <= choose(2); ++i)
      text += writeHolder("Beddings N='1'", words) + writeOther();
    return text + "</X>";
  }

 private:
  std::string writeOther() {
    const std::string others[] = {"",
                                  lineEnd,
                                  lineEnd + lineEnd + "  ",
                                  "<!-- <FOUND/> <Bedding Name='A'/> -->",
                                  "<?p <FOUND/>?>",
                                  "<![CDATA[<FOUND/>]]>",
                                  "text",
                                  "<SLAB FOUND='1' COST='500 &#8364;'/>",
                                  "<T>\t<U/> t </T>"};
    return pick(others, choose);
  }

  std::string writeHolder(const std::string& start, const std::vector<const ElementWord*>& words) {
    const std::size_t count = choose(5);
    if (count == 0 && choose(2) == 0) return "<" + start + "/>";
    std::string text = "<" + start + ">";
    for (std::size_t i = 0; i < count; ++i) {
      text += pick(std::vector<std::string>{lineEnd + "  ", lineEnd + "\t", "", "<!-- a -->", " "},
                   choose);
      text += writeElement(*pick(words, choose)) + writeOther();
    }
    return text + lineEnd + "</" + start.substr(0, start.find(' ')) + ">";
  }

  std::string writeElement(const ElementWord& word) {
    const char* const separators[] = {" ", "  ", "\n\t"};
    const std::string separator = pick(separators, choose);
    const char quote = choose(2) == 0 ? '"' : '\'';
    std::string text = std::string("<") + word.name;
    for (const Documents::AttributeWord& attribute : word.attributes) {
      if (!spelledOut && choose(3) == 0) continue;
      text += separator + attribute.name + (choose(9) == 0 && !spelledOut ? " = " : "=") + quote +
              writeValue(attribute) + quote;
      if (choose(9) == 0 && unknown.insert(text.size() + 1).second &&
          text.find("Guid") == text.npos)
        text += separator + "Guid=" + quote + "g&#49;" + quote;
    }
    const std::string ends[] = {"/>", " />", std::string("></") + word.name + ">",
                                std::string("><N FOUND='2'/>t</") + word.name + ">"};
    return text + pick(ends, choose);
  }

  std::string writeValue(const Documents::AttributeWord& attribute) {
    const bool isNumber = std::string("number") == attribute.field;
    if (isNumber && spelledOut) return std::to_string(++number);
    if (isNumber) return pick(std::vector<const char*>{"1", "2", "3", " 4", "7", "0", "x"}, choose);
    if (attribute.kind == Kind::identity && spelledOut) return "N" + std::to_string(++name);
    if (attribute.kind == Kind::identity) return pick(encoding.names, choose);
    return pick(listValues(attribute.kind), choose);
  }

  std::vector<const char*> listValues(Kind kind) const {
    switch (kind) {
      case Kind::flag:
        return {"0", "1"};
      case Kind::failureNumber:
        if (spelledOut) return {"-1", "0", "1"};
        return {"-1", "0", "1", "+1", "7", ""};
      case Kind::failureWord:
        if (spelledOut) return {"none", "tension", "compression"};
        return {"none", "tension", "compression", "Tension", ""};
      default:
        if (spelledOut) return {"1.5", "7", "250"};
        return {"1.50", "7", "0", " 250 ", "1e3", "x", "", "-0"};
    }
  }

  const bool spelledOut;
  const Choose& choose;
  const Encoding& encoding;
  const std::string lineEnd;
  std::set<std::size_t> unknown;
  int number = 0;
  int name = 0;
};

// --- Changes

bool isOfArea(const std::string& field) { return field.rfind("area", 0) == 0; }

/// True when documents of this form tell the field of a foundation.
bool canHold(Form form, const Fields::Field& field, const Foundation& foundation) {
  if (!Documents::carries(form, field.name)) return false;
  if (form == Form::legacy || field.type == Fields::Type::stiffness) return true;
  return isOfArea(field.name) ? foundation.hasAreaValues() : foundation.hasLineValues();
}

void changeValue(Foundation& foundation, Form form, const Choose& choose) {
  const Fields::Field& field = pick(Fields::list(), choose);
  if (!canHold(form, field, foundation)) return;
  switch (field.type) {
    case Fields::Type::stiffness:
    case Fields::Type::factor:
      field.set(foundation, pick(std::vector<double>{0.25, 5.0, 1e20}, choose));
      break;
    case Fields::Type::failure:
      field.set(foundation,
                pick(std::vector<std::string>{"none", "tension", "compression"}, choose));
      break;
    case Fields::Type::flag:
      field.set(foundation, choose(2) == 0);
      break;
    case Fields::Type::integer:
    case Fields::Type::text:
      break;
  }
}

/// Numbers and names that no other one has.
class Fresh {
 public:
  int takeNumber() { return ++number; }
  std::string takeName(const Choose& choose) {
    const char* const starts[] = {"New ", "<new> & \"'", "\xC3\xBC\xE2\x82\xAC\xC5\x91\n"};
    return pick(starts, choose) + std::to_string(++name);
  }

 private:
  int number = 1000000;
  int name = 1000000;
};

void changeIdentity(Foundation& foundation, Form form, Fresh& fresh, const Choose& choose) {
  if (choose(2) == 0)
    foundation.setName(fresh.takeName(choose));
  else if (form != Form::firstExchange)
    foundation.setNumber(fresh.takeNumber());
}

Foundation& pickCopy(Draft& draft, const Choose& choose) {
  return *pick(draft.getFoundations().getFoundations(), choose);
}

bool isEmpty(Draft& draft) { return draft.getFoundations().getFoundations().empty(); }

void changeOne(Draft& draft, Form form, Fresh& fresh, const Choose& choose) {
  if (isEmpty(draft)) return;
  Foundation& foundation = pickCopy(draft, choose);
  choose(3) == 0 ? changeIdentity(foundation, form, fresh, choose)
                 : changeValue(foundation, form, choose);
}

void add(Draft& draft, Form form, Fresh& fresh, const Choose& choose) {
  Foundation& added = DraftTest::add(draft, fresh.takeNumber(), fresh.takeName(choose));
  DraftTest::set(added, choose(2) == 0 ? "areaX" : "lineX", "3");
  for (std::size_t i = choose(4); i > 0; --i) changeValue(added, form, choose);
}

/// CURRENT tells a name, and the first foundation that has it is the one.
void chooseCurrent(Draft& draft, const Choose& choose) {
  Found::FoundationManager& manager = draft.getFoundations();
  if (choose(3) == 0)
    manager.setCurrentFoundation(isEmpty(draft) ? nullptr : &pickCopy(draft, choose));
  const Foundation* const current = manager.getCurrentFoundation();
  if (current != nullptr && manager.findFoundation(current->getName()) != current)
    manager.setCurrentFoundation(nullptr);
}

void cut(std::string& bytes, std::vector<Markup::Range> ranges) {
  std::sort(ranges.begin(), ranges.end(),
            [](const auto& a, const auto& b) { return a.begin > b.begin; });
  for (const Markup::Range& range : ranges) bytes.erase(range.begin, range.end - range.begin);
}

void cutTags(std::string& bytes, const std::string& start) {
  for (std::size_t at = bytes.find(start); at != bytes.npos; at = bytes.find(start, at))
    bytes.erase(at, Markup::findEnd(bytes, at) - at);
}

bool isWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

std::string makeDocument(bool spelledOut, const Choose& choose) {
  Writer writer(spelledOut, choose);
  const std::size_t form = choose(3);
  return form == 0 ? writer.writeModel() : writer.writeExchange(form == 1);
}

void changeValues(Draft& draft, Form form, const Choose& choose) {
  Fresh fresh;
  for (std::size_t i = choose(4); i > 0; --i) changeOne(draft, form, fresh, choose);
}

void changeAll(Draft& draft, Form form, const Choose& choose) {
  Fresh fresh;
  for (std::size_t i = choose(5); i > 0; --i) {
    const std::size_t kind = choose(4);
    if (kind == 0) add(draft, form, fresh, choose);
    if (kind == 1 && !isEmpty(draft)) draft.remove(pickCopy(draft, choose));
    if (kind > 1) changeOne(draft, form, fresh, choose);
  }
  if (form == Form::legacy) chooseCurrent(draft, choose);
}

std::string findDifference(const Editing::Wish& wish, Document& result) {
  std::vector<Foundation*> wanted;
  for (const Matching::Pair& pair : wish.pairs)
    if (pair.second != nullptr) wanted.push_back(pair.second);
  const std::vector<Foundation*>& read = result.getFoundations().getFoundations();
  if (read.size() != wanted.size())
    return std::to_string(read.size()) + " instead of " + std::to_string(wanted.size());
  for (std::size_t i = 0; i < read.size(); ++i) {
    for (const Fields::Difference& difference : Fields::compare(*wanted[i], *read[i]))
      if (result.getForm() != Form::firstExchange || std::string("number") != difference.field.name)
        return Fields::describe(*wanted[i]) + ": " + difference.field.name + " " +
               Fields::show(difference.first) + " is " + Fields::show(difference.second);
    const bool isCurrent = read[i] == result.getFoundations().getCurrentFoundation();
    if (isCurrent != (wanted[i] == wish.current))
      return Fields::describe(*wanted[i]) + (isCurrent ? " is current" : " is not current");
  }
  return "";
}

std::string strip(Document& document) {
  std::vector<Markup::Range> ranges;
  const std::size_t lists = document.listLists().size();
  for (std::size_t i = 0; i < lists; ++i)
    for (const Documents::Entry& entry : document.getEntries()[i])
      if (entry.foundation != nullptr || entry.fate == Documents::Entry::Fate::numberTaken)
        ranges.push_back(document.locate(entry.element));
  std::string bytes = document.getContent().bytes;
  cut(bytes, ranges);
  for (const std::string name : {Legacy::list.name, Exchange::container})
    for (const std::string& start : {"<" + name, "</" + name}) cutTags(bytes, start);
  bytes.erase(std::remove_if(bytes.begin(), bytes.end(), isWhiteSpace), bytes.end());
  return bytes;
}

}  // namespace RandomEdit
