#include "faults/every_fault.h"

#include <algorithm>

namespace FaultTest {
namespace {

bool canFail(Meets meets) {
  return meets == Meets::Both ||
         meets == (getKind() == Kind::Memory ? Meets::Memory : Meets::Calls);
}

/// The states that the faults of this program may leave behind.
std::vector<std::string> listStates(const Operation& operation) {
  std::vector<std::string> texts;
  for (const State& state : operation.failed)
    if (getKind() == Kind::Call || !state.afterCallsOnly) texts.push_back(state.text);
  return texts;
}

/// Checks the states in the order in which the faults leave them: an operation only goes forward.
class Promise {
 public:
  explicit Promise(const Operation& operation) : states(listStates(operation)) {}

  void check(const std::string& found) {
    const auto from = states.begin() + static_cast<std::ptrdiff_t>(reached);
    const auto place = std::find(from, states.end(), found);
    if (place == states.end())
      ADD_FAILURE() << "not promised: " << found;
    else
      reached = static_cast<std::size_t>(place - states.begin());
  }

 private:
  std::vector<std::string> states;
  std::size_t reached = 0;
};

void runWithoutFault(const Operation& operation) {
  const Trial trial = operation.prepare();
  trial.run();
  EXPECT_EQ(trial.describe(), operation.completed);
}

/// False when the operation came through.
bool runWithFault(const Operation& operation, int n, Promise& promise) {
  const Trial trial = operation.prepare();
  const std::string before = trial.describe();
  const bool failed = fails(n, trial.run);
  const std::string after = trial.describe();
  if (!failed) {
    EXPECT_EQ(after, operation.completed);
    return false;
  }
  promise.check(after);
  if (after != before) return true;
  trial.run();
  EXPECT_EQ(trial.describe(), operation.completed) << "when it is tried again";
  return true;
}

}  // namespace

States growLine(const std::string& head, const std::vector<std::string>& parts,
                const std::string& tail) {
  States states;
  std::string line;
  for (const std::string& part : parts) states.emplace_back(head + (line += part) + "|" + tail);
  return states;
}

States growLines(const std::string& head, const std::vector<std::vector<std::string>>& lines) {
  States states = {head};
  for (const std::vector<std::string>& parts : lines)
    for (const State& state : growLine(states.back().text, parts)) states.push_back(state);
  return states;
}

TEST_P(EveryFault, LeavesWhatIsPromised) {
  const Operation& operation = GetParam();
  runWithoutFault(operation);  // what is made once for all is made here

  Promise promise(operation);
  constexpr int limit = 100000;
  int n = 1;
  for (bool failed = true; failed && n < limit; ++n) {
    SCOPED_TRACE("fault " + std::to_string(n));
    const long blocksBefore = countBlocks();
    failed = runWithFault(operation, n, promise);
    if (HasFailure()) return;
    EXPECT_EQ(countBlocks(), blocksBefore);
  }
  EXPECT_LT(n, limit) << "does not come through";
  EXPECT_EQ(n > 2, canFail(operation.meets)) << n - 2 << " faults";
}

}  // namespace FaultTest
