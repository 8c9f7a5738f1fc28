#include <sstream>
#include <stdexcept>

#include "faults/every_fault.h"
#include "faults/limited_buffer.h"
#include "faults/scenes.h"
#include "kv/xml_error.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"

namespace FaultTest {
namespace {

const std::string longText = "a text that no string has the room for inside";
/// For one of these the XML parser needs a block of memory of its own.
const std::string hugeName(40000, 'x');

/// What is printed behind the line of the declaration, with HUGE for the huge name.
template <class Document>
std::string print(const Document& document) {
  std::ostringstream out;
  document.putToStream(out);
  std::string text = out.str();
  text.erase(0, text.find('\n') + 1);
  for (std::size_t at = text.find(hugeName); at != text.npos; at = text.find(hugeName))
    text.replace(at, hugeName.size(), "HUGE");
  return text;
}

/// Something of everything that a document may hold.
const std::string rich =
    "<?xml version='1.0'?><!DOCTYPE a><!-- c --><?pi one\r\ntwo?>"
    "<a b='1' c='&lt;'>text<![CDATA[x < y]]><b/><c><d/></c>]]></a>";
const std::string richPrinted =
    "<!DOCTYPE a>\n<!-- c -->\n<?pi one\r\ntwo?>\n"
    "<a b='1' c='&lt;'>text<![CDATA[x < y]]><b /><c><d /></c>]]&gt;</a>\n";

const std::string plain = "<a b=\"1\"><b/><c><d e=\"2\"/></c></a>";
const std::string plainPrinted = "<a b=\"1\">\n  <b />\n  <c>\n    <d e=\"2\" />\n  </c>\n</a>\n";

std::string replaceIn(std::string text, const std::string& part, const std::string& replacement) {
  return text.replace(text.find(part), part.size(), replacement);
}

/// A text to parse, and what became of it.
template <class Document>
struct ParsingScene {
  void parse() {
    in.clear();
    in.seekg(0);
    try {
      document = std::make_unique<Document>(in);
    } catch (const KvXmlError& refused) {
      error = refused.getReason();
    }
  }

  std::string describe() const { return document != nullptr ? print(*document) : error; }

  std::istringstream in;
  std::unique_ptr<Document> document;
  std::string error = "nothing";
};

template <class Document>
Operation parse(const std::string& name, const std::string& text, const std::string& completed) {
  using Scene = ParsingScene<Document>;
  return makeOperation<Scene>(
      name, Meets::Memory, [text](Scene& s) { s.in.str(text); }, [](Scene& s) { s.parse(); },
      {"nothing"}, completed);
}

Operations parsings() {
  std::string shapes = "<a>";
  std::string shapesPrinted = "<a>\n";
  for (const std::string name : {"b", "c", "d", "e", "f", "g", "h", "i", "j", "k"}) {
    shapes += "<" + name + " x=\"1\" y=\"2\"/>";
    shapesPrinted += "  <" + name + " x=\"1\" y=\"2\" />\n";
  }
  return {
      parse<KvXmlTree>("Tree", rich, richPrinted),
      parse<KvXmlTree>("Tree_OfManyKindsOfElements", shapes + "</a>", shapesPrinted + "</a>\n"),
      parse<KvXmlTree>("Tree_WithoutRoot", "<!-- c -->", "<!-- c -->\n"),
      parse<KvXmlTree>("Tree_NotClosed", "<a><b/>",
                       "the text ends before its last element is closed"),
      parse<KvXmlTree>("Tree_WithASecondRoot", "<a/>\n<b/>", "a second root element, <b>"),
      parse<KvXmlTree>("Tree_WithAnAttributeGivenTwice", "<a b='1' b='2'/>",
                       "the attribute \"b\" is given twice"),
      parse<KvXmlTree>("Tree_WithTextOutside", "<a/>text", "text outside the root element"),
      parse<KvXmlN::Document>("Document", rich, richPrinted),
      parse<KvXmlN::Document>("Document_WithoutRoot", "<!-- c -->",
                              "the document has no root element"),
  };
}

/// A tree as it was parsed, with the cursor on its root, and an element outside it.
struct TreeScene {
  TreeScene() {
    std::istringstream in(plain);
    tree = std::make_unique<KvXmlTree>(in);
    tree->open("a", false);
  }

  /// The element is the tree's when the tree took it.
  void addLoose(KvXmlData& parent) {
    parent.addChild(loose.get());
    static_cast<void>(loose.release());
  }

  std::string describe() const {
    std::string text = print(*tree);
    if (loose != nullptr) text += "; loose " + loose->getName();
    return result.empty() ? text : text + "; gives " + result;
  }

  std::unique_ptr<KvXmlTree> tree;
  std::unique_ptr<KvXmlData> loose;
  std::string result;
};

using TreeRun = std::function<void(TreeScene&)>;

Operation onTree(const std::string& name, Meets meets, const TreeRun& run,
                 const std::string& completed) {
  return makeOperation<TreeScene>(name, meets, nullptr, run, {plainPrinted}, completed);
}

Operation withLoose(const std::string& name, const TreeRun& prepare, const TreeRun& run,
                    const std::string& looseName, const std::string& completed) {
  return makeOperation<TreeScene>(name, Meets::Memory, prepare, run,
                                  {plainPrinted + "; loose " + looseName}, completed);
}

// With texts so long that the parser needs a block of memory for every few elements. A block may
// end with any part of an element, since the texts differ in length.
constexpr std::size_t manyElements = 24;

std::string makeLong(char c, std::size_t n) { return std::string(700 + 531 * (n % 11), c); }

KvXmlData& addTo(KvXmlData& parent, const std::string& name) {
  auto child = std::make_unique<KvXmlData>(name, &parent);
  parent.addChild(child.get());
  return *child.release();
}

/// Each element has one below it, which has one below it, too, and an element beside that.
void addMany(KvXmlData& top) {
  for (std::size_t n = 0; n < manyElements; ++n) {
    KvXmlData& element = addTo(top, makeLong('o', n));
    element.setAttribute("n", 7, true);
    element.setAttribute(makeLong('p', n + 2), makeLong('q', n + 5), true);
    addTo(addTo(element, "two"), "three").setAttribute("m", makeLong('r', n + 7), true);
    addTo(element, "beside");
  }
}

std::string printMany() {
  std::string text;
  for (std::size_t n = 0; n < manyElements; ++n) {
    text += "    <" + makeLong('o', n) + " n=\"7\" " + makeLong('p', n + 2) + "=\"" +
            makeLong('q', n + 5) + "\">\n      <two>\n        <three m=\"" + makeLong('r', n + 7) +
            "\" />\n      </two>\n      <beside />\n    </" + makeLong('o', n) + ">\n";
  }
  return text;
}

Operations trees() {
  const auto root = [](TreeScene& s) -> KvXmlData& { return *s.tree->findRoot("a", true); };
  const std::string longChild = "<a b=\"1\">\n  <b />\n  <c>\n    <d e=\"2\" />\n  </c>\n  <" +
                                std::string(40, 'x') + " />\n</a>\n";
  return {
      onTree(
          "Open_Existing", Meets::Memory,
          [](TreeScene& s) {
            s.tree->setCurrent(s.tree->findRoot("a", true));
            s.tree->open("c", false);
          },
          plainPrinted),
      onTree(
          "Open_New", Meets::Memory,
          [](TreeScene& s) {
            s.tree->setCurrent(s.tree->findRoot("a", true));
            s.tree->open(std::string(40, 'x'), false);
          },
          longChild),
      onTree(
          "Open_AnotherRoot", Meets::Nothing,
          [](TreeScene& s) {
            s.tree->setCurrent(nullptr);
            s.tree->open("z", false);
            s.tree->setAttribute("b", 2.0);
            s.tree->close();
            s.tree->flush();
          },
          plainPrinted),
      makeOperation<TreeScene>(
          "Open_TheFirst", Meets::Memory,
          [](TreeScene& s) { s.tree = std::make_unique<KvXmlTree>(); },
          [](TreeScene& s) { s.tree->open("a", false); }, {""}, "<a />\n"),
      onTree(
          "SetDouble_New", Meets::Memory,
          [](TreeScene& s) { s.tree->setAttribute("x", -2.2250738585072014e-308); },
          replaceIn(plainPrinted, "\"1\"", "\"1\" x=\"-2.2250738585072014e-308\"")),
      onTree(
          "SetDouble_InPlaceOfAShorterText", Meets::Memory,
          [](TreeScene& s) { s.tree->setAttribute("b", -2.2250738585072014e-308); },
          replaceIn(plainPrinted, "\"1\"", "\"-2.2250738585072014e-308\"")),
      onTree(
          "SetText_New", Meets::Memory,
          [=](TreeScene& s) { root(s).setAttribute("x", longText, true); },
          replaceIn(plainPrinted, "\"1\"", "\"1\" x=\"" + longText + "\"")),
      onTree(
          "SetText_InPlaceOfAShorterText", Meets::Memory,
          [=](TreeScene& s) { root(s).setAttribute("b", longText, true); },
          replaceIn(plainPrinted, "\"1\"", "\"" + longText + "\"")),
      onTree(
          "SetText_ThatXmlCannotHold", Meets::Memory,
          [=](TreeScene& s) {
            static const std::string forbidden = "\x01" + longText;
            root(s).setAttribute("b", forbidden, true);
          },
          replaceIn(plainPrinted, "\"1\"", "\"?" + longText + "\"")),
      onTree(
          "FindTree", Meets::Memory,
          [=](TreeScene& s) {
            s.result = root(s).findTree("d", true)->findAttribute("e")->getData();
          },
          plainPrinted + "; gives 2"),
      onTree(
          "FindTree_AmongChildren", Meets::Memory,
          [=](TreeScene& s) { s.result = root(s).findTree("b", false)->getName(); },
          plainPrinted + "; gives b"),
      onTree(
          "FindTree_WhereThereIsNone", Meets::Nothing,
          [=](TreeScene& s) { s.result = root(s).findTree("z", true) != nullptr ? "1" : "0"; },
          plainPrinted + "; gives 0"),
      onTree(
          "GetChildren", Meets::Memory,
          [=](TreeScene& s) { s.result = root(s).getChildren().at(1)->getName(); },
          plainPrinted + "; gives c"),
      onTree(
          "GetChildren_BehindAKnownOne", Meets::Memory,
          [=](TreeScene& s) {
            root(s).findTree("c", false);
            s.result = root(s).getChildren().at(1)->getName();
          },
          plainPrinted + "; gives c"),
      makeOperation<TreeScene>(
          "Open_TheFirstWithAHugeName", Meets::Memory,
          [](TreeScene& s) { s.tree = std::make_unique<KvXmlTree>(); },
          [](TreeScene& s) { s.tree->open(hugeName, false); }, {""}, "<HUGE />\n"),
      makeOperation<TreeScene>(
          "FindAttribute_SetLater", Meets::Memory,
          [=](TreeScene& s) {
            root(s).findAttribute("b");
            root(s).setAttribute("x", longText, true);
          },
          [=](TreeScene& s) { s.result = root(s).findAttribute("x")->getData(); },
          {replaceIn(plainPrinted, "\"1\"", "\"1\" x=\"" + longText + "\"")},
          replaceIn(plainPrinted, "\"1\"", "\"1\" x=\"" + longText + "\"") + "; gives " + longText),
      onTree(
          "Open_NewWithAHugeName", Meets::Memory,
          [=](TreeScene& s) {
            s.tree->setCurrent(&root(s));
            s.tree->open(hugeName, false);
          },
          replaceIn(plainPrinted, "</a>", "  <HUGE />\n</a>")),
      onTree(
          "NewElement_WithAHugeName", Meets::Memory,
          [=](TreeScene& s) { const KvXmlData element(hugeName, &root(s)); }, plainPrinted),
      onTree(
          "NewElement_ThatIsNotAdded", Meets::Memory,
          [=](TreeScene& s) { const KvXmlData element("x", &root(s)); }, plainPrinted),
      onTree(
          "NewElement_ByItself", Meets::Memory,
          [](TreeScene& /*s*/) { const KvXmlData element("x", nullptr); }, plainPrinted),
      onTree(
          "NewElement_WithoutAName", Meets::Memory,
          [=](TreeScene& s) {
            try {
              const KvXmlData element("", &root(s));
            } catch (const std::invalid_argument&) {
              s.result = "refused";
            }
          },
          plainPrinted + "; gives refused"),
      withLoose(
          "AddChild", [=](TreeScene& s) { s.loose = std::make_unique<KvXmlData>("x", &root(s)); },
          [=](TreeScene& s) { s.addLoose(root(s)); }, "x",
          replaceIn(plainPrinted, "</a>", "  <x />\n</a>")),
      withLoose(
          "AddChild_FromOutside",
          [](TreeScene& s) {
            s.loose = std::make_unique<KvXmlData>("x", nullptr);
            s.loose->setAttribute("y", hugeName, true);
            auto inner = std::make_unique<KvXmlData>("z", s.loose.get());
            s.loose->addChild(inner.get());
            inner.release()->setAttribute("w", 1, true);
          },
          [=](TreeScene& s) { s.addLoose(root(s)); }, "x",
          replaceIn(plainPrinted, "</a>", "  <x y=\"HUGE\">\n    <z w=\"1\" />\n  </x>\n</a>")),
      withLoose(
          "AddChild_ThatTookAnother",
          [](TreeScene& s) {
            s.loose = std::make_unique<KvXmlData>("x", nullptr);
            auto inner = std::make_unique<KvXmlData>("y", nullptr);
            s.loose->addChild(inner.get());
            static_cast<void>(inner.release());
          },
          [=](TreeScene& s) { s.addLoose(root(s)); }, "x",
          replaceIn(plainPrinted, "</a>", "  <x>\n    <y />\n  </x>\n</a>")),
      withLoose(
          "AddChild_WithManyBelow",
          [](TreeScene& s) {
            s.loose = std::make_unique<KvXmlData>("x", nullptr);
            addMany(*s.loose);
          },
          [=](TreeScene& s) { s.addLoose(root(s)); }, "x",
          replaceIn(plainPrinted, "</a>", "  <x>\n" + printMany() + "  </x>\n</a>")),
  };
}

/// A document as it was parsed.
struct DocumentScene {
  DocumentScene() {
    std::istringstream in(plain);
    document = std::make_unique<KvXmlN::Document>(in);
  }

  KvXmlN::Data& root() { return document->getRoot(); }

  std::string describe() const {
    std::string text = print(*document);
    if (asked != nullptr) text += "; tells " + asked->getData();
    return result.empty() ? text : text + "; gives " + result;
  }

  std::unique_ptr<KvXmlN::Document> document;
  const KvXmlN::AttributeData* asked = nullptr;
  std::string result;
};

Operation onDocument(const std::string& name, Meets meets,
                     const std::function<void(DocumentScene&)>& run, const std::string& completed) {
  return makeOperation<DocumentScene>(name, meets, nullptr, run, {plainPrinted}, completed);
}

Operations documents() {
  const auto withX = [](const std::string& text) {
    return replaceIn(plainPrinted, "\"1\"", "\"1\" x=\"" + text + "\"");
  };
  return {
      onDocument(
          "NewDocument", Meets::Memory,
          [](DocumentScene& s) { s.document = std::make_unique<KvXmlN::Document>("z"); },
          "<z />\n"),
      onDocument(
          "NewElement", Meets::Memory,
          [](DocumentScene& s) {
            KvXmlN::Data element("z");
            element.createChild("y")->setAttribute("x", 1.5);
            s.result = element.getChildren().front()->getName();
          },
          plainPrinted + "; gives y"),
      onDocument(
          "CreateChild", Meets::Memory, [](DocumentScene& s) { s.root().createChild("z"); },
          replaceIn(plainPrinted, "</a>", "  <z />\n</a>")),
      onDocument(
          "CreateChild_WithAHugeName", Meets::Memory,
          [](DocumentScene& s) { s.root().createChild(hugeName); },
          replaceIn(plainPrinted, "</a>", "  <HUGE />\n</a>")),
      onDocument(
          "SetText_OfAHugeName", Meets::Memory,
          [](DocumentScene& s) { s.root().setAttribute(hugeName, longText, true); },
          replaceIn(plainPrinted, "\"1\"", "\"1\" HUGE=\"" + longText + "\"")),
      onDocument(
          "CreateChild_WithoutAName", Meets::Memory,
          [](DocumentScene& s) { s.root().createChild(""); }, plainPrinted),
      onDocument(
          "SetText", Meets::Memory,
          [](DocumentScene& s) { s.root().setAttribute("x", longText, true); }, withX(longText)),
      makeOperation<DocumentScene>(
          "SetText_OfOneThatWasAskedFor", Meets::Memory,
          [](DocumentScene& s) { s.asked = s.root().findAttribute("b"); },
          [](DocumentScene& s) { s.root().setAttribute("b", longText, true); },
          {plainPrinted + "; tells 1"},
          replaceIn(plainPrinted, "\"1\"", "\"" + longText + "\"") + "; tells " + longText),
      onDocument(
          "SetInteger", Meets::Memory,
          [](DocumentScene& s) { s.root().setAttribute("x", 7, true); }, withX("7")),
      onDocument(
          "SetDouble", Meets::Memory, [](DocumentScene& s) { s.root().setAttribute("x", 2.5); },
          withX("2.5")),
      onDocument(
          "SetFormatted", Meets::Memory,
          [](DocumentScene& s) { s.root().setAttribute("x", 2.5, "%50.2f"); },
          withX(std::string(46, ' ') + "2.50")),
      onDocument(
          "SetFormatted_ByWhatIsNoFormat", Meets::Memory,
          [](DocumentScene& s) {
            try {
              s.root().setAttribute("x", 2.5, "%d");
            } catch (const std::invalid_argument&) {
              s.result = "refused";
            }
          },
          plainPrinted + "; gives refused"),
      onDocument(
          "GetAttributeDouble", Meets::Memory,
          [](DocumentScene& s) { s.result = s.root().getAttributeDouble("b") == 1.0 ? "1" : "0"; },
          plainPrinted + "; gives 1"),
      onDocument(
          "ReadString", Meets::Memory,
          [](DocumentScene& s) {
            s.result = KvXmlN::AttributeIn::readString(s.root(), "b").value_or("none");
          },
          plainPrinted + "; gives 1"),
      makeOperation<DocumentScene>(
          "ReadString_OfTwoElements", Meets::Memory,
          [](DocumentScene& s) {
            std::istringstream in("<a b=\"1\"><c d=\"2\" e=\"3\"/></a>");
            s.document = std::make_unique<KvXmlN::Document>(in);
          },
          [](DocumentScene& s) {
            const KvXmlN::Data& child = *s.root().getChildren().front();
            const std::string b = KvXmlN::AttributeIn::readString(s.root(), "b").value_or("none");
            const std::string e = KvXmlN::AttributeIn::readString(child, "e").value_or("none");
            s.result = b + e;
          },
          {"<a b=\"1\">\n  <c d=\"2\" e=\"3\" />\n</a>\n"},
          "<a b=\"1\">\n  <c d=\"2\" e=\"3\" />\n</a>\n; gives 13"),
      onDocument(
          "ReadString_WhereThereIsNone", Meets::Memory,
          [](DocumentScene& s) {
            s.result = KvXmlN::AttributeIn::readString(s.root(), "z").value_or("none");
          },
          plainPrinted + "; gives none"),
  };
}

constexpr std::size_t many = 40;
/// So long that few of them fill what the parser takes at once.
const std::string hugeText(5000, 'x');

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++found;
  return found;
}

/// A document that grows, described by what it has rather than by how much.
struct GrowingScene {
  template <class Element>
  std::string describe(Element& root, const std::string& text) const {
    const std::size_t elements = root.getChildren().size();
    const std::size_t texts = count(text, " t=\"" + hugeText + "\"");
    const std::size_t numbers = count(text, " n=\"7\"");
    const bool isWhole = count(text, "<x") == elements && count(text, " t=") == texts &&
                         count(text, " n=") == numbers && numbers <= elements && texts <= numbers &&
                         elements <= texts + 1;
    if (!isWhole) return "torn";
    return texts == 0 ? "none" : texts < many ? "some" : "all";
  }
};

struct GrowingTree : GrowingScene {
  GrowingTree() { tree.open("a", false); }

  void grow() {
    KvXmlData& root = *tree.findRoot("a", true);
    for (std::size_t n = 0; n < many; ++n) {
      auto created = std::make_unique<KvXmlData>("x", &root);
      root.addChild(created.get());
      KvXmlData& element = *created.release();
      element.setAttribute("n", 7, true);
      element.setAttribute("t", hugeText, true);
    }
  }

  std::string describe() { return GrowingScene::describe(*tree.findRoot("a", true), print(tree)); }

  KvXmlTree tree;
};

struct GrowingDocument : GrowingScene {
  void grow() {
    for (std::size_t n = 0; n < many; ++n) {
      KvXmlN::Data& element = *document.getRoot().createChild("x");
      element.setAttribute("n", 7, true);
      element.setAttribute("t", hugeText, true);
    }
  }

  std::string describe() { return GrowingScene::describe(document.getRoot(), print(document)); }

  KvXmlN::Document document{"a"};
};

template <class Scene>
Operation grow(const std::string& name) {
  return makeOperation<Scene>(
      name, Meets::Memory, nullptr, [](Scene& s) { s.grow(); }, {"none", "some"}, "all");
}

/// A document, and a stream that has the room for it in advance.
template <class Document>
struct PrintingScene {
  PrintingScene() {
    std::istringstream in(rich);
    document = std::make_unique<Document>(in);
  }

  std::string describe() const { return buffer.get(); }

  std::unique_ptr<Document> document;
  LimitedBuffer buffer{4096};
};

template <class Document>
Operation printTo(const std::string& name) {
  using Scene = PrintingScene<Document>;
  return makeOperation<Scene>(
      name, Meets::Memory, nullptr,
      [](Scene& s) {
        std::ostream out(&s.buffer);
        s.document->putToStream(out);
      },
      {""}, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + richPrinted);
}

TEST(ParserMemory, MeetsFaultsToo) {
  KvXmlN::Document document("a");
  KvXmlN::Data& root = document.getRoot();
  root.setAttribute("t", 0, true);
  const long blocksBefore = countBlocks();

  root.setAttribute("t", hugeName, true);

  EXPECT_EQ(countBlocks(), blocksBefore + 1);
}

TEST(TreeMemory, IsGivenBackWhereElementsWereAddedBelowAddedOnes) {
  const long blocksBefore = countBlocks();
  {
    KvXmlTree tree;
    addMany(addTo(*tree.open("a", false), "x"));
  }
  EXPECT_EQ(countBlocks(), blocksBefore);
}

TEST(TreeMemory, IsGivenBackWhereAnElementWasRemovedBetweenTwoMoves) {
  const long blocksBefore = countBlocks();
  {
    KvXmlTree tree;
    auto inner = std::make_unique<KvXmlData>("b", nullptr);
    addTo(*inner, "removed");
    auto outer = std::make_unique<KvXmlData>("c", nullptr);
    outer->addChild(inner.get());
    inner.release()->removeChildren([](const KvXmlData&) { return true; });
    tree.open("a", false)->addChild(outer.get());
    static_cast<void>(outer.release());
  }
  EXPECT_EQ(countBlocks(), blocksBefore);
}

constexpr int mostFaults = 10000;

TEST(TreeMemory, ThatRunsOutLetsAnElementBeAddedToAnotherTree) {
  int n = 1;
  for (bool failed = true; failed && n < mostFaults; ++n) {
    SCOPED_TRACE("fault " + std::to_string(n));
    KvXmlTree full;
    KvXmlTree other;
    KvXmlData* const fullRoot = full.open("a", false);
    auto loose = std::make_unique<KvXmlData>("x", nullptr);
    failed = fails(n, [&] { fullRoot->addChild(loose.get()); });
    if (failed) other.open("b", false)->addChild(loose.get());
    static_cast<void>(loose.release());

    EXPECT_EQ(print(full), failed ? "<a />\n" : "<a>\n  <x />\n</a>\n");
    EXPECT_EQ(print(other), failed ? "<b>\n  <x />\n</b>\n" : "");
  }
  EXPECT_GT(n, 2);
  EXPECT_LT(n, mostFaults);
}

/// Elements that each stand in the one before.
std::unique_ptr<KvXmlData> makeLevels(std::size_t count) {
  auto top = std::make_unique<KvXmlData>("level", nullptr);
  KvXmlData* last = top.get();
  for (std::size_t i = 1; i < count; ++i) last = &addTo(*last, "level");
  return top;
}

// The parser takes its memory in blocks. The first ends among the levels that are added, at another
// part of a level with each length of the text before them.
TEST(TreeMemory, ThatRunsOutAddsAllLevelsOrNone) {
  constexpr std::size_t levels = 40;
  for (std::size_t length = 0; length < 96; length += 8) {
    int n = 1;
    for (bool failed = true; failed && n < mostFaults; ++n) {
      SCOPED_TRACE("length " + std::to_string(length) + ", fault " + std::to_string(n));
      KvXmlTree tree;
      KvXmlData* const root = tree.open("a", false);
      for (const char c : std::string("bcdefghijklmnopq"))
        root->setAttribute(std::string(1, c), std::string(1850 + (c == 'b' ? length : 0), c), true);
      std::unique_ptr<KvXmlData> loose = makeLevels(levels);
      failed = fails(n, [&] { root->addChild(loose.get()); });
      if (!failed) static_cast<void>(loose.release());

      ASSERT_EQ(count(print(tree), "<level"), failed ? 0 : levels);
    }
    EXPECT_LT(n, mostFaults);
  }
}

Operations malformedFiles() {
  const auto read = [](FileScene& s) {
    try {
      s.read();
    } catch (const KvXmlError& error) {
      s.text = error.getReason();
    }
  };
  const auto row = [&read](const std::string& name, const std::string& text,
                           const std::string& reason) {
    return makeOperation<FileScene>(
        name, Meets::Memory, [=](FileScene& s) { s.store(name, "<?xml?>\n" + text); }, read,
        {everything}, everything + "; gives " + reason);
  };
  return {
      row("ReadXml_NotClosed", "<SMOD><FOUNDATIONS>",
          "the text ends before its last element is closed"),
      row("ReadXml_WithASecondRoot", "<SMOD/>\n<SMOD/>", "a second root element, <SMOD>"),
  };
}

INSTANTIATE_TEST_SUITE_P(MalformedFile, EveryFault, testing::ValuesIn(malformedFiles()), getName);
INSTANTIATE_TEST_SUITE_P(Parsing, EveryFault, testing::ValuesIn(parsings()), getName);
INSTANTIATE_TEST_SUITE_P(Tree, EveryFault, testing::ValuesIn(trees()), getName);
INSTANTIATE_TEST_SUITE_P(Document, EveryFault, testing::ValuesIn(documents()), getName);
INSTANTIATE_TEST_SUITE_P(Growing, EveryFault,
                         testing::Values(grow<GrowingTree>("OfATree"),
                                         grow<GrowingDocument>("OfADocument")),
                         getName);
INSTANTIATE_TEST_SUITE_P(PutToStream, EveryFault,
                         testing::Values(printTo<KvXmlTree>("OfATree"),
                                         printTo<KvXmlN::Document>("OfADocument")),
                         getName);

}  // namespace
}  // namespace FaultTest
