#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "faults/faults.h"
#include "faults/limited_buffer.h"
#include "faults/scenes.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"

namespace FaultTest {
namespace {

/// Something of everything, in both layouts of the printer.
const std::string documents[] = {
    "<?xml version='1.1' standalone='yes'?><!DOCTYPE a><!-- c --><a b='1&#13;2'><?pi x?><d/></a>",
    "<a>text<![CDATA[x < y]]><b c='&lt;'/></a>"};

/// An operation that prints to a file stream.
struct Printing {
  std::string name;
  std::function<void(std::ofstream&)> print;
};

void PrintTo(const Printing& printing, std::ostream* out) { *out << printing.name; }

template <class Document>
Printing printDocument(const std::string& name, const std::string& text) {
  return {name, [text](std::ofstream& out) {
            std::istringstream in(text);
            Document(in).putToStream(out);
          }};
}

std::vector<Printing> printings() {
  return {
      {"WriteXml",
       [](std::ofstream& out) {
         ManagerScene scene;
         scene.manager.writeXml(out);
         EXPECT_EQ(scene.describe(), everything);
       }},
      {"WriteXml_OfNoFoundations", [](std::ofstream& out) { FoundationManager().writeXml(out); }},
      printDocument<KvXmlTree>("Tree", documents[0]),
      printDocument<KvXmlTree>("Tree_AsItWasLaidOut", documents[1]),
      printDocument<KvXmlN::Document>("Document", documents[0]),
      printDocument<KvXmlN::Document>("Document_AsItWasLaidOut", documents[1]),
  };
}

/// A file stream to something that is full after so many bytes.
struct Output {
  explicit Output(std::size_t limit) : buffer(limit) {
    static_cast<std::ostream&>(stream).rdbuf(&buffer);
  }

  LimitedBuffer buffer;
  std::ofstream stream;
};

class FullOutput : public testing::TestWithParam<Printing> {
 protected:
  /// The whole text.
  static std::string print() {
    Output output(100000);
    GetParam().print(output.stream);
    EXPECT_TRUE(output.stream.good());
    return output.buffer.get();
  }
};

TEST_P(FullOutput, IsToldByTheStream) {
  const std::string whole = print();
  ASSERT_GT(whole.size(), 30u);
  for (std::size_t limit = 0; limit < whole.size(); ++limit) {
    const long blocksBefore = countBlocks();
    {
      Output output(limit);

      GetParam().print(output.stream);

      EXPECT_TRUE(output.stream.bad()) << limit;
      EXPECT_EQ(output.buffer.get(), whole.substr(0, limit));
    }
    EXPECT_EQ(countBlocks(), blocksBefore) << limit;
  }
}

TEST_P(FullOutput, ThrowsWhereTheStreamDoes) {
  const std::string whole = print();
  for (std::size_t limit = 0; limit < whole.size(); ++limit) {
    const long blocksBefore = countBlocks();
    {
      Output output(limit);
      output.stream.exceptions(std::ios::badbit | std::ios::failbit);

      EXPECT_THROW(GetParam().print(output.stream), std::ios::failure) << limit;

      EXPECT_TRUE(output.stream.bad()) << limit;
      EXPECT_EQ(output.buffer.get(), whole.substr(0, limit));
    }
    EXPECT_EQ(countBlocks(), blocksBefore) << limit;
  }
}

TEST_P(FullOutput, IsNotFullWhenTheLastByteFits) {
  const std::string whole = print();
  Output output(whole.size());
  output.stream.exceptions(std::ios::badbit | std::ios::failbit);

  GetParam().print(output.stream);

  EXPECT_TRUE(output.stream.good());
  EXPECT_EQ(output.buffer.get(), whole);
}

TEST_P(FullOutput, TakesNothingFromAStreamThatFailedBefore) {
  Output output(100000);
  output.stream.setstate(std::ios::failbit);

  GetParam().print(output.stream);

  EXPECT_EQ(output.buffer.get(), "");
}

TEST_P(FullOutput, OfTheSystemIsToldAtTheLatestWhenItIsClosed) {
  std::ofstream out("/dev/full");
  if (!out.is_open()) GTEST_SKIP() << "there is no device that is full";

  GetParam().print(out);
  out.close();

  EXPECT_TRUE(out.fail());
}

INSTANTIATE_TEST_SUITE_P(Printing, FullOutput, testing::ValuesIn(printings()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace FaultTest
