#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "comparing/differences.h"
#include "comparing/units.h"
#include "foundations/copying.h"
#include "foundations/fields.h"
#include "model.h"
#include "report/changes.h"
#include "report/subject.h"
#include "report/text.h"
#include "results/diff_json.h"
#include "text.h"

namespace Python {
namespace {

using Found::Foundation;

/// Two models that were compared, as they were then.
struct Comparison {
  std::unique_ptr<Snapshot> snapshots[2];
  std::unique_ptr<Rendering> renderings[2];
  std::vector<Matching::Key> keys;
  double relative = 0.0;
  Comparing::Differences differences;
  std::string unitNote;  // empty where there is nothing to tell
  bool isComplete = true;

  Documents::Document& getDocument(int side) { return renderings[side]->getDocument(); }
};

void compare(Comparison& comparison) {
  for (int side : {0, 1}) comparison.renderings[side] = renderWhole(*comparison.snapshots[side]);
  Documents::Document& first = comparison.getDocument(0);
  Documents::Document& second = comparison.getDocument(1);
  if (const auto note = Comparing::compareUnits(second, first))
    comparison.unitNote = note->about.getShownPath() + ": " + note->sentence;
  comparison.differences =
      Comparing::compare(first, second, {comparison.keys, comparison.relative});
}

std::vector<Matching::Key> toKeys(const py::object& by) {
  using Matching::Key;
  if (by.is_none()) return {Key::name, Key::number};
  const std::string key = encode(by, "by");
  if (key == "number") return {Key::number};
  if (key == "name") return {Key::name};
  throwValueError("by: only number or name");
}

py::object fromValue(const Fields::Value& value) {
  struct Visitor {
    py::object operator()(std::monostate /*nothing*/) const { return py::none(); }
    py::object operator()(bool flag) const { return py::bool_(flag); }
    py::object operator()(int number) const { return py::int_(number); }
    py::object operator()(double number) const { return py::float_(number); }
    py::object operator()(const std::string& text) const { return decode(text); }
  };
  return std::visit(Visitor(), value);
}

py::object copyOf(const Foundation* foundation) {
  return foundation != nullptr ? makeFoundation(Copying::duplicate(*foundation)) : py::none();
}

py::list listDifferences(const Comparison& comparison) {
  py::list all;
  for (const Comparing::Difference& difference : comparison.differences.foundations) {
    py::list fields;
    for (const Fields::Difference& field : difference.fields)
      fields.append(
          py::make_tuple(field.field.name, fromValue(field.first), fromValue(field.second)));
    all.append(py::make_tuple(copyOf(difference.pair.first), copyOf(difference.pair.second),
                              py::tuple(fields)));
  }
  return all;
}

py::tuple listCurrent(Comparison& comparison) {
  const auto get = [&](int side) {
    return copyOf(comparison.getDocument(side).getFoundations().getCurrentFoundation());
  };
  return py::make_tuple(get(0), get(1));
}

std::unique_ptr<Comparison> diff(const ModelState& first, py::handle firstManager,
                                 const ModelState& second, py::handle secondManager,
                                 const py::object& by, double relative) {
  if (!(relative >= 0.0 && relative <= 1.0)) throwValueError("relative: a share from 0 to 1");
  auto comparison = std::make_unique<Comparison>();
  comparison->keys = toKeys(by);
  comparison->relative = relative;
  comparison->isComplete = first.source->notes.empty() && second.source->notes.empty();
  comparison->snapshots[0] = takeSnapshot(first, firstManager);
  comparison->snapshots[1] = takeSnapshot(second, secondManager);
  runUnlocked([&] { compare(*comparison); });
  return comparison;
}

std::string makePage(Comparison& comparison) {
  const auto makeSide = [&](int side) -> Report::Side {
    Documents::Document& document = comparison.getDocument(side);
    return {document, Report::showUnits(document.getLabels()), Report::findDate(document)};
  };
  return Report::makeChangesPage({makeSide(0), makeSide(1), comparison.differences,
                                  comparison.relative, comparison.isComplete});
}

std::string makeJson(Comparison& comparison) {
  return Results::makeDiffJson(comparison.getDocument(0), comparison.getDocument(1),
                               comparison.differences, comparison.isComplete);
}

}  // namespace

void bindComparing(py::module_& module) {
  py::class_<Comparison>(module, "Comparison", "Two models that were compared.",
                         py::custom_type_setup(refuseMaking))
      .def_property_readonly("differences", &listDifferences)
      .def_property_readonly("current", &listCurrent)
      .def_property_readonly("is_current_same",
                             [](const Comparison& self) { return self.differences.isCurrentSame; })
      .def_property_readonly("is_complete", [](const Comparison& self) { return self.isComplete; })
      .def_property_readonly("unit_note",
                             [](const Comparison& self) { return decode(self.unitNote); })
      .def("make_json", [](Comparison& self) { return decode(makeJson(self)); })
      .def("make_page", [](Comparison& self) { return decode(makePage(self)); });
  module.def("diff", &diff, py::arg("first"), py::arg("first_manager"), py::arg("second"),
             py::arg("second_manager"), py::arg("by"), py::arg("relative"));
}

}  // namespace Python
