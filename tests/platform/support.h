#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <istream>
#include <locale>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "kv/xml_tree.h"

namespace PlatformTest {

/// Makes numbers of the C++ streams look like 1.234,5 until it ends.
class CommaLocale {
 public:
  CommaLocale() : before(std::locale::global(std::locale(std::locale::classic(), new Facet))) {}
  ~CommaLocale() { std::locale::global(before); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  struct Facet : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "ja"; }
    std::string do_falsename() const override { return "nein"; }
  };

  std::locale before;
};

/// A file of the running test, removed when it ends.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& text) {
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    path = testing::TempDir() + test->test_suite_name() + "." + test->name() + ".xml";
    std::ofstream(path, std::ios::binary) << text;
  }
  ~TemporaryFile() { std::remove(path.c_str()); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& getPath() const { return path; }

 private:
  std::string path;
};

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
    const std::string command = "xmllint --noout --nonet '" + file.getPath() + "'";
    return std::system(command.c_str()) == 0;  // NOLINT: the path is the test's own
  }
};

}  // namespace PlatformTest

#define SKIP_WITHOUT_SECOND_PARSER() \
  if (!PlatformTest::SecondParser::isInstalled()) GTEST_SKIP() << "xmllint is not installed"
