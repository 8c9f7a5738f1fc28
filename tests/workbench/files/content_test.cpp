#include "files/content.h"

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "files/user_error.h"
#include "support/temporary_files.h"

namespace {

using Files::Content;
using TestSupport::TemporaryFile;
using TestSupport::TemporaryPath;

/// The error of reading a file; empty when there is none.
std::string tell(const std::string& path) {
  try {
    Files::read(path);
  } catch (const UserError& error) {
    return error.what();
  }
  return "";
}

TEST(Content, IsAllThatAFileHolds) {
  const std::string bytes("\xEF\xBB\xBF\r\n\0\x1A\xFF", 8);
  const TemporaryFile file(bytes);

  const Content content = Files::read(file.get());

  EXPECT_EQ(content.bytes, bytes);
  EXPECT_EQ(content.path, file.get());
  EXPECT_EQ(content.shownPath, file.get());
}

TEST(Content, MayBeNothing) { EXPECT_EQ(Files::read(TemporaryFile("").get()).bytes, ""); }

TEST(Content, IsWholeAtEveryLengthAroundThatOfItsStart) {
  for (const std::size_t length : {Files::lengthOfStart - 1, Files::lengthOfStart,
                                   Files::lengthOfStart + 1, 3 * Files::lengthOfStart}) {
    const std::string bytes = std::string(length - 1, 'a') + 'b';
    EXPECT_EQ(Files::read(TemporaryFile(bytes).get()).bytes, bytes) << length;
  }
}

TEST(Content, EndsWithItsStartWhereTheRestIsNotWanted) {
  const TemporaryFile file(std::string(Files::lengthOfStart, 'a') + 'b');
  const auto isWanted = [](std::string_view start) {
    EXPECT_EQ(start.size(), Files::lengthOfStart);
    return false;
  };

  EXPECT_EQ(Files::read(file.get(), isWanted).bytes, std::string(Files::lengthOfStart, 'a'));
}

#ifndef _WIN32
TEST(Content, OfADeviceHasNoPathToWriteTo) {
  const Content content = Files::read("/dev/null");

  EXPECT_EQ(content.path, "");
  EXPECT_EQ(content.shownPath, "/dev/null");
}
#endif

TEST(ContentErrors, NameTheFile) {
  const TemporaryPath missing;

  EXPECT_EQ(tell(missing.get()), missing.get() + ": cannot be opened: No such file or directory");
  EXPECT_EQ(tell("/"), "/: this is a folder, not a file");
  EXPECT_EQ(tell(""), "the name of the file to read is empty");
}

#ifdef __linux__
TEST(ContentErrors, TellWhereReadingFails) {
  EXPECT_EQ(tell("/proc/self/mem"), "/proc/self/mem: cannot be read: Input/output error");
}
#endif

/// Lets standard input be a file, and nothing in the end.
class Input {
 public:
  explicit Input(const std::string& path) { open(path); }
  ~Input() { open(nothing); }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

 private:
  static void open(const std::string& path) {
    EXPECT_NE(std::freopen(path.c_str(), "rb", stdin), nullptr) << path;
  }

#ifdef _WIN32
  static constexpr const char* nothing = "NUL";
#else
  static constexpr const char* nothing = "/dev/null";
#endif
};

TEST(Content, OfStandardInputHasNoPathToWriteTo) {
  const TemporaryFile file("text");
  const Input input(file.get());

  const Content content = Files::read("-");

  EXPECT_EQ(content.bytes, "text");
  EXPECT_EQ(content.path, "");
  EXPECT_EQ(content.shownPath, "standard input");
}

}  // namespace
