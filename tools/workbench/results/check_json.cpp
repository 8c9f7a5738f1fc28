#include "results/check_results.h"
#include "results/json.h"

namespace Results {
namespace {

constexpr int version = 1;  // changes when names do

Json makeResult(const CheckedFile& file, const Result& result) {
  Json json;
  json["file"] = file.shownPath;
  if (result.position.line > 0) json["line"] = result.position.line;
  if (result.position.column > 0) json["column"] = result.position.column;
  json["level"] = result.rule != nullptr ? "warning" : "error";
  json["rule"] = result.rule != nullptr ? result.rule->name : "unreadable";
  if (!result.foundation.empty()) json["foundation"] = result.foundation;
  json["sentence"] = result.sentence;
  return json;
}

}  // namespace

std::string makeCheckJson(const std::vector<CheckedFile>& files) {
  Json names = Json::array();
  Json results = Json::array();
  for (const CheckedFile& file : files) {
    names.push_back(file.shownPath);
    for (const Result& result : file.results) results.push_back(makeResult(file, result));
  }
  Json json;
  json["format"] = "kvfound-check";
  json["version"] = version;
  json["files"] = std::move(names);
  json["findings"] = std::move(results);
  return print(json);
}

}  // namespace Results
