#pragma once

#include <map>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "documents/document.h"
#include "foundations/selection.h"
#include "notes.h"

/// Arguments that several commands take.
namespace CommandLine {

/// Names on the command line, in the order that messages list them.
template <typename Value>
using Choices = std::map<std::string, Value>;

/// An option that takes one of these names. The description lists them, which an error repeats.
template <typename Value>
CLI::Option* addChoice(CLI::App& command, const std::string& name, Value& value,
                       const Choices<Value>& choices, const std::string& description) {
  const auto choose = [&value, choices](const std::string& chosen) { value = choices.at(chosen); };
  return command.add_option_function<std::string>(name, choose, description)
      ->check(CLI::IsMember(choices).description(""));
}

/// How documents are read where they leave it open. `version` describes the option of that name.
void addReading(CLI::App& command, Documents::ReadOptions& reading, const std::string& version);

/// Descriptions of that option.
extern const char* const versionOfFile;
extern const char* const versionOfIn;

/// How messages are told.
void addMessages(CLI::App& command, Commands::Notes& notes);

/// Numbers as an argument of their own, and options that select; all of them must hold.
void addSelectionOptions(CLI::App& command, Selection& selection);

/// Throws UserError for what is no list of numbers.
void selectNumbers(Selection& selection, const std::string& numbers, const CLI::App& command);

/// Numbers that were given as an argument.
using Numbers = std::shared_ptr<std::string>;

Numbers addSelection(CLI::App& command, Selection& selection);

}  // namespace CommandLine
