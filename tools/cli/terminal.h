#pragma once

#include <cstdio>
#include <string>

/// The terminal that the program may be writing to, and the only calls of the operating system for
/// it.
namespace Terminal {

/// To be called first: lets the program end quietly when nobody reads what it prints, also where a
/// parent has made it ignore that.
void endOnClosedPipe();

bool isTerminal(std::FILE* stream);

/// How many places a line of `stream` has: those of the terminal, but at least 60; 100 when it is
/// no terminal.
std::size_t getWidth(std::FILE* stream);

enum class Style { plain, bold, red, yellow, green };

/// Makes text for `stream` stand out where that is a terminal that can, and the environment
/// variable NO_COLOR does not forbid it.
class Painter {
 public:
  explicit Painter(std::FILE* stream);

  std::string paint(Style style, const std::string& text) const;

 private:
  bool isOn;
};

}  // namespace Terminal
