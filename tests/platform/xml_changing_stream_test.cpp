#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

#include "kv/xml_tree.h"
#include "support.h"

namespace PlatformTest {
namespace {

using TestSupport::store;

std::string makeLeaves(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += "<leaf/>";
  return text;
}

/// How many leaves the root has, -1 when there is no root.
long countLeaves(std::istream& in) {
  const KvXmlTree tree(in);
  KvXmlData* const root = tree.findRoot("root", true);
  return root != nullptr ? static_cast<long>(root->getChildren().size()) : -1;
}

/// A file of more than one buffer, of which a stream has read the first line.
class XmlChangingFile : public testing::Test {
 protected:
  XmlChangingFile() : in(file.get()) {
    std::string line;
    std::getline(in, line);
    EXPECT_EQ(line, firstLine);
  }

  const std::string firstLine = "this line is no XML";
  const std::string text = firstLine + "\n<root>" + makeLeaves(20000) + "</root>\n";
  const TemporaryFile file{text};
  std::ifstream in;
};

TEST_F(XmlChangingFile, IsReadAsItIsWhenItStaysAsItWas) { EXPECT_EQ(countLeaves(in), 20000); }

TEST_F(XmlChangingFile, ThatGrowsIsReadToItsNewEnd) {
  std::ofstream(file.get(), std::ios::app) << "<second/>";

  expectErrorAt(in, 3, 2);
}

TEST_F(XmlChangingFile, ThatIsCutInsideTheRootIsRefused) {
  std::filesystem::resize_file(file.get(), text.size() / 2);

  EXPECT_TRUE(findError(in).has_value());
}

TEST_F(XmlChangingFile, ThatIsCutRightBehindWhatWasReadHasNoRoot) {
  std::filesystem::resize_file(file.get(), firstLine.size() + 1);

  EXPECT_EQ(countLeaves(in), -1);
}

TEST_F(XmlChangingFile, ThatIsCutToLessThanWasReadHasNoRoot) {
  for (const std::size_t size : {5u, 0u}) {
    std::filesystem::resize_file(file.get(), size);
    in.clear();

    EXPECT_EQ(countLeaves(in), -1) << size;
  }
}

TEST_F(XmlChangingFile, ThatIsOverwrittenIsReadAsItIsNow) {
  store(file.get(), firstLine + "\n<root>" + makeLeaves(3) + "</root>");

  EXPECT_EQ(countLeaves(in), 3);
}

#if !defined(_WIN32)
TEST_F(XmlChangingFile, ThatAnotherTakesThePlaceOfIsReadAsItWas) {
  const TemporaryFile other(firstLine + "\n<root/>");
  std::filesystem::rename(other.get(), file.get());

  EXPECT_EQ(countLeaves(in), 20000);
}

TEST_F(XmlChangingFile, ThatIsDeletedIsReadAsItWas) {
  std::filesystem::remove(file.get());

  EXPECT_EQ(countLeaves(in), 20000);
}
#endif

/// Gives its text in pieces.
class PieceBuffer : public std::streambuf {
 public:
  PieceBuffer(std::string given, std::size_t size) : text(std::move(given)), pieceSize(size) {}

 protected:
  int_type underflow() override {
    if (place == text.size()) return traits_type::eof();
    const std::size_t size = std::min(pieceSize, text.size() - place);
    setg(&text[place], &text[place], &text[place] + size);
    place += size;
    return traits_type::to_int_type(*gptr());
  }

 private:
  std::string text;
  std::size_t pieceSize;
  std::size_t place = 0;
};

/// Tells before each character that so many are left, as a file does that changes its size
/// afterwards.
class MisleadingBuffer : public PieceBuffer {
 public:
  MisleadingBuffer(const std::string& given, std::streamsize told)
      : PieceBuffer(given, 1), toldRest(told) {}

 protected:
  std::streamsize showmanyc() override { return toldRest; }

 private:
  std::streamsize toldRest;
};

TEST(XmlChangingStream, IsReadToItsEndWhateverSizeItTold) {
  const std::string text = "<root>" + makeLeaves(20000) + "</root>";
  const auto size = static_cast<std::streamsize>(text.size());
  for (const std::streamsize told :
       {std::streamsize(-1), std::streamsize(0), size / 2, size - 1, size, size + 1, 100 * size,
        std::numeric_limits<std::streamsize>::max()}) {
    MisleadingBuffer buffer(text, told);
    std::istream in(&buffer);

    EXPECT_EQ(countLeaves(in), 20000) << told;
  }
}

/// Fails at its end.
class FailingBuffer : public PieceBuffer {
 public:
  explicit FailingBuffer(const std::string& given) : PieceBuffer(given, 1000) {}

 protected:
  int_type underflow() override {
    const int_type next = PieceBuffer::underflow();
    if (next == traits_type::eof()) throw std::ios_base::failure("the line is cut");
    return next;
  }
};

TEST(XmlChangingStream, ThatFailsMidwayIsRefusedAlsoWhenTheRootWasComplete) {
  for (const std::string& text : {"<root>" + makeLeaves(20000), std::string("<root/>"),
                                  std::string("<root/>\n"), std::string(1000, ' ')}) {
    FailingBuffer buffer(text);
    std::istream in(&buffer);

    EXPECT_TRUE(findError(in).has_value()) << text.substr(0, 20);
  }
}

}  // namespace
}  // namespace PlatformTest
