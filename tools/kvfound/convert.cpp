#include <iostream>
#include <map>
#include <memory>

#include "commands.h"
#include "display_text.h"
#include "documents.h"
#include "writing.h"

namespace {

using Commands::Status;
using Documents::Form;
using Found::FoundationManager;

const std::map<std::string, Form> forms = {{"legacy", Form::legacy},
                                           {"exchange", Form::exchange},
                                           {"exchange-1.0", Form::firstExchange},
                                           {"kvml", Form::kvml}};

struct Options {
  std::string in;
  std::string out;
  std::string form;
  std::optional<std::string> version;
  bool isStrict = false;
};

Status convert(const Options& options, std::ostream& notes) {
  const Documents::Input in(options.in);
  FoundationManager manager;
  const Documents::Reading reading = Documents::read(in, options.version, manager, notes);
  Writing::Output output(options.out, forms.at(options.form), in, options.version);
  output.isUpdate() ? output.update(manager) : output.write(manager);

  const std::vector<std::string> losses = output.listLosses(manager);
  for (const std::string& loss : losses)
    notes << "kvfound: " << DisplayText::fromName(output.getShownPath()) << ": " << loss << "\n";
  const bool losesAny = reading.notes + losses.size() > 0;
  if (losesAny && output.isSameFile(in))
    throw UserError(output.getShownPath() +
                    ": was not written, since something would be lost; name another file than IN");
  if (losesAny && options.isStrict) {
    notes << "kvfound: " << DisplayText::fromName(output.getShownPath())
          << ": was not written, since something would be lost\n";
    return Status::findings;
  }
  output.commit();
  return Status::done;
}

}  // namespace

void Commands::addConvert(CLI::App& program, Status& status) {
  const auto options = std::make_shared<Options>();
  CLI::App* const command = program.add_subcommand(
      "convert", "Writes the foundations of a document in another form and tells what is lost");
  command->add_option("IN", options->in, "a legacy model or an exchange document, or -")
      ->required();
  command
      ->add_option("OUT", options->out,
                   "the file to write, or -; may be IN. Of a model or an exchange document of the "
                   "same form that is there, only the foundations change")
      ->required();
  command->add_option("--to", options->form, "legacy, exchange, exchange-1.0 or kvml")
      ->required()
      ->type_name("FORM")
      ->check(CLI::IsMember(forms).description(""));
  command->add_flag("--strict", options->isStrict,
                    "write nothing when something would be lost, and exit with 1");
  command->add_option("--version", options->version, "version of an exchange document IN")
      ->type_name("VERSION");
  command->footer("Example: kvfound convert model.xml beddings.xml --to exchange");
  command->callback([options, &status] { status = convert(*options, std::cerr); });
}
