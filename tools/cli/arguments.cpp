#include "arguments.h"

#include <stdexcept>

#include "files/user_error.h"
#include "mistakes.h"
#include "text/display_text.h"

namespace CommandLine {

void addVersion(CLI::App& command, std::optional<std::string>& version,
                const std::string& description) {
  command.add_option("--version", version, description)->type_name("VERSION");
}

const char* const versionOfFile =
    "version of an exchange document; when left out, 1.0 if it holds a Bedding element, else the "
    "current one";
const char* const versionOfIn = "version of an exchange document IN";

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
  command
      .add_option_function<std::string>(
          "--part", [&selection](const std::string& part) { selection.selectPart(parts.at(part)); },
          "area or line")
      ->check(CLI::IsMember(parts).description(""))
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

}  // namespace CommandLine
