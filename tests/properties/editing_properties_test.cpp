#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <string>

#include "workbench/documents/random_edit.h"

namespace {

using Documents::Document;
using Editing::Draft;

std::size_t choose(std::size_t count) { return *rc::gen::inRange<std::size_t>(0, count); }

std::unique_ptr<Document> open(const std::string& bytes) {
  return std::make_unique<Document>(Files::Content{"file", "", bytes});
}

RC_GTEST_PROP(EditingProperty, ReadsBackWhatWasWantedAndLeavesAllElse, ()) {
  const auto base = open(RandomEdit::makeDocument(false, choose));
  RC_LOG() << base->getContent().bytes << "\n";
  Draft draft(*base);
  RandomEdit::changeAll(draft, base->getForm(), choose);
  const Editing::Wish wish = draft.makeWish();

  const auto result = Editing::edit(*base, wish);

  if (result == nullptr) {
    RC_ASSERT(RandomEdit::findDifference(wish, *base) == "");
    return;
  }
  RC_LOG() << result->getContent().bytes << "\n";
  RC_ASSERT(RandomEdit::findDifference(wish, *result) == "");
  RC_ASSERT(RandomEdit::strip(*result) == RandomEdit::strip(*base));
}

RC_GTEST_PROP(EditingProperty, WritesNothingWithoutChanges, ()) {
  const auto base = open(RandomEdit::makeDocument(false, choose));
  const Draft draft(*base);

  RC_ASSERT(Editing::edit(*base, draft.makeWish()) == nullptr);
}

RC_GTEST_PROP(EditingProperty, IsUndoneByteForByteWhereValuesAreSpelledAsItSpellsThem, ()) {
  const auto base = open(RandomEdit::makeDocument(true, choose));
  RC_LOG() << base->getContent().bytes << "\n";
  Draft draft(*base);
  RandomEdit::changeValues(draft, base->getForm(), choose);
  const auto result = Editing::edit(*base, draft.makeWish());
  if (result == nullptr) return;
  RC_LOG() << result->getContent().bytes << "\n";

  Editing::Wish wish;
  const auto& before = base->getFoundations().getFoundations();
  const auto& after = result->getFoundations().getFoundations();
  RC_ASSERT(before.size() == after.size());
  for (std::size_t i = 0; i < before.size(); ++i) wish.pairs.push_back({after[i], before[i]});
  wish.current = base->getFoundations().getCurrentFoundation();
  const auto undone = Editing::edit(*result, wish);

  RC_ASSERT(undone != nullptr);
  RC_ASSERT(undone->getContent().bytes == base->getContent().bytes);
}

}  // namespace
