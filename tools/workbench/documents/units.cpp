#include "documents/units.h"

#include <fmt/format.h>

#include "files/user_error.h"
#include "text/wording.h"

Units Documents::chooseUnits(const Document& document, const Units& given) {
  Units named = document.getUnits();
  if (named.force.empty()) return given;
  if (!given.force.empty() && given != named)
    throw UserError(
        fmt::format("{}: its units are {} and {}, not {} and {}; labels convert "
                    "nothing, {}",
                    document.getShownPath(), named.force, named.length, given.force, given.length,
                    Wording::get().converting));
  return named;
}
