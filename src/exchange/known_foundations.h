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
/// The answers are always those of a walk through the list. Where there are many to give, tables
/// give them faster. Nobody but the reader can touch the list or its foundations, except from
/// inside a message; after one, the whole list is compared with what the tables were made of, and
/// they are made anew when it differs.
class KnownFoundations {
 public:
  /// How many foundations may be appended, and whether there will be messages.
  KnownFoundations(const std::vector<Foundation*>& growing, std::size_t more, bool hasMessages)
      : list(growing), expectedSize(growing.size() + more), isWatched(hasMessages) {}

  bool hasName(const std::string& name);
  bool hasNumber(int number);

  /// `wanted`, which the list has, "_" and the first counter from 1 on that makes a name it does
  /// not have.
  std::string makeFreeName(const std::string& wanted);

  /// Records the foundation just appended, also after listMayHaveChanged(): only what was recorded
  /// can be seen to have changed or gone later.
  void recordLast();

  /// To be called when others may have changed the list or its foundations.
  void listMayHaveChanged() { tablesMatchList = false; }

 private:
  /// A foundation as it was when it was noted.
  struct Entry {
    const Foundation* foundation;
    int number;
    std::string name;
  };

  struct Tables {
    explicit Tables(std::size_t expected) : names(expected), numbers(expected) {}

    // The start of the list, where there are messages. They stay in place: the names are theirs.
    std::deque<Entry> entries;
    std::size_t entered = 0;  // how many of the list are in the tables below
    // With the last counter given to a name that was wanted before. Names are only added as long as
    // the tables hold, so the counters up to it need no second try.
    KeyTable<std::string_view, int> names;
    KeyTable<int, std::monostate> numbers;
  };

  /// True when the tables can be asked, after making them or comparing them with the list as need
  /// be.
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
