#pragma once

#include <istream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "found/foundation_user.h"

/// Uses the foundations whose number or name is in a list. A name may be listed as a document has
/// it or as it is shown.
class KeepList : public Found::FoundationUser {
 public:
  /// One number or name a line, in UTF-8 or an 8-bit code page. A number may have blanks around it
  /// and zeros before it.
  explicit KeepList(std::istream& in);

  bool usesFoundation(const Found::Foundation* foundation) override;

  /// True when a line matched some foundation that was asked about.
  bool hasMatched() const { return !matched.empty(); }
  /// The lines that matched none.
  std::vector<std::string> listUnmatched() const;

 private:
  void add(const std::string& line);

  std::set<std::string> lines;
  std::multimap<int, std::string> numbers;  // with the lines that hold them
  std::set<std::string> matched;
};
