#pragma once

#include <string>
#include <utility>
#include <vector>

#include "files/user_error.h"
#include "results/json.h"

namespace Engine {

using Results::Json;

/// What the page asks for.
struct Request {
  std::string name;
  Json values = Json::value_t::null;
  std::string bytes;  // of a document

  /// The value of this name; what stands for nothing where it is left out.
  std::string getText(const char* key) const { return values.value(key, std::string()); }
  bool getFlag(const char* key) const { return values.value(key, false); }
  double getNumber(const char* key) const { return values.value(key, 0.0); }
  std::size_t getIndex(const char* key) const { return values.at(key).get<std::size_t>(); }
  std::vector<std::size_t> getIndexes() const {
    return values.at("indexes").get<std::vector<std::size_t>>();
  }
};

/// An error with more to tell, a line each.
class DetailedError : public UserError {
 public:
  DetailedError(const std::string& sentence, std::vector<std::string> lines)
      : UserError(sentence), details(std::move(lines)) {}

  const std::vector<std::string>& getDetails() const { return details; }

 private:
  std::vector<std::string> details;
};

}  // namespace Engine
