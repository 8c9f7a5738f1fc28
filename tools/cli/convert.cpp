#include <ostream>
#include <string>
#include <vector>

#include "commands.h"
#include "documents/document.h"
#include "documents/writing.h"
#include "files/user_error.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"

namespace Commands {

Status convert(const ConvertOptions& options, std::ostream& notes) {
  Documents::Document in(Documents::readFile(options.in), options.version);
  const std::size_t skipped = tellReading(in, notes);
  const Found::FoundationManager& manager = in.getFoundations();
  OutputFile file = openOutput(options.out);
  Writing::Output output(file, options.form, in);
  output.isUpdate() ? output.update(manager) : output.write(manager);

  const std::vector<std::string> losses = output.listLosses(manager);
  for (const std::string& loss : losses)
    notes << "kvfound: " << DisplayText::fromName(output.getShownPath()) << ": " << loss << "\n";
  const bool losesAny = skipped + losses.size() > 0;
  if (losesAny && output.isSameFile())
    throw UserError(output.getShownPath() +
                    ": was not written, since something would be lost; name another file than IN");
  if (losesAny && options.isStrict) {
    notes << "kvfound: " << DisplayText::fromName(output.getShownPath())
          << ": was not written, since something would be lost\n";
    return Status::findings;
  }
  output.commit();
  return Status::done;
}

}  // namespace Commands
