#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace XmlSuite {

struct SequencesResult {
  std::size_t texts = 0;
  std::size_t accepted = 0;
  std::vector<std::string> faults;  ///< the first ones, each a text and how it deviates
};

/// Judges documents with every sequence of up to `length` marks in their document type: brackets,
/// quotes, the ends of comments, instructions and declarations, keywords, names and references.
SequencesResult judgeSequences(std::size_t length);

}  // namespace XmlSuite
