#include "files/temporary_file.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include "files/paths.h"

namespace {

namespace fs = std::filesystem;

// The files that an interruption must erase, where a signal handler may read them. There are more
// places than any command has files at a time. Threads that have more leave some unwatched.
std::array<std::atomic<const char*>, 4> living;

/// The place of the file in that list; behind its end where it is full.
std::size_t list(const char* path) {
  std::size_t place = 0;
  for (const char* free = nullptr;
       place < living.size() && !living[place].compare_exchange_strong(free, path); free = nullptr)
    ++place;
  return place;
}

void forget(std::size_t place) {
  if (place < living.size()) living[place] = nullptr;
}

extern "C" void eraseAndEnd(int signal) {
  for (const std::atomic<const char*>& path : living)
    if (const char* const file = path.load()) unlink(file);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

/// An interruption that the program is to ignore stays ignored.
void watch(int signal) {
  if (std::signal(signal, eraseAndEnd) == SIG_IGN) std::signal(signal, SIG_IGN);
}

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category()); }

/// False when there is such a file already.
bool create(const std::string& path) {
#ifdef _WIN32
  const int file = _open(path.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY, _S_IREAD | _S_IWRITE);
  if (file >= 0) return _close(file) == 0;
#else
  const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
  if (file >= 0) return close(file) == 0;
#endif
  if (errno == EEXIST) return false;
  fail();
}

/// Lets the content reach the device, so that not even a power failure leaves half a file.
void synchronise(const std::string& path) {
#ifdef _WIN32
  static_cast<void>(path);
#else
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) fail();
  const bool isDone = fsync(file) == 0 || errno == EINVAL;  // some file systems cannot
  const int reason = errno;
  close(file);
  errno = reason;
  if (!isDone) fail();
#endif
}

/// Gives the file the owner of `target`, if the process may do so.
void keepOwner([[maybe_unused]] const std::string& path,
               [[maybe_unused]] const std::string& target) {
#ifndef _WIN32
  struct stat old {};
  if (stat(target.c_str(), &old) != 0) return;
  static_cast<void>(chown(path.c_str(), old.st_uid, old.st_gid) == 0);
#endif
}

}  // namespace

void TemporaryFile::watchInterruptions() {
  watch(SIGINT);
  watch(SIGTERM);
#ifndef _WIN32
  watch(SIGHUP);
  watch(SIGPIPE);
  std::signal(SIGXFSZ, SIG_IGN);  // so that writing fails as on a full disk
#endif
}

TemporaryFile::TemporaryFile(const std::string& folder) : place(living.size()) {
  std::random_device random;
  try {
    do {
      forget(place);
      path = Paths::toText(Paths::fromText(folder) /
                           (".kvfound-" + std::to_string(random()) + ".tmp"));
      place = list(path.c_str());  // before there is a file that an interruption could leave
    } while (!create(path));
  } catch (...) {
    forget(place);
    throw;
  }
}

TemporaryFile::~TemporaryFile() {
  if (path.empty()) return;
  std::remove(path.c_str());
  forget(place);
}

void TemporaryFile::replace(const std::string& target) {
  const fs::path from = Paths::fromText(path);
  const fs::path to = Paths::fromText(target);
  const fs::file_status status = fs::status(to);
  if (fs::exists(status)) {
    keepOwner(path, target);
    fs::permissions(from, status.permissions());
  }
  synchronise(path);
  fs::rename(from, to);
  forget(place);
  path.clear();
}
