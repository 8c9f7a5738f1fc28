#include "results/checked_file.h"

#include <algorithm>

#include "documents/markup.h"
#include "foundations/fields.h"
#include "results/columns.h"

namespace Results {
namespace {

std::string showPath(const std::string& path) { return path == "-" ? "" : path; }

}  // namespace

bool CheckedFile::isRead() const {
  return std::all_of(results.begin(), results.end(),
                     [](const Result& result) { return result.rule != nullptr; });
}

CheckedFile makeCheckedFile(const std::string& path, const Documents::Document& document,
                            const Checks::Findings& findings) {
  CheckedFile file{showPath(path), document.getShownPath(), {}};
  Columns columns(document.getContent().bytes, document.getCharset());
  for (const Checks::Finding& finding : findings.list()) {
    const std::string foundation =
        finding.foundation != nullptr ? Fields::describe(*finding.foundation) : "";
    file.results.push_back({finding.rule, finding.position, columns.count(finding.position),
                            foundation, finding.sentence});
  }
  return file;
}

CheckedFile makeUnreadFile(const std::string& path, const std::string& shownPath,
                           const std::string& bytes, KvXmlPosition position,
                           const std::string& sentence) {
  std::size_t column = 0;
  if (position.column > 0) {
    const Charset charset = Charset::recognise(Markup::readEncoding(bytes), bytes);
    column = Columns(bytes, charset).count(position);
  }
  return {showPath(path), shownPath, {{nullptr, position, column, "", sentence}}};
}

}  // namespace Results
