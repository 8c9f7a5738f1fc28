#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <istream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "kv/xml_tree.h"
#include "support/temporary_files.h"

namespace PlatformTest {

using TestSupport::TemporaryFile;

inline std::unique_ptr<KvXmlTree> parse(const std::string& text) {
  std::istringstream in(text);
  return std::make_unique<KvXmlTree>(in);
}

inline std::string print(const KvXmlTree& tree) {
  std::ostringstream out;
  tree.putToStream(out);
  return out.str();
}

inline std::string reprint(const std::string& text) { return print(*parse(text)); }

/// The error that parsing the stream ends with, empty when it does not fail.
inline std::optional<KvXmlError> findError(std::istream& in) {
  try {
    const KvXmlTree tree(in);
  } catch (const KvXmlError& error) {
    return error;
  }
  return std::nullopt;
}

inline std::optional<KvXmlError> findError(const std::string& text) {
  std::istringstream in(text);
  return findError(in);
}

inline void expectErrorAt(std::istream& in, std::size_t line, std::size_t column) {
  const std::optional<KvXmlError> error = findError(in);
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->getLine(), line) << error->what();
  EXPECT_EQ(error->getColumn(), column) << error->what();
}

inline void expectErrorAt(const std::string& text, std::size_t line, std::size_t column) {
  SCOPED_TRACE(text.substr(0, 200));
  std::istringstream in(text);
  expectErrorAt(in, line, column);
}

inline std::string repeat(const std::string& text, std::size_t times) {
  std::string result;
  result.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

/// A second opinion on what is printed.
class SecondParser {
 public:
  static bool isInstalled() {
    return std::system("command -v xmllint >/dev/null 2>&1") == 0;  // NOLINT: fixed text
  }

  static bool accepts(const std::string& text) {
    const TemporaryFile file(text);
    const std::string command = "xmllint --noout --nonet '" + file.get() + "'";
    return std::system(command.c_str()) == 0;  // NOLINT: the path is the test's own
  }
};

}  // namespace PlatformTest

#define SKIP_WITHOUT_SECOND_PARSER() \
  if (!PlatformTest::SecondParser::isInstalled()) GTEST_SKIP() << "xmllint is not installed"
