#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "documents/document.h"
#include "foundations/selection.h"
#include "foundations/units.h"
#include "notes.h"

/// Arguments that several commands take.
namespace CommandLine {

/// Names on the command line, in the order that messages list them.
template <typename Value>
using Choices = std::vector<std::pair<std::string, Value>>;

template <typename Value>
Value choose(const Choices<Value>& choices, const std::string& name) {
  for (const auto& [known, value] : choices)
    if (known == name) return value;
  throw std::out_of_range(name);
}

/// Lets an option take only these names, which completion and errors list.
CLI::Option* offerChoices(CLI::Option& option, const std::vector<std::string>& names);

/// The names that an option takes; none where it takes anything.
std::vector<std::string> listChoices(CLI::Option& option);

template <typename Value>
CLI::Option* offerChoices(CLI::Option& option, const Choices<Value>& choices) {
  std::vector<std::string> names;
  for (const auto& choice : choices) names.push_back(choice.first);
  return offerChoices(option, names);
}

/// An option that takes one of these names.
template <typename Value>
CLI::Option* addChoice(CLI::App& command, const std::string& name, Value& value,
                       const Choices<Value>& choices, const std::string& description) {
  const auto take = [&value, choices](const std::string& chosen) {
    value = choose(choices, chosen);
  };
  return offerChoices(*command.add_option_function<std::string>(name, take, description), choices);
}

/// Describes the document that a command works on.
extern const char* const documentToRead;

/// How documents are read where they leave it open. `version` describes the option of that name.
void addReading(CLI::App& command, Documents::ReadOptions& reading, const std::string& version);

/// Descriptions of that option.
extern const char* const versionOfFile;
extern const char* const versionOfIn;

/// Labels of the units of stiffness.
void addUnits(CLI::App& command, Units& units);

/// The labels as they are shown; one that is blank counts as none. Throws UserError where only one
/// of them is given.
Units readUnits(const Units& given, const CLI::App& command);

/// How messages are told.
void addMessages(CLI::App& command, Commands::Notes& notes);

/// Numbers as an argument of their own, and options that select; all of them must hold.
void addSelectionOptions(CLI::App& command, Selection& selection);

/// Throws UserError for what is no list of numbers.
void selectNumbers(Selection& selection, const std::string& numbers, const CLI::App& command);

/// Numbers that were given as an argument.
using Numbers = std::shared_ptr<std::string>;

Numbers addSelection(CLI::App& command, Selection& selection);

/// Files and numbers behind them, as they were given.
using FilesAndNumbers = std::shared_ptr<std::vector<std::string>>;

FilesAndNumbers addFilesAndSelection(CLI::App& command, Selection& selection);

/// Tells numbers from files: the first argument is a file, and the last of several are numbers when
/// it looks like them. Throws UserError.
void readFilesAndNumbers(const FilesAndNumbers& arguments, std::vector<std::string>& paths,
                         Selection& selection, const CLI::App& command);

}  // namespace CommandLine
