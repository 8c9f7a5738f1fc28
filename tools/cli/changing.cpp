#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "arguments.h"
#include "command_list.h"
#include "files/user_error.h"
#include "foundations/conversion.h"
#include "mistakes.h"
#include "text/display_text.h"

/// The commands that write documents.
namespace CommandLine {
namespace {

/// Options that scale, as they are given.
struct ScalingOptions {
  std::optional<std::string> force;
  std::optional<std::string> length;
  std::optional<std::string> units;
};

std::shared_ptr<ScalingOptions> addScaling(CLI::App& command) {
  auto options = std::make_shared<ScalingOptions>();
  command
      .add_option("--scale-force", options->force,
                  "convert stiffness to a unit of force of which the old one is FACTOR, such as "
                  "1000 from kN to N")
      ->type_name("FACTOR");
  command
      .add_option("--scale-length", options->length,
                  "the same for the unit of length, such as 1000 from m to mm")
      ->type_name("FACTOR");
  command
      .add_option("--units", options->units,
                  "the same by names, such as kN,m:N,mm; of force there are N, kN, MN, lbf and "
                  "kip, of length m, dm, cm, mm, ft and in")
      ->type_name("FROM:TO");
  return options;
}

/// Takes what `read` makes of the value of an option. Throws UserError for what it does not take.
template <class Read>
auto readOption(const char* option, const std::string& value, const CLI::App& command,
                const Read& read) {
  try {
    return read(value);
  } catch (const std::invalid_argument& error) {
    throw UserError(std::string(option) + " cannot be \"" + DisplayText::fromName(value) +
                    "\": " + error.what() + makeAdvice(command));
  }
}

std::optional<Scaling::Conversion> readScaling(const ScalingOptions& options,
                                               const CLI::App& command) {
  if (options.units && (options.force || options.length))
    throw UserError(
        "--units tells the factors already; leave --scale-force and --scale-length out" +
        makeAdvice(command));
  if (options.units) return readOption("--units", *options.units, command, Scaling::readConversion);
  if (!options.force && !options.length) return std::nullopt;
  Scaling::Conversion conversion;
  if (options.force)
    conversion.force.over = readOption("--scale-force", *options.force, command, readDecimal);
  if (options.length)
    conversion.length.over = readOption("--scale-length", *options.length, command, readDecimal);
  return conversion;
}

}  // namespace

void addConvert(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::ConvertOptions>();
  CLI::App* const command = program.add_subcommand(
      "convert", "Writes the foundations of a document in another form and tells what is lost");
  command->add_option("IN", options->in, documentToRead)->required();
  command
      ->add_option("OUT", options->out,
                   "the file to write, or -; may be IN. Of a document of the same form that is "
                   "there, only the foundations change")
      ->required();
  using Documents::Form;
  addChoice<Form>(*command, "--to", options->form,
                  {{"legacy", Form::legacy},
                   {"exchange", Form::exchange},
                   {"exchange-1.0", Form::firstExchange},
                   {"kvml", Form::kvml},
                   {"csv", Form::csv},
                   {"json", Form::json}},
                  "legacy, exchange, exchange-1.0, kvml, csv or json")
      ->required()
      ->type_name("FORM");
  command->add_flag("--strict", options->isStrict,
                    "write nothing when something would be lost, and exit with 1");
  command->add_flag("--all", options->showsAll, "tell every loss, not only ten of a kind");
  addUnits(*command, options->units);
  const auto scaling = addScaling(*command);
  addReading(*command, options->reading, versionOfIn);
  addMessages(*command, run.notes);
  command->footer("Example: kvfound convert model.xml beddings.xml --to exchange");
  command->callback([options, scaling, command, &run] {
    options->units = readUnits(options->units, *command);
    options->conversion = readScaling(*scaling, *command);
    if (scaling->units && !options->units.force.empty())
      throw UserError("--units names the units already; leave --unit-force and --unit-length out" +
                      makeAdvice(*command));
    run.status = Commands::convert(*options, run.notes);
  });
}

void addMerge(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::MergeOptions>();
  CLI::App* const command = program.add_subcommand(
      "merge",
      "Takes the foundations of documents over into another one, where they change those of the "
      "same number and name, and removes nothing");
  const auto documents = std::make_shared<std::vector<std::string>>();
  command
      ->add_option(
          "IN", *documents,
          "legacy models, exchange documents, CSV or JSON, one of them may be -; the last one is "
          "INTO, the document that they come into, which is edited in place")
      ->required()
      ->expected(2, 1000000)
      ->option_text("IN... INTO");
  command->add_option("-o,--output", options->out, "write to OUT and leave INTO as it is")
      ->type_name("OUT");
  using Comparing::OnClash;
  addChoice<OnClash>(*command, "--on-clash", options->onClash,
                     {{"refuse", OnClash::refuse},
                      {"rename", OnClash::rename},
                      {"renumber", OnClash::renumber},
                      {"skip", OnClash::skip},
                      {"replace", OnClash::replace}},
                     "refuse, rename, renumber, skip or replace")
      ->type_name("RULE")
      ->description(
          "what becomes of a foundation whose number or name another one has in INTO: rename gives "
          "it a free name, renumber a free number, skip leaves it out, replace puts it in the "
          "place of the other; refuse when left out");
  command->add_flag("--dry-run", options->isDryRun, "only tell what would change");
  command->add_flag("--all", options->showsAll, "tell every loss, not only ten of a kind");
  addReading(*command, options->reading, "version of exchange documents");
  addMessages(*command, run.notes);
  command->footer("Example: kvfound merge beddings.xml model.xml --dry-run");
  command->callback([options, documents, &run] {
    options->into = documents->back();
    options->in.assign(documents->begin(), documents->end() - 1);
    run.status = Commands::merge(*options, std::cout, run.notes);
  });
}

void addSet(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::SetOptions>();
  const auto arguments = std::make_shared<std::vector<std::string>>();
  CLI::App* const command = program.add_subcommand(
      "set", "Changes fields of foundations of a document in place, and prints what changed");
  command->add_option("FILE", options->path, documentToRead)->required();
  command
      ->add_option("FIELD=VALUE", *arguments,
                   "numbers of foundations, such as 3,5-9, and what is set, such as areaZ=16000; "
                   "fields are named as show --format csv names them, and nothing behind = takes a "
                   "stiffness away")
      ->required()
      ->option_text("[NUMBERS] FIELD=VALUE...");
  addSelectionOptions(*command, options->selection);
  addReading(*command, options->reading, versionOfFile);
  addMessages(*command, run.notes);
  command->footer("Example: kvfound set model.xml 3 areaZ=16000 areaFailureZ=tension");
  command->callback([options, arguments, command, &run] {
    for (const std::string& argument : *arguments)
      if (argument.find('=') != argument.npos)
        options->assignments.push_back(argument);
      else
        selectNumbers(options->selection, argument, *command);
    run.status = Commands::set(*options, std::cout, run.notes);
  });
}

void addAdd(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::AddOptions>();
  CLI::App* const command =
      program.add_subcommand("add", "Adds a foundation to a document in place");
  command->add_option("FILE", options->path, documentToRead)->required();
  command->add_option("NAME", options->name, "what the foundation is called")->required();
  command
      ->add_option("FIELD=VALUE", options->assignments,
                   "what it holds, such as areaZ=16000; the next free number when none is given")
      ->option_text("FIELD=VALUE...");
  addReading(*command, options->reading, versionOfFile);
  addMessages(*command, run.notes);
  command->footer(
      "Example: kvfound add model.xml \"New footing\" areaX=1500 areaY=1500 areaZ=20000");
  command->callback(
      [options, &run] { run.status = Commands::add(*options, std::cout, run.notes); });
}

void addRemove(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::SetOptions>();
  CLI::App* const command =
      program.add_subcommand("remove", "Removes foundations from a document in place");
  command->add_option("FILE", options->path, documentToRead)->required();
  const Numbers numbers = addSelection(*command, options->selection);
  addReading(*command, options->reading, versionOfFile);
  addMessages(*command, run.notes);
  command->footer("Example: kvfound remove model.xml 3,5-9");
  command->callback([options, numbers, command, &run] {
    if (!numbers->empty()) selectNumbers(options->selection, *numbers, *command);
    run.status = Commands::remove(*options, std::cout, run.notes);
  });
}

void addPrune(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::PruneOptions>();
  CLI::App* const command =
      program.add_subcommand("prune", "Removes foundations that were generated or are not used");
  command->add_option("IN", options->in, documentToRead)->required();
  command
      ->add_option("OUT", options->out,
                   "the file to write, in the form of IN, or -; may be IN. It is IN without the "
                   "foundations removed, or where OUT is another such document, OUT with those "
                   "that are left")
      ->required();
  command->add_flag("--generated", options->isGenerated,
                    "remove generated foundations and number the rest 1, 2, 3, ...");
  command
      ->add_option("--used-by", options->usedBy,
                   "keep the foundations whose number or name stands in FILE, one a line, and "
                   "remove all others; with --generated only others that were generated")
      ->type_name("FILE");
  command->add_flag("--ignore-missing", options->ignoresMissing,
                    "go on when lines of the list fit no foundation, which is an error otherwise");
  command->add_flag("--keep-numbers", options->keepsNumbers,
                    "leave the numbers of those that stay as they are");
  addReading(*command, options->reading, versionOfIn);
  addMessages(*command, run.notes);
  command->footer("Example: kvfound prune model.xml pruned.xml --generated");
  command->callback([options, &run] { run.status = Commands::prune(*options, run.notes); });
}

}  // namespace CommandLine
