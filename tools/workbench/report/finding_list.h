#pragma once

#include <string>
#include <vector>

#include "checks/findings.h"
#include "report/content.h"

namespace Report {

/// The findings that concern the document as a whole or a foundation that is shown.
std::vector<Checks::Finding> listFindings(const Content& content);

/// Adds the section that tells of them, with links to the rows of their foundations. Many are
/// folded, and of very many the later ones are only counted.
void appendFindings(const Content& content, const std::vector<Checks::Finding>& findings,
                    std::string& page);

}  // namespace Report
