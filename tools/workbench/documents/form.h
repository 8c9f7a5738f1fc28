#pragma once

/// The forms of documents.
namespace Documents {

/// A Kvml listing is only written: nothing reads its foundations.
enum class Form { legacy, exchange, firstExchange, kvml };

/// The exchange version that is unlike all later ones.
constexpr const char* firstVersion = "1.0";

/// The version that the exchange classes are given for this form.
constexpr const char* getVersion(Form form) {
  return form == Form::firstExchange ? firstVersion : "current";
}

}  // namespace Documents
