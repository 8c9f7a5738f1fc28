#include "model.h"

#include <exception>
#include <optional>
#include <unordered_set>
#include <vector>

#include "text.h"

namespace Python {
namespace {

using Documents::Form;

constexpr std::pair<Form, const char*> formNames[] = {
    {Form::legacy, "legacy"}, {Form::exchange, "exchange"}, {Form::firstExchange, "exchange-1.0"},
    {Form::kvml, "kvml"},     {Form::csv, "csv"},           {Form::json, "json"}};

std::optional<char> toSign(const py::object& given, const char* allowed, const char* what) {
  if (given.is_none()) return std::nullopt;
  const std::string sign = encode(given, what);
  if (sign.size() != 1 || std::string(allowed).find(sign) == std::string::npos)
    throwValueError(std::string(what) + " cannot be " + std::string(py::repr(given)));
  return sign[0];
}

Documents::ReadOptions toOptions(const py::object& form, const py::object& version,
                                 const py::object& separator, const py::object& decimal) {
  Documents::ReadOptions options;
  if (!form.is_none()) {
    options.form = toForm(encode(form, "form"));
    if (!Documents::isSpreadsheet(*options.form))
      throwValueError("form: only csv or json; other documents tell it themselves");
  }
  if (!version.is_none()) options.version = encode(version, "version");
  options.dialect = {toSign(separator, ",;\t", "separator"), toSign(decimal, ".,", "decimal")};
  return options;
}

void watchLeaving(ManagerObject& manager, const std::shared_ptr<Origins>& origins) {
  manager.setOnLeaving(
      [origins](const Found::Foundation& foundation) { origins->leave(foundation); });
}

/// The manager that holds what was read, and the state of its model.
py::tuple adopt(std::unique_ptr<Models::Read> read) {
  py::object object = makeManager();
  auto state = std::make_unique<ModelState>();
  state->source = read->source;
  state->origins = std::make_shared<Origins>();
  auto& manager = object.cast<ManagerObject&>();
  manager.exchange(read->foundations);
  std::vector<Origins::Place> places;
  places.reserve(manager.getList().size());
  for (const Found::Foundation* foundation : manager.getList())
    places.emplace_back(foundation, places.size());
  state->origins->reset(std::move(places));
  watchLeaving(manager, state->origins);
  return py::make_tuple(object, std::move(state));
}

py::tuple openFile(const py::bytes& path, const py::bytes& shownPath, const py::object& form,
                   const py::object& version, const py::object& separator,
                   const py::object& decimal) {
  const std::string where = toPath(path);
  const std::string shown = toPath(shownPath);
  const Documents::ReadOptions options = toOptions(form, version, separator, decimal);
  return adopt(runUnlocked([&] { return readModel(readFile(where, shown, options), options); }));
}

py::tuple openBytes(const py::bytes& bytes, const py::bytes& shownPath, const py::object& form,
                    const py::object& version, const py::object& separator,
                    const py::object& decimal) {
  Files::Content content = {toPath(shownPath), "", std::string(bytes)};
  const Documents::ReadOptions options = toOptions(form, version, separator, decimal);
  return adopt(runUnlocked([&] { return readModel(std::move(content), options); }));
}

py::object fromUnits(const Units& units) {
  if (units.force.empty()) return py::none();
  return py::make_tuple(decode(units.force), decode(units.length));
}

void setUnits(ModelState& state, const py::object& given) {
  const Units units = toUnits(given);
  if (!Documents::isSpreadsheet(state.source->form) && !units.force.empty())
    throwValueError("only csv and json name their units");
  state.units = units;
}

// Never released: they are used for as long as there is an interpreter.
PyObject* lossError = nullptr;
PyObject* clashError = nullptr;
PyObject* changedError = nullptr;

void raise(PyObject* type, const UserError& error, const std::vector<std::string>& lines) {
  const py::object made = py::handle(type)(decode(error.what()), toTuple(lines));
  PyErr_SetObject(type, made.ptr());
}

void translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(std::move(thrown));
  } catch (const Models::LossFound& error) {
    raise(lossError, error, error.getLosses());
  } catch (const ClashFound& error) {
    raise(clashError, error, error.getClashes());
  } catch (const ChangedMeanwhile& error) {
    PyErr_SetObject(changedError, decode(error.what()).ptr());
  }
}

void bindModelErrors() {
  const py::module_ errors = py::module_::import("kvfound._errors");
  lossError = errors.attr("LossError").cast<py::object>().release().ptr();
  clashError = errors.attr("ClashError").cast<py::object>().release().ptr();
  changedError = errors.attr("ChangedError").cast<py::object>().release().ptr();
  py::register_local_exception_translator(&translate);
}

// --- Pickling

/// All that a copy of the model needs beside its foundations, which may change until these are
/// copied: so it tells of each of them.
py::tuple exportState(const ModelState& state, py::handle manager) {
  ManagerObject& owner = toManager(manager, "manager");
  const py::list listed = owner.giveAll([&]() -> const auto& { return owner.getList(); });
  const std::shared_ptr<const Source> known = state.source;  // which saving may replace
  const Source& source = *known;
  const Documents::ReadOptions& options = source.options;
  const auto fromSign = [](const std::optional<char>& sign) -> py::object {
    return sign ? py::object(py::str(std::string(1, *sign))) : py::none();
  };
  std::vector<std::size_t> places;
  for (const py::handle foundation : listed)
    places.push_back(state.origins->find(toFoundation(foundation, "foundation").get()));
  py::list origins;
  for (const std::size_t place : places)
    origins.append(place == Origins::nowhere ? py::object(py::none())
                                             : py::object(py::int_(place)));
  return py::make_tuple(
      py::bytes(source.content.path), py::bytes(source.content.shownPath),
      py::bytes(source.content.bytes),
      options.form ? py::object(py::str(getName(*options.form))) : py::object(py::none()),
      options.version ? py::object(decode(*options.version)) : py::object(py::none()),
      fromSign(options.dialect.separator), fromSign(options.dialect.decimal), listed, origins,
      state.units
          ? py::object(py::make_tuple(decode(state.units->force), decode(state.units->length)))
          : py::object(py::none()));
}

/// Which place each foundation has; throws ValueError where that cannot be.
std::vector<std::size_t> toPlaces(const py::list& origins, std::size_t count) {
  std::vector<std::size_t> places;
  std::vector<bool> isTaken(count);
  for (const py::handle origin : origins) {
    if (origin.is_none()) {
      places.push_back(Origins::nowhere);
      continue;
    }
    const auto place = origin.cast<std::size_t>();
    if (place >= count || isTaken[place]) throwValueError("this is no state of a model");
    isTaken[place] = true;
    places.push_back(place);
  }
  return places;
}

/// The foundations of a manager that have a place; throws ValueError where that cannot be.
std::vector<Origins::Place> toKnown(const ManagerObject& manager, const py::list& listed,
                                    const std::vector<std::size_t>& places) {
  std::vector<Origins::Place> known;
  std::unordered_set<const Found::Foundation*> seen;
  if (listed.size() != places.size()) throwValueError("this is no state of a model");
  for (std::size_t i = 0; i < places.size(); ++i) {
    const FoundationObject& object = toFoundation(listed[i], "foundation");
    if (!seen.insert(&object.get()).second) throwValueError("this is no state of a model");
    // One that has left the model meanwhile is in no manager.
    if (places[i] != Origins::nowhere && object.getManager() == &manager)
      known.emplace_back(&object.get(), places[i]);
  }
  return known;
}

std::unique_ptr<ModelState> restoreState(py::handle manager, const py::bytes& path,
                                         const py::bytes& shownPath, const py::bytes& bytes,
                                         const py::object& form, const py::object& version,
                                         const py::object& separator, const py::object& decimal,
                                         const py::list& listed, const py::list& origins,
                                         const py::object& units) {
  Files::Content content = {toPath(shownPath), "", std::string(bytes)};
  const Documents::ReadOptions options = toOptions(form, version, separator, decimal);
  const std::unique_ptr<Models::Read> read =
      runUnlocked([&] { return readModel(std::move(content), options); });
  const std::vector<std::size_t> places =
      toPlaces(origins, read->foundations.getFoundations().size());
  auto source = std::make_shared<Source>(*read->source);
  source->content.path = toPath(path);
  auto state = std::make_unique<ModelState>();
  state->source = std::move(source);
  state->origins = std::make_shared<Origins>();
  if (!units.is_none()) {
    const auto [force, length] = units.cast<std::pair<py::object, py::object>>();
    state->units = Units{encode(force, "unit"), encode(length, "unit")};
  }
  ManagerObject& owner = toManager(manager, "manager");
  if (owner.tellsLeaving()) throwValueError("another model has these foundations");
  state->origins->reset(toKnown(owner, listed, places));
  watchLeaving(owner, state->origins);
  return state;
}

}  // namespace

py::tuple toTuple(const std::vector<std::string>& lines) {
  py::tuple tuple(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) tuple[i] = decode(lines[i]);
  return tuple;
}

std::string toPath(const py::bytes& encoded) {
  std::string path = encoded;
  if (path.find('\0') != std::string::npos) throwValueError("a path holds no zero byte");
  return path;
}

Form toForm(const std::string& name) {
  for (const auto& [form, word] : formNames)
    if (name == word) return form;
  throwValueError("there is no form \"" + name +
                  "\", only legacy, exchange, exchange-1.0, kvml, csv and json");
}

const char* getName(Form form) {
  for (const auto& [named, word] : formNames)
    if (named == form) return word;
  return "";
}

Units toUnits(const py::object& given) {
  if (given.is_none()) return {};
  if (!py::isinstance<py::tuple>(given) || py::len(given) != 2)
    throwTypeError(R"(units: a tuple of force and length is wanted, such as ("kN", "m"))");
  const auto pair = py::reinterpret_borrow<py::tuple>(given);
  Units units = {encode(pair[0], "unit of force"), encode(pair[1], "unit of length")};
  if (units.force.empty() || units.length.empty()) throwValueError("a unit has a name");
  return units;
}

std::unique_ptr<Snapshot> takeSnapshot(const ModelState& state, py::handle manager) {
  return takeSnapshot(state, toManager(manager, "foundations").get());
}

void bindModel(py::module_& module) {
  py::class_<ModelState>(module, "ModelState", "What a model knows beside its foundations.",
                         py::custom_type_setup(refuseMaking))
      .def_property_readonly("form",
                             [](const ModelState& self) { return getName(self.source->form); })
      .def_property_readonly("encoding",
                             [](const ModelState& self) { return decode(self.source->encoding); })
      .def_property_readonly("path",
                             [](const ModelState& self) -> py::object {
                               const std::string& path = self.source->content.path;
                               return path.empty() ? py::none() : py::object(py::bytes(path));
                             })
      .def_property_readonly(
          "shown_path",
          [](const ModelState& self) { return py::bytes(self.source->content.shownPath); })
      .def_property_readonly(
          "notes", [](const ModelState& self) { return toTuple(self.source->listLines()); })
      .def_property_readonly("is_read_whole",
                             [](const ModelState& self) { return self.source->isReadWhole; })
      .def_property(
          "units",
          [](const ModelState& self) { return fromUnits(self.units.value_or(self.source->units)); },
          &setUnits)
      .def_property_readonly("labels",
                             [](const ModelState& self) { return fromUnits(self.source->labels); })
      .def_property_readonly(
          "source", [](const ModelState& self) { return py::bytes(self.source->content.bytes); });
  const auto none = py::none();
  module.def("open_file", &openFile, py::arg("path"), py::arg("shown_path"), py::arg("form") = none,
             py::arg("version") = none, py::arg("separator") = none, py::arg("decimal") = none);
  module.def("open_bytes", &openBytes, py::arg("content"), py::arg("shown_path"),
             py::arg("form") = none, py::arg("version") = none, py::arg("separator") = none,
             py::arg("decimal") = none);
  module.def("make_empty",
             [](const std::string& form) { return py::bytes(Models::makeEmpty(toForm(form))); });
  module.def("export_state", &exportState, py::arg("state"), py::arg("manager"));
  module.def("restore_state", &restoreState, py::arg("manager"), py::arg("path"),
             py::arg("shown_path"), py::arg("content"), py::arg("form"), py::arg("version"),
             py::arg("separator"), py::arg("decimal"), py::arg("foundations"), py::arg("origins"),
             py::arg("units"));
  bindModelErrors();
  bindSaving(module);
  bindChecking(module);
  bindComparing(module);
  bindChanging(module);
  bindReporting(module);
}

}  // namespace Python
