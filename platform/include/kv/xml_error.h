#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

#include "kv/export.h"

/// A text that is no well-formed XML document, or a stream that cannot be read.
///
/// what() tells everything in one line: "line 3, column 7: ...".
class KV_API KvXmlError : public std::runtime_error {
 public:
  /// What is wrong, and where; see below.
  KvXmlError(const std::string& reason, std::size_t line, std::size_t column);
  KvXmlError(const KvXmlError& other) noexcept;             ///< cannot fail
  KvXmlError& operator=(const KvXmlError& other) noexcept;  ///< cannot fail
  ~KvXmlError() override;

  /// What is wrong, without the position.
  const std::string& getReason() const { return *reasonText; }
  /// The line, counted from 1 in the whole file, even when parsing began further on in the stream.
  /// Lines end at line feeds.
  std::size_t getLine() const { return lineNumber; }
  /// The column in that line, counted from 1 in bytes.
  std::size_t getColumn() const { return columnNumber; }

 private:
  std::shared_ptr<const std::string> reasonText;  // shared, so that copying cannot fail
  std::size_t lineNumber;
  std::size_t columnNumber;
};
