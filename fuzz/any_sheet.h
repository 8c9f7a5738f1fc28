#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "any_document.h"
#include "documents/editing.h"
#include "property.h"

namespace Fuzz {

/// Any bytes as a table or data; null where they are none that can be read.
inline std::unique_ptr<Documents::Document> openSheet(const std::string& bytes,
                                                      const Documents::ReadOptions& options) {
  try {
    return std::make_unique<Documents::Document>(Files::Content{"file", "", bytes}, options);
  } catch (const UserError& error) {
    require(std::string(error.what()).compare(0, 5, "file:") == 0, "an error names its file",
            error.what());
    return nullptr;
  }
}

/// Each field of each foundation, as exactly as it is written.
inline std::string describe(Documents::Document& document) {
  const Found::FoundationManager& manager = document.getFoundations();
  std::string text;
  for (Found::Foundation* foundation : manager.getFoundations()) {
    for (const Fields::Field& field : Fields::list())
      text += Fields::show(field.get(*foundation)) + " ";
    text += foundation == manager.getCurrentFoundation() ? "current\n" : "\n";
  }
  return text;
}

/// What the form makes of the foundations of `document` reads back the same.
template <class Write>
void checkWriting(Documents::Document& document, Documents::Form form, const Write& write) {
  std::ostringstream out;
  write(document.getFoundations(), document.getSheet()->units, out);
  Documents::ReadOptions options;
  options.form = form;
  const auto again = openSheet(out.str(), options);
  require(again != nullptr, "what was written can be read", out.str());
  require(describe(*again) == describe(document), "what was written reads back the same",
          out.str());
  require(again->getSheet()->units.force == document.getSheet()->units.force,
          "units read back the same", out.str());
}

inline void checkUnchanged(Documents::Document& document) {
  const Editing::Draft same(document);
  require(Editing::edit(document, same.makeWish()) == nullptr, "nothing changes without a change");
}

}  // namespace Fuzz
