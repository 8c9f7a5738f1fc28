#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "xml_suite/deviation_table.h"
#include "xml_suite/judgement.h"
#include "xml_suite/sequences.h"
#include "xml_suite/suite.h"

namespace {

using XmlSuite::Case;
using XmlSuite::Expectation;
using XmlSuite::Judgement;

std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error(path.string() + " cannot be read");
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// The deviations from libxml2 and from the suite by name. What is accepted on purpose is named
/// after what lets it pass.
std::set<std::string> nameDeviations(const Judgement& judgement, Expectation expectation) {
  std::set<std::string> names;
  for (const XmlSuite::Deviation deviation : judgement.deviations)
    names.insert(XmlSuite::nameOf(deviation));
  if (judgement.isAccepted && expectation == Expectation::refused) {
    if (judgement.leniencies.empty()) names.insert("accepted");
    names.insert(judgement.leniencies.begin(), judgement.leniencies.end());
  }
  if (!judgement.isAccepted && expectation == Expectation::accepted) names.insert("refused");
  return names;
}

int tell(const std::vector<std::string>& faults) {
  for (const std::string& fault : faults) std::cerr << fault << '\n';
  return faults.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

int judgeCases(const std::string& folder, const std::string& tableFile) {
  std::ifstream tableText(tableFile);
  XmlSuite::DeviationTable table(tableText);
  std::size_t deviating = 0;
  const std::vector<Case> cases = XmlSuite::readCases(folder);
  for (const Case& one : cases) {
    const std::set<std::string> names =
        nameDeviations(XmlSuite::judge(readFile(one.file)), one.expectation);
    if (!names.empty()) ++deviating;
    table.meet(one.id, names);
  }
  const std::vector<std::string> faults = table.listFaults();
  std::cout << cases.size() << " cases, " << deviating << " of them deviate for "
            << table.countReasons() << " reasons, " << faults.size() << " differ from the table\n";
  return cases.empty() ? EXIT_FAILURE : tell(faults);
}

int judgeSequences(const std::string& length) {
  const XmlSuite::SequencesResult result = XmlSuite::judgeSequences(std::stoul(length));
  std::cout << result.texts << " document types, " << result.accepted << " accepted, "
            << result.faults.size() << " deviate\n";
  return result.accepted == 0 ? EXIT_FAILURE : tell(result.faults);
}

/// For people: what the judge says of one file.
int judgeFile(const std::string& file) {
  const Judgement judgement = XmlSuite::judge(readFile(file));
  std::cout << (judgement.isAccepted ? "accepted" : "refused");
  for (const std::string& leniency : judgement.leniencies) std::cout << ", " << leniency;
  std::cout << '\n' << judgement.details;
  if (judgement.deviations.empty()) return EXIT_SUCCESS;
  return tell({XmlSuite::list(judgement.deviations)});
}

int run(const std::vector<std::string>& words) {
  if (words.size() == 3 && words[0] == "cases") return judgeCases(words[1], words[2]);
  if (words.size() == 2 && words[0] == "sequences") return judgeSequences(words[1]);
  if (words.size() == 2 && words[0] == "file") return judgeFile(words[1]);
  std::cerr << "xml_judge cases PACKAGE TABLE | sequences LENGTH | file DOCUMENT\n";
  return EXIT_FAILURE;
}

}  // namespace

/// Judges the cases of the conformance suite, all short document types, or one document.
int main(int count, char** words) {
  try {
    return run({words + 1, words + count});
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
