#pragma once

#include <cstdio>
#include <string>

/// The terminal that the program may be writing to. Only here are operating systems called for it.
namespace Terminal {

/// To be called first: makes the program end quietly when nobody reads what it prints, even if a
/// parent process had it ignore that.
void endOnClosedPipe();

bool isTerminal(std::FILE* stream);

/// The width of a line of `stream` in places: that of the terminal, but at least 60; 100 when
/// `stream` is no terminal.
std::size_t getWidth(std::FILE* stream);

/// Whether a line of `stream` can be erased: that is a terminal which knows how to.
bool canErase(std::FILE* stream);

enum class Style { plain, bold, red, yellow, green };

/// Styles text for `stream` when that is a terminal that knows styles and the environment variable
/// NO_COLOR does not forbid them.
class Painter {
 public:
  Painter() = default;  // of plain text
  explicit Painter(std::FILE* stream);

  std::string paint(Style style, const std::string& text) const;

 private:
  bool isOn = false;
};

}  // namespace Terminal
