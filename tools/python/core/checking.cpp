#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "checks/findings.h"
#include "checks/rule.h"
#include "checks/rules.h"
#include "model.h"
#include "results/check_results.h"
#include "results/checked_file.h"
#include "text.h"
#include "text/display_text.h"

namespace Python {
namespace {

/// What was found in a document, for programs that read it.
struct Checked {
  Results::CheckedFile file;
};

/// What was found, and which of the foundations of a snapshot each is about.
struct Result {
  std::unique_ptr<Checked> checked;
  std::vector<Checks::Finding> findings;
  std::vector<std::size_t> items;
};

Result find(Snapshot& snapshot) {
  Rendering rendering(snapshot, {snapshot.source->form, {}});
  rendering.requireAll();
  Documents::Document& document = rendering.getDocument();
  document.requireReadable();
  const Checks::Findings findings = Checks::find(document);
  Result found = {std::make_unique<Checked>(), findings.list(), {}};
  found.checked->file = Results::makeCheckedFile(snapshot.source->content.path, document, findings);
  const std::vector<std::size_t> items = rendering.listItems(document);
  const auto& foundations = document.getFoundations().getFoundations();
  std::unordered_map<const Found::Foundation*, std::size_t> places;
  for (std::size_t i = 0; i < foundations.size(); ++i) places[foundations[i]] = items[i];
  for (const Checks::Finding& finding : found.findings) {
    const auto place = places.find(finding.foundation);
    found.items.push_back(place != places.end() ? place->second : Origins::nowhere);
  }
  return found;
}

/// (line, column, rule, sentence, foundation) of each finding, and what programs read of them.
py::tuple check(const ModelState& state, py::handle manager) {
  ManagerObject& owner = toManager(manager, "manager");
  const std::unique_ptr<Snapshot> snapshot = takeSnapshot(state, manager);
  const Origins::Watch watch(*state.origins, listOriginals(*snapshot));
  Result found = runUnlocked([&] { return find(*snapshot); });
  py::list findings;
  for (std::size_t i = 0; i < found.findings.size(); ++i) {
    const Checks::Finding& finding = found.findings[i];
    const std::size_t item = found.items[i];
    const py::object foundation = owner.give([&]() -> Found::Foundation* {
      if (item == Origins::nowhere || !watch.isThere(item)) return nullptr;
      return const_cast<Found::Foundation*>(snapshot->items[item].original);
    });
    findings.append(py::make_tuple(finding.position.line, finding.position.column,
                                   finding.rule->name, decode(finding.sentence), foundation));
  }
  const std::string shown = DisplayText::fromName(snapshot->source->content.shownPath);
  return py::make_tuple(decode(shown), findings, std::move(found.checked));
}

std::vector<Results::CheckedFile> gather(const py::list& checked) {
  std::vector<Results::CheckedFile> files;
  for (const py::handle one : checked) files.push_back(one.cast<const Checked&>().file);
  return files;
}

py::list listRules() {
  py::list rules;
  for (const Checks::Rule* rule : Checks::Rules::list())
    rules.append(py::make_tuple(rule->name, rule->description));
  return rules;
}

}  // namespace

void bindChecking(py::module_& module) {
  const py::class_<Checked> bound(module, "Checked", "What was found in a document.",
                                  py::custom_type_setup(refuseMaking));
  module.def("check", &check, py::arg("state"), py::arg("manager"));
  module.def("make_check_json", [](const py::list& checked) {
    return decode(Results::makeCheckJson(gather(checked)));
  });
  module.def("make_sarif",
             [](const py::list& checked) { return decode(Results::makeSarif(gather(checked))); });
  module.def("list_rules", &listRules);
}

}  // namespace Python
