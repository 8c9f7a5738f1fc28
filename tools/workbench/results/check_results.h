#pragma once

#include <string>
#include <vector>

#include "results/checked_file.h"

namespace Results {

/// The findings and errors of documents in JSON.
std::string makeCheckJson(const std::vector<CheckedFile>& files);

/// The same as a log in SARIF 2.1.0, which editors and forges show beside the documents.
std::string makeSarif(const std::vector<CheckedFile>& files);

}  // namespace Results
