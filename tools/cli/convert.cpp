#include <string>
#include <vector>

#include "commands.h"
#include "documents/document.h"
#include "documents/losses.h"
#include "documents/writing.h"
#include "files/user_error.h"
#include "losses.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"

namespace {

using Documents::Form;
using Losses::Loss;

/// All that is lost of IN, and all that goes from what is there.
std::vector<Loss> listLosses(Writing::Output& output, const Found::FoundationManager& manager,
                             Form form) {
  std::vector<Loss> losses = output.listLosses(manager);
  const auto append = [&losses](const std::vector<Loss>& more) {
    losses.insert(losses.end(), more.begin(), more.end());
  };
  if (output.isUpdate() && !output.isSameFile()) append(output.listReplaced());
  append(output.getUnread());
  if (form == Form::exchange && !output.isSameFile()) append(Losses::listHalved(output.getMade()));
  return losses;
}

}  // namespace

namespace Commands {

Status convert(const ConvertOptions& options, Notes& notes) {
  tellPhase("reading", options.in, notes);
  Documents::Document in(Documents::readFile(options.in, options.reading.form), options.reading);
  const std::size_t skipped = tellReading(in, notes);
  Found::FoundationManager& manager = in.getFoundations();
  notes.setPhase("writing");
  OutputFile file = openOutput(options.out);
  Writing::Output output(file, options.form, in, options.reading.dialect);
  output.isUpdate() ? output.update(manager) : output.write(manager);

  const std::vector<Loss> losses = listLosses(output, manager, options.form);
  tellLosses(output.getShownPath(), losses, options.showsAll, notes);
  // What was not read of a document that is edited in place stays in it.
  const bool staysInPlace = output.isUpdate() && output.isSameFile();
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
  return Status::done;
}

}  // namespace Commands
