#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "checks/findings.h"
#include "documents/document.h"

/// What programs read of checks and comparisons. Values come in and text goes out; names in the
/// text never change, since scripts rely on them.
namespace Results {

/// A finding, or an error, which has no rule. Where the line is 0 it is about the whole document,
/// and where the column is 0, about the whole line.
struct Result {
  const Checks::Rule* rule = nullptr;
  KvXmlPosition position;
  std::size_t editorColumn = 0;  // in UTF-16 code units
  std::string foundation;        // as messages call it; empty when it is about none
  std::string sentence;
};

/// A document that was checked, and may be gone.
struct CheckedFile {
  std::string path;       // empty for standard input
  std::string shownPath;  // as messages call the file
  std::vector<Result> results;

  bool isRead() const;
};

CheckedFile makeCheckedFile(const std::string& path, const Documents::Document& document,
                            const Checks::Findings& findings);

/// Of a document that cannot be read. `bytes` are those that it holds, as far as they are known.
CheckedFile makeUnreadFile(const std::string& path, const std::string& shownPath,
                           const std::string& bytes, KvXmlPosition position,
                           const std::string& sentence);

}  // namespace Results
