#include "foundations/matching.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;
using Matching::Key;

/// Foundations of these numbers and names.
class List {
 public:
  List(std::initializer_list<std::pair<int, const char*>> rows) {
    for (const auto& [number, name] : rows) {
      auto& foundation = owned.emplace_back(std::make_unique<Foundation>());
      foundation->setNumber(number);
      foundation->setName(name);
    }
  }

  std::vector<Foundation*> get() const {
    std::vector<Foundation*> foundations;
    for (const auto& foundation : owned) foundations.push_back(foundation.get());
    return foundations;
  }

 private:
  std::vector<std::unique_ptr<Foundation>> owned;
};

/// Places in the two lists, counted from 1; 0 where one has no counterpart.
using Places = std::vector<std::pair<int, int>>;

Places match(const List& first, const List& second, const std::vector<Key>& keys) {
  const std::vector<Foundation*> a = first.get();
  const std::vector<Foundation*> b = second.get();
  const auto locate = [](const std::vector<Foundation*>& list, const Foundation* foundation) {
    for (std::size_t i = 0; i < list.size(); ++i)
      if (list[i] == foundation) return static_cast<int>(i + 1);
    return 0;
  };
  Places places;
  for (const Matching::Pair& pair : Matching::match(a, b, keys))
    places.emplace_back(locate(a, pair.first), locate(b, pair.second));
  return places;
}

TEST(Matching, PairsNumberAndNameFirst) {
  EXPECT_EQ(match({{1, "A"}, {2, "B"}}, {{1, "B"}, {2, "B"}, {1, "A"}}, {Key::number, Key::name}),
            (Places{{1, 3}, {2, 2}, {0, 1}}));
}

TEST(Matching, GoesThroughTheKeysInTheirOrder) {
  const List first = {{1, "A"}, {2, "B"}};
  const List second = {{2, "A"}};

  EXPECT_EQ(match(first, second, {Key::number, Key::name}), (Places{{1, 0}, {2, 1}}));
  EXPECT_EQ(match(first, second, {Key::name, Key::number}), (Places{{1, 1}, {2, 0}}));
  EXPECT_EQ(match(first, second, {}), (Places{{1, 0}, {2, 0}, {0, 1}}));
}

TEST(Matching, PairsTheSameKeysInOrder) {
  EXPECT_EQ(match({{1, "A"}, {1, "A"}}, {{1, "A"}, {1, "A"}, {1, "A"}}, {}),
            (Places{{1, 1}, {2, 2}, {0, 3}}));
}

TEST(Matching, ByPlacePairsWhateverIsLeft) {
  EXPECT_EQ(match({{1, "A"}, {2, "B"}}, {{3, "C"}, {1, "A"}, {4, "D"}}, {Key::place}),
            (Places{{1, 2}, {2, 1}, {0, 3}}));
}

TEST(Matching, PairsWhatIsLeftInOrderWhenAsked) {
  const List first = {{1, "A"}, {2, "B"}, {3, "C"}};
  const List second = {{7, "X"}, {2, "B"}, {8, "Y"}, {9, "Z"}};

  EXPECT_EQ(match(first, second, {Key::place}), (Places{{1, 1}, {2, 2}, {3, 3}, {0, 4}}));
}

TEST(Matching, LeavesThoseOfAKeyThatNoneIsLeftFor) {
  const List first = {{1, "A"}, {1, "A"}};
  const List second = {{1, "A"}};

  EXPECT_EQ(match(first, second, {Key::number}), (Places{{1, 1}, {2, 0}}));
}

}  // namespace
