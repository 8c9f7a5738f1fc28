#include "models/rendering.h"

#include <map>
#include <utility>

#include <fmt/format.h>

#include "foundations/fields.h"
#include "spreadsheets/csv_writer.h"
#include "text/display_text.h"

namespace Models {
namespace {

using Documents::Document;
using Documents::Form;
using Found::Foundation;

bool isOwn(const Source& source, const Target& target) {
  return target.form == source.form && !target.dialect;
}

Documents::ReadOptions chooseOptions(const Source& source, const Target& target) {
  if (isOwn(source, target)) return source.options;
  Documents::ReadOptions options;
  if (Documents::isSpreadsheet(target.form)) options.form = target.form;
  if (target.form == Form::firstExchange) options.version = Documents::firstVersion;
  if (target.form == Form::csv)
    options.dialect = Spreadsheets::complete(target.dialect.value_or(Spreadsheets::Dialect()));
  return options;
}

[[noreturn]] void failAtTaken(const Source& source, const std::string& what,
                              const Foundation& holder) {
  throw DocumentError(source.content.shownPath, {},
                      fmt::format("{} is taken by {}", what, Fields::describe(holder)));
}

/// Whatever else a document may hold twice, what is new or named anew must be unique.
void requireDistinct(const Snapshot& snapshot, Document& base) {
  const bool hasNumbers = base.getForm() != Form::firstExchange;
  const auto& before = base.getFoundations().getFoundations();
  std::multimap<int, const Foundation*> numbers;
  std::multimap<std::string, const Foundation*> names;
  for (const Snapshot::Item& item : snapshot.items) {
    numbers.emplace(item.copy->getNumber(), item.copy);
    names.emplace(item.copy->getName(), item.copy);
  }
  const auto findOther = [](const auto& holders, const auto& key, const Foundation* own) {
    const auto [begin, end] = holders.equal_range(key);
    for (auto holder = begin; holder != end; ++holder)
      if (holder->second != own) return holder->second;
    return static_cast<const Foundation*>(nullptr);
  };
  for (const Snapshot::Item& item : snapshot.items) {
    const bool isNew = item.origin == nowhere;
    const Foundation& now = *item.copy;
    if (hasNumbers && (isNew || before[item.origin]->getNumber() != now.getNumber()))
      if (const Foundation* other = findOther(numbers, now.getNumber(), &now))
        failAtTaken(*snapshot.source, fmt::format("number {}", now.getNumber()), *other);
    if (isNew || before[item.origin]->getName() != now.getName())
      if (const Foundation* other = findOther(names, now.getName(), &now))
        failAtTaken(*snapshot.source,
                    fmt::format("the name \"{}\"", DisplayText::fromName(now.getName())), *other);
  }
}

/// No document stores rotation about y and z, and no field tells it.
std::vector<std::string> listRotations(const Snapshot& snapshot) {
  std::vector<std::string> lines;
  for (const Snapshot::Item& item : snapshot.items) {
    KvVector3D rotation;
    if (!item.copy->getRotLine(rotation)) continue;
    for (const auto& [axis, value] : {std::pair('Y', rotation.y), std::pair('Z', rotation.z)})
      if (value != 0.0)
        lines.push_back(fmt::format("{}: lineRotation{} {} is lost", Fields::describe(*item.copy),
                                    axis, Fields::show(value)));
  }
  return lines;
}

void requireNone(const std::vector<std::string>& losses) {
  if (losses.empty()) return;
  const std::string more =
      losses.size() == 1 ? "" : fmt::format(", and {} more", losses.size() - 1);
  throw LossFound("something would be lost: " + losses.front() + more, losses);
}

}  // namespace

Rendering::Rendering(Snapshot& rendered, const Target& target)
    : snapshot(rendered),
      options(chooseOptions(*rendered.source, target)),
      base(rendered.source->content, rendered.source->options),
      file(unused, rendered.source->content.shownPath),
      rotations(listRotations(rendered)) {
  requireDistinct(snapshot, base);
  const Spreadsheets::Dialect dialect = options.dialect;
  output = std::make_unique<Writing::Output>(file, target.form, base, dialect);
  if (snapshot.units) output->nameUnits(*snapshot.units);
  isOwn(*snapshot.source, target) ? edit() : writeAnew();
}

Rendering::Rendering(Snapshot& rendered, const Target& target, const std::string& into)
    : snapshot(rendered),
      options(chooseOptions(*rendered.source, {target.form, target.dialect})),
      base(rendered.source->content, rendered.source->options),
      file(into),
      rotations(listRotations(rendered)) {
  requireDistinct(snapshot, base);
  output = std::make_unique<Writing::Output>(file, target.form, base,
                                             target.dialect.value_or(Spreadsheets::Dialect()));
  if (snapshot.units) output->nameUnits(*snapshot.units);
  output->isUpdate() ? output->update(snapshot.copies) : output->write(snapshot.copies);
  setLosses(output->listAllLosses(snapshot.copies));
}

void Rendering::setLosses(const std::vector<Losses::Loss>& found) {
  for (const Losses::Loss& loss : found) losses.push_back(loss.foundation + ": " + loss.sentence);
}

void Rendering::edit() {
  const Editing::Wish wish = makeWish();
  output->edit(base, wish);
  setLosses(output->listLossesOfEdit(snapshot.copies));
  setLosses(output->getUnread());
}

void Rendering::writeAnew() {
  output->write(snapshot.copies);
  setLosses(output->listAllLosses(snapshot.copies));
  const std::vector<std::string> notes = snapshot.source->listLines();
  losses.insert(losses.end(), notes.begin(), notes.end());
}

Editing::Wish Rendering::makeWish() {
  const std::vector<Foundation*>& before = base.getFoundations().getFoundations();
  std::vector<std::size_t> taken(before.size(), nowhere);
  std::vector<std::size_t> added;
  for (std::size_t i = 0; i < snapshot.items.size(); ++i)
    if (snapshot.items[i].origin == nowhere)
      added.push_back(i);
    else
      taken[snapshot.items[i].origin] = i;
  std::multimap<int, std::size_t> vacant;
  for (std::size_t place = 0; place < before.size(); ++place)
    if (taken[place] == nowhere) vacant.emplace(before[place]->getNumber(), place);
  Editing::Wish wish;
  std::vector<std::size_t> last;
  for (const std::size_t item : added) {
    const auto place = vacant.find(snapshot.items[item].copy->getNumber());
    if (place == vacant.end() || snapshot.keepsOrder || base.getForm() == Form::firstExchange) {
      last.push_back(item);
      continue;
    }
    taken[place->second] = item;
    vacant.erase(place);
  }
  for (std::size_t place = 0; place < before.size(); ++place) {
    const bool stays = taken[place] != nowhere;
    wish.pairs.push_back({before[place], stays ? snapshot.items[taken[place]].copy : nullptr});
    if (stays) order.push_back(taken[place]);
  }
  for (const std::size_t item : last) {
    wish.pairs.push_back({nullptr, snapshot.items[item].copy});
    order.push_back(item);
  }
  wish.current = snapshot.copies.getCurrentFoundation();
  wish.units = snapshot.units;
  return wish;
}

std::vector<std::string> Rendering::listLosses() const {
  std::vector<std::string> all = losses;
  all.insert(all.end(), rotations.begin(), rotations.end());
  return all;
}

void Rendering::requireAll() const { requireNone(listLosses()); }

void Rendering::requireFields() const { requireNone(losses); }

std::unique_ptr<Document> Rendering::readBack(const std::string& path) {
  Document& made = getDocument();
  Files::Content content = {path, "", made.getContent().bytes};
  auto again = std::make_unique<Document>(std::move(content), options);
  again->requireReadable();
  using Matching::Key;
  const bool isSame =
      again->getForm() == made.getForm() &&
      again->getFoundations().getFoundations().size() ==
          made.getFoundations().getFoundations().size() &&
      Losses::list(made.getFoundations(), again->getFoundations(), {Key::number, Key::name})
          .empty();
  if (!isSame) throw DocumentError(path, {}, "cannot be written so that it can be read again");
  return again;
}

std::vector<std::size_t> Rendering::listItems(Document& made) const {
  const std::vector<Foundation*>& there = made.getFoundations().getFoundations();
  if (there.size() == order.size()) return order;
  std::map<const Foundation*, std::size_t> indices;
  for (std::size_t i = 0; i < snapshot.items.size(); ++i) indices[snapshot.items[i].copy] = i;
  std::vector<std::size_t> found(there.size(), nowhere);
  std::map<const Foundation*, std::size_t> places;
  for (std::size_t i = 0; i < there.size(); ++i) places[there[i]] = i;
  using Matching::Key;
  const bool hasNumbers = made.getForm() != Form::firstExchange;
  const std::vector<Key> keys = hasNumbers ? std::vector<Key>{Key::number, Key::name}
                                           : std::vector<Key>{Key::name, Key::place};
  for (const Matching::Pair& pair : Matching::match(snapshot.copies.getFoundations(), there, keys))
    if (pair.first != nullptr && pair.second != nullptr)
      found[places.at(pair.second)] = indices.at(pair.first);
  return found;
}

std::unique_ptr<Rendering> renderWhole(Snapshot& snapshot) {
  auto own = std::make_unique<Rendering>(snapshot, Target{snapshot.source->form, {}});
  if (own->getLostFields().empty()) return own;
  return std::make_unique<Rendering>(snapshot, Target{Form::json, {}});
}

std::string makeEmpty(Form form) {
  Documents::ReadOptions options;
  options.form = Form::json;
  Document none({"new model", "", R"({"foundations": []})"}, options);
  std::ostringstream unused;
  OutputFile file(unused, "new model");
  Writing::Output output(file, form, none);
  output.write(none.getFoundations());
  return output.getMade().getContent().bytes;
}

}  // namespace Models
