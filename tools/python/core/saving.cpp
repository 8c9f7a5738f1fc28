#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "files/content.h"
#include "files/output_file.h"
#include "files/paths.h"
#include "given.h"
#include "model.h"
#include "text.h"

namespace Python {
namespace {

/// What may happen to a file that is there.
enum class Existing { own, overwrite, refuse, update };

Existing toExisting(const std::string& word) {
  const std::pair<const char*, Existing> words[] = {{"own", Existing::own},
                                                    {"overwrite", Existing::overwrite},
                                                    {"refuse", Existing::refuse},

                                                    {"update", Existing::update}};
  for (const auto& [known, existing] : words)
    if (word == known) return existing;
  throwValueError("existing: only refuse, replace or update");
}

Target toTarget(const std::string& form, const py::object& separator, const py::object& decimal) {
  Target target = {toForm(form), {}};
  const auto toSign = [](const py::object& given, const char* what) -> std::optional<char> {
    if (given.is_none()) return std::nullopt;
    const std::string sign = encode(given, what);
    if (sign.size() != 1) throwValueError(std::string(what) + ": one character is wanted");
    return sign[0];
  };
  if (separator.is_none() && decimal.is_none()) return target;
  if (target.form != Documents::Form::csv) throwValueError("separator and decimal are of csv only");
  target.dialect =
      Spreadsheets::Dialect{toSign(separator, "separator"), toSign(decimal, "decimal")};
  return target;
}

/// A child that a fork has made has none of the threads that were at work.
int getProcess() { return py::module_::import("os").attr("getpid")().cast<int>(); }

/// Only one thread at a time saves a model.
class Saving {
 public:
  explicit Saving(ModelState& saved) : state(saved) {
    const int process = getProcess();
    if (state.savedBy == process)
      throwRuntimeError("another thread saves the model at this moment");
    state.savedBy = process;
  }
  ~Saving() { state.savedBy = 0; }
  Saving(const Saving&) = delete;
  Saving& operator=(const Saving&) = delete;

 private:
  ModelState& state;
};

bool isThere(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(Paths::fromText(path), ignored);
}

void write(const std::string& path, const std::string& bytes) {
  OutputFile file(path);
  file.create();
  file.write(bytes);
  file.commit();
}

void requireUnchanged(const std::string& path, const Source& source) {
  if (isThere(path) && Files::read(path).bytes != source.content.bytes)
    throw ChangedMeanwhile(path +
                           ": was changed by another program since it was read; nothing was "
                           "written. Open it anew, or save with overwrite=True");
}

/// What is known of a model that was written.
struct Written {
  std::shared_ptr<const Source> source;
  std::vector<std::size_t> items;  // of the snapshot, in the order of the document
  std::vector<int> numbers;        // which the document gives them, if it does
};

struct Order {
  Target target;
  std::string path;
  std::string shownPath;
  Existing existing;
  bool isLossy;
};

/// A document of the first exchange version does not store numbers, but counts what it holds.
std::vector<int> listNumbers(Documents::Document& document) {
  std::vector<int> numbers;
  if (document.getForm() != Documents::Form::firstExchange) return numbers;
  for (const Found::Foundation* foundation : document.getFoundations().getFoundations())
    numbers.push_back(foundation->getNumber());
  return numbers;
}

Written write(Snapshot& snapshot, const Order& order) {
  const bool isUpdate = order.existing == Existing::update && isThere(order.path);
  auto rendering = isUpdate ? std::make_unique<Rendering>(snapshot, order.target, order.path)
                            : std::make_unique<Rendering>(snapshot, order.target);
  if (!order.isLossy) rendering->requireAll();
  const std::unique_ptr<Documents::Document> made = rendering->readBack(order.shownPath);
  const std::string& bytes = made->getContent().bytes;
  if (isUpdate) {
    rendering->commit();
  } else if (order.existing == Existing::own && isThere(order.path) &&
             bytes == snapshot.source->content.bytes) {
    // Not even the time of the file changes.
  } else {
    if (order.existing == Existing::own) requireUnchanged(order.path, *snapshot.source);
    if (order.existing == Existing::refuse) requireNoFile(order.path);
    write(order.path, bytes);
  }
  std::vector<std::size_t> items = rendering->listItems(*made);
  std::vector<int> numbers = listNumbers(*made);
  const std::shared_ptr<Source> source = Models::describe(*made, rendering->getOptions());
  source->content.path = order.path;
  return {source, std::move(items), std::move(numbers)};
}

/// From here on the model is the document that was written.
void settle(ModelState& state, const Snapshot& snapshot, const Origins::Watch& watch,
            Written written) {
  std::vector<Origins::Place> places;
  for (std::size_t place = 0; place < written.items.size(); ++place) {
    const std::size_t item = written.items[place];
    if (item == Origins::nowhere || !watch.isThere(item)) continue;
    const Snapshot::Item& known = snapshot.items[item];
    places.emplace_back(known.original, place);
    // Unless it has got another number meanwhile.
    if (!written.numbers.empty() && known.original->getNumber() == known.copy->getNumber())
      const_cast<Found::Foundation*>(known.original)->setNumber(written.numbers[place]);
  }
  state.origins->reset(std::move(places));
  state.source = std::move(written.source);
  // Units that were given meanwhile are not those that were written.
  if (state.units == snapshot.units || !Documents::isSpreadsheet(state.source->form))
    state.units.reset();
}

void save(ModelState& state, py::handle manager, const py::bytes& path, const py::bytes& shownPath,
          const std::string& form, const py::object& separator, const py::object& decimal,
          const std::string& existing, bool isLossy) {
  const Order order = {toTarget(form, separator, decimal), toPath(path), toPath(shownPath),
                       toExisting(existing), isLossy};
  const Saving saving(state);
  const std::unique_ptr<Snapshot> snapshot = takeSnapshot(state, manager);
  const Origins::Watch watch(*state.origins, listOriginals(*snapshot));
  Written written = runUnlocked([&] { return write(*snapshot, order); });
  settle(state, *snapshot, watch, std::move(written));
}

/// The bytes that a document of this form would have.
py::bytes render(const ModelState& state, py::handle manager, const std::string& form,
                 const py::object& separator, const py::object& decimal, bool isLossy) {
  const Target target = toTarget(form, separator, decimal);
  const std::unique_ptr<Snapshot> snapshot = takeSnapshot(state, manager);
  return runUnlocked([&] {
    Rendering rendering(*snapshot, target);
    if (!isLossy) rendering.requireAll();
    if (target.form != Documents::Form::kvml)
      rendering.readBack(snapshot->source->content.shownPath);
    return rendering.getDocument().getContent().bytes;
  });
}

py::tuple listLosses(const ModelState& state, py::handle manager, const std::string& form) {
  const Target target = {toForm(form), {}};
  const std::unique_ptr<Snapshot> snapshot = takeSnapshot(state, manager);
  return toTuple(runUnlocked([&] { return Rendering(*snapshot, target).listLosses(); }));
}

/// Bytes that were made before, such as those of another form.
void writeFile(const py::bytes& path, const py::bytes& bytes, bool replaces) {
  const std::string where = toPath(path);
  const std::string content = bytes;
  runUnlocked([&] {
    if (!replaces) requireNoFile(where);
    write(where, content);
  });
}

}  // namespace

void bindSaving(py::module_& module) {
  module.def("save", &save, py::arg("state"), py::arg("manager"), py::arg("path"),
             py::arg("shown_path"), py::arg("form"), py::arg("separator"), py::arg("decimal"),
             py::arg("existing"), py::arg("lossy"));
  module.def("render", &render, py::arg("state"), py::arg("manager"), py::arg("form"),
             py::arg("separator"), py::arg("decimal"), py::arg("lossy"));
  module.def("list_losses", &listLosses, py::arg("state"), py::arg("manager"), py::arg("form"));
  module.def("write_file", &writeFile, py::arg("path"), py::arg("content"), py::arg("replace"));
}

}  // namespace Python
