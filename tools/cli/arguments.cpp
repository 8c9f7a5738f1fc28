#include "arguments.h"

#include <stdexcept>
#include <string_view>

#include "files/user_error.h"
#include "mistakes.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace CommandLine {
namespace {

/// A file that is called so can be named ./5.
bool looksLikeNumbers(const std::string& argument) {
  const bool hasDigit = argument.find_first_of("0123456789") != argument.npos;
  return hasDigit && argument.find_first_not_of("0123456789,-") == argument.npos;
}

/// A unit as it is shown.
std::string readUnit(const std::string& given) {
  std::string unit = DisplayText::fromName(given);
  return Utf8::isBlank(std::string_view(unit)) ? "" : unit;
}

}  // namespace

CLI::Option* offerChoices(CLI::Option& option, const std::vector<std::string>& names) {
  // The name of the check is where an option keeps what it takes.
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ",") + name;
  return option.check(CLI::IsMember(names).description("").name(list));
}

std::vector<std::string> listChoices(CLI::Option& option) {
  try {
    return CLI::detail::split(option.get_validator(0)->get_name(), ',');
  } catch (const CLI::OptionNotFound&) {
    return {};
  }
}

void addReading(CLI::App& command, Documents::ReadOptions& reading, const std::string& version) {
  command.add_option("--version", reading.version, version)->type_name("VERSION");
  using Documents::Form;
  using Character = std::optional<char>;
  addChoice<std::optional<Form>>(command, "--from", reading.form,
                                 {{"csv", Form::csv}, {"json", Form::json}}, "csv or json")
      ->type_name("FORM")
      ->description("what is read is a table, csv, or json, though its name does not end so");
  addChoice<Character>(command, "--separator", reading.dialect.separator,
                       {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}},
                       "comma, semicolon or tab")
      ->type_name("CHARACTER")
      ->description("what separates the cells of a table: comma, semicolon or tab");
  addChoice<Character>(command, "--decimal", reading.dialect.decimal,
                       {{"point", '.'}, {"comma", ','}}, "point or comma")
      ->type_name("CHARACTER")
      ->description("what stands before the decimals in a table: point or comma");
}

const char* const documentToRead = "a legacy model, an exchange document, CSV or JSON, or -";
const char* const versionOfFile =
    "version of an exchange document; when left out, 1.0 if it holds a Bedding element, else the "
    "current one";
const char* const versionOfIn = "version of an exchange document IN";

void addUnits(CLI::App& command, Units& units) {
  command
      .add_option("--unit-force", units.force,
                  "the unit of force that the values are labelled with, such as kN; nothing is "
                  "converted")
      ->type_name("UNIT");
  command
      .add_option("--unit-length", units.length,
                  "the unit of length that they are labelled with, such as m")
      ->type_name("UNIT");
}

Units readUnits(const Units& given, const CLI::App& command) {
  Units units = {readUnit(given.force), readUnit(given.length)};
  if (units.force.empty() != units.length.empty())
    throw UserError("--unit-force and --unit-length are given together or not at all" +
                    makeAdvice(command));
  return units;
}

void addMessages(CLI::App& command, Commands::Notes& notes) {
  using Form = Commands::Notes::Form;
  static const Choices<Form> forms = {{"text", Form::text}, {"json", Form::json}};
  const auto take = [&notes](const std::string& form) { notes.setForm(choose(forms, form)); };
  offerChoices(*command.add_option_function<std::string>(
                   "--messages", take,
                   "how messages are told: text, or json, an object a line; text when left out"),
               forms)
      ->type_name("FORM");
  command.add_flag_callback(
      "-q,--quiet", [&notes] { notes.setQuiet(); }, "tell nothing on standard error but errors");
}

void addSelectionOptions(CLI::App& command, Selection& selection) {
  command
      .add_option_function<std::string>(
          "--name", [&selection](const std::string& pattern) { selection.selectName(pattern); },
          "only foundations whose name fits PATTERN, in which * stands for any characters and ? "
          "for one")
      ->type_name("PATTERN");
  command.add_flag_callback(
      "--generated", [&selection] { selection.selectGenerated(); }, "only generated foundations");
  using Part = Selection::Part;
  static const Choices<Part> parts = {{"area", Part::area}, {"line", Part::line}};
  const auto take = [&selection](const std::string& part) {
    selection.selectPart(choose(parts, part));
  };
  offerChoices(*command.add_option_function<std::string>("--part", take, "area or line"), parts)
      ->type_name("PART");
}

void selectNumbers(Selection& selection, const std::string& numbers, const CLI::App& command) {
  try {
    selection.selectNumbers(numbers);
  } catch (const std::invalid_argument&) {
    throw UserError("\"" + DisplayText::fromName(numbers) +
                    "\" is no list of numbers such as 3,5-9" + makeAdvice(command));
  }
}

Numbers addSelection(CLI::App& command, Selection& selection) {
  Numbers numbers = std::make_shared<std::string>();
  command.add_option("NUMBERS", *numbers, "only foundations with these numbers, such as 3,5-9");
  addSelectionOptions(command, selection);
  return numbers;
}

FilesAndNumbers addFilesAndSelection(CLI::App& command, Selection& selection) {
  FilesAndNumbers arguments = std::make_shared<std::vector<std::string>>();
  command
      .add_option("FILE", *arguments,
                  "the documents; standard input when it is - or left out. Behind them may stand "
                  "NUMBERS, such as 3,5-9: only foundations with these")
      ->option_text("[FILE...] [NUMBERS]");
  addSelectionOptions(command, selection);
  return arguments;
}

void readFilesAndNumbers(const FilesAndNumbers& arguments, std::vector<std::string>& paths,
                         Selection& selection, const CLI::App& command) {
  if (arguments->empty()) return;
  paths = *arguments;
  if (paths.size() == 1 || !looksLikeNumbers(paths.back())) return;
  selectNumbers(selection, paths.back(), command);
  paths.pop_back();
}

}  // namespace CommandLine
