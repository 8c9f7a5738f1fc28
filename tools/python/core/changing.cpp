#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "comparing/merging.h"
#include "foundations/conversion.h"
#include "foundations/fields.h"
#include "foundations/numbers.h"
#include "foundations/scaling.h"
#include "model.h"
#include "models/merging.h"
#include "selecting.h"
#include "text.h"
#include "threads.h"
#include "users.h"

namespace Python {
namespace {

using Found::Foundation;
using Found::FoundationManager;
using Models::Merged;

// --- Merging

Comparing::OnClash toRule(const std::string& word) {
  using Comparing::OnClash;
  const std::pair<const char*, OnClash> words[] = {{"refuse", OnClash::refuse},
                                                   {"rename", OnClash::rename},
                                                   {"renumber", OnClash::renumber},
                                                   {"skip", OnClash::skip},
                                                   {"replace", OnClash::replace}};
  for (const auto& [known, rule] : words)
    if (word == known) return rule;
  throwValueError("on_clash: only refuse, rename, renumber, skip or replace");
}

std::vector<std::string> tell(const std::vector<Comparing::Refusal>& refusals) {
  std::vector<std::string> lines;
  lines.reserve(refusals.size());
  for (const Comparing::Refusal& refusal : refusals) lines.push_back(Models::makeLine(refusal));
  return lines;
}

Merged merge(Snapshot& target, const std::vector<std::unique_ptr<Snapshot>>& sources,
             Comparing::OnClash rule, bool isLossy) {
  Merged merged = Models::merge(target, sources, rule);
  if (!merged.clashes.empty())
    throw ClashFound("numbers or names clash; nothing was merged", tell(merged.clashes));
  if (!isLossy && !merged.losses.empty())
    throw Models::LossFound("something would be lost: " + merged.losses.front(), merged.losses);
  return merged;
}

/// Foundations may have come to the model while others were merged; they were not compared.
void requireFree(const Merged& merged, const Snapshot& snapshot, const Origins::Watch& watch,
                 const ManagerObject& manager) {
  std::unordered_set<const Foundation*> known;
  for (std::size_t i = 0; i < snapshot.items.size(); ++i)
    if (watch.isThere(i)) known.insert(snapshot.items[i].original);
  std::unordered_set<int> numbers;
  std::unordered_set<std::string> names;
  for (const Foundation* foundation : manager.getList()) {
    if (known.count(foundation) != 0) continue;
    numbers.insert(foundation->getNumber());
    names.insert(foundation->getName());
  }
  const bool hasNumbers = snapshot.source->form != Documents::Form::firstExchange;
  for (const auto& added : merged.added)
    if (names.count(added->getName()) != 0 ||
        (hasNumbers && numbers.count(added->getNumber()) != 0))
      throwRuntimeError(Fields::describe(*added) +
                        " clashes with one that came to the model meanwhile; nothing was merged");
}

/// Sets what differs and adds what is new, and returns which these are.
std::pair<std::vector<Foundation*>, std::vector<Foundation*>> apply(Merged& merged,
                                                                    const Snapshot& snapshot,
                                                                    const Origins::Watch& watch,
                                                                    ManagerObject& manager) {
  std::pair<std::vector<Foundation*>, std::vector<Foundation*>> touched;
  manager.requireUnused();
  requireFree(merged, snapshot, watch, manager);
  for (const Merged::Change& change : merged.changes) {
    if (!watch.isThere(change.item)) continue;
    auto* const original = const_cast<Foundation*>(snapshot.items[change.item].original);
    for (const Fields::Difference& field : change.fields) field.field.set(*original, field.second);
    touched.second.push_back(original);
  }
  for (std::unique_ptr<Foundation>& added : merged.added) {
    touched.first.push_back(added.get());
    manager.add(std::move(added));
  }
  return touched;
}

/// `warn` is told of units before anything changes, since a warning may be made an error.
py::tuple mergeInto(ModelState& state, py::handle manager, const py::list& others,
                    const std::string& onClash, bool isLossy, const py::object& warn) {
  ManagerObject& owner = toManager(manager, "manager");
  const Comparing::OnClash rule = toRule(onClash);
  std::vector<std::unique_ptr<Snapshot>> sources;
  for (const py::handle other : others) {
    const auto pair = other.cast<std::pair<py::object, py::object>>();
    sources.push_back(takeSnapshot(pair.first.cast<const ModelState&>(), pair.second));
  }
  const std::unique_ptr<Snapshot> snapshot = takeSnapshot(state, manager);
  const Origins::Watch watch(*state.origins, listOriginals(*snapshot));
  Merged merged = runUnlocked([&] { return merge(*snapshot, sources, rule, isLossy); });
  for (const std::string& note : merged.unitNotes) runCode([&] { warn(decode(note)); });
  const auto touched = apply(merged, *snapshot, watch, owner);
  const ManagerObject::Use use(owner);
  const auto giveAll = [&](const std::vector<Foundation*>& given) {
    return owner.giveAll([&]() -> const std::vector<Foundation*>& { return given; });
  };
  return py::make_tuple(giveAll(touched.first), giveAll(touched.second),
                        toTuple(tell(merged.leftOut)), toTuple(merged.losses));
}

// --- Pruning

/// Numbers of foundations, to be restored in those that are left.
class Numbering {
 public:
  explicit Numbering(const FoundationManager& manager) {
    for (const Foundation* foundation : manager.getFoundations())
      numbers[foundation] = foundation->getNumber();
  }

  void restore(const FoundationManager& manager) const {
    for (Foundation* foundation : manager.getFoundations())
      foundation->setNumber(numbers.at(foundation));
  }

 private:
  std::unordered_map<const Foundation*, int> numbers;
};

/// Lets a user decide together with those that were added, for as long as it lives.
class PassingUser {
 public:
  PassingUser(FoundationManager& asked, Found::FoundationUser* passing)
      : manager(asked), user(passing) {
    if (user != nullptr) manager.addUser(user);
  }
  ~PassingUser() {
    if (user != nullptr) manager.removeUser(user);
  }
  PassingUser(const PassingUser&) = delete;
  PassingUser& operator=(const PassingUser&) = delete;

 private:
  FoundationManager& manager;
  Found::FoundationUser* user;
};

py::list prune(const ModelState& state, py::handle manager, bool isGenerated, bool asksUsers,
               const py::object& user, bool keepsNumbers) {
  ManagerObject& owner = toManager(manager, "manager");
  std::unique_ptr<User> asked;
  if (!user.is_none()) asked = std::make_unique<User>(owner, user);
  const Numbering numbering(owner.get());
  const bool hasNumbers = state.source->form != Documents::Form::firstExchange;
  return owner.prune([&](FoundationManager& pruned) {
    const PassingUser passing(pruned, asked.get());
    if (!asksUsers)
      pruned.removeAllGenerated();
    else if (isGenerated)
      pruned.removeAllNotUsedGenerated();
    else
      pruned.removeAllNotUsed();
    if (keepsNumbers && hasNumbers) numbering.restore(pruned);
    if (hasNumbers) return;
    int number = 0;  // whatever is left reads as 1, 2, 3, ...
    for (Foundation* foundation : pruned.getFoundations()) foundation->setNumber(++number);
  });
}

// --- Units

Scaling::Conversion toConversion(const py::object& units, const py::object& force,
                                 const py::object& length) {
  Scaling::Conversion conversion;
  if (!units.is_none()) return Scaling::readConversion(encode(units, "units"));
  if (!force.is_none()) conversion.force.over = readDecimal(encode(force, "force"));
  if (!length.is_none()) conversion.length.over = readDecimal(encode(length, "length"));
  return conversion;
}

/// Converts all stiffness, or none where a value would become too large or zero.
void convertUnits(ModelState& state, py::handle manager, const py::object& units,
                  const py::object& force, const py::object& length) {
  const Scaling::Conversion conversion = toConversion(units, force, length);
  const Source& source = *state.source;
  const Units named = state.units.value_or(source.units);
  const Units& from = conversion.from;
  if (!from.force.empty() && !named.force.empty() && from != named)
    throwValueError(fmt::format("the units are {} and {}, not {} and {}; nothing was converted",
                                named.force, named.length, from.force, from.length));
  if (!source.isReadWhole)
    throwValueError("what cannot be read of the document would keep its units");
  FoundationManager& found = toManager(manager, "manager").get();
  const Scaling::Scale scale(conversion.force, conversion.length);
  const std::unique_ptr<Snapshot> trial = takeSnapshot(state, manager);
  try {
    Scaling::apply(scale, trial->copies);
  } catch (const std::range_error& error) {
    throwOverflowError(std::string(error.what()) + "; nothing was converted");
  }
  Scaling::apply(scale, found);
  if (Documents::isSpreadsheet(source.form)) state.units = conversion.to;
}

// --- Selecting

py::list select(py::handle manager, const py::object& numbers, const py::object& name,
                bool generated, const py::object& part) {
  ManagerObject& owner = toManager(manager, "manager");
  const Selection selection = toSelection(numbers, name, generated, part);
  std::vector<Foundation*> selected;
  return owner.giveAll([&]() -> const std::vector<Foundation*>& {
    selected.clear();
    for (Foundation* foundation : owner.getList())
      if (selection.includes(*foundation)) selected.push_back(foundation);
    return selected;
  });
}

py::object findNumber(py::handle manager, int number) {
  ManagerObject& owner = toManager(manager, "manager");
  return owner.give([&] { return owner.get().findFoundation(number); });
}

py::object findName(py::handle manager, const py::object& name) {
  ManagerObject& owner = toManager(manager, "manager");
  const std::string wanted = encode(name, "name");
  return owner.give([&] { return owner.get().findFoundation(wanted); });
}

/// Adds one that nothing of the model may clash with, and numbers it unless it has a number.
/// Without a name it gets a default one. As one call, so that no other thread takes the number
/// meanwhile.
py::object addNew(py::handle manager, const py::object& given, bool hasNumber) {
  ManagerObject& owner = toManager(manager, "manager");
  Foundation& foundation = toFoundation(given, "foundation").get();
  const int number = hasNumber ? foundation.getNumber() : Numbers::findFree(owner.get());
  const auto fail = [](const py::object& key) {
    throwValueError(std::string(py::repr(key)) + " is taken by another foundation");
  };
  const bool hasName = !foundation.getName().empty();
  const std::string name =
      hasName ? foundation.getName() : owner.get().giveNextFoundationName(number);
  if (owner.get().findFoundation(name) != nullptr) fail(decode(name));
  if (owner.get().findFoundation(number) != nullptr) fail(py::int_(number));
  owner.add(given);
  foundation.setNumber(number);
  if (!hasName) foundation.setName(name);
  return given;
}

/// Adds one, with a free number unless it has one.
py::object add(py::handle manager, const py::object& given) {
  ManagerObject& owner = toManager(manager, "manager");
  Foundation& foundation = toFoundation(given, "foundation").get();
  const bool hasNumber = foundation.getNumber() >= 1;
  const int number = hasNumber ? foundation.getNumber() : Numbers::findFree(owner.get());
  owner.add(given);
  foundation.setNumber(number);
  return given;
}

}  // namespace

Selection toSelection(const py::object& numbers, const py::object& name, bool generated,
                      const py::object& part) {
  Selection selection;
  if (!numbers.is_none()) {
    const std::string text = encode(numbers, "numbers");
    try {
      selection.selectNumbers(text);
    } catch (const std::invalid_argument& error) {
      throwValueError("numbers cannot be \"" + text + "\", only " + error.what());
    }
  }
  if (!name.is_none()) selection.selectName(encode(name, "name"));
  if (generated) selection.selectGenerated();
  if (part.is_none()) return selection;
  const std::string wanted = encode(part, "part");
  if (wanted != "area" && wanted != "line") throwValueError("part: only area or line");
  selection.selectPart(wanted == "area" ? Selection::Part::area : Selection::Part::line);
  return selection;
}

void bindChanging(py::module_& module) {
  module.def("merge", &mergeInto, py::arg("state"), py::arg("manager"), py::arg("others"),
             py::arg("on_clash"), py::arg("lossy"), py::arg("warn"));
  module.def("prune", &prune, py::arg("state"), py::arg("manager"), py::arg("generated"),
             py::arg("asks_users"), py::arg("user"), py::arg("keep_numbers"));
  module.def("convert_units", &convertUnits, py::arg("state"), py::arg("manager"), py::arg("units"),
             py::arg("force"), py::arg("length"));
  module.def("select", &select, py::arg("manager"), py::arg("numbers"), py::arg("name"),
             py::arg("generated"), py::arg("part"));
  module.def("find_number", &findNumber, py::arg("manager"), py::arg("number"));
  module.def("find_name", &findName, py::arg("manager"), py::arg("name"));
  module.def("add_new", &addNew, py::arg("manager"), py::arg("foundation"), py::arg("has_number"));
  module.def("add", &add, py::arg("manager"), py::arg("foundation"));
}

}  // namespace Python
