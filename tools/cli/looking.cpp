#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "arguments.h"
#include "command_list.h"
#include "files/user_error.h"
#include "mistakes.h"

/// The commands that look at documents.
namespace CommandLine {

void addShow(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::ShowOptions>();
  CLI::App* const command = program.add_subcommand(
      "show",
      "Prints the foundations of models, exchange documents, CSV and JSON, as a table or as data");
  const FilesAndNumbers arguments = addFilesAndSelection(*command, options->selection);
  using Format = Commands::ShowOptions::Format;
  addChoice<Format>(*command, "--format", options->format,
                    {{"table", Format::table}, {"json", Format::json}, {"csv", Format::csv}},
                    "table, json or csv")
      ->type_name("FORMAT");
  addUnits(*command, options->units);
  addReading(*command, options->reading, versionOfFile);
  addMessages(*command, run.notes);
  command->footer("Example: kvfound show model.xml --format csv");
  command->callback([options, arguments, command, &run] {
    readFilesAndNumbers(arguments, options->paths, options->selection, *command);
    options->units = readUnits(options->units, *command);
    run.status = Commands::show(*options, std::cout, run.notes);
  });
}

void addCheck(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::CheckOptions>();
  CLI::App* const command = program.add_subcommand(
      "check",
      "Warns of what readers of documents accept in silence; exits with 1 when it found something, "
      "with 2 when a document cannot be read");
  command->add_option("FILE", options->paths,
                      "the documents; standard input when it is - or left out");
  using Format = Commands::CheckOptions::Format;
  addChoice<Format>(*command, "--format", options->format,
                    {{"text", Format::text}, {"json", Format::json}, {"sarif", Format::sarif}},
                    "text, json or sarif")
      ->type_name("FORMAT");
  addReading(*command, options->reading,
             "version of exchange documents; when left out, 1.0 for one that holds a Bedding "
             "element, else the current one");
  addMessages(*command, run.notes);
  command->footer("Example: kvfound check model.xml beddings.xml");
  command->callback(
      [options, &run] { run.status = Commands::check(*options, std::cout, run.notes); });
}

void addDiff(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::DiffOptions>();
  CLI::App* const command = program.add_subcommand(
      "diff", "Tells how the foundations of two documents differ, whatever their forms");
  command->add_option("A", options->first, "the document before, or -")->required();
  command->add_option("B", options->second, "the document after, or -")->required();
  using Matching::Key;
  using Keys = std::vector<Key>;
  addChoice<Keys>(*command, "--by", options->keys,
                  {{"number", Keys{Key::number}}, {"name", Keys{Key::name}}}, "number or name")
      ->type_name("KEY")
      ->description(
          "pair foundations that do not have number and name alike by number or by name only; "
          "by name, then by number when left out");
  command
      ->add_option("--relative", options->relative,
                   "take stiffness and factors for alike that differ by no more than this share of "
                   "the larger one, such as 1e-6")
      ->type_name("SHARE");
  using Format = Commands::DiffOptions::Format;
  addChoice<Format>(*command, "--format", options->format,
                    {{"text", Format::text}, {"json", Format::json}, {"html", Format::html}},
                    "text, json, or html for a page to look at and to print")
      ->type_name("FORMAT");
  command
      ->add_option("-o,--output", options->out,
                   "the file to write; standard output when it is - or left out")
      ->type_name("OUT");
  addReading(*command, options->reading, "version of exchange documents");
  addMessages(*command, run.notes);
  command->footer(
      "Exit status: 0 when the foundations are alike, 1 when they differ, 2 after an error.\n"
      "Example: kvfound diff before.xml after.xml --format html -o changes.html");
  command->callback([options, command, &run] {
    if (!(options->relative >= 0.0 && options->relative <= 1.0))
      throw UserError("--relative takes a share from 0 to 1, such as 1e-6" + makeAdvice(*command));
    run.status = Commands::diff(*options, run.notes);
  });
}

void addReport(CLI::App& program, Run& run) {
  const auto options = std::make_shared<Commands::ReportOptions>();
  CLI::App* const command = program.add_subcommand(
      "report",
      "Makes a page of HTML that shows the foundations of a document in pictures and in a table, "
      "with what check finds");
  const FilesAndNumbers arguments = addFilesAndSelection(*command, options->selection);
  command
      ->add_option("-o,--output", options->out,
                   "the file to write, or the folder that gets a page for each document; standard "
                   "output when it is - or left out")
      ->type_name("OUT");
  addUnits(*command, options->units);
  addReading(*command, options->reading, versionOfFile);
  addMessages(*command, run.notes);
  command->footer(
      "Example: kvfound report model.xml -o model.html --unit-force kN --unit-length m");
  command->callback([options, arguments, command, &run] {
    readFilesAndNumbers(arguments, options->in, options->selection, *command);
    options->units = readUnits(options->units, *command);
    run.status = Commands::report(*options, run.notes);
  });
}

}  // namespace CommandLine
