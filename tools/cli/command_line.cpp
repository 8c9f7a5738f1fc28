#include "command_line.h"

#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "files/user_error.h"
#include "terminal.h"
#include "text/display_text.h"
#include "text/near_name.h"

namespace CommandLine {
namespace {

/// The help of the program and its commands, in lines that fit the terminal.
class Help : public CLI::Formatter {
 public:
  Help() {
    column_width(24);
    label("SUBCOMMAND", "COMMAND");
  }

  std::string make_description(const CLI::App* app) const override {
    return wrap(app->get_description(), width) + "\n";
  }

  std::string make_option_desc(const CLI::Option* option) const override {
    return wrap(option->get_description(), width - get_column_width());
  }

  /// Only the name of the value: the line of usage tells which arguments must be given.
  std::string make_option_opts(const CLI::Option* option) const override {
    if (option->get_positional() || option->get_type_size() == 0) return "";
    const std::string type = option->get_type_name();
    return " " + type.substr(type.find(':') + 1) + (option->get_required() ? " (required)" : "");
  }

  std::string make_subcommand(const CLI::App* command) const override {
    std::ostringstream out;
    CLI::detail::format_help(out, command->get_name(),
                             wrap(command->get_description(), width - get_column_width()),
                             get_column_width());
    return out.str();
  }

 private:
  static std::string wrap(const std::string& text, std::size_t places) {
    return DisplayText::wrap(CLI::detail::split(text, ' '), " ", places);
  }

  std::size_t width = Terminal::getWidth(stdout);
};

std::vector<std::string> listOptions(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options())
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  return names;
}

std::vector<std::string> listCommands(const CLI::App& program) {
  std::vector<std::string> names;
  for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

/// The command that was named, or the program when there was none.
const CLI::App& getCommand(const CLI::App& program) {
  const std::vector<CLI::App*> named = program.get_subcommands();
  return named.empty() ? program : *named.back();
}

/// Where the user finds out more.
std::string makeAdvice(const CLI::App& command, const std::optional<std::string>& near = {}) {
  const CLI::App* const program = command.get_parent();
  const std::string help =
      (program != nullptr ? program->get_name() + " " : "") + command.get_name() + " --help";
  return near ? "; did you mean " + *near + "? See " + help : "; see " + help;
}

std::string describeUnknown(const CLI::App& command, const std::string& argument) {
  if (argument.size() > 1 && argument[0] == '-') {
    const std::string name = argument.substr(0, argument.find('='));
    return "there is no option \"" + name + "\"" +
           makeAdvice(command, findNearName(name, listOptions(command)));
  }
  const bool isCommand = command.get_parent() == nullptr && command.get_subcommands().empty();
  if (isCommand)
    return "there is no command \"" + argument + "\"" +
           makeAdvice(command, findNearName(argument, listCommands(command)));
  return "\"" + argument + "\" is one argument too many" + makeAdvice(command);
}

std::string describeMissing(const CLI::App& command) {
  for (const CLI::Option* option : command.get_options())
    if (option->get_required() && option->count() == 0)
      return option->get_name() + " is missing" + makeAdvice(command);
  return "a command is missing" + makeAdvice(command);
}

/// An option that was given twice, or stands at the end without its value.
std::string describeMismatch(const CLI::App& command, const std::string& lastArgument) {
  for (const CLI::Option* option : command.get_options())
    if (option->count() > 1 && option->get_expected_max() == 1)
      return option->get_name() + " is given more than once" + makeAdvice(command);
  return lastArgument + " needs a value" + makeAdvice(command);
}

/// The option's help text is a list of its values.
std::string describeWrongValue(const CLI::App& command, const CLI::ParseError& error) {
  const std::string text = error.what();
  for (const CLI::Option* option : command.get_options())
    if (text.rfind(option->get_name() + ":", 0) == 0)
      return option->get_name() + " cannot be \"" + option->results().front() + "\", only " +
             option->get_description() + makeAdvice(command);
  return text + makeAdvice(command);
}

std::string describe(const CLI::App& program, const CLI::ParseError& error,
                     const std::string& lastArgument) {
  const CLI::App& command = getCommand(program);
  // Reported first: the user may have meant this one to be the argument that is missing.
  for (const CLI::App* app : {&program, &command})
    for (const std::string& argument : app->remaining())
      if (argument != "--") return describeUnknown(*app, argument);
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) return describeMissing(command);
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
    return describeMismatch(command, lastArgument);
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr)
    return describeWrongValue(command, error);
  return error.what() + makeAdvice(command);
}

// --- The commands. Each runs when it is named; `status` then tells how it ended.

using Commands::Status;

/// Names on the command line, in the order that messages list them.
template <typename Value>
using Choices = std::map<std::string, Value>;

template <typename Value>
CLI::Option* addChoice(CLI::App& command, const std::string& name, Value& value,
                       const Choices<Value>& choices, const std::string& description) {
  const auto choose = [&value, choices](const std::string& chosen) { value = choices.at(chosen); };
  return command.add_option_function<std::string>(name, choose, description)
      ->check(CLI::IsMember(choices).description(""));
}

void addVersion(CLI::App& command, std::optional<std::string>& version,
                const std::string& description) {
  command.add_option("--version", version, description)->type_name("VERSION");
}

const std::string versionOfFile =
    "version of an exchange document; when left out, 1.0 if it holds a Bedding element, else the "
    "current one";
const std::string versionOfIn = "version of an exchange document IN";

/// Numbers as an argument of their own, and options that select; all of them must hold.
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

/// Numbers that were given as an argument.
using Numbers = std::shared_ptr<std::string>;

Numbers addSelection(CLI::App& command, Selection& selection) {
  Numbers numbers = std::make_shared<std::string>();
  command.add_option("NUMBERS", *numbers, "only foundations with these numbers, such as 3,5-9");
  addSelectionOptions(command, selection);
  return numbers;
}

void addShow(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::ShowOptions>();
  CLI::App* const command = program.add_subcommand(
      "show",
      "Prints the foundations of a legacy model or an exchange document, as a table or as data");
  command->add_option("FILE", options->path,
                      "the document; standard input when it is - or left out");
  const Numbers numbers = addSelection(*command, options->selection);
  using Format = Commands::ShowOptions::Format;
  addChoice<Format>(*command, "--format", options->format,
                    {{"table", Format::table}, {"json", Format::json}, {"csv", Format::csv}},
                    "table, json or csv")
      ->type_name("FORMAT");
  addVersion(*command, options->version, versionOfFile);
  command->footer("Example: kvfound show model.xml --format csv");
  command->callback([options, numbers, command, &status] {
    if (!numbers->empty()) selectNumbers(options->selection, *numbers, *command);
    status = show(*options, std::cout, std::cerr);
  });
}

void addConvert(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::ConvertOptions>();
  CLI::App* const command = program.add_subcommand(
      "convert", "Writes the foundations of a document in another form and tells what is lost");
  command->add_option("IN", options->in, "a legacy model or an exchange document, or -")
      ->required();
  command
      ->add_option("OUT", options->out,
                   "the file to write, or -; may be IN. Of a model or an exchange document of the "
                   "same form that is there, only the foundations change")
      ->required();
  using Documents::Form;
  addChoice<Form>(*command, "--to", options->form,
                  {{"legacy", Form::legacy},
                   {"exchange", Form::exchange},
                   {"exchange-1.0", Form::firstExchange},
                   {"kvml", Form::kvml}},
                  "legacy, exchange, exchange-1.0 or kvml")
      ->required()
      ->type_name("FORM");
  command->add_flag("--strict", options->isStrict,
                    "write nothing when something would be lost, and exit with 1");
  command->add_flag("--all", options->showsAll, "tell every loss, not only ten of a kind");
  addVersion(*command, options->version, versionOfIn);
  command->footer("Example: kvfound convert model.xml beddings.xml --to exchange");
  command->callback([options, &status] { status = convert(*options, std::cerr); });
}

void addCheck(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::CheckOptions>();
  CLI::App* const command = program.add_subcommand(
      "check",
      "Warns of what a reader of legacy models or exchange documents accepts in silence; exits "
      "with 1 when it found something, with 2 when a document cannot be read");
  command->add_option("FILE", options->paths,
                      "the documents; standard input when it is - or left out");
  addVersion(*command, options->version,
             "version of exchange documents; when left out, 1.0 for one that holds a Bedding "
             "element, else the current one");
  command->footer("Example: kvfound check model.xml beddings.xml");
  command->callback([options, &status] { status = check(*options, std::cout, std::cerr); });
}

void addDiff(CLI::App& program, Status& status) {
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
  addVersion(*command, options->version, "version of exchange documents");
  command->footer(
      "Exit status: 0 when the foundations are alike, 1 when they differ, 2 after an error.\n"
      "Example: kvfound diff before.xml after.xml");
  command->callback([options, command, &status] {
    if (!(options->relative >= 0.0 && options->relative <= 1.0))
      throw UserError("--relative takes a share from 0 to 1, such as 1e-6" + makeAdvice(*command));
    status = diff(*options, std::cout, std::cerr);
  });
}

void addMerge(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::MergeOptions>();
  CLI::App* const command = program.add_subcommand(
      "merge",
      "Takes the foundations of documents over into another one, where they change those of the "
      "same number and name, and removes nothing");
  const auto documents = std::make_shared<std::vector<std::string>>();
  command
      ->add_option(
          "IN", *documents,
          "legacy models or exchange documents, one of them may be -; the last one is INTO, "
          "the document that they come into, which is edited in place")
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
  addVersion(*command, options->version, "version of exchange documents");
  command->footer("Example: kvfound merge beddings.xml model.xml --dry-run");
  command->callback([options, documents, &status] {
    options->into = documents->back();
    options->in.assign(documents->begin(), documents->end() - 1);
    status = merge(*options, std::cout, std::cerr);
  });
}

void addSet(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::SetOptions>();
  const auto arguments = std::make_shared<std::vector<std::string>>();
  CLI::App* const command = program.add_subcommand(
      "set", "Changes fields of foundations of a document in place, and prints what changed");
  command->add_option("FILE", options->path, "a legacy model or an exchange document, or -")
      ->required();
  command
      ->add_option("FIELD=VALUE", *arguments,
                   "numbers of foundations, such as 3,5-9, and what is set, such as areaZ=16000; "
                   "fields are named as show --format csv names them, and nothing behind = takes a "
                   "stiffness away")
      ->required()
      ->option_text("[NUMBERS] FIELD=VALUE...");
  addSelectionOptions(*command, options->selection);
  addVersion(*command, options->version, versionOfFile);
  command->footer("Example: kvfound set model.xml 3 areaZ=16000 areaFailureZ=tension");
  command->callback([options, arguments, command, &status] {
    for (const std::string& argument : *arguments)
      if (argument.find('=') != argument.npos)
        options->assignments.push_back(argument);
      else
        selectNumbers(options->selection, argument, *command);
    status = set(*options, std::cout, std::cerr);
  });
}

void addAdd(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::AddOptions>();
  CLI::App* const command =
      program.add_subcommand("add", "Adds a foundation to a document in place");
  command->add_option("FILE", options->path, "a legacy model or an exchange document, or -")
      ->required();
  command->add_option("NAME", options->name, "what the foundation is called")->required();
  command
      ->add_option("FIELD=VALUE", options->assignments,
                   "what it holds, such as areaZ=16000; the next free number when none is given")
      ->option_text("FIELD=VALUE...");
  addVersion(*command, options->version, versionOfFile);
  command->footer(
      "Example: kvfound add model.xml \"New footing\" areaX=1500 areaY=1500 areaZ=20000");
  command->callback([options, &status] { status = add(*options, std::cout, std::cerr); });
}

void addRemove(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::SetOptions>();
  CLI::App* const command =
      program.add_subcommand("remove", "Removes foundations from a document in place");
  command->add_option("FILE", options->path, "a legacy model or an exchange document, or -")
      ->required();
  const Numbers numbers = addSelection(*command, options->selection);
  addVersion(*command, options->version, versionOfFile);
  command->footer("Example: kvfound remove model.xml 3,5-9");
  command->callback([options, numbers, command, &status] {
    if (!numbers->empty()) selectNumbers(options->selection, *numbers, *command);
    status = remove(*options, std::cout, std::cerr);
  });
}

void addPrune(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::PruneOptions>();
  CLI::App* const command =
      program.add_subcommand("prune", "Removes foundations that were generated or are not used");
  command->add_option("IN", options->in, "a legacy model or an exchange document, or -")
      ->required();
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
  addVersion(*command, options->version, versionOfIn);
  command->footer("Example: kvfound prune model.xml pruned.xml --generated");
  command->callback([options, &status] { status = prune(*options, std::cerr); });
}

void addReport(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Commands::ReportOptions>();
  CLI::App* const command = program.add_subcommand(
      "report",
      "Makes a page of HTML that shows the foundations of a document in pictures and in a table, "
      "with what check finds");
  command->add_option("FILE", options->in, "the document; standard input when it is - or left out");
  const Numbers numbers = addSelection(*command, options->selection);
  command
      ->add_option("-o,--output", options->out,
                   "the file to write; standard output when it is - or left out")
      ->type_name("OUT");
  command
      ->add_option("--unit-force", options->units.force,
                   "the unit of force that the values are labelled with, such as kN; nothing is "
                   "converted")
      ->type_name("UNIT");
  command
      ->add_option("--unit-length", options->units.length,
                   "the unit of length that they are labelled with, such as m")
      ->type_name("UNIT");
  addVersion(*command, options->version, versionOfFile);
  command->footer(
      "Example: kvfound report model.xml -o model.html --unit-force kN --unit-length m");
  command->callback([options, numbers, command, &status] {
    if (!numbers->empty()) selectNumbers(options->selection, *numbers, *command);
    status = report(*options, std::cerr);
  });
}

}  // namespace

Status run(int argc, const char* const* argv) {
  CLI::App program("Looks at the beddings (foundations) of structural models.", "kvfound");
  program.allow_windows_style_options(false);  // a path may begin with a slash
  program.set_version_flag("--version", "kvfound " KVFOUND_VERSION);
  program.require_subcommand(1);
  program.footer("kvfound COMMAND --help tells more. Example: kvfound show model.xml");
  Status status = Status::done;
  for (const auto add : {addShow, addConvert, addCheck, addDiff, addMerge, addSet, addAdd,
                         addRemove, addPrune, addReport})
    add(program, status);

  const auto help = std::make_shared<Help>();
  program.formatter(help);
  for (CLI::App* command : program.get_subcommands({})) command->group("Commands")->formatter(help);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) throw UserError(describe(program, error, argv[argc - 1]));
    program.exit(error);  // prints the help or the version
  }
  return status;
}

}  // namespace CommandLine
