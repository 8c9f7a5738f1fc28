#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "documents/document.h"
#include "files/user_error.h"
#include "property.h"

namespace Fuzz {

/// Any bytes as a document; null where they are none that can be read, which is told as an error of
/// the user.
inline std::unique_ptr<Documents::Document> open(
    const std::string& bytes, const std::optional<std::string>& version = std::nullopt) {
  try {
    auto document = std::make_unique<Documents::Document>(Files::Content{"file", "", bytes},
                                                          Documents::ReadOptions{version, {}, {}});
    document->requireReadable();
    return document;
  } catch (const UserError& error) {
    require(std::string(error.what()).compare(0, 5, "file:") == 0, "an error names its file",
            error.what());
    return nullptr;
  }
}

inline std::string takeAll(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace Fuzz
