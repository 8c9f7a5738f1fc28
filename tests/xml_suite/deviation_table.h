#pragma once

#include <cstddef>
#include <istream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace XmlSuite {

/// The table of the deviations that have a reason, see deviations.txt, and what occurs of them.
class DeviationTable {
 public:
  /// Throws std::runtime_error for a line that is neither comment, reason nor deviation.
  explicit DeviationTable(std::istream& in);

  /// To be told of every case and all its deviations, each by its name.
  void meet(const std::string& id, const std::set<std::string>& deviations);

  /// What differs from the table, for people: deviations that no line lists or that several do, and
  /// lines that fit no case or a case that does not deviate so.
  std::vector<std::string> listFaults() const;

  std::size_t countReasons() const { return reasons; }

 private:
  struct Line {
    std::string text;
    std::string deviation;
    std::string pattern;
    std::size_t cases = 0;
  };

  std::vector<Line> lines;
  std::size_t reasons = 0;
  std::vector<std::string> faults;
};

}  // namespace XmlSuite
