#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "found/foundation.h"
#include "manager/key_table.h"

namespace Found::Umo {

/// Answers which names and numbers a growing list of foundations has, for the length of one
/// reading.
///
/// Every answer is that of a walk through the list; tables make many answers faster. Only the
/// reader touches the list and its foundations, except from inside a message. After a message, the
/// whole list is compared with what the tables were made of, and when it differs they are made
/// anew.
class KnownFoundations {
 public:
  /// How many foundations may be appended, and whether there will be messages.
  KnownFoundations(const std::vector<Foundation*>& growing, std::size_t more, bool hasMessages)
      : list(growing), expectedSize(growing.size() + more), isWatched(hasMessages) {}

  bool hasName(const std::string& name);
  bool hasNumber(int number);

  /// A name that the list does not have: `wanted`, which it has, then "_" and the lowest counter
  /// from 1 on that is free.
  std::string makeFreeName(const std::string& wanted);

  /// Records the foundation just appended. To be called after listMayHaveChanged() too: what is
  /// not recorded can change or go unnoticed.
  void recordLast();

  /// To be called when others may have changed the list or its foundations.
  void listMayHaveChanged() { tablesMatchList = false; }

 private:
  /// A foundation as it was when it was recorded.
  struct Entry {
    const Foundation* foundation;
    int number;
    std::string name;
  };

  struct Tables {
    explicit Tables(std::size_t expected) : names(expected), numbers(expected) {}

    // The start of the list, kept when there are messages. A deque, since entries must stay in
    // place: the tables refer to their names.
    std::deque<Entry> entries;
    std::size_t entered = 0;  // how many foundations of the list are in the tables below
    // Each name with the last counter that was given to it. While the tables match the list, names
    // are only added, so the counters up to that one need no second try.
    KeyTable<std::string_view, int> names;
    KeyTable<int, std::monostate> numbers;
  };

  /// Makes the tables or compares them with the list, as needed. True when they can be asked.
  bool useTables();
  bool areEntriesValid() const;
  void addEntry(const Foundation* foundation);
  void enterNext();

  const std::vector<Foundation*>& list;
  std::size_t expectedSize;
  bool isWatched;
  int walks = 0;
  std::optional<Tables> tables;
  bool tablesMatchList = false;
};

}  // namespace Found::Umo
