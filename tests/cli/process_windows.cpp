#include <windows.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <thread>

#include "cli/process.h"

namespace {

void require(bool isDone) {
  if (!isDone) throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
}

/// An object of the system.
class Handle {
 public:
  explicit Handle(HANDLE opened) : handle(opened) {}
  ~Handle() { close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE get() const { return handle; }
  void close() {
    if (handle != nullptr) CloseHandle(handle);
    handle = nullptr;
  }

 private:
  HANDLE handle;
};

SECURITY_ATTRIBUTES makeInheritable() { return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE}; }

/// What a program, which inherits one end, writes to and this one reads from.
class Pipe {
 public:
  Pipe() : Pipe(open()) {}

  HANDLE getInput() const { return input.get(); }
  void closeInput() { input.close(); }

  /// All that is written until everybody has closed the other end, with line ends of one character.
  std::string readAll() const {
    std::string text;
    std::array<char, 4096> buffer;
    DWORD got = 0;
    while (ReadFile(output.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr))
      text.append(buffer.data(), got);
    for (std::size_t at = text.find("\r\n"); at != text.npos; at = text.find("\r\n", at))
      text.erase(at, 1);
    return text;
  }

 private:
  struct Ends {
    HANDLE output;
    HANDLE input;
  };

  explicit Pipe(const Ends& ends) : output(ends.output), input(ends.input) {}

  static Ends open() {
    SECURITY_ATTRIBUTES inheritable = makeInheritable();
    Ends ends{};
    require(CreatePipe(&ends.output, &ends.input, &inheritable, 0) != 0);
    SetHandleInformation(ends.output, HANDLE_FLAG_INHERIT, 0);
    return ends;
  }

  Handle output;
  Handle input;
};

/// A word as programs take it from their command line again.
std::string quote(const std::string& word) {
  std::string quoted = "\"";
  std::size_t slashes = 0;  // which mean something before a quotation mark only
  for (const char c : word) {
    if (c == '"') quoted.append(slashes + 1, '\\');
    slashes = c == '\\' ? slashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(slashes, '\\') + '"';
}

std::string makeLine(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + quote(word);
  return line;
}

HANDLE openFile(const std::string& path) {
  SECURITY_ATTRIBUTES inheritable = makeInheritable();
  const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  &inheritable, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  require(file != INVALID_HANDLE_VALUE);
  return file;
}

HANDLE start(const std::vector<std::string>& words, HANDLE in, HANDLE out, HANDLE err) {
  STARTUPINFOA streams{};
  streams.cb = sizeof streams;
  streams.dwFlags = STARTF_USESTDHANDLES;
  streams.hStdInput = in;
  streams.hStdOutput = out;
  streams.hStdError = err;
  PROCESS_INFORMATION started{};
  std::string line = makeLine(words);
  require(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                         &streams, &started) != 0);
  CloseHandle(started.hThread);
  return started.hProcess;
}

}  // namespace

Result runProcess(const std::vector<std::string>& words, const std::string& input) {
  Pipe out;
  Pipe err;
  Handle in(openFile(input));
  const Handle process(start(words, in.get(), out.getInput(), err.getInput()));
  in.close();
  out.closeInput();
  err.closeInput();
  Result result{};
  std::thread reading([&] { result.err = err.readAll(); });
  result.out = out.readAll();
  reading.join();
  WaitForSingleObject(process.get(), INFINITE);
  DWORD status = 0;
  require(GetExitCodeProcess(process.get(), &status) != 0);
  result.status = static_cast<int>(status);
  return result;
}
