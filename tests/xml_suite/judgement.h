#pragma once

#include <set>
#include <string>

namespace XmlSuite {

/// In which way an XML library and libxml2 differ about a text.
enum class Deviation {
  accepted,   ///< here, and it is not well-formed
  refused,    ///< here, and it is well-formed
  misread,    ///< elements or attributes are not those that libxml2 reads
  malformed,  ///< what is printed is not well-formed
  changed,    ///< what is printed does not say what was parsed
  unstable,   ///< printing again, parsed again or with values asked for, differs
  disputed    ///< the two XML libraries do not agree
};

const char* nameOf(Deviation deviation);

/// What becomes of one text.
struct Judgement {
  bool isAccepted = false;           ///< by an XML library
  std::set<std::string> leniencies;  ///< accepted on purpose although it is not well-formed
  std::set<Deviation> deviations;
  std::string details;  ///< for people: reasons, and what was read and printed
};

/// Judges a text through both XML libraries against libxml2.
Judgement judge(const std::string& text);

/// The deviations by name, separated by blanks.
std::string list(const std::set<Deviation>& deviations);

}  // namespace XmlSuite
