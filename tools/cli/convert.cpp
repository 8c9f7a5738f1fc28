#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "documents/document.h"
#include "documents/editing.h"
#include "documents/losses.h"
#include "documents/units.h"
#include "documents/writing.h"
#include "files/user_error.h"
#include "foundations/conversion.h"
#include "foundations/scaling.h"
#include "losses.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"

namespace {

using Commands::Notes;
using Documents::Form;
using Losses::Loss;

bool isNamed(const Units& units) { return !units.force.empty(); }

std::string show(const Units& units) { return units.force + "," + units.length; }

/// How the units of the result are called; none where nothing tells them.
Units chooseUnits(const Documents::Document& in, const Commands::ConvertOptions& options) {
  if (!options.conversion) return Documents::chooseUnits(in, options.units);
  const Units& from = options.conversion->from;
  if (isNamed(from) && isNamed(in.getUnits()) && from != in.getUnits())
    throw UserError(in.getShownPath() + ": its units are " + show(in.getUnits()) + ", not " +
                    show(from) + "; nothing was converted");
  return isNamed(from) ? options.conversion->to : options.units;
}

/// Copies of the foundations in their new units.
std::unique_ptr<Editing::Draft> scale(Documents::Document& in, const Scaling::Scale& factors) {
  auto draft = std::make_unique<Editing::Draft>(in);
  try {
    Scaling::apply(factors, draft->getFoundations());
  } catch (const std::range_error& error) {
    throw UserError(in.getShownPath() + ": " + error.what() + "; nothing was written");
  }
  return draft;
}

/// What is not read of a document that is edited in place would stay in the old units.
void requireAllRead(Documents::Document& in) {
  for (const Documents::Entries& entries : in.getEntries())
    for (const Documents::Entry& entry : entries)
      if (entry.foundation == nullptr)
        throw UserError(in.getShownPath() +
                        ": was not written, since what cannot be read would keep its units; name "
                        "another file than IN");
}

std::string describe(const Scaling::Scale& factors, const Scaling::Conversion& conversion) {
  const auto show = [](const Scaling::Factor& factor) {
    return DisplayText::fromNumber(factor.multiply(1.0));
  };
  const std::string units =
      isNamed(conversion.from) ? " from " + ::show(conversion.from) + " to " + ::show(conversion.to)
                               : "";
  return "stiffness was scaled" + units + ": areas by " + show(factors.area) + ", lines by " +
         show(factors.line) + ", rotations by " + show(factors.rotation);
}

/// Why the result does not name units though IN does; empty when it does.
std::string explainUnnamed(const Documents::Document& in, const Units& units, Form form) {
  const Units named = in.getUnits();
  if (!isNamed(named)) return "";
  if (!Documents::isSpreadsheet(form))
    return "a document of this form names no units; those of IN are " + show(named);
  return isNamed(units) ? ""
                        : "names no units, since those of IN, " + show(named) +
                              ", hold no longer; --unit-force and --unit-length name others";
}

void tellNote(const char* kind, const std::string& shownPath, const std::string& sentence,
              Notes& notes) {
  notes.tell({Commands::Message::Level::note,
              kind,
              DisplayText::fromName(shownPath),
              {},
              "",
              DisplayText::fromName(sentence)});
}

}  // namespace

namespace Commands {

Status convert(const ConvertOptions& options, Notes& notes) {
  if (isNamed(options.units) && !Documents::isSpreadsheet(options.form))
    throw UserError("--unit-force and --unit-length label csv and json; other forms name no units");
  tellPhase("reading", options.in, notes);
  Documents::Document in(Documents::readFile(options.in, options.reading.form), options.reading);
  const std::size_t skipped = tellReading(in, notes);
  const Units units = ::chooseUnits(in, options);
  std::optional<Scaling::Scale> factors;
  std::unique_ptr<Editing::Draft> scaled;
  if (options.conversion) {
    factors.emplace(options.conversion->force, options.conversion->length);
    scaled = scale(in, *factors);
  }
  Found::FoundationManager& manager = scaled ? scaled->getFoundations() : in.getFoundations();
  notes.setPhase("writing");
  OutputFile file = openOutput(options.out);
  Writing::Output output(file, options.form, in, options.reading.dialect);
  if (options.conversion || isNamed(units)) output.nameUnits(units);
  // What was not read of a document that is edited in place stays in it.
  const bool staysInPlace = output.isUpdate() && output.isSameFile();
  if (scaled && staysInPlace) requireAllRead(in);
  output.isUpdate() ? output.update(manager) : output.write(manager);

  const std::vector<Loss> losses = output.listAllLosses(manager);
  tellLosses(output.getShownPath(), losses, options.showsAll, notes);
  const bool losesAny = !losses.empty() || (skipped > 0 && !staysInPlace);
  if (losesAny && output.isSameFile())
    throw UserError(output.getShownPath() +
                    ": was not written, since something would be lost; name another file than IN");
  if (losesAny && options.isStrict) {
    notes.tell({Message::Level::error,
                "refused",
                DisplayText::fromName(output.getShownPath()),
                {},
                "",
                "was not written, since something would be lost"});
    return Status::findings;
  }
  notes.setPhase("");
  output.commit();
  if (factors)
    tellNote("scaled", output.getShownPath(), describe(*factors, *options.conversion), notes);
  const std::string unnamed = explainUnnamed(in, units, options.form);
  if (!unnamed.empty()) tellNote("units", output.getShownPath(), unnamed, notes);
  return Status::done;
}

}  // namespace Commands
