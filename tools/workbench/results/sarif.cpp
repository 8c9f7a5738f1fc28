#include <algorithm>
#include <string>

#include "results/check_results.h"
#include "results/json.h"
#include "results/uri.h"

namespace Results {
namespace {

/// Of the errors, which no check finds.
constexpr Checks::Rule unreadable = {"unreadable", "The document cannot be read."};

/// Braces stand for arguments of a message, unless they are doubled.
std::string escape(const std::string& sentence) {
  std::string text;
  for (const char c : sentence) text.append(c == '{' || c == '}' ? 2 : 1, c);
  return text;
}

Json makeMessage(const std::string& sentence) { return {{"text", escape(sentence)}}; }

Json makeRule(const Checks::Rule& rule, const char* level) {
  Json json;
  json["id"] = rule.name;
  json["shortDescription"] = {{"text", rule.description}};
  json["defaultConfiguration"] = {{"level", level}};
  return json;
}

Json makeDriver() {
  Json rules = Json::array();
  for (const Checks::Rule* rule : Checks::Rules::list())
    rules.push_back(makeRule(*rule, "warning"));
  rules.push_back(makeRule(unreadable, "error"));
  Json driver;
  driver["name"] = "kvfound";
  driver["version"] = KVFOUND_VERSION;
  driver["semanticVersion"] = KVFOUND_VERSION;
  driver["rules"] = std::move(rules);
  return driver;
}

std::size_t findIndex(const Checks::Rule* rule) {
  const std::vector<const Checks::Rule*>& rules = Checks::Rules::list();
  return static_cast<std::size_t>(std::find(rules.begin(), rules.end(), rule) - rules.begin());
}

Json makeArtifactLocation(const CheckedFile& file) {
  return {{"uri", file.path.empty() ? "stdin" : makeUri(file.path)}};
}

Json makeLocation(const CheckedFile& file, std::size_t index, const Result& result) {
  Json place;
  place["artifactLocation"] = makeArtifactLocation(file);
  place["artifactLocation"]["index"] = index;
  if (result.position.line > 0) place["region"]["startLine"] = result.position.line;
  if (result.position.column > 0) place["region"]["startColumn"] = result.editorColumn;
  Json location;
  location["physicalLocation"] = std::move(place);
  if (!result.foundation.empty())
    location["logicalLocations"] = Json::array({{{"fullyQualifiedName", result.foundation}}});
  return location;
}

Json makeResult(const CheckedFile& file, std::size_t index, const Result& result) {
  Json json;
  json["ruleId"] = result.rule != nullptr ? result.rule->name : unreadable.name;
  json["ruleIndex"] = findIndex(result.rule);  // the rule of errors is the last one
  json["level"] = result.rule != nullptr ? "warning" : "error";
  json["message"] = makeMessage(result.sentence);
  json["locations"] = Json::array({makeLocation(file, index, result)});
  return json;
}

Json makeRun(const std::vector<CheckedFile>& files) {
  Json artifacts = Json::array();
  Json results = Json::array();
  bool isComplete = true;
  for (const CheckedFile& file : files) {
    for (const Result& result : file.results)
      results.push_back(makeResult(file, artifacts.size(), result));
    artifacts.push_back(
        {{"location", makeArtifactLocation(file)}, {"roles", Json::array({"analysisTarget"})}});
    isComplete = isComplete && file.isRead();
  }
  Json run;
  run["tool"] = {{"driver", makeDriver()}};
  run["invocations"] = Json::array({{{"executionSuccessful", isComplete}}});
  run["columnKind"] = "utf16CodeUnits";
  run["artifacts"] = std::move(artifacts);
  run["results"] = std::move(results);
  return run;
}

}  // namespace

std::string makeSarif(const std::vector<CheckedFile>& files) {
  Json log;
  log["$schema"] = "https://json.schemastore.org/sarif-2.1.0.json";
  log["version"] = "2.1.0";
  log["runs"] = Json::array({makeRun(files)});
  return print(log);
}

}  // namespace Results
