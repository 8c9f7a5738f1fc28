#pragma once

#include <memory>
#include <string>

#include "legacy_files.h"
#include "recorded_run.h"
#include "recording_legacy.h"

namespace LegacyTest {

using Recording::failEachCall;
using Recording::FailureRun;
using Recording::Lines;
using Recording::listCallsWithout;
using Recording::RecordedTest;

/// A tree from lines in the form of the recording library, with the cursor on its root.
std::unique_ptr<KvXmlTree> makeTree(const Lines& lines);

/// The same lines as a file that readXml() takes for a document.
std::string makeText(const Lines& lines);

}  // namespace LegacyTest
