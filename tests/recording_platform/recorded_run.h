#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "recording.h"

/// What test programs over the recording companion libraries have in common.
namespace Recording {

using Lines = std::vector<std::string>;

/// Starts with nothing recorded and nothing failing, and demands that nothing stays alive.
class RecordedTest : public testing::Test {
 protected:
  RecordedTest() {
    clearLog();
    failAt(0);
  }
  ~RecordedTest() override { EXPECT_EQ(countLive(), 0); }
};

/// The first word of a recorded call: the operation.
inline std::string getOperation(const std::string& line) { return line.substr(0, line.find(' ')); }

/// The recorded calls of these operations only.
inline Lines listCallsOf(const Lines& operations) {
  Lines calls;
  for (const std::string& line : getLog())
    if (std::count(operations.begin(), operations.end(), getOperation(line)) > 0)
      calls.push_back(line);
  return calls;
}

/// The recorded calls but those of these operations.
inline Lines listCallsWithout(const Lines& operations) {
  Lines calls;
  for (const std::string& line : getLog())
    if (std::count(operations.begin(), operations.end(), getOperation(line)) == 0)
      calls.push_back(line);
  return calls;
}

/// What was found when each call failed in turn.
struct FailureRun {
  Lines states;  ///< after each failure; equal neighbours once
  Lines calls;   ///< for each of the states, the first failing call that led to it
  std::string completed;
};

/// Makes a scene and attempts something with it while the first, the second, the third ... call
/// fails, until it comes through. `describeScene` tells what there is after an attempt. Demands
/// that a failure passes through unchanged, that only destructors follow it, and that the end of
/// the scene leaves nothing of it alive.
template <class Scene, class Attempt, class Describe>
FailureRun failEachCall(const Attempt& attempt, const Describe& describeScene) {
  constexpr int limit = 10000;
  const int liveBefore = countLive();
  const auto isDestructor = [](const std::string& line) { return line[0] == '~'; };
  FailureRun run;
  for (int n = 1; n < limit; ++n) {
    std::string failedCall;
    {
      Scene scene;
      clearLog();
      failAt(n);
      try {
        attempt(scene);
      } catch (const Failure& failure) {
        failedCall = failure.what();
        const auto place = getLog().begin() + (n - 1);
        EXPECT_EQ(failedCall, *place);
        EXPECT_TRUE(std::all_of(place + 1, getLog().end(), isDestructor)) << failedCall;
      }
      failAt(0);
      const std::string state = describeScene(scene);
      if (failedCall.empty()) {
        run.completed = state;
      } else if (run.states.empty() || run.states.back() != state) {
        run.states.push_back(state);
        run.calls.push_back(failedCall);
      }
    }
    EXPECT_EQ(countLive(), liveBefore) << "after call " << n << " failed";
    if (failedCall.empty()) return run;
  }
  ADD_FAILURE() << "does not come through";
  return run;
}

}  // namespace Recording
