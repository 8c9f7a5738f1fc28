#include "forms.h"

#include "text/display_text.h"

namespace Engine::Forms {
namespace {

using Documents::Form;

struct Known {
  Form form;
  const char* name;
  const char* label;
  const char* ending;
};

constexpr Known forms[] = {{Form::legacy, "legacy", "Legacy model", ".xml"},
                           {Form::exchange, "exchange", "Exchange document", ".xml"},
                           {Form::firstExchange, "exchange-1.0", "Exchange document 1.0", ".xml"},
                           {Form::kvml, "kvml", "Kvml listing", ".xml"},
                           {Form::csv, "csv", "Table (CSV)", ".csv"},
                           {Form::json, "json", "Data (JSON)", ".json"}};

const Known& find(Form form) {
  const Known* known = forms;
  while (known->form != form) ++known;
  return *known;
}

std::optional<char> readSign(const Json& values, const char* key) {
  const std::string sign = values.value(key, std::string());
  if (sign.empty()) return std::nullopt;
  return sign[0];
}

}  // namespace

const char* getName(Form form) { return find(form).name; }
const char* getLabel(Form form) { return find(form).label; }
const char* getEnding(Form form) { return find(form).ending; }

Form read(const std::string& name) {
  for (const Known& known : forms)
    if (known.name == name) return known.form;
  throw UserError("there is no form \"" + DisplayText::fromName(name) + "\"");
}

Json listAll() {
  Json all = Json::array();
  for (const Known& known : forms)
    all.push_back({{"form", known.name},
                   {"label", known.label},
                   {"ending", known.ending},
                   {"isRead", known.form != Form::kvml},
                   {"isTable", known.form == Form::csv}});
  return all;
}

std::optional<Spreadsheets::Dialect> readDialect(const Json& values) {
  const Spreadsheets::Dialect dialect = {readSign(values, "separator"),
                                         readSign(values, "decimal")};
  if (!dialect.separator && !dialect.decimal) return std::nullopt;
  return dialect;
}

Documents::ReadOptions readOptions(const Json& values) {
  Documents::ReadOptions options;
  const std::string form = values.value("form", std::string());
  if (!form.empty()) options.form = read(form);
  const std::string version = values.value("version", std::string());
  if (!version.empty()) options.version = version;
  options.dialect = readDialect(values).value_or(Spreadsheets::Dialect());
  return options;
}

Json tellOptions(const Documents::ReadOptions& options) {
  Json told = Json::object();
  if (options.form) told["form"] = getName(*options.form);
  if (options.version) told["version"] = *options.version;
  const auto tell = [&](const char* key, std::optional<char> sign) {
    if (sign) told[key] = std::string(1, *sign);
  };
  tell("separator", options.dialect.separator);
  tell("decimal", options.dialect.decimal);
  return told;
}

}  // namespace Engine::Forms
