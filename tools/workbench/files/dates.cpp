#include "files/dates.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <system_error>

#include "files/paths.h"

namespace Dates {
namespace {

using Clock = std::chrono::system_clock;

/// False for a time too far away. Other than std::localtime, for any number of threads.
bool findLocal(std::time_t seconds, std::tm& local) {
#ifdef _WIN32
  return localtime_s(&local, &seconds) == 0;
#else
  return localtime_r(&seconds, &local) != nullptr;
#endif
}

std::string show(Clock::time_point time) {
  std::tm local{};
  char text[32] = "";
  if (findLocal(Clock::to_time_t(time), local))
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local);
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
