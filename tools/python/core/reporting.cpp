#include <cerrno>
#include <ios>
#include <memory>
#include <string>

#include "files/output_file.h"
#include "files/user_error.h"
#include "model.h"
#include "report/frame.h"
#include "report/page.h"
#include "report/subject.h"
#include "selecting.h"
#include "text.h"

namespace Python {
namespace {

std::string makePage(Snapshot& snapshot, const Selection& selection, const Units& units) {
  Rendering rendering(snapshot, {snapshot.source->form, {}});
  rendering.requireAll();
  Documents::Document& document = rendering.getDocument();
  document.requireReadable();
  const Report::Labels labels = Report::chooseLabels(document, units);
  const Report::Subject subject(document, selection);
  return Report::makePage(subject.tell(labels, Report::findDate(document)));
}

/// The page as a text in UTF-8.
py::str report(const ModelState& state, py::handle manager, const py::object& units,
               const py::object& numbers, const py::object& name, bool generated,
               const py::object& part) {
  const Units labels = toUnits(units);
  const Selection selection = toSelection(numbers, name, generated, part);
  const std::unique_ptr<Snapshot> snapshot = takeSnapshot(state, manager);
  return decode(runUnlocked([&] { return makePage(*snapshot, selection, labels); }));
}

void requireReplaceable(const OutputFile& file) {
  try {
    Report::requireReplaceable(file);
  } catch (const std::ios_base::failure&) {
    // Some files of the system can be opened, but not read.
    throw FileError(file.getShownPath(), "cannot be read", EIO);
  }
}

/// Writes a page where nothing but an older page is.
void writePage(const py::bytes& path, const std::string& page) {
  const std::string where = toPath(path);
  runUnlocked([&] {
    OutputFile file(where);
    requireReplaceable(file);
    file.create();
    file.write(page);
    file.commit();
  });
}

}  // namespace

void bindReporting(py::module_& module) {
  module.def("report", &report, py::arg("state"), py::arg("manager"), py::arg("units"),
             py::arg("numbers"), py::arg("name"), py::arg("generated"), py::arg("part"));
  module.def("write_page", &writePage, py::arg("path"), py::arg("page"));
}

}  // namespace Python
