#include "files/dates.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <system_error>

#include "files/paths.h"

namespace Dates {
namespace {

using Clock = std::chrono::system_clock;

std::string show(Clock::time_point time) {
  const std::time_t seconds = Clock::to_time_t(time);
  const std::tm* const local = std::localtime(&seconds);
  char text[32] = "";
  if (local != nullptr) std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", local);
  return text;
}

}  // namespace

std::string ofFile(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code failure;
  const fs::file_time_type written = fs::last_write_time(Paths::fromText(path), failure);
  if (failure) return {};
  // The clock of files counts from an unknown start, but tells the present as well.
  const auto age = written - fs::file_time_type::clock::now();
  return show(Clock::now() + std::chrono::round<std::chrono::seconds>(age));
}

std::string now() { return show(Clock::now()); }

}  // namespace Dates
