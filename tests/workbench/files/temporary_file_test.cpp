#include "files/temporary_file.h"

#include <csignal>
#include <filesystem>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "support/temporary_files.h"

namespace {

namespace fs = std::filesystem;
using TestSupport::load;
using TestSupport::store;
using TestSupport::TemporaryPath;

/// A folder of the running test, empty at first.
class Folder {
 public:
  Folder() { fs::create_directory(path.get()); }

  std::string name(const std::string& file) const { return path.get() + "/" + file; }
  const std::string& get() const { return path.get(); }

 private:
  TemporaryPath path{""};
};

TEST(TemporaryFile, GoesWithItsObject) {
  const Folder folder;
  {
    const TemporaryFile file(folder.get());
    EXPECT_TRUE(fs::is_empty(file.getPath()));
  }
  EXPECT_TRUE(fs::is_empty(folder.get()));
}

TEST(TemporaryFile, IsAnotherOneEachTime) {
  const Folder folder;
  const TemporaryFile first(folder.get());
  const TemporaryFile second(folder.get());

  EXPECT_NE(first.getPath(), second.getPath());
}

TEST(TemporaryFile, MayBeOneOfMoreThanAreWatched) {
  const Folder folder;
  const TemporaryFile files[] = {TemporaryFile(folder.get()), TemporaryFile(folder.get()),
                                 TemporaryFile(folder.get()), TemporaryFile(folder.get()),
                                 TemporaryFile(folder.get())};

  EXPECT_EQ(std::distance(fs::directory_iterator(folder.get()), {}), 5);
}

TEST(TemporaryFile, TakesThePlaceOfAnotherOrOfNone) {
  const Folder folder;
  store(folder.name("old"), "old");
  for (const char* name : {"old", "new"}) {
    TemporaryFile file(folder.get());
    store(file.getPath(), "text");

    file.replace(folder.name(name));

    EXPECT_EQ(load(folder.name(name)), "text");
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.get()), {}), 2);
}

TEST(TemporaryFile, CannotBeMadeInAFolderThatIsMissing) {
  const TemporaryPath missing("");

  EXPECT_THROW(TemporaryFile{missing.get()}, std::system_error);
}

#ifndef _WIN32

TEST(TemporaryFile, TakesOverPermissions) {
  const Folder folder;
  store(folder.name("old"), "old");
  fs::permissions(folder.name("old"), fs::perms::owner_read);
  TemporaryFile file(folder.get());

  file.replace(folder.name("old"));

  EXPECT_EQ(fs::status(folder.name("old")).permissions(), fs::perms::owner_read);
}

TEST(TemporaryFile, ThatIsGoneReplacesNothing) {
  const Folder folder;
  store(folder.name("old"), "old");
  TemporaryFile file(folder.get());
  fs::remove(file.getPath());

  EXPECT_THROW(file.replace(folder.name("new")), std::system_error);
  EXPECT_THROW(file.replace(folder.name("old")), std::system_error);
  EXPECT_EQ(load(folder.name("old")), "old");
}

/// Holds a signal back while it lives, and forgets it in the end.
class HeldSignal {
 public:
  explicit HeldSignal(int number) : signal(number), before(std::signal(signal, SIG_DFL)) {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    sigprocmask(SIG_BLOCK, &set, &mask);
  }
  ~HeldSignal() {
    std::signal(signal, SIG_IGN);  // which drops one that is pending
    sigprocmask(SIG_SETMASK, &mask, nullptr);
    std::signal(signal, before);
  }
  HeldSignal(const HeldSignal&) = delete;
  HeldSignal& operator=(const HeldSignal&) = delete;

  bool isPending() const {
    sigset_t set;
    sigpending(&set);
    return sigismember(&set, signal) == 1;
  }

 private:
  int signal;
  void (*before)(int);
  sigset_t mask{};
};

TEST(TemporaryFile, IsErasedByAnInterruptionWhichThenEndsTheProgram) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
    const HeldSignal held(signal);
    TemporaryFile::watchInterruptions();
    const Folder folder;
    const TemporaryFile first(folder.get());
    const TemporaryFile second(folder.get());
    const auto handler = std::signal(signal, SIG_DFL);

    handler(signal);

    EXPECT_TRUE(fs::is_empty(folder.get())) << signal;
    EXPECT_TRUE(held.isPending()) << signal;
  }
}

TEST(TemporaryFile, LeavesASignalAloneThatIsIgnored) {
  const HeldSignal held(SIGHUP);
  std::signal(SIGHUP, SIG_IGN);

  TemporaryFile::watchInterruptions();

  EXPECT_EQ(std::signal(SIGHUP, SIG_IGN), SIG_IGN);
}

TEST(TemporaryFile, LeavesSignalsAloneUnlessAsked) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
    const HeldSignal held(signal);
    const Folder folder;
    const TemporaryFile file(folder.get());

    EXPECT_EQ(std::signal(signal, SIG_DFL), SIG_DFL) << signal;
  }
}

#endif

}  // namespace
