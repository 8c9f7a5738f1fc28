#include "kv/xml_error.h"

KvXmlError::KvXmlError(const std::string& reason, std::size_t line, std::size_t column)
    : std::runtime_error("line " + std::to_string(line) + ", column " + std::to_string(column) +
                         ": " + reason),
      reasonText(std::make_shared<const std::string>(reason)),
      lineNumber(line),
      columnNumber(column) {}

KvXmlError::KvXmlError(const KvXmlError& other) noexcept = default;

KvXmlError& KvXmlError::operator=(const KvXmlError& other) noexcept = default;

KvXmlError::~KvXmlError() = default;
