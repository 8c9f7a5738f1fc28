#if defined(__unix__) || defined(__APPLE__)

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <functional>
#include <thread>

#include "kv/xml_error.h"
#include "legacy_files.h"

using Found::FoundationManager;

namespace LegacyTest {
namespace {

/// Ends with the test: a reader that has enough must not end the program that feeds it.
class IgnoredBrokenPipe {
 public:
  IgnoredBrokenPipe() : previous(std::signal(SIGPIPE, SIG_IGN)) {}
  ~IgnoredBrokenPipe() { std::signal(SIGPIPE, previous); }
  IgnoredBrokenPipe(const IgnoredBrokenPipe&) = delete;
  IgnoredBrokenPipe& operator=(const IgnoredBrokenPipe&) = delete;

 private:
  void (*previous)(int);
};

/// A named pipe with a thread that feeds it. Both ends wait for one another when they open it.
class FedPipe {
 public:
  using Feed = std::function<void(std::ofstream&)>;

  explicit FedPipe(const Feed& feed) {
    EXPECT_EQ(mkfifo(path.get().c_str(), 0600), 0) << path.get();
    feeder = std::thread([this, feed] {
      std::ofstream out;
      out.rdbuf()->pubsetbuf(nullptr, 0);  // each byte is on its way at once
      out.open(path.get());
      feed(out);
    });
  }
  ~FedPipe() { feeder.join(); }
  FedPipe(const FedPipe&) = delete;
  FedPipe& operator=(const FedPipe&) = delete;

  const std::string& get() const { return path.get(); }

 private:
  IgnoredBrokenPipe ignored;
  TemporaryPath path;
  std::thread feeder;
};

FedPipe::Feed feedByteByByte(const std::string& text) {
  return [text](std::ofstream& out) {
    for (const char c : text) {
      out.put(c);
      std::this_thread::yield();
    }
  };
}

FedPipe::Feed feedAtOnce(const std::string& text) {
  return [text](std::ofstream& out) { out << text; };
}

const std::string document = makeDocument("<FOUND NAME='New'/>", " CURRENT='New'");

class LegacyPipe : public testing::Test {
 protected:
  LegacyPipe() { manager.setCurrentFoundation(&addFoundation(manager, 9, "Old")); }

  FoundationManager manager;
};

TEST_F(LegacyPipe, FedByteByByteIsRead) {
  const FedPipe pipe(feedByteByByte(document));

  EXPECT_TRUE(manager.readXml(pipe.get()));

  EXPECT_EQ(describe(manager), "1 New; current New");
}

TEST_F(LegacyPipe, OfADocumentLargerThanItsBuffersIsRead) {
  std::string elements;
  for (int i = 0; i < 20000; ++i) elements += "<FOUND NAME='A'/>\n";
  const FedPipe pipe(feedAtOnce(makeDocument(elements)));

  EXPECT_TRUE(manager.readXml(pipe.get()));

  EXPECT_EQ(manager.getFoundations().size(), 20000u);
}

TEST_F(LegacyPipe, ThatBreaksOffInsideTheRootLeavesTheManagerAlone) {
  const std::size_t begin = document.find("<SMOD>") + 1;
  const std::size_t end = document.find("</SMOD>") + 7;
  for (std::size_t size = begin; size < end; ++size) {
    const FedPipe pipe(feedAtOnce(document.substr(0, size)));

    EXPECT_THROW(manager.readXml(pipe.get()), KvXmlError) << size;

    EXPECT_EQ(describe(manager), "9 Old; current Old") << size;
  }
}

TEST_F(LegacyPipe, ThatBreaksOffBeforeXmlIsReadToItGivesFalse) {
  for (const char* text : {"", "<", "<?xm"}) {
    const FedPipe pipe(feedAtOnce(text));

    EXPECT_FALSE(manager.readXml(pipe.get())) << text;

    EXPECT_EQ(describe(manager), "9 Old; current Old") << text;
  }
}

TEST_F(LegacyPipe, ThatBreaksOffBetweenXmlAndTheRootEmptiesTheManager) {
  for (const char* text : {"<?xml", "<?xml version=\"1.0\"?>", "<?xml version=\"1.0\"?>\n"}) {
    FoundationManager filled;
    addFoundation(filled, 9, "Old");
    const FedPipe pipe(feedAtOnce(text));

    EXPECT_TRUE(filled.readXml(pipe.get())) << text;

    EXPECT_EQ(describe(filled), "") << text;
  }
}

TEST_F(LegacyPipe, WithoutXmlInItsFirstLineIsNotReadToItsEnd) {
  const FedPipe pipe([](std::ofstream& out) {
    while (out << "This goes on until nobody reads it.\n") {
    }
  });

  EXPECT_FALSE(manager.readXml(pipe.get()));

  EXPECT_EQ(describe(manager), "9 Old; current Old");
}

TEST_F(LegacyPipe, TakesADocumentFromOneManagerToAnother) {
  FoundationManager source;
  addFoundation(source, 3, "A");
  addFoundation(source, 5, "B");
  const FedPipe pipe([&source](std::ofstream& out) { source.writeXml(out); });

  EXPECT_TRUE(manager.readXml(pipe.get()));

  EXPECT_EQ(describe(manager), "3 A, 5 B");
}

}  // namespace
}  // namespace LegacyTest

#endif
