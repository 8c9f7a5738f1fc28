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

/// The number behind `highest`. Behind the largest int there is none; it is then given again.
int followNumber(int highest);

/// "Found" and the number in at least four places, filled up with 0 on the left, before a sign too.
std::string makeDefaultName(long long number);

/// The number of which `name` is the default name; 0 when it is that of no positive number.
long long findDefaultNumber(std::string_view name);

/// Numbers and default names for many foundations that are appended to an empty list one after
/// another, while nothing else changes the list: what giveFoundation() finds by walking the list
/// each time, this remembers, so that reading a document takes a time in proportion to its size.
class DefaultNumbering {
 public:
  /// `growing` is empty, and gets no null.
  explicit DefaultNumbering(const std::vector<Foundation*>& growing) : list(growing) {}

  /// One above the highest positive number in the list.
  int giveNumber() const;

  /// The first default name from giveNumber() on that is free. It is to be used at once.
  std::string giveName();

  /// Takes note of the foundation just appended, whose name and number are final.
  void recordLast();

 private:
  void recordName(const Foundation& foundation);

  const std::vector<Foundation*>& list;
  int highest = 0;
  bool namesKnown = false;  // only a list with an unnamed foundation needs them
  // No name is ever freed and numbers only rise, so candidates tried before need no second try.
  long long nextCandidate = 0;
  // The numbers of the default names in the list, lowest first. Those below the next candidate go.
  std::priority_queue<long long, std::vector<long long>, std::greater<>> taken;
};

}  // namespace Found
