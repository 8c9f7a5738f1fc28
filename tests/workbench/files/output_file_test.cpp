#include "files/output_file.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "files/user_error.h"
#include "support/temporary_files.h"

namespace {

namespace fs = std::filesystem;
using TestSupport::load;
using TestSupport::TemporaryFile;
using TestSupport::TemporaryPath;

template <class Run>
std::string tell(const Run& run) {
  try {
    run();
  } catch (const UserError& error) {
    return error.what();
  }
  return "";
}

TEST(OutputFile, TakesItsPlaceAsAWhole) {
  const TemporaryFile path("old");
  OutputFile file(path.get());
  file.create();
  file.write("new");
  EXPECT_EQ(load(path.get()), "old");
  EXPECT_EQ(file.getText(), "new");

  file.commit();

  EXPECT_EQ(load(path.get()), "new");
}

TEST(OutputFile, LeavesNothingWhenItIsGivenUp) {
  const TemporaryPath folder("");
  fs::create_directory(folder.get());
  {
    OutputFile file(folder.get() + "/out");
    file.create();
    file.write("new");
    EXPECT_FALSE(fs::is_empty(folder.get()));
  }
  EXPECT_TRUE(fs::is_empty(folder.get()));
}

TEST(OutputFile, HoldsBytesAsTheyAre) {
  const std::string bytes("\r\n\0\xFF", 4);
  const TemporaryPath path;
  OutputFile file(path.get());
  file.create();
  file.write(bytes);
  file.commit();

  EXPECT_EQ(fs::file_size(path.get()), 4u);
}

TEST(OutputFile, OfAStreamHasNoTarget) {
  std::ostringstream stream;
  const OutputFile file(stream, "the stream");
  EXPECT_EQ(file.getTarget(), "");
  EXPECT_EQ(file.getShownPath(), "the stream");
}

TEST(OutputFile, TellsWhereNothingCanBeWritten) {
  const TemporaryPath missing("");
  EXPECT_EQ(tell([] { OutputFile(""); }), "the name of the file to write is empty");
  EXPECT_EQ(tell([] { OutputFile("/"); }), "/: this is a folder, not a file");
  EXPECT_EQ(tell([&] { OutputFile(missing.get() + "/out").create(); }),
            missing.get() + "/out: cannot be written: no file can be made in " + missing.get() +
                ": No such file or directory");
}

#ifndef _WIN32
TEST(OutputFile, OfADeviceIsWrittenWhenItIsCommitted) {
  OutputFile file("/dev/null");
  file.create();
  file.write("text");
  file.commit();
  EXPECT_EQ(file.getTarget(), "");

  OutputFile full("/dev/full");
  full.create();
  full.write("text");
  EXPECT_EQ(tell([&] { full.commit(); }), "/dev/full: cannot be written: No space left on device");
}

TEST(OutputFile, OfALinkIsTheFileThatItNames) {
  const TemporaryPath folder("");
  fs::create_directory(folder.get());
  fs::create_symlink("next", folder.get() + "/link");
  fs::create_symlink("far", folder.get() + "/next");

  EXPECT_EQ(OutputFile(folder.get() + "/link").getTarget(), folder.get() + "/far");
}
#endif

TEST(OutputFile, OfAStreamIsWrittenWhenItIsCommitted) {
  std::ostringstream stream;
  OutputFile file(stream, "the stream");
  file.create();
  file.write("text");
  EXPECT_EQ(stream.str(), "");
  file.commit();

  EXPECT_EQ(stream.str(), "text");
}

TEST(OutputFile, StandsInTheFolderWhereNoneIsNamed) {
  const TemporaryPath folder("");
  fs::create_directory(folder.get());
  const fs::path before = fs::current_path();
  fs::current_path(folder.get());
  OutputFile file("out");
  file.create();
  file.write("text");
  file.commit();
  fs::current_path(before);

  EXPECT_EQ(load(folder.get() + "/out"), "text");
}

#ifndef _WIN32
TEST(OutputFile, TellsOfAFileThatCannotTakeItsPlace) {
  const TemporaryPath path;
  OutputFile file(path.get());
  file.create();
  file.write("text");
  fs::create_directory(path.get());

  EXPECT_EQ(tell([&] { file.commit(); }), path.get() + ": cannot be written: Is a directory");
}

TEST(OutputFile, TellsOfATemporaryFileThatCannotBeWritten) {
  const TemporaryPath folder("");
  fs::create_directory(folder.get());
  OutputFile file(folder.get() + "/out");
  file.create();
  fs::remove_all(folder.get());

  EXPECT_EQ(tell([&] { file.write("text"); }),
            folder.get() + "/out: cannot be written: No such file or directory");
}

TEST(OutputFile, TellsOfADeviceThatIsFullInTheMiddle) {
  const TemporaryPath folder("");
  fs::create_directory(folder.get());
  OutputFile file(folder.get() + "/out");
  file.create();
  const fs::path temporary = fs::directory_iterator(folder.get())->path();
  fs::remove(temporary);
  fs::create_symlink("/dev/full", temporary);

  EXPECT_EQ(tell([&] { file.write("text"); }),
            folder.get() + "/out: cannot be written: No space left on device");
}

TEST(OutputFile, TellsOfALinkToItself) {
  const TemporaryPath link;
  fs::create_symlink(link.get(), link.get());

  EXPECT_EQ(tell([&] { OutputFile(link.get()); }),
            link.get() + ": cannot be written: Too many levels of symbolic links");
}
#endif

#ifdef __linux__
TEST(OutputFile, TellsOfAFileThatMustNotBeWritten) {
  const std::string program = "/proc/self/exe";  // which not even root may change while it runs
  if (std::fstream(program, std::ios::in | std::ios::out))
    GTEST_SKIP() << "an emulator runs it, so it may be changed";
  EXPECT_EQ(tell([&] { OutputFile{program}; }), program + ": cannot be written: Text file busy");
}
#endif

}  // namespace
