#pragma once

/// How messages call what a front end lets its users tell, such as the options of a program.
namespace Wording {

struct Words {
  const char* form = "its form told";  // that of a table or data, behind "needs the ending"
  const char* decimal = "which";       // behind "say"
  const char* fields = nullptr;        // where their names are told; without it, messages do
  const char* converting = "converting does";   // behind "labels convert nothing"
  const char* nothing = "nothing was changed";  // behind a reason
};

/// Once, at the start of a program, before there is another thread.
void use(const Words& words);

const Words& get();

}  // namespace Wording
