#include "kv/short_path.h"

#include <algorithm>

#include "recording_legacy.h"

namespace {

Recording::ShortPathAnswer::Answer& getAnswer() {
  static Recording::ShortPathAnswer::Answer answer;
  return answer;
}

}  // namespace

namespace Recording {

ShortPathAnswer::ShortPathAnswer(const Answer& answer) { getAnswer() = answer; }

ShortPathAnswer::~ShortPathAnswer() { getAnswer() = nullptr; }

}  // namespace Recording

unsigned long GetShortPathNameA(const char* longPath, char* shortPath, unsigned long size) {
  Recording::call("GetShortPathNameA " + std::string(longPath) + " " + std::to_string(size));
  if (!getAnswer()) return 0;
  const std::string answer = getAnswer()(longPath);
  if (answer.empty()) return 0;
  // A buffer that is too small stays as it is; the result is then the size that would do.
  if (answer.size() >= size) return static_cast<unsigned long>(answer.size() + 1);
  std::copy_n(answer.c_str(), answer.size() + 1, shortPath);
  return static_cast<unsigned long>(answer.size());
}
