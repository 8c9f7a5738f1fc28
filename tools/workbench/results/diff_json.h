#pragma once

#include <string>

#include "comparing/differences.h"

namespace Results {

/// How two documents differ, in JSON. `isComplete` is false when not all of them could be read.
std::string makeDiffJson(Documents::Document& first, Documents::Document& second,
                         const Comparing::Differences& differences, bool isComplete);

}  // namespace Results
