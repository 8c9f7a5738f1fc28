#include "program.h"

#include <exception>
#include <iostream>
#include <new>
#include <string>

#include "command_line.h"
#include "files/user_error.h"
#include "notes.h"
#include "text/wording.h"

namespace {

constexpr Wording::Words ofOptions = {"--from", "--decimal point or --decimal comma",
                                      "kvfound show --format csv names them",
                                      "kvfound convert --units does", "nothing was written"};

int tellError(const std::string& error, Commands::Notes& notes) {
  notes.tellError(error);
  return static_cast<int>(Commands::Status::error);
}

}  // namespace

int Program::run(int argc, const char* const* argv) {
  Wording::use(ofOptions);
  Commands::Notes notes(std::cerr, {argv + 1, argv + argc});
  try {
    const Commands::Status status = CommandLine::run(argc, argv, notes);
    if (!std::cout.flush()) throw UserError("standard output cannot be written");
    return static_cast<int>(status);
  } catch (const std::bad_alloc&) {
    return tellError("the memory of this machine is too small for this", notes);
  } catch (const std::exception& error) {
    return tellError(error.what(), notes);
  }
}
