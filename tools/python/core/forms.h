#pragma once

#include <memory>
#include <new>
#include <sstream>
#include <string>

#include "found/foundation_manager.h"
#include "given.h"

/// The forms of the library, on data that nobody else sees, so that it needs no lock of the
/// interpreter.
namespace Python::Forms {

/// The document in UTF-8, as it declares then.
std::string toUtf8(const std::string& bytes);

/// Parses a document from its bytes. Throws DocumentError, with the position in the bytes as given.
template <class Tree>
std::unique_ptr<Tree> parse(const Given& given);

/// Throws UserError for a name that cannot be read again: what is no text, and control characters,
/// which XML cannot hold.
void requireNames(const Found::FoundationManager& manager);

template <class Tree>
std::string print(const Tree& tree) {
  std::ostringstream out;
  tree.putToStream(out);
  if (!out) throw std::bad_alloc();
  return out.str();
}

/// Copies of foundations in a manager of their own.
class Snapshot {
 public:
  /// Of the list, with the current foundation.
  explicit Snapshot(const Found::FoundationManager& other);
  Snapshot() = default;

  Found::Foundation* add(const Found::Foundation& other);
  Found::FoundationManager& get() { return manager; }

 private:
  Found::FoundationManager manager;
};

}  // namespace Python::Forms
