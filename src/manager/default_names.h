#pragma once

#include <functional>
#include <queue>
#include <string>
#include <string_view>
#include <vector>

#include "found/foundation.h"

namespace Found {

/// The greater of `floor` and the highest number in the list.
int findHighestNumber(const std::vector<Foundation*>& list, int floor);

/// One more than `highest`, but the largest int again after the largest int.
int followNumber(int highest);

/// "Found" and the number, padded with zeros to at least four characters, also before a sign.
std::string makeDefaultName(long long number);

/// The positive number whose default name is `name`; 0 when there is none.
long long findDefaultNumber(std::string_view name);

/// Numbers and default names for many foundations that are appended to an empty list one after
/// another, while nothing else changes the list. Remembers what giveFoundation() finds by walking
/// the list each time, so that reading a document takes time in proportion to its size.
class DefaultNumbering {
 public:
  /// `growing` is empty, and gets no null.
  explicit DefaultNumbering(const std::vector<Foundation*>& growing) : list(growing) {}

  /// One above the highest positive number in the list.
  int giveNumber() const;

  /// The first default name from giveNumber() on that is free. It is to be used at once.
  std::string giveName();

  /// Records the foundation just appended, whose name and number are final.
  void recordLast();

 private:
  void recordName(const Foundation& foundation);

  const std::vector<Foundation*>& list;
  int highest = 0;
  bool namesKnown = false;  // only a list with an unnamed foundation needs them
  // No name is ever freed and numbers only rise, so candidates tried before need no second try.
  long long nextCandidate = 0;
  // The numbers of the default names in the list, lowest first. Those below the next candidate are
  // dropped.
  std::priority_queue<long long, std::vector<long long>, std::greater<>> taken;
};

}  // namespace Found
