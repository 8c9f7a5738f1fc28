#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace XmlSuite {

enum class Expectation { accepted, refused, either };

struct Case {
  std::string id;
  std::filesystem::path file;
  Expectation expectation;
};

/// The cases of the suite that lies in `folder`, the npm package of that name. Throws
/// std::runtime_error when it is not there.
std::vector<Case> readCases(const std::filesystem::path& folder);

}  // namespace XmlSuite
