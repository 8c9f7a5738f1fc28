#include "files/user_error.h"

namespace {

/// As editors understand it: file.xml:3:7
std::string makePlace(const std::string& path, KvXmlPosition position) {
  std::string place = path;
  if (position.line > 0) place += ":" + std::to_string(position.line);
  if (position.column > 0) place += ":" + std::to_string(position.column);
  return place;
}

}  // namespace

FileError::FileError(const std::string& path_, const std::string& sentence_, int number_)
    : UserError(path_.empty() ? sentence_ : path_ + ": " + sentence_),
      path(path_),
      sentence(sentence_),
      number(number_) {}

DocumentError::DocumentError(const std::string& path_, KvXmlPosition position_,
                             const std::string& sentence_)
    : UserError(makePlace(path_, position_) + ": " + sentence_),
      path(path_),
      position(position_),
      sentence(sentence_) {}
