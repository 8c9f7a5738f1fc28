#pragma once

/// The forms of documents.
namespace Documents {

/// A Kvml listing is only written; no reader reads its foundations.
enum class Form { legacy, exchange, firstExchange, kvml };

/// The first exchange version, which differs from all later ones.
constexpr const char* firstVersion = "1.0";

/// The version to give to the exchange classes for this form.
constexpr const char* getVersion(Form form) {
  return form == Form::firstExchange ? firstVersion : "current";
}

}  // namespace Documents
