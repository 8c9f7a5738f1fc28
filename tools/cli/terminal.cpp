#include "terminal.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#endif

namespace Terminal {
namespace {

constexpr std::size_t leastWidth = 60;
constexpr std::size_t usualWidth = 100;

#ifdef _WIN32

HANDLE getHandle(std::FILE* stream) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

/// 0 when it is not known.
std::size_t readWidth(std::FILE* stream) {
  CONSOLE_SCREEN_BUFFER_INFO info;
  if (!GetConsoleScreenBufferInfo(getHandle(stream), &info)) return 0;
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

/// A console understands escape sequences only when asked to.
bool understandsEscapes(std::FILE* stream) {
  DWORD mode = 0;
  return GetConsoleMode(getHandle(stream), &mode) != 0 &&
         SetConsoleMode(getHandle(stream), mode | 0x0004) != 0;  // virtual terminal processing
}

#else

std::size_t readWidth(std::FILE* stream) {
  winsize size{};
  return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool understandsEscapes(std::FILE* stream) { return isTerminal(stream); }

#endif

std::string_view readVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

const char* getSequence(Style style) {
  switch (style) {
    case Style::plain:
      break;
    case Style::bold:
      return "\x1B[1m";
    case Style::red:
      return "\x1B[1;31m";
    case Style::yellow:
      return "\x1B[1;33m";
    case Style::green:
      return "\x1B[32m";
  }
  return "";
}

}  // namespace

#ifdef _WIN32

void endOnClosedPipe() {}

bool isTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

#else

void endOnClosedPipe() { std::signal(SIGPIPE, SIG_DFL); }

bool isTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

#endif

std::size_t getWidth(std::FILE* stream) {
  const std::size_t width = readWidth(stream);
  return width == 0 ? usualWidth : std::max(width, leastWidth);
}

bool canErase(std::FILE* stream) {
  return readVariable("TERM") != "dumb" && understandsEscapes(stream);
}

Painter::Painter(std::FILE* stream)
    : isOn(readVariable("NO_COLOR").empty() && readVariable("TERM") != "dumb" &&
           understandsEscapes(stream)) {}

std::string Painter::paint(Style style, const std::string& text) const {
  if (!isOn || style == Style::plain || text.empty()) return text;
  return getSequence(style) + text + "\x1B[0m";
}

}  // namespace Terminal
