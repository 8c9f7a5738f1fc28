#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <utility>

#include "bindings.h"
#include "errors.h"
#include "models/rendering.h"
#include "source.h"
#include "threads.h"

/// What the files that bind models share.
namespace Python {

namespace py = pybind11;

using Models::Rendering;
using Models::renderWhole;
using Models::Target;

/// Another program has changed a file that would be replaced.
class ChangedMeanwhile : public UserError {
 public:
  using UserError::UserError;
};

/// A merging that would put foundations in the place of others, a line each.
class ClashFound : public UserError {
 public:
  ClashFound(const std::string& sentence, std::vector<std::string> clashing)
      : UserError(sentence), clashes(std::move(clashing)) {}

  const std::vector<std::string>& getClashes() const { return clashes; }

 private:
  std::vector<std::string> clashes;
};

/// Does work that sees no object of Python without the interpreter lock.
template <class Work>
auto runUnlocked(const Work& work) {
  const Unlocked unlocked;
  return work();
}

/// The lines as a tuple of str.
py::tuple toTuple(const std::vector<std::string>& lines);

/// The parts of a path as Python encodes it. Throws ValueError where a zero byte is in it.
std::string toPath(const py::bytes& encoded);

/// From the names of forms, "legacy", "exchange" and so on. Throws ValueError.
Documents::Form toForm(const std::string& name);
const char* getName(Documents::Form form);

/// From a tuple of two texts; empty ones for None.
Units toUnits(const py::object& given);

/// A model as its foundations are at this moment.
std::unique_ptr<Snapshot> takeSnapshot(const ModelState& state, py::handle manager);

void bindSaving(py::module_& module);
void bindChecking(py::module_& module);
void bindComparing(py::module_& module);
void bindChanging(py::module_& module);
void bindReporting(py::module_& module);

}  // namespace Python
