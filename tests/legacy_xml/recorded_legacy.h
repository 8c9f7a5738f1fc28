#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "legacy_files.h"
#include "recording_legacy.h"

namespace LegacyTest {

using Lines = std::vector<std::string>;

/// Starts with nothing recorded and nothing failing, and demands that nothing stays alive.
class RecordedTest : public testing::Test {
 protected:
  RecordedTest();
  ~RecordedTest() override;
};

/// A tree from lines in the form of the recording library, with the cursor on its root.
std::unique_ptr<KvXmlTree> makeTree(const Lines& lines);

/// The same lines as a file that readXml() takes for a document.
std::string makeText(const Lines& lines);

/// The recorded calls, but those that start with one of these words.
Lines listCalls(const Lines& without = {});

/// What was found when each call failed in turn.
struct FailureRun {
  Lines states;  ///< after each failure; equal neighbours once
  Lines calls;   ///< for each of the states, the first call that led to it
  std::string completed;
};

/// Makes a scene and attempts something with it while the first, the second, the third ... call
/// fails, until it comes through. `describeScene` tells what there is after an attempt. Demands
/// that a failure passes through unchanged and that the end of the scene leaves nothing alive.
template <class Scene, class Attempt, class Describe>
FailureRun failEachCall(const Attempt& attempt, const Describe& describeScene) {
  constexpr int limit = 10000;
  FailureRun run;
  for (int n = 1; n < limit; ++n) {
    bool failed = false;
    {
      Scene scene;
      Recording::clearLog();
      Recording::failAt(n);
      try {
        attempt(scene);
      } catch (const Recording::Failure& failure) {
        failed = true;
        EXPECT_EQ(failure.what(), Recording::getLog()[static_cast<std::size_t>(n - 1)]);
      }
      Recording::failAt(0);
      const Lines log = Recording::getLog();
      const std::string state = describeScene(scene);
      if (!failed) {
        run.completed = state;
      } else if (run.states.empty() || run.states.back() != state) {
        run.states.push_back(state);
        run.calls.push_back(log[static_cast<std::size_t>(n - 1)]);
      }
    }
    EXPECT_EQ(Recording::countLive(), 0) << "after call " << n << " failed";
    if (!failed) return run;
  }
  ADD_FAILURE() << "does not come through";
  return run;
}

}  // namespace LegacyTest
