#include "xml_suite/judgement.h"

#include <optional>
#include <sstream>

#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "xml_suite/items.h"
#include "xml_suite/leniency.h"
#include "xml_suite/other_parser.h"

namespace XmlSuite {
namespace {

template <class Document>
std::string print(const Document& document) {
  std::ostringstream out;
  document.putToStream(out);
  return out.str();
}

/// How one XML library takes a text.
struct Outcome {
  bool isAccepted = false;
  std::string refusal;
  std::string print;
  std::string elements;
  bool isPrintKept = true;  // when values were asked for
};

bool isNamespace(const std::string& name) {
  return name == "xmlns" || (name.rfind("xmlns:", 0) == 0 && name.size() > 6);
}

/// As readElements() gives them.
template <class Element>
void addElement(std::string& all, Element& element) {
  addItem(all, '<', element.getName());
  for (const std::string& name : element.getAttributeNames())
    if (!isNamespace(name)) addItem(all, '@', name + "=" + element.findAttribute(name)->getData());
  for (Element* child : element.getChildren()) addElement(all, *child);
  addItem(all, '>', "");
}

/// The legacy XML library finds a root by its name only, which is one of those printed.
KvXmlData* findRoot(KvXmlTree& tree, const std::string& printed) {
  std::size_t place = 0;
  while ((place = printed.find('<', place)) != std::string::npos) {
    const std::size_t end = printed.find_first_of(" \t\r\n/>", ++place);
    if (KvXmlData* const root = tree.findRoot(printed.substr(place, end - place), true))
      return root;
  }
  return nullptr;
}

KvXmlN::Data* findRoot(KvXmlN::Document& document, const std::string& /*printed*/) {
  return &document.getRoot();
}

template <class Document>
Outcome take(const std::string& text) {
  Outcome outcome;
  std::istringstream in(text);
  try {
    Document document(in);
    outcome.isAccepted = true;
    outcome.print = print(document);
    if (auto* const root = findRoot(document, outcome.print)) addElement(outcome.elements, *root);
    outcome.isPrintKept = print(document) == outcome.print;
  } catch (const KvXmlError& error) {
    outcome.refusal = error.what();
  }
  return outcome;
}

/// A text and what is printed of it, each as it is or, where that is what passes on purpose, with
/// it made well-formed.
class Comparison {
 public:
  Comparison(const std::string& parsed, const Outcome& outcome, EmptyDocument empty,
             Judgement& judgement)
      : text(parsed), taken(outcome), emptyDocument(empty), result(judgement) {}

  void run() {
    std::string readable = text;
    std::optional<Infoset> before = readInfoset(text);
    const bool isLenient = !before;
    if (isLenient) {
      const Mended mended = makeWellFormed(text, emptyDocument);
      readable = mended.text;
      before = readInfoset(readable);
      if (!before || mended.leniencies.empty()) return add(Deviation::accepted, readable);
      result.leniencies = mended.leniencies;
    }
    compareElements(readable);
    const std::string printed =
        isLenient ? makeWellFormed(taken.print, emptyDocument).text : taken.print;
    const std::optional<Infoset> after = readInfoset(printed);
    if (!after)
      add(Deviation::malformed, taken.print);
    else if (*before != *after)
      add(Deviation::changed, *before + "---\n" + *after);
  }

 private:
  /// Where libxml2 adds no attributes that a document type declares.
  void compareElements(const std::string& readable) {
    if (readable.find("<!ATTLIST") != std::string::npos) return;
    const std::optional<std::string> elements = readElements(readable);
    if (elements && !taken.elements.empty() && *elements != taken.elements)
      add(Deviation::misread, taken.elements + "---\n" + *elements);
  }

  void add(Deviation deviation, const std::string& details) {
    result.deviations.insert(deviation);
    result.details += std::string(nameOf(deviation)) + ":\n" + details + "\n";
  }

  const std::string& text;
  const Outcome& taken;
  EmptyDocument emptyDocument;
  Judgement& result;
};

template <class Document>
Outcome judgeThrough(const std::string& text, EmptyDocument empty, Judgement& judgement) {
  Outcome outcome = take<Document>(text);
  if (!outcome.isAccepted) return outcome;
  Comparison(text, outcome, empty, judgement).run();
  const Outcome again = take<Document>(outcome.print);
  if (again.print != outcome.print || !outcome.isPrintKept) {
    judgement.deviations.insert(Deviation::unstable);
    judgement.details +=
        "unstable:\n" + outcome.print + "---\n" + again.print + again.refusal + "\n";
  }
  return outcome;
}

}  // namespace

Judgement judge(const std::string& text) {
  Judgement judgement;
  const Outcome legacy = judgeThrough<KvXmlTree>(text, EmptyDocument::allowed, judgement);
  const Outcome newer = judgeThrough<KvXmlN::Document>(text, EmptyDocument::refused, judgement);
  judgement.isAccepted = legacy.isAccepted || newer.isAccepted;
  // Only the legacy XML library takes a document without a root.
  const bool hasNoRoot = legacy.isAccepted && !newer.isAccepted && legacy.elements.empty();
  const bool isAgreed = legacy.isAccepted == newer.isAccepted && legacy.print == newer.print;
  if (!isAgreed && !hasNoRoot) judgement.deviations.insert(Deviation::disputed);
  if (legacy.isAccepted) return judgement;
  judgement.details += legacy.refusal + "\n";
  if (readInfoset(text)) judgement.deviations.insert(Deviation::refused);
  return judgement;
}

const char* nameOf(Deviation deviation) {
  switch (deviation) {
    case Deviation::accepted:
      return "accepted";
    case Deviation::refused:
      return "refused";
    case Deviation::misread:
      return "misread";
    case Deviation::malformed:
      return "malformed";
    case Deviation::changed:
      return "changed";
    case Deviation::unstable:
      return "unstable";
    case Deviation::disputed:
      return "disputed";
  }
  return "";
}

std::string list(const std::set<Deviation>& deviations) {
  std::string names;
  for (const Deviation deviation : deviations)
    names += (names.empty() ? "" : " ") + std::string(nameOf(deviation));
  return names;
}

}  // namespace XmlSuite
