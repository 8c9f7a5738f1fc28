#pragma once

/// The forms of documents.
namespace Documents {

/// A Kvml listing is only written; no reader reads its foundations. A table (csv) and data (json)
/// hold all that a foundation has, and nothing else.
enum class Form { legacy, exchange, firstExchange, kvml, csv, json };

constexpr bool isSpreadsheet(Form form) { return form == Form::csv || form == Form::json; }

/// The first exchange version, which differs from all later ones.
constexpr const char* firstVersion = "1.0";

/// The version to give to the exchange classes for this form.
constexpr const char* getVersion(Form form) {
  return form == Form::firstExchange ? firstVersion : "current";
}

}  // namespace Documents
