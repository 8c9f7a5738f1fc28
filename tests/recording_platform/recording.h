#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// What the recording companion libraries share, and what a test controls them by.
///
/// Every operation announces itself with one line of text, the operation's name first, and may be
/// made to throw instead of doing its work. Every object is counted while it lives.
namespace Recording {

/// What a call throws that was told to fail. No library knows it, so whoever catches it knows that
/// it passed through unchanged.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& line);
};

/// @name For tests
/// @{
/// The calls since the last clearLog(), in order; one that failed is the last.
const std::vector<std::string>& getLog();
void clearLog();

/// Lets the `n`-th call from now on throw Failure, and only that one. 0: none.
void failAt(int n);

/// The number of objects alive, of all kinds or of the kind with this class name.
int countLive();
int countLive(const std::string& kind);
/// @}

/// @name For the libraries
/// @{
/// Announces an operation before it has any effect. Throws Failure when this one is to fail.
void call(const std::string& line);

/// Announces what must not throw, such as a destructor; it is not counted by failAt().
void note(const std::string& line);

/// A member of every class whose objects are counted.
class Counted {
 public:
  explicit Counted(std::string_view kindName);
  Counted(const Counted& other);
  Counted& operator=(const Counted& other);
  ~Counted();

 private:
  std::string_view kind;
};

/// Text forms for lines, the same under every locale.
std::string print(bool value);
std::string print(int value);
std::string print(double value);
/// @}

}  // namespace Recording
