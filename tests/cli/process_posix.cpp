#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <thread>

#include "cli/process.h"

extern char** environ;  // NOLINT: not every system declares it

namespace {

void require(int error) {
  if (error != 0) throw std::system_error(error, std::generic_category());
}

/// What a program writes to and this one reads from; no other program has either end.
class Pipe {
 public:
  Pipe() { require(pipe2(ends, O_CLOEXEC) == 0 ? 0 : errno); }
  ~Pipe() {
    closeInput();
    close(ends[0]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  int getInput() const { return ends[1]; }
  void closeInput() {
    if (ends[1] >= 0) close(ends[1]);
    ends[1] = -1;
  }

  /// All that is written until everybody has closed the other end.
  std::string readAll() const {
    std::string text;
    std::array<char, 4096> buffer;
    ssize_t got = 0;
    while ((got = read(ends[0], buffer.data(), buffer.size())) > 0)
      text.append(buffer.data(), static_cast<std::size_t>(got));
    return text;
  }

 private:
  int ends[2] = {-1, -1};
};

/// Which files are the standard streams of a program.
class Streams {
 public:
  Streams(const std::string& input, const Pipe& out, const Pipe& err) {
    require(posix_spawn_file_actions_init(&actions));
    require(posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0));
    require(posix_spawn_file_actions_adddup2(&actions, out.getInput(), STDOUT_FILENO));
    require(posix_spawn_file_actions_adddup2(&actions, err.getInput(), STDERR_FILENO));
  }
  ~Streams() { posix_spawn_file_actions_destroy(&actions); }
  Streams(const Streams&) = delete;
  Streams& operator=(const Streams&) = delete;

  const posix_spawn_file_actions_t* get() const { return &actions; }

 private:
  posix_spawn_file_actions_t actions{};
};

pid_t start(std::vector<std::string> words, const Streams& streams) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t process = 0;
  require(posix_spawnp(&process, arguments[0], streams.get(), nullptr, arguments.data(), environ));
  return process;
}

int waitFor(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) require(errno == EINTR ? 0 : errno);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

Result runProcess(const std::vector<std::string>& words, const std::string& input) {
  Pipe out;
  Pipe err;
  const pid_t process = start(words, Streams(input, out, err));
  out.closeInput();
  err.closeInput();
  Result result{};
  std::thread reading([&] { result.err = err.readAll(); });
  result.out = out.readAll();
  reading.join();
  result.status = waitFor(process);
  return result;
}
