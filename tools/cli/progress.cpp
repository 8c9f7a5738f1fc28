#include "progress.h"

#include <cstdio>
#include <system_error>

#include "terminal.h"
#include "text/display_text.h"

namespace Commands {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1s;     // before anything is shown
constexpr auto interval = 100ms;  // between looks at what is done

}  // namespace

Progress::Progress(std::ostream& stream) : out(stream), isOn(Terminal::canErase(stderr)) {}

Progress::~Progress() {
  disable();
  if (!watcher.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex);
    hasEnded = true;
  }
  ending.notify_one();
  watcher.join();
}

void Progress::disable() {
  const std::lock_guard<std::mutex> lock(mutex);
  isOn = false;
  erase();
}

void Progress::setFile(std::size_t number, std::size_t count) {
  const std::lock_guard<std::mutex> lock(mutex);
  file = number;
  files = count;
}

void Progress::setPhase(const std::string& what) {
  if (!isOn) return;
  const std::lock_guard<std::mutex> lock(mutex);
  phase = what;
  if (phase.empty()) erase();
  if (watcher.joinable() || phase.empty()) return;
  try {
    watcher = std::thread([this] { watch(); });
  } catch (const std::system_error&) {
    isOn = false;  // the work is done all the same
  }
}

void Progress::print(const std::string& lines) {
  const std::lock_guard<std::mutex> lock(mutex);
  erase();
  out << lines << std::flush;
}

void Progress::watch() {
  std::unique_lock<std::mutex> lock(mutex);
  ending.wait_until(lock, begin + patience, [this] { return hasEnded; });
  while (!hasEnded) {
    show();
    ending.wait_for(lock, interval, [this] { return hasEnded; });
  }
}

void Progress::show() {
  if (!isOn || phase.empty()) return;
  const std::string line = makeLine();
  if (line == shown) return;
  erase();
  out << line << std::flush;
  shown = line;
}

void Progress::erase() {
  if (shown.empty()) return;
  out << "\r\x1B[K" << std::flush;
  shown.clear();
}

std::string Progress::makeLine() const {
  std::string line = "kvfound: ";
  if (files > 1) line += "file " + std::to_string(file) + " of " + std::to_string(files) + ", ";
  return DisplayText::shorten(line + phase, Terminal::getWidth(stderr) - 1);
}

}  // namespace Commands
