#include "kv/xml_tree.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/support.h"

using PlatformTest::parse;
using PlatformTest::print;

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

constexpr int manyLevels = 100000;

std::vector<std::string> namesOf(const std::vector<KvXmlData*>& elements) {
  std::vector<std::string> names;
  names.reserve(elements.size());
  for (const KvXmlData* element : elements) names.push_back(element->getName());
  return names;
}

using Names = std::vector<std::string>;

/// Adds a new element, made for `parent`, below it.
KvXmlData* addNew(KvXmlData* parent, const std::string& name) {
  auto* const child = new KvXmlData(name, parent);
  parent->addChild(child);
  return child;
}

/// Adds many elements below `top`, each in the one before, and gives the innermost. Built from the
/// inside, since adding far down looks at every element above.
KvXmlData* addLevels(KvXmlData* top) {
  auto* const last = new KvXmlData("last", top);
  KvXmlData* outermost = last;
  for (int i = 0; i < manyLevels; ++i) {
    auto* const level = new KvXmlData("level", top);
    level->addChild(outermost);
    outermost = level;
  }
  top->addChild(outermost);
  return last;
}

}  // namespace

TEST(XmlTree, IsEmptyAtFirst) {
  const KvXmlTree tree;

  EXPECT_EQ(tree.findRoot("a", true), nullptr);
  EXPECT_EQ(tree.getCurrent(), nullptr);
}

TEST(XmlTree, CanBeDerivedFrom) {
  struct Derived : KvXmlTree {
    explicit Derived(bool* flag) : isDestroyed(flag) {}
    ~Derived() override { *isDestroyed = true; }
    bool* isDestroyed;
  };
  bool isDestroyed = false;
  std::unique_ptr<KvXmlTree> tree = std::make_unique<Derived>(&isDestroyed);

  tree.reset();

  EXPECT_TRUE(isDestroyed);
}

TEST(XmlTree, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<KvXmlTree>);
  EXPECT_FALSE(std::is_copy_assignable_v<KvXmlTree>);
  EXPECT_FALSE(std::is_copy_constructible_v<KvXmlData>);
}

TEST(XmlFindRoot, ComparesTheName) {
  const auto tree = parse("<!-- c --><a><b/></a>");

  for (bool flag : {false, true}) {
    ASSERT_NE(tree->findRoot("a", flag), nullptr);
    EXPECT_EQ(tree->findRoot("a", flag)->getName(), "a");
    EXPECT_EQ(tree->findRoot("b", flag), nullptr);
    EXPECT_EQ(tree->findRoot("A", flag), nullptr);
    EXPECT_EQ(tree->findRoot("", flag), nullptr);
  }
}

TEST(XmlFindRoot, GivesTheSameElementEachTime) {
  const auto tree = parse("<a/>");

  EXPECT_EQ(tree->findRoot("a", true), tree->findRoot("a", false));
}

TEST(XmlFindRoot, LeavesTheCursorAlone) {
  const auto tree = parse("<a/>");

  tree->findRoot("a", true);

  EXPECT_EQ(tree->getCurrent(), nullptr);
}

TEST(XmlFindRoot, FindsTheOneThatWasOpened) {
  KvXmlTree tree;

  KvXmlData* const root = tree.open("a", false);

  EXPECT_EQ(tree.findRoot("a", true), root);
}

// --- The cursor

TEST(XmlCursor, OpenCreatesARootInAnEmptyDocument) {
  for (bool flag : {false, true}) {
    KvXmlTree tree;
    KvXmlData* const root = tree.open("a", flag);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->getName(), "a");
    EXPECT_EQ(tree.getCurrent(), root);
    EXPECT_EQ(print(tree), declaration + "<a />\n");
  }
}

TEST(XmlCursor, OpenCreatesARootWhereOnlyCommentsWereParsed) {
  const auto tree = parse("<!-- c -->");

  ASSERT_NE(tree->open("a", false), nullptr);

  EXPECT_EQ(print(*tree), declaration + "<!-- c -->\n<a />\n");
}

TEST(XmlCursor, OpenWithoutACurrentElementOpensTheRootOfThatName) {
  const auto tree = parse("<a><b/></a>");

  for (bool flag : {false, true}) {
    tree->setCurrent(nullptr);
    EXPECT_EQ(tree->open("a", flag), tree->findRoot("a", true));
    EXPECT_EQ(tree->getCurrent(), tree->findRoot("a", true));
  }
  EXPECT_EQ(print(*tree), declaration + "<a>\n  <b />\n</a>\n");
}

TEST(XmlCursor, OpenWithoutACurrentElementRefusesAnotherRoot) {
  const auto tree = parse("<a><b/></a>");

  EXPECT_EQ(tree->open("b", false), nullptr);
  EXPECT_EQ(tree->getCurrent(), nullptr);
  EXPECT_EQ(print(*tree), declaration + "<a>\n  <b />\n</a>\n");
}

TEST(XmlCursor, OpenGoesToTheFirstChildOfThatName) {
  const auto tree = parse("<a><x/><b n='1'/><b n='2'/></a>");
  tree->open("a", false);

  const KvXmlData* const opened = tree->open("b", false);

  EXPECT_EQ(opened->findAttribute("n")->getData(), "1");
  EXPECT_EQ(tree->getCurrent(), opened);
}

TEST(XmlCursor, OpenLooksAtDirectChildrenOnly) {
  for (bool flag : {false, true}) {
    const auto tree = parse("<a><x><b/></x></a>");
    tree->open("a", flag);
    tree->open("b", flag);
    EXPECT_EQ(print(*tree), declaration + "<a>\n  <x>\n    <b />\n  </x>\n  <b />\n</a>\n");
  }
}

TEST(XmlCursor, OpenAppendsAChildBehindAllOthers) {
  const auto tree = parse("<a><x/>text<!-- c --></a>");
  KvXmlData* const root = tree->open("a", false);

  KvXmlData* const opened = tree->open("b", false);

  EXPECT_EQ(namesOf(root->getChildren()), (Names{"x", "b"}));
  EXPECT_EQ(root->getChildren().back(), opened);
  EXPECT_EQ(print(*tree), declaration + "<a><x />text<!-- c --><b /></a>\n");
}

TEST(XmlCursor, OpenTwiceNestsElementsOfTheSameName) {
  KvXmlTree tree;
  tree.open("a", false);
  tree.open("a", false);

  EXPECT_EQ(print(tree), declaration + "<a>\n  <a />\n</a>\n");
}

TEST(XmlCursor, CloseGoesToTheParentLevelByLevel) {
  KvXmlTree tree;
  KvXmlData* const a = tree.open("a", false);
  KvXmlData* const b = tree.open("b", false);
  tree.open("c", false);

  tree.close();
  EXPECT_EQ(tree.getCurrent(), b);
  tree.close();
  EXPECT_EQ(tree.getCurrent(), a);
  tree.close();
  EXPECT_EQ(tree.getCurrent(), nullptr);
}

TEST(XmlCursor, CloseWithoutACurrentElementDoesNothing) {
  KvXmlTree tree;

  tree.close();

  EXPECT_EQ(tree.getCurrent(), nullptr);
}

TEST(XmlCursor, CloseGoesToTheParentOfAnElementThatWasSet) {
  const auto tree = parse("<a><b><c/></b></a>");
  tree->setCurrent(tree->findRoot("a", true)->findTree("c", true));

  tree->close();
  EXPECT_EQ(tree->getCurrent()->getName(), "b");
  tree->close();
  EXPECT_EQ(tree->getCurrent(), tree->findRoot("a", true));
  tree->close();
  EXPECT_EQ(tree->getCurrent(), nullptr);
}

TEST(XmlCursor, CloseGoesToTheParentOfAnElementThatWasAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  tree.setCurrent(addNew(root, "b"));

  tree.close();

  EXPECT_EQ(tree.getCurrent(), root);
}

TEST(XmlCursor, CloseGoesToTheParentOfAnElementThatIsNotAddedYet) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  KvXmlData child("b", root);
  tree.setCurrent(&child);

  tree.close();

  EXPECT_EQ(tree.getCurrent(), root);
}

TEST(XmlCursor, CloseGoesToTheParentOfAnElementAddedWithoutOne) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  auto* const child = new KvXmlData("b", nullptr);
  KvXmlData* const grandchild = addNew(child, "c");
  root->addChild(child);
  tree.setCurrent(grandchild);

  tree.close();
  EXPECT_EQ(tree.getCurrent(), child);
  tree.close();
  EXPECT_EQ(tree.getCurrent(), root);
}

TEST(XmlCursor, CanBeSetToNone) {
  KvXmlTree tree;
  tree.open("a", false);

  tree.setCurrent(nullptr);

  EXPECT_EQ(tree.getCurrent(), nullptr);
}

TEST(XmlCursor, FlushHasNoEffect) {
  KvXmlTree tree;
  tree.open("a", false);
  KvXmlData* const current = tree.open("b", false);

  tree.flush();

  EXPECT_EQ(tree.getCurrent(), current);
  EXPECT_EQ(print(tree), declaration + "<a>\n  <b />\n</a>\n");
}

TEST(XmlCursor, SetAttributeWritesToTheCurrentElement) {
  KvXmlTree tree;
  tree.open("a", false);
  tree.setAttribute("x", 1.5);
  tree.open("b", false);
  tree.setAttribute("y", -2.0);
  tree.close();
  tree.setAttribute("z", 1e300);

  EXPECT_EQ(print(tree), declaration + "<a x=\"1.5\" z=\"1e+300\">\n  <b y=\"-2\" />\n</a>\n");
}

TEST(XmlCursor, SetAttributeWithoutACurrentElementDoesNothing) {
  const auto tree = parse("<a x='1'/>");

  tree->setAttribute("x", 2.5);

  EXPECT_EQ(print(*tree), declaration + "<a x='1' />\n");
}

// --- Finding elements

TEST(XmlFindTree, WithFlagFindsTheFirstInDocumentOrder) {
  const auto tree = parse("<r><x><y><b n='deep'/></y></x><b n='shallow'/></r>");

  const KvXmlData* const found = tree->findRoot("r", true)->findTree("b", true);

  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->findAttribute("n")->getData(), "deep");
}

TEST(XmlFindTree, WithFlagFindsAnElementBeforeThoseInside) {
  const auto tree = parse("<r><b n='outer'><b n='inner'/></b></r>");

  EXPECT_EQ(tree->findRoot("r", true)->findTree("b", true)->findAttribute("n")->getData(), "outer");
}

TEST(XmlFindTree, WithoutFlagFindsDirectChildrenOnly) {
  const auto tree = parse("<r><x><b n='deep'/></x><b n='shallow'/><b n='second'/></r>");
  KvXmlData* const root = tree->findRoot("r", true);

  EXPECT_EQ(root->findTree("b", false)->findAttribute("n")->getData(), "shallow");
  EXPECT_EQ(root->findTree("x", false)->findTree("b", false)->findAttribute("n")->getData(),
            "deep");
  EXPECT_EQ(parse("<r><x><b/></x></r>")->findRoot("r", true)->findTree("b", false), nullptr);
}

TEST(XmlFindTree, DoesNotFindTheElementItself) {
  const auto tree = parse("<r><x/></r>");

  EXPECT_EQ(tree->findRoot("r", true)->findTree("r", true), nullptr);
  EXPECT_EQ(tree->findRoot("r", true)->findTree("r", false), nullptr);
}

TEST(XmlFindTree, StaysBelowTheElement) {
  const auto tree = parse("<r><x><c/></x><b/></r>");
  KvXmlData* const x = tree->findRoot("r", true)->findTree("x", true);

  EXPECT_EQ(x->findTree("b", true), nullptr);
  EXPECT_EQ(x->findTree("b", false), nullptr);
  EXPECT_EQ(x->findTree("c", true)->findTree("b", true), nullptr);
}

TEST(XmlFindTree, ComparesTheWholeNameWithCase) {
  const auto tree = parse("<r><bb/><B/></r>");

  for (bool flag : {false, true}) {
    EXPECT_EQ(tree->findRoot("r", true)->findTree("b", flag), nullptr);
    EXPECT_EQ(tree->findRoot("r", true)->findTree("", flag), nullptr);
  }
}

TEST(XmlFindTree, FindsElementsOnly) {
  const auto tree = parse("<r>b<!--b--><?b?><![CDATA[b]]></r>");

  for (bool flag : {false, true})
    EXPECT_EQ(tree->findRoot("r", true)->findTree("b", flag), nullptr);
}

TEST(XmlFindTree, FindsElementsThatWereAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  KvXmlData* const child = addNew(root, "x");
  KvXmlData* const grandchild = addNew(child, "b");

  EXPECT_EQ(root->findTree("x", false), child);
  EXPECT_EQ(root->findTree("b", true), grandchild);
  EXPECT_EQ(root->findTree("b", false), nullptr);
}

TEST(XmlFindTree, DoesNotFindElementsThatWereNotAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  const KvXmlData detached("b", root);

  EXPECT_EQ(root->findTree("b", true), nullptr);
  EXPECT_EQ(root->findTree("b", false), nullptr);
  EXPECT_TRUE(root->getChildren().empty());
}

TEST(XmlChildren, AreTheElementsInDocumentOrder) {
  const auto tree = parse("<r>t<c/><!-- x --><a><z/></a><?p?><b/><![CDATA[x]]><a/></r>");

  EXPECT_EQ(namesOf(tree->findRoot("r", true)->getChildren()), (Names{"c", "a", "b", "a"}));
}

TEST(XmlChildren, OfALeafAreNone) {
  EXPECT_TRUE(parse("<r/>")->findRoot("r", true)->getChildren().empty());
  EXPECT_TRUE(parse("<r>text</r>")->findRoot("r", true)->getChildren().empty());
}

TEST(XmlChildren, FollowWhatIsAddedLater) {
  const auto tree = parse("<r><a/></r>");
  KvXmlData* const root = tree->open("r", false);
  ASSERT_EQ(namesOf(root->getChildren()), (Names{"a"}));

  addNew(root, "b");
  tree->open("c", false);
  root->addChild(new KvXmlData("d", nullptr));

  EXPECT_EQ(namesOf(root->getChildren()), (Names{"a", "b", "c", "d"}));
}

TEST(XmlChildren, MayBeAskedForAgainWhileTheyAreWalked) {
  const auto tree = parse("<r><a/><b/><c/></r>");
  KvXmlData* const root = tree->findRoot("r", true);
  const std::vector<KvXmlData*>& children = root->getChildren();
  KvXmlData* const* const first = children.data();

  root->getChildren();

  EXPECT_EQ(children.data(), first);
}

// --- Attributes

TEST(XmlAttributes, AreFoundByTheirWholeName) {
  const auto tree = parse("<a b='1' bb='2' B='3'/>");
  const KvXmlData* const root = tree->findRoot("a", true);

  EXPECT_EQ(root->findAttribute("b")->getData(), "1");
  EXPECT_EQ(root->findAttribute("bb")->getData(), "2");
  EXPECT_EQ(root->findAttribute("B")->getData(), "3");
  EXPECT_EQ(root->findAttribute("bbb"), nullptr);
  EXPECT_EQ(root->findAttribute(""), nullptr);
}

TEST(XmlAttributes, AreFoundInAnyOrderAndAgain) {
  const auto tree = parse("<a b='1' c='2' d='3'/>");
  const KvXmlData* const root = tree->findRoot("a", true);

  for (const char* name : {"d", "c", "b", "b", "d", "c"})
    EXPECT_NE(root->findAttribute(name), nullptr);
  EXPECT_EQ(root->findAttribute("c"), root->findAttribute("c"));
}

TEST(XmlAttributes, AreFoundWhateverTheirNamesAre) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  for (int i = 0; i < 500; ++i) root->setAttribute("n" + std::to_string(i), i, true);

  for (int i = 0; i < 500; ++i) {
    const KvXmlAttributeData* const attribute = root->findAttribute("n" + std::to_string(i));
    ASSERT_NE(attribute, nullptr) << i;
    EXPECT_EQ(attribute->getInteger(), i);
  }
}

TEST(XmlAttributes, AreNoneInAnElementWithout) {
  EXPECT_EQ(parse("<a/>")->findRoot("a", true)->findAttribute("b"), nullptr);
}

TEST(XmlAttributes, AreAppendedWhenNew) {
  for (bool flag : {false, true}) {
    KvXmlTree tree;
    KvXmlData* const root = tree.open("a", false);
    root->setAttribute("z", 1, flag);
    root->setAttribute("b", std::string("text"), flag);
    root->setAttribute("m", -3, flag);
    EXPECT_EQ(print(tree), declaration + "<a z=\"1\" b=\"text\" m=\"-3\" />\n");
  }
}

TEST(XmlAttributes, KeepTheirPlaceWhenSetAgain) {
  for (bool flag : {false, true}) {
    const auto tree = parse("<a x='1' y='2' z='3'/>");
    KvXmlData* const root = tree->open("a", false);
    root->setAttribute("y", 7, flag);
    root->setAttribute("x", std::string("text"), flag);
    tree->setAttribute("z", 0.5);
    EXPECT_EQ(print(*tree), declaration + "<a x=\"text\" y=\"7\" z=\"0.5\" />\n");
  }
}

TEST(XmlAttributes, AreTheSameEachTimeAlsoWhenOthersWereSetMeanwhile) {
  const auto tree = parse("<r a='1' b='2'/>");
  KvXmlData* const root = tree->findRoot("r", true);
  const KvXmlAttributeData* const a = root->findAttribute("a");
  const KvXmlAttributeData* const b = root->findAttribute("b");
  root->setAttribute("c", 3, true);
  const KvXmlAttributeData* const c = root->findAttribute("c");
  root->setAttribute("d", 4, true);
  const KvXmlAttributeData* const d = root->findAttribute("d");

  EXPECT_EQ(root->findAttribute("a"), a);
  EXPECT_EQ(root->findAttribute("b"), b);
  EXPECT_EQ(root->findAttribute("c"), c);
  EXPECT_EQ(root->findAttribute("d"), d);
  EXPECT_EQ(a->getInteger(), 1);
  EXPECT_EQ(d->getInteger(), 4);
}

TEST(XmlAttributes, AreSetInAnyOrderOnSeveralElementsByTurns) {
  const auto tree = parse("<r><a x='' y='' z=''/><b z='' y='' x=''/></r>");
  KvXmlData* const a = tree->findRoot("r", true)->findTree("a", false);
  KvXmlData* const b = tree->findRoot("r", true)->findTree("b", false);
  a->setAttribute("z", 1, true);
  a->setAttribute("x", 2, true);
  b->setAttribute("x", 3, true);
  a->setAttribute("y", 4, true);
  b->setAttribute("z", 5, true);
  b->setAttribute("new", 6, true);
  a->setAttribute("x", 7, true);
  b->setAttribute("y", 8, true);
  a->setAttribute("new", 9, true);

  EXPECT_EQ(print(*tree), declaration +
                              "<r>\n  <a x=\"7\" y=\"4\" z=\"1\" new=\"9\" />\n"
                              "  <b z=\"5\" y=\"8\" x=\"3\" new=\"6\" />\n</r>\n");
}

TEST(XmlAttributes, AreSetAfterAnElementWithSuchAttributesEnded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  for (int i = 0; i < 100; ++i) {
    KvXmlData detached("a", root);
    detached.setAttribute("x", i, true);
    detached.setAttribute("y", i, true);
    EXPECT_EQ(detached.findAttribute("y")->getInteger(), i);
  }
  root->setAttribute("y", 1, true);
  root->setAttribute("x", 2, true);

  EXPECT_EQ(print(tree), declaration + "<r y=\"1\" x=\"2\" />\n");
}

TEST(XmlAttributes, MayBeEmpty) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  root->setAttribute("b", std::string(), true);

  ASSERT_NE(root->findAttribute("b"), nullptr);
  EXPECT_EQ(root->findAttribute("b")->getData(), "");
}

TEST(XmlAttributes, MayBeVeryLong) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  const std::string text(1000000, 'x');
  root->setAttribute("b", text, true);
  root->setAttribute("c", std::string("short"), true);
  root->setAttribute("b", text + "y", true);

  EXPECT_EQ(root->findAttribute("b")->getData(), text + "y");
}

// --- Adding elements

TEST(XmlAddChild, AppendsAnElementMadeForTheParent) {
  const auto tree = parse("<r><a/></r>");
  KvXmlData* const root = tree->findRoot("r", true);
  auto* const child = new KvXmlData("b", root);
  child->setAttribute("n", 1, true);

  root->addChild(child);

  EXPECT_EQ(root->getChildren().back(), child);
  EXPECT_EQ(print(*tree), declaration + "<r>\n  <a />\n  <b n=\"1\" />\n</r>\n");
}

TEST(XmlAddChild, AppendsAnElementMadeForAnotherParentOfTheTree) {
  const auto tree = parse("<r><a/><b/></r>");
  KvXmlData* const root = tree->findRoot("r", true);
  auto* const child = new KvXmlData("c", root->findTree("a", false));

  root->findTree("b", false)->addChild(child);
  tree->setCurrent(child);
  tree->close();

  EXPECT_EQ(tree->getCurrent(), root->findTree("b", false));
  EXPECT_EQ(print(*tree), declaration + "<r>\n  <a />\n  <b>\n    <c />\n  </b>\n</r>\n");
}

TEST(XmlAddChild, AppendsAnElementMadeForAnElementNotYetAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const outer = new KvXmlData("a", root);
  auto* const inner = new KvXmlData("b", outer);
  root->addChild(outer);

  outer->addChild(inner);

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a>\n    <b />\n  </a>\n</r>\n");
}

TEST(XmlAddChild, AppendsAnElementWithoutAParent) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const child = new KvXmlData("a", nullptr);
  child->setAttribute("n", 1, true);

  root->addChild(child);

  EXPECT_EQ(root->getChildren(), std::vector<KvXmlData*>{child});
  EXPECT_EQ(child->getName(), "a");
  EXPECT_EQ(print(tree), declaration + "<r>\n  <a n=\"1\" />\n</r>\n");
}

TEST(XmlAddChild, TakesAllBelowAnElementWithoutAParent) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const child = new KvXmlData("a", nullptr);
  child->setAttribute("n", 1, true);
  KvXmlData* const first = addNew(child, "b");
  first->setAttribute("m", std::string("\"2\""), true);
  addNew(first, "c");
  addNew(child, "d");

  root->addChild(child);

  EXPECT_EQ(print(tree),
            declaration +
                "<r>\n  <a n=\"1\">\n    <b m=\"&quot;2&quot;\">\n      <c />\n    </b>\n"
                "    <d />\n  </a>\n</r>\n");
}

TEST(XmlAddChild, LeavesPointersBelowAnElementWithoutAParentValid) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const child = new KvXmlData("a", nullptr);
  child->setAttribute("n", 1, true);
  const KvXmlAttributeData* const n = child->findAttribute("n");
  KvXmlData* const grandchild = addNew(child, "b");
  grandchild->setAttribute("m", 2, true);
  const KvXmlAttributeData* const m = grandchild->findAttribute("m");
  grandchild->setAttribute("o", 3, true);
  const KvXmlAttributeData* const o = grandchild->findAttribute("o");
  ASSERT_EQ(o->getData(), "3");

  root->addChild(child);

  EXPECT_EQ(n->getInteger(), 1);
  EXPECT_EQ(m->getData(), "2");
  EXPECT_EQ(o->getData(), "3");
  EXPECT_EQ(grandchild->getName(), "b");
  EXPECT_EQ(child->getChildren(), std::vector<KvXmlData*>{grandchild});
  EXPECT_EQ(root->findTree("b", true), grandchild);
}

TEST(XmlAddChild, LetsPointersBelowAnElementWithoutAParentFollowLaterChanges) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const child = new KvXmlData("a", nullptr);
  child->setAttribute("n", 1, true);
  const KvXmlAttributeData* const n = child->findAttribute("n");
  ASSERT_EQ(n->getData(), "1");
  root->addChild(child);

  child->setAttribute("n", 5, true);
  child->setAttribute("m", 6, true);
  addNew(child, "b");

  EXPECT_EQ(n->getData(), "5");
  EXPECT_EQ(print(tree), declaration + "<r>\n  <a n=\"5\" m=\"6\">\n    <b />\n  </a>\n</r>\n");
}

TEST(XmlAddChild, LetsAttributesOfAnElementWithoutAParentFollowBeforeTheirTextIsAskedFor) {
  KvXmlTree tree;
  auto* const child = new KvXmlData("a", nullptr);
  child->setAttribute("n", 1, true);
  const KvXmlAttributeData* const n = child->findAttribute("n");
  tree.open("r", false)->addChild(child);

  child->setAttribute("n", 5, true);

  EXPECT_EQ(n->getInteger(), 5);
}

TEST(XmlAddChild, LetsEachAttributeOfAnElementWithoutAParentFollowLaterChanges) {
  KvXmlTree tree;
  auto* const child = new KvXmlData("a", nullptr);
  for (const char* const name : {"k", "l", "m"}) child->setAttribute(name, 0, true);
  const KvXmlAttributeData* const l = child->findAttribute("l");
  const KvXmlAttributeData* const m = child->findAttribute("m");
  tree.open("r", false)->addChild(child);

  child->setAttribute("l", 1, true);
  child->setAttribute("m", 2, true);

  EXPECT_EQ(l->getInteger(), 1);
  EXPECT_EQ(m->getInteger(), 2);
}

TEST(XmlAddChild, LeavesAttributesAloneThatWereAskedForAfterThoseBelow) {
  KvXmlTree tree;
  auto* const child = new KvXmlData("a", nullptr);
  child->setAttribute("n", 1, true);
  KvXmlData* const grandchild = addNew(child, "b");
  grandchild->setAttribute("m", 2, true);
  const KvXmlAttributeData* const m = grandchild->findAttribute("m");
  const KvXmlAttributeData* const n = child->findAttribute("n");

  tree.open("r", false)->addChild(child);

  EXPECT_EQ(n->getInteger(), 1);
  EXPECT_EQ(m->getInteger(), 2);
}

TEST(XmlAddChild, LetsEachAttributeOfAnElementWithoutAParentStayItself) {
  KvXmlTree tree;
  auto* const child = new KvXmlData("a", nullptr);
  std::vector<const KvXmlAttributeData*> attributes;
  for (const char* const name : {"k", "l", "m", "n"})
    child->setAttribute(name, static_cast<int>(name[0]), true);
  for (const char* const name : {"m", "n", "k", "l"})
    attributes.push_back(child->findAttribute(name));
  child->setAttribute("o", static_cast<int>('o'), true);
  attributes.push_back(child->findAttribute("o"));

  tree.open("r", false)->addChild(child);

  for (std::size_t i = 0; i < attributes.size(); ++i)
    EXPECT_EQ(attributes[i]->getInteger(), static_cast<int>("mnklo"[i]));
}

TEST(XmlAddChild, TakesAnElementWithoutAParentIntoAnotherOne) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const outer = new KvXmlData("a", nullptr);
  auto* const inner = new KvXmlData("b", nullptr);
  KvXmlData* const innermost = addNew(inner, "c");

  outer->addChild(inner);
  root->addChild(outer);

  EXPECT_EQ(root->findTree("c", true), innermost);
  EXPECT_EQ(print(tree),
            declaration + "<r>\n  <a>\n    <b>\n      <c />\n    </b>\n  </a>\n</r>\n");
}

TEST(XmlAddChild, TakesAnElementWithoutAParentIntoOneNotYetAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const outer = new KvXmlData("a", root);

  outer->addChild(new KvXmlData("b", nullptr));
  root->addChild(outer);

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a>\n    <b />\n  </a>\n</r>\n");
}

TEST(XmlAddChild, LetsAnElementMadeForOneWithoutAParentBeAddedAfterThatOne) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const outer = new KvXmlData("a", nullptr);
  auto* const inner = new KvXmlData("b", outer);
  root->addChild(outer);

  outer->addChild(inner);

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a>\n    <b />\n  </a>\n</r>\n");
}

TEST(XmlAddChild, LetsAnElementMadeForOneWithoutAParentEndAfterThatOneWasAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const outer = new KvXmlData("a", nullptr);
  auto inner = std::make_unique<KvXmlData>("b", outer);
  root->addChild(outer);

  inner.reset();

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a />\n</r>\n");
}

TEST(XmlAddChild, LetsAnElementMadeForOneWithoutAParentMoveTwice) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const outer = new KvXmlData("a", nullptr);
  auto* const middle = new KvXmlData("b", nullptr);
  auto* const inner = new KvXmlData("c", middle);
  inner->setAttribute("n", 1, true);
  outer->addChild(middle);
  root->addChild(outer);
  inner->setAttribute("m", 2, true);

  middle->addChild(inner);

  EXPECT_EQ(print(tree), declaration +
                             "<r>\n  <a>\n    <b>\n      <c n=\"1\" m=\"2\" />\n    </b>\n"
                             "  </a>\n</r>\n");
}

TEST(XmlAddChild, TakesAnElementWithoutAParentForWhichAnotherWasRefused) {
  KvXmlTree tree;
  auto* const child = new KvXmlData("a", nullptr);
  EXPECT_THROW(KvXmlData("no name", child), std::invalid_argument);

  tree.open("r", false)->addChild(child);

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a />\n</r>\n");
}

TEST(XmlAddChild, LeavesTheCursorAlone) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);

  addNew(root, "a");

  EXPECT_EQ(tree.getCurrent(), root);
}

TEST(XmlAddChild, RefusesNull) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);

  EXPECT_THROW(root->addChild(nullptr), std::invalid_argument);

  EXPECT_TRUE(root->getChildren().empty());
}

TEST(XmlAddChild, RefusesAnElementThatWasAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  KvXmlData* const a = addNew(root, "a");
  auto* const b = new KvXmlData("b", nullptr);
  root->addChild(b);

  EXPECT_THROW(root->addChild(a), std::invalid_argument);
  EXPECT_THROW(root->addChild(b), std::invalid_argument);
  EXPECT_THROW(a->addChild(b), std::invalid_argument);

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a />\n  <b />\n</r>\n");
}

TEST(XmlAddChild, RefusesAnElementThatWasParsedOrOpened) {
  const auto tree = parse("<r><a/></r>");
  KvXmlData* const root = tree->open("r", false);
  KvXmlData* const opened = tree->open("b", false);

  EXPECT_THROW(opened->addChild(root->findTree("a", false)), std::invalid_argument);
  EXPECT_THROW(root->addChild(opened), std::invalid_argument);

  EXPECT_EQ(print(*tree), declaration + "<r>\n  <a />\n  <b />\n</r>\n");
}

TEST(XmlAddChild, RefusesTheRoot) {
  const auto tree = parse("<r><a/></r>");
  KvXmlData* const root = tree->findRoot("r", true);

  EXPECT_THROW(root->addChild(root), std::invalid_argument);
  EXPECT_THROW(root->findTree("a", false)->addChild(root), std::invalid_argument);

  EXPECT_EQ(print(*tree), declaration + "<r>\n  <a />\n</r>\n");
}

TEST(XmlAddChild, RefusesAnElementMadeForAnotherTree) {
  KvXmlTree other;
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  const auto foreign = std::make_unique<KvXmlData>("a", other.open("o", false));

  EXPECT_THROW(root->addChild(foreign.get()), std::invalid_argument);

  EXPECT_EQ(foreign->getName(), "a");
  EXPECT_TRUE(root->getChildren().empty());
}

TEST(XmlAddChild, RefusesAnElementOfAnotherTree) {
  const auto other = parse("<o><a/></o>");
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);

  EXPECT_THROW(root->addChild(other->findRoot("o", true)), std::invalid_argument);
  EXPECT_THROW(root->addChild(other->findRoot("o", true)->findTree("a", true)),
               std::invalid_argument);

  EXPECT_EQ(print(*other), declaration + "<o>\n  <a />\n</o>\n");
}

TEST(XmlAddChild, RefusesAnElementBelowItself) {
  KvXmlTree tree;
  const auto detached = std::make_unique<KvXmlData>("a", tree.open("r", false));
  KvXmlData* const inner = addNew(addNew(detached.get(), "b"), "c");

  EXPECT_THROW(detached->addChild(detached.get()), std::invalid_argument);
  EXPECT_THROW(inner->addChild(detached.get()), std::invalid_argument);

  EXPECT_EQ(namesOf(detached->getChildren()), (Names{"b"}));
}

TEST(XmlAddChild, RefusesAnElementWithoutAParentBelowItself) {
  const auto standalone = std::make_unique<KvXmlData>("a", nullptr);
  KvXmlData* const inner = addNew(addNew(standalone.get(), "b"), "c");

  EXPECT_THROW(standalone->addChild(standalone.get()), std::invalid_argument);
  EXPECT_THROW(inner->addChild(standalone.get()), std::invalid_argument);

  EXPECT_EQ(namesOf(standalone->getChildren()), (Names{"b"}));
}

TEST(XmlAddChild, LeavesARefusedElementUsable) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto* const detached = new KvXmlData("a", root);
  EXPECT_THROW(detached->addChild(detached), std::invalid_argument);

  root->addChild(detached);

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a />\n</r>\n");
}

// --- Ending elements

TEST(XmlElementEnd, BeforeItWasAddedLeavesTheTreeAlone) {
  const auto tree = parse("<r><a/></r>");
  KvXmlData* const root = tree->findRoot("r", true);
  {
    KvXmlData detached("b", root);
    detached.setAttribute("n", 1, true);
    EXPECT_EQ(detached.findAttribute("n")->getData(), "1");
    addNew(&detached, "c");
  }

  EXPECT_EQ(namesOf(root->getChildren()), (Names{"a"}));
  EXPECT_EQ(print(*tree), declaration + "<r>\n  <a />\n</r>\n");
}

TEST(XmlElementEnd, OfOneWithoutAParentEndsAllBelow) {
  auto standalone = std::make_unique<KvXmlData>("a", nullptr);
  standalone->setAttribute("n", 1, true);
  ASSERT_EQ(standalone->findAttribute("n")->getInteger(), 1);
  addNew(addNew(standalone.get(), "b"), "c")->setAttribute("m", 2, true);

  standalone.reset();
}

TEST(XmlDataWithoutParent, IsAddedAfterAnElementMadeForItEnded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);
  auto* const standalone = new KvXmlData("a", nullptr);
  auto detached = std::make_unique<KvXmlData>("b", standalone);
  addNew(detached.get(), "c");
  detached.reset();

  root->addChild(standalone);

  EXPECT_EQ(print(tree), declaration + "<root>\n  <a />\n</root>\n");
}

TEST(XmlDataWithoutParent, IsAddedTwiceAfterAnElementMadeForItEnded) {
  KvXmlTree tree;
  auto* const first = new KvXmlData("first", nullptr);
  auto ending = std::make_unique<KvXmlData>("ending", first);
  ending->addChild(new KvXmlData("below", first));
  auto* const second = new KvXmlData("second", nullptr);
  second->addChild(first);
  ending.reset();

  tree.open("root", false)->addChild(second);

  EXPECT_EQ(print(tree), declaration + "<root>\n  <second>\n    <first />\n  </second>\n</root>\n");
}

TEST(XmlDataWithoutParent, IsNotAddedToAnElementThatWasMadeForIt) {
  const auto standalone = std::make_unique<KvXmlData>("a", nullptr);
  const auto detached = std::make_unique<KvXmlData>("b", standalone.get());

  EXPECT_THROW(detached->addChild(standalone.get()), std::invalid_argument);
}

TEST(XmlDataWithoutParent, KeepsWhatWasHandedOutWhenItIsAddedToAnotherOne) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);
  auto* const outer = new KvXmlData("a", nullptr);
  auto* const inner = new KvXmlData("b", nullptr);
  inner->setAttribute("n", 7, true);
  const KvXmlAttributeData* const attribute = inner->findAttribute("n");
  const std::string& name = inner->getName();

  outer->addChild(inner);
  root->addChild(outer);

  EXPECT_EQ(attribute->getInteger(), 7);
  EXPECT_EQ(name, "b");
  EXPECT_EQ(outer->findTree("b", false), inner);
}

TEST(XmlDataWithoutParent, MayBeAddedByTheThousand) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);

  for (int i = 0; i < 20000; ++i) root->addChild(new KvXmlData("a", nullptr));

  EXPECT_EQ(root->getChildren().size(), 20000u);
}

TEST(XmlDataWithoutParent, MayBeAddedToOneAnotherByTheThousand) {
  auto* top = new KvXmlData("a", nullptr);
  for (int i = 0; i < 1000; ++i) {
    auto* const above = new KvXmlData("a", nullptr);
    above->addChild(top);
    top = above;
  }

  EXPECT_EQ(top->getChildren().size(), 1u);
  delete top;
}

TEST(XmlElementEnd, BeforeItWasAddedLeavesRoomForAnother) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  for (int i = 0; i < 1000; ++i) {
    const KvXmlData detached("a", root);
    EXPECT_EQ(detached.getName(), "a");
  }
  addNew(root, "b");

  EXPECT_EQ(print(tree), declaration + "<r>\n  <b />\n</r>\n");
}

// --- Very deep trees

TEST(XmlDeepTree, BuiltByOpenEndsWithoutRunningOutOfStack) {
  KvXmlTree tree;
  for (int i = 0; i < manyLevels; ++i) tree.open("level", false);
  int levels = 0;
  for (; tree.getCurrent() != nullptr; tree.close()) ++levels;

  EXPECT_EQ(levels, manyLevels);
}

TEST(XmlDeepTree, IsSearchedToItsEnd) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);
  for (int i = 0; i < manyLevels; ++i) tree.open("level", false);
  KvXmlData* const last = tree.open("last", false);

  EXPECT_EQ(root->findTree("last", true), last);
  EXPECT_EQ(root->findTree("missing", true), nullptr);
}

TEST(XmlDeepTree, IsSearchedToItsEndWhereItWasParsed) {
  const auto tree =
      parse(PlatformTest::repeat("<a>", 999) + "<last/>" + PlatformTest::repeat("</a>", 999));

  KvXmlData* const last = tree->findRoot("a", true)->findTree("last", true);
  tree->setCurrent(last);
  int levels = 0;
  for (; tree->getCurrent() != nullptr; tree->close()) ++levels;

  EXPECT_EQ(levels, 1000);
}

TEST(XmlDeepTree, EndsBeforeItWasAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);
  auto detached = std::make_unique<KvXmlData>("top", root);
  addLevels(detached.get());

  detached.reset();

  EXPECT_EQ(print(tree), declaration + "<root />\n");
}

TEST(XmlDeepTree, IsAddedAsOne) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);
  auto* const top = new KvXmlData("top", root);
  KvXmlData* const last = addLevels(top);

  root->addChild(top);

  EXPECT_EQ(root->findTree("last", true), last);
}

TEST(XmlDeepTree, WithoutAParentIsAddedAsOne) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);
  auto* const top = new KvXmlData("top", nullptr);
  KvXmlData* const last = addLevels(top);

  root->addChild(top);

  EXPECT_EQ(root->findTree("last", true), last);
}

TEST(XmlDeepTree, WithoutAParentEnds) {
  auto top = std::make_unique<KvXmlData>("top", nullptr);
  const KvXmlData* const last = addLevels(top.get());
  EXPECT_EQ(last->getName(), "last");

  top.reset();
}
