#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "foundations/fields.h"

namespace Results {

using Json = nlohmann::ordered_json;

/// Null for nothing; an infinity and what is not a number become texts, since JSON lacks them.
Json toJson(const Fields::Value& value);

/// Indented, with a line end. Bytes that are no UTF-8 are replaced.
std::string print(const Json& json);

}  // namespace Results
