#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "found/foundation.h"

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
  explicit KnownFoundations(const std::vector<Foundation*>& growing) : list(growing) {}

  bool hasName(const std::string& name);
  bool hasNumber(int number);

  /// `wanted`, "_" and the first counter from 1 on that makes a name the list does not have.
  std::string makeFreeName(const std::string& wanted);

  /// Takes note of the foundation just appended. Even in doubt: only what was noted can be seen to
  /// have changed or gone later.
  void noteLast();

  /// To be called when others may have changed the list or its foundations.
  void doubt() { isTrusted = false; }

 private:
  struct Entry {
    const Foundation* foundation;
    int number;
    std::string name;
  };

  /// True when the tables can be asked, after making them or comparing them with the list as need
  /// be.
  bool useTables();
  bool areEntriesValid() const;
  void note(const Foundation* foundation);

  const std::vector<Foundation*>& list;
  int walks = 0;
  bool isMade = false;         // there are tables, of `entries`
  bool isTrusted = false;      // and they are those of the list
  std::vector<Entry> entries;  // the start of the list, as the tables know it
  std::unordered_set<std::string> names;
  std::unordered_set<int> numbers;
  // The last counter given to a name that was wanted before. Names are only added as long as the
  // tables hold, so the counters up to it need no second try.
  std::unordered_map<std::string, int> counters;
};

}  // namespace Found::Umo
