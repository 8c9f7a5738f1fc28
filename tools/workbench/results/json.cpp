#include "results/json.h"

#include <cmath>
#include <variant>

#include "text/display_text.h"

namespace Results {
namespace {

struct Maker {
  Json operator()(std::monostate) const { return nullptr; }
  Json operator()(double number) const {
    return std::isfinite(number) ? Json(number) : Json(DisplayText::fromNumber(number));
  }
  template <class Other>
  Json operator()(const Other& other) const {
    return other;
  }
};

}  // namespace

Json toJson(const Fields::Value& value) { return std::visit(Maker(), value); }

std::string print(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace Results
