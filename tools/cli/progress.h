#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

namespace Commands {

/// Tells in the last line of a terminal what is being done, when it takes longer than a second. The
/// line is erased at the end and before anything else is written.
class Progress {
 public:
  /// `stream` is standard error. Where that is no terminal, nothing is ever shown.
  explicit Progress(std::ostream& stream);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Shows nothing from here on.
  void disable();

  /// The file that comes next, of so many.
  void setFile(std::size_t number, std::size_t count);
  /// What is done from here on, such as "reading model.xml"; empty for nothing that takes time.
  void setPhase(const std::string& what);

  /// Writes lines to the stream, which do not mix with the one shown.
  void print(const std::string& lines);

 private:
  void watch();
  void show();
  void erase();
  std::string makeLine() const;

  std::ostream& out;
  bool isOn;
  std::chrono::steady_clock::time_point begin = std::chrono::steady_clock::now();
  std::mutex mutex;  // of all below
  std::condition_variable ending;
  bool hasEnded = false;
  std::size_t file = 0;
  std::size_t files = 0;
  std::string phase;
  std::string shown;
  std::thread watcher;
};

}  // namespace Commands
