#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/folder.h"
#include "cli/make_document.h"
#include "cli/run_program.h"

// Under this sanitizer no limit of the memory can be set.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KVFOUND_HAS_ADDRESS_SANITIZER 1
#endif
#endif

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

const std::string program = "'" KVFOUND_PROGRAM "'";

const std::string listing =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<Kvml>\n"
    "  <Beddings>\n"
    "    <BeddingArea Number=\"1\" Name=\"A\" ksx=\"0.0\" ksy=\"0.0\" ksz=\"7.0\" Failure=\"No "
    "failure\" Tangential=\"0.00\" />\n"
    "  </Beddings>\n"
    "</Kvml>\n";

/// A folder with a model, `in`, where temporary files come into `tmp`.
class Output : public testing::Test {
 protected:
  Output() {
    makeFileIn(folder, "in",
               makeDocument("<FOUNDATIONS><FOUND NAME='A' FZAREA='7'/></FOUNDATIONS>"));
    fs::create_directory(folder + "/tmp");
  }
  ~Output() override { fs::remove_all(folder); }

  /// Runs a script in the folder, where kvfound is the program.
  Result runHere(const std::string& script) const {
    return runScript("cd '" + folder + "'; export TMPDIR=\"$PWD/tmp\"; kvfound() { " + program +
                     " \"$@\"; }\n" + script + "\n");
  }

  std::string read(const std::string& name) const { return readFile(folder + "/" + name); }
  Names list() const { return listFolder(folder); }
  Names listTemporary() const { return listFolder(folder + "/tmp"); }

  std::string folder = makeFolder("folder");
};

class OutputErrors : public Output {};
class OutputInterruption : public Output {};

TEST_F(Output, LeavesNothingButTheDocument) {
  EXPECT_EQ(runHere("kvfound convert in out --to kvml").status, 0);

  EXPECT_EQ(read("out"), listing);
  EXPECT_EQ(list(), (Names{"in", "out", "tmp"}));
  EXPECT_EQ(listTemporary(), Names{});
}

TEST_F(Output, LeavesNoTemporaryFileOfStandardInputAndOutput) {
  EXPECT_EQ(runHere("cat in | kvfound convert - - --to kvml | cat").out, listing);

  EXPECT_EQ(listTemporary(), Names{});
}

TEST_F(Output, MayBeWhatWasRead) {
  const struct {
    const char* form;
    const char* text;
  } rows[] = {
      {"legacy",
       "<SMOD>\n  <FOUNDATIONS>\n    <FOUND NUMBER=\"1\" NAME=\"A\" FXAREA=\"0\" FYAREA=\"0\" "
       "FZAREA=\"7\" FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"0\" />\n  </FOUNDATIONS>\n"
       "</SMOD>\n"},
      {"exchange",
       "<Beddings>\n  <SurfaceBedding Number=\"1\" Name=\"A\" StiffnessX=\"0\" StiffnessY=\"0\" "
       "StiffnessZ=\"7\" StiffnessZFailure=\"none\" TangentialStiffnessXYFactor=\"0\" />\n"
       "</Beddings>\n"},
      {"exchange-1.0",
       "<Beddings>\n  <Bedding Name=\"A\" SurfaceStiffnessX=\"0\" SurfaceStiffnessY=\"0\" "
       "SurfaceStiffnessZ=\"7\" SurfaceStiffnessZFailure=\"none\" "
       "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessYFailure=\"none\" "
       "CurveStiffnessZFailure=\"none\" TangentialCurveStiffnessX=\"0\" />\n</Beddings>\n"}};
  for (const auto& row : rows) {
    const std::string form = row.form;
    runHere("rm -f it; kvfound convert in it --to " + form);
    EXPECT_EQ(runHere("kvfound convert it it --to " + form).status, 0) << form;
    EXPECT_EQ(read("it"), std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") + row.text)
        << form;
  }
}

TEST_F(Output, IsNotWrittenWhenNothingChanges) {
  const std::string before = read("in");
  const std::string lookAt = "stat -c '%i %y' in\n";

  const Result result = runHere(lookAt + "kvfound convert in in --to legacy\n" + lookAt);

  const std::size_t half = result.out.size() / 2;
  EXPECT_EQ(result.out.substr(0, half), result.out.substr(half));
  EXPECT_EQ(read("in"), before);
}

TEST_F(Output, OfAnotherFormMayBeWhatWasRead) {
  const Result result = runHere(
      "kvfound convert in it --to exchange\n"
      "kvfound convert it it --to exchange-1.0 && kvfound convert it it --to kvml");

  EXPECT_EQ(read("it"), listing);
  EXPECT_EQ(result.err,
            "kvfound: it: 1 bedding was read\n"
            "kvfound: it: 1 bedding was read\n");
}

TEST_F(Output, LeavesALinkALink) {
  const Result result = runHere(
      "mkdir far; echo '<Kvml/>' >far/out; ln -s far/out link; kvfound convert in link --to kvml");

  EXPECT_EQ(result.err, "");
  EXPECT_EQ(fs::read_symlink(folder + "/link"), "far/out");
  EXPECT_EQ(read("far/out"), listing);
  EXPECT_EQ(listFolder(folder + "/far"), Names{"out"});
}

TEST_F(Output, MakesTheFileThatALinkNames) {
  runHere("mkdir far; ln -s next link; ln -s far/out next; kvfound convert in link --to kvml");

  EXPECT_EQ(fs::read_symlink(folder + "/link"), "next");
  EXPECT_EQ(fs::read_symlink(folder + "/next"), "far/out");
  EXPECT_EQ(read("far/out"), listing);
}

TEST_F(Output, UpdatesAModelThroughALink) {
  runHere(
      "sed -i 's/<FOUND /<FOUND NUMBER=\"7\" /' in; ln -s in link\n"
      "kvfound prune in link --generated");

  EXPECT_EQ(fs::read_symlink(folder + "/link"), "in");
  EXPECT_NE(read("in").find("NUMBER=\"1\""), std::string::npos);
}

TEST_F(Output, KeepsPermissions) {
  EXPECT_EQ(runHere("echo old >out; chmod 640 out; umask 077; kvfound convert in out --to kvml;"
                    "stat -c %a out")
                .out,
            "640\n");
}

TEST_F(Output, HasTheUsualPermissionsWhenItIsNew) {
  EXPECT_EQ(runHere("umask 027; kvfound convert in out --to kvml; stat -c %a out").out, "640\n");
}

TEST_F(Output, KeepsTheOwner) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may give files away";

  EXPECT_EQ(runHere("echo old >out; chown 12345:23456 out; kvfound convert in out --to kvml;"
                    "stat -c %u:%g out")
                .out,
            "12345:23456\n");
}

TEST_F(Output, MayBeCalledStandardOutput) {
  const Result result = runHere("kvfound convert in 'standard output' --to kvml");

  EXPECT_EQ(result.out, "");
  EXPECT_EQ(read("standard output"), listing);
}

TEST_F(Output, GoesToADevice) {
  EXPECT_EQ(runHere("kvfound convert in /dev/null --to kvml").err, "");
  EXPECT_EQ(runHere("kvfound convert in >(cat >&2) --to kvml; wait $!").err, listing);
  EXPECT_EQ(runHere("mkfifo pipe; cat pipe & kvfound convert in pipe --to kvml; wait").out,
            listing);
  EXPECT_EQ(list(), (Names{"in", "pipe", "tmp"}));
  EXPECT_EQ(listTemporary(), Names{});
}

TEST_F(Output, AddsToWhereStandardOutputGoes) {
  for (const char* name : {"-", "/dev/stdout"}) {
    runHere("echo log >log; kvfound convert in " + std::string(name) + " --to kvml >>log");
    EXPECT_EQ(read("log"), "log\n" + listing) << name;
  }
}

// --- Errors

TEST_F(OutputErrors, NamesAFolder) {
  const Result result = runHere("kvfound convert in tmp --to kvml");

  EXPECT_EQ(result.err, "kvfound: tmp: this is a folder, not a file\n");
  EXPECT_EQ(result.status, 2);
}

TEST_F(OutputErrors, NamesAFolderThatIsMissing) {
  const Result result = runHere("kvfound convert in far/out --to kvml");

  EXPECT_EQ(result.err,
            "kvfound: far/out: cannot be written: no file can be made in far: No such file or "
            "directory\n");
  EXPECT_EQ(result.status, 2);
}

TEST_F(OutputErrors, NamesAPathThroughAFile) {
  EXPECT_EQ(runHere("kvfound convert in in/out --to kvml").err,
            "kvfound: in/out: cannot be written: no file can be made in in: Not a directory\n");
}

TEST_F(OutputErrors, NamesALinkToItself) {
  EXPECT_EQ(runHere("ln -s link link; kvfound convert in link --to kvml").err,
            "kvfound: link: cannot be written: Too many levels of symbolic links\n");
  EXPECT_EQ(list(), (Names{"in", "link", "tmp"}));
}

TEST_F(OutputErrors, TellsThatADeviceIsFull) {
  const Result result = runHere("kvfound convert in /dev/full --to kvml");

  EXPECT_EQ(result.err, "kvfound: /dev/full: cannot be written: No space left on device\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(runHere("kvfound convert in - --to kvml >/dev/full").err,
            "kvfound: standard output cannot be written\n");
  EXPECT_EQ(listTemporary(), Names{});
}

TEST_F(OutputErrors, LeavesTheOldFileWhenThereIsNoRoomForTheNewOne) {
  makeFileIn(folder, "out", "<Kvml/>");
  const Result result = runHere(
      "for i in {1..2000}; do echo '<FOUND/>'; done >founds\n"
      "(head -2 in; echo '<FOUNDATIONS>'; cat founds; echo '</FOUNDATIONS></SMOD>') >large\n"
      "ulimit -f 20; kvfound convert large out --to legacy");

  EXPECT_EQ(result.err, "kvfound: out: cannot be written: File too large\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(read("out"), "<Kvml/>");
  EXPECT_EQ(list(), (Names{"founds", "in", "large", "out", "tmp"}));
}

TEST_F(Output, NeedsNoFolderForTemporaryFiles) {
  const Result result =
      runHere("export TMPDIR=/no/such; kvfound convert - - --to kvml <in; cat in | kvfound show -");

  EXPECT_EQ(result.out.substr(0, listing.size()), listing);
  EXPECT_NE(result.out.find("1 foundation, largest stiffness 7\n"), std::string::npos);
  EXPECT_EQ(result.err, "");
}

TEST_F(OutputErrors, TellAtOnceWhatIsNoDocumentHoweverLongItIs) {
  const Result zeros = runHere("timeout 5 '" KVFOUND_PROGRAM "' show /dev/zero");
  const Result words = runHere("yes | timeout 5 '" KVFOUND_PROGRAM "' check -");

  EXPECT_EQ(zeros.err,
            "kvfound: /dev/zero:1:1: a NUL character; only 8-bit text such as UTF-8 can be read\n");
  EXPECT_EQ(zeros.status, 2);
  EXPECT_EQ(words.err,
            "kvfound: standard input: this is no XML document (a table or JSON needs the ending "
            ".csv or .json, or --from)\n");
  EXPECT_EQ(words.status, 2);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(KVFOUND_HAS_ADDRESS_SANITIZER)
TEST_F(OutputErrors, NameTheDocumentThatIsTooLargeForTheMemory) {
  const Result result = runHere("ulimit -v 200000; yes '<a/>' | kvfound show -");

  EXPECT_EQ(result.err, "kvfound: standard input: is too large for the memory of this machine\n");
  EXPECT_EQ(result.status, 2);
}
#endif

/// Permissions, which do not hold back root; so a script runs as somebody else.
class OutputPermissions : public Output {
 protected:
  Result runAsOther(const std::string& script) const {
    if (geteuid() != 0) return runHere(script);
    runHere("chown -R 65534 .");
    return runHere("kvfound() { setpriv --reuid=65534 --clear-groups " + program + " \"$@\"; }\n" +
                   script);
  }

  bool canBeOther() const { return runAsOther("kvfound --version").status == 0; }
};

TEST_F(OutputPermissions, ProtectAFolder) {
  if (!canBeOther()) GTEST_SKIP() << "the program cannot be run by others";
  const Result result =
      runAsOther("mkdir far; chmod 555 far; kvfound convert in far/out --to kvml");

  EXPECT_EQ(result.err,
            "kvfound: far/out: cannot be written: no file can be made in far: Permission denied\n");
  EXPECT_EQ(result.status, 2);
}

TEST_F(OutputPermissions, ProtectAFile) {
  if (!canBeOther()) GTEST_SKIP() << "the program cannot be run by others";
  for (const char* mode : {"444", "222", "000"}) {
    const Result result = runAsOther("rm -f out; echo old >out; chown 65534 out; chmod " +
                                     std::string(mode) + " out; kvfound convert in out --to kvml");

    EXPECT_EQ(result.err, "kvfound: out: cannot be written: Permission denied\n") << mode;
    EXPECT_EQ(result.status, 2);
    runHere("chmod 666 out");
    EXPECT_EQ(read("out"), "old\n");
  }
}

// --- Interruptions

/// With job control, what runs in the background can be interrupted. Who opens the pipe to write
/// goes on when the program has opened it to read, so no later than it has begun.
const char* const begin = "set -m; mkfifo pipe\n";

const char* const finish = "wait $!; status=$?; rm pipe; exit $status";

TEST_F(OutputInterruption, LeavesNothingWhileTheDocumentIsRead) {
  for (const std::string signal : {"INT", "TERM", "HUP"}) {
    const Result result = runHere(begin + program +
                                  " convert pipe out --to kvml & exec 3>pipe; cat in >&3\n"
                                  "kill -" +
                                  signal + " $!\n" + finish);

    EXPECT_GT(result.status, 128) << signal;
    EXPECT_EQ(list(), (Names{"in", "tmp"})) << signal;
    EXPECT_EQ(listTemporary(), Names{}) << signal;
  }
}

TEST_F(OutputInterruption, LeavesTheOldFile) {
  for (const std::string signal : {"INT", "TERM", "HUP"}) {
    const Result result = runHere("rm -rf far; mkdir far; cp in far/out\n" + (begin + program) +
                                  " prune in far/out --used-by pipe & exec 3>pipe; echo A >&3\n"
                                  "ls -A far | wc -l; kill -" +
                                  signal + " $!\n" + finish);

    EXPECT_EQ(result.out, "2\n") << signal;
    EXPECT_GT(result.status, 128) << signal;
    EXPECT_EQ(listFolder(folder + "/far"), Names{"out"}) << signal;
    EXPECT_EQ(read("far/out"), read("in")) << signal;
    EXPECT_EQ(listTemporary(), Names{}) << signal;
  }
}

TEST_F(OutputInterruption, LeavesNothingWhileAPipeIsWritten) {
  for (const std::string signal : {"INT", "TERM", "HUP"}) {
    const Result result =
        runHere(begin + program + " convert in pipe --to kvml & sleep 0.2; kill -" + signal +
                " $!\n" + finish);

    EXPECT_GT(result.status, 128) << signal;
    EXPECT_EQ(listTemporary(), Names{}) << signal;
  }
}

TEST_F(OutputInterruption, IsIgnoredWhereTheShellSaysSo) {
  const Result result = runHere((begin + ("trap '' HUP\n" + program)) +
                                " prune in out --used-by pipe & exec 3>pipe\n"
                                "kill -HUP $!; echo A >&3; exec 3>&-\n" +
                                finish);

  EXPECT_EQ(result.err, "0 removed, 1 kept\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(read("out").find("NAME=\"A\""), std::string::npos);
}

TEST_F(OutputInterruption, EndsQuietlyWhenNobodyReads) {
  const Result result = runHere(
      "for i in {1..20000}; do echo '<FOUND FZAREA=\"1\"/>'; done >founds\n"
      "(head -2 in; echo '<FOUNDATIONS>'; cat founds; echo '</FOUNDATIONS></SMOD>') >large\n"
      "trap '' PIPE\n"
      "kvfound convert large - --to kvml | head -1; exit ${PIPESTATUS[0]}");

  EXPECT_EQ(result.out, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 141);
  EXPECT_EQ(listTemporary(), Names{});
}

#ifdef KVFOUND_FAILING_CALLS
// Of write, fsync and rename; the streams of LLVM's library write by calls within the C library.
#ifdef _LIBCPP_VERSION
constexpr int callsThatCanFail = 2;
#else
constexpr int callsThatCanFail = 3;
#endif

class FailingCalls : public Output {
 protected:
  /// Runs a command that edits `in` with one call after the other failing, until none does. Each
  /// time the old file is whole, and nothing else is left.
  void failOneByOne(const std::string& command) {
    const std::string old = read("in");
    const Names files = list();
    int failures = 0;
    while (failures < 50) {
      const Result result = runHere("export KVFOUND_FAILING_CALL=" + std::to_string(failures + 1) +
                                    "\nLD_PRELOAD='" KVFOUND_FAILING_CALLS "' kvfound " + command);
      if (result.status == 0) break;
      ++failures;
      EXPECT_EQ(result.status, 2);
      EXPECT_EQ(result.err, "kvfound: in: cannot be written: Input/output error\n");
      EXPECT_EQ(result.out, "");
      EXPECT_EQ(read("in"), old);
      EXPECT_EQ(list(), files);
    }
    EXPECT_GE(failures, callsThatCanFail);
    EXPECT_LT(failures, 50);
    EXPECT_NE(read("in"), old);
    EXPECT_EQ(list(), files);
  }
};

TEST_F(FailingCalls, LeaveTheOldFileWhereValuesAreSet) { failOneByOne("set in 1 areaZ=8"); }

TEST_F(FailingCalls, LeaveTheOldFileWhereAFoundationIsAdded) { failOneByOne("add in B areaZ=8"); }

TEST_F(FailingCalls, LeaveTheOldFileWhereAFoundationIsRemoved) { failOneByOne("remove in 1"); }
#endif

}  // namespace
