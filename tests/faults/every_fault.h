#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "faults/faults.h"

namespace FaultTest {

/// The faults that an operation can meet.
enum class Meets { Nothing, Memory, Calls, Both };

/// A state that a fault may leave behind.
struct State {
  State(const char* description) : text(description) {}
  State(std::string description) : text(std::move(description)) {}

  std::string text;
  bool afterCallsOnly = false;
};

using States = std::vector<State>;

/// A state that a call may leave behind but not a lack of memory.
inline State afterCalls(const std::string& text) {
  State state(text);
  state.afterCallsOnly = true;
  return state;
}

/// What becomes of a text when a line is added to it part by part. Lines end in "|"; `tail`
/// follows.
States growLine(const std::string& head, const std::vector<std::string>& parts,
                const std::string& tail = "");

/// The same for several lines; the first state is `head`.
States growLines(const std::string& head, const std::vector<std::vector<std::string>>& lines);

/// One try, with all that it needs.
struct Trial {
  std::function<void()> run;
  std::function<std::string()> describe;
};

/// An operation of the library, as a row of a table.
struct Operation {
  std::string name;
  Meets meets;
  std::function<Trial()> prepare;
  /// What the faults may leave behind, in the order of the faults.
  States failed;
  std::string completed;
};

/// A row for which each try is made in a new `Scene`, which has a member describe().
template <class Scene>
Operation makeOperation(const std::string& name, Meets meets, std::function<void(Scene&)> prepare,
                        std::function<void(Scene&)> run, States failed, std::string completed) {
  const auto makeTrial = [prepare = std::move(prepare), run = std::move(run)] {
    const auto scene = std::make_shared<Scene>();
    if (prepare) prepare(*scene);
    return Trial{[scene, run] { run(*scene); }, [scene] { return scene->describe(); }};
  };
  return {name, meets, makeTrial, std::move(failed), std::move(completed)};
}

using Operations = std::vector<Operation>;

/// A table of operations, each of which is tried with its first, second, third ... fault, until it
/// comes through. Demands that the state left behind is one that is promised, that an operation
/// which left everything as it was comes through when it is tried again, and that nothing leaks.
class EveryFault : public testing::TestWithParam<Operation> {};

inline void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

inline std::string getName(const testing::TestParamInfo<Operation>& row) { return row.param.name; }

}  // namespace FaultTest
