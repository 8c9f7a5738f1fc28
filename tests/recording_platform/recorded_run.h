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

/// What there was after an attempt, and the first failing call that led to it.
struct FailureState {
  std::string state;
  std::string call;
};

/// What was found when each call failed in turn: equal neighbours once.
struct FailureStates {
  std::vector<FailureState> failed;
  std::string completed;

  Lines listStates() const {
    Lines states;
    for (const FailureState& entry : failed) states.push_back(entry.state);
    return states;
  }
};

/// Makes a scene and attempts something with it while the first, the second, the third ... call
/// fails, until it comes through. `describeScene` tells what there is after an attempt. Demands
/// that a failure passes through unchanged and that the end of the scene leaves nothing of it
/// alive.
template <class Scene, class Attempt, class DescribeScene>
FailureStates attemptWithEachCallFailing(const Attempt& attempt,
                                         const DescribeScene& describeScene) {
  constexpr int limit = 10000;
  const int liveBefore = countLive();
  FailureStates result;
  for (int n = 1; n < limit; ++n) {
    bool hasFailed = false;
    {
      Scene scene;
      clearLog();
      failAt(n);
      try {
        attempt(scene);
      } catch (const Failure& failure) {
        hasFailed = true;
        EXPECT_EQ(failure.what(), getLog().back());
      }
      failAt(0);
      const std::string call = getLog().empty() ? std::string() : getLog().back();
      const std::string state = describeScene(scene);
      if (!hasFailed)
        result.completed = state;
      else if (result.failed.empty() || result.failed.back().state != state)
        result.failed.push_back({state, call});
    }
    EXPECT_EQ(countLive(), liveBefore) << "after call " << n << " failed";
    if (!hasFailed) return result;
  }
  ADD_FAILURE() << "does not come through";
  return result;
}

}  // namespace Recording
