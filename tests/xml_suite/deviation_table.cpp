#include "xml_suite/deviation_table.h"

#include <fnmatch.h>

#include <sstream>
#include <stdexcept>

namespace XmlSuite {

DeviationTable::DeviationTable(std::istream& in) {
  std::string text;
  while (std::getline(in, text)) {
    if (text.empty() || text[0] == '#') continue;
    if (text[0] == '[') {
      ++reasons;
      continue;
    }
    // One kind of deviation, then the cases that deviate so.
    std::istringstream words(text);
    Line line;
    words >> line.deviation;
    if (reasons == 0) throw std::runtime_error("no reason above: " + text);
    while (words >> line.pattern) {
      line.text = line.deviation + " " + line.pattern;
      lines.push_back(line);
    }
    if (line.pattern.empty()) throw std::runtime_error("no case: " + text);
  }
}

void DeviationTable::meet(const std::string& id, const std::set<std::string>& deviations) {
  std::map<std::string, std::size_t> listed;
  for (Line& line : lines) {
    if (fnmatch(line.pattern.c_str(), id.c_str(), 0) != 0) continue;
    ++line.cases;
    ++listed[line.deviation];
    if (deviations.count(line.deviation) == 0)
      faults.push_back(id + ": listed, but does not deviate: " + line.text);
  }
  for (const std::string& deviation : deviations)
    if (listed[deviation] != 1)
      faults.push_back(id + ": " + deviation + " is listed " + std::to_string(listed[deviation]) +
                       " times");
}

std::vector<std::string> DeviationTable::listFaults() const {
  std::vector<std::string> all = faults;
  for (const Line& line : lines)
    if (line.cases == 0) all.push_back("there is no such case: " + line.text);
  return all;
}

}  // namespace XmlSuite
