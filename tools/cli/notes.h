#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "kv/xml_position.h"
#include "progress.h"

namespace Commands {

/// Something that a command tells beside its result. Texts are safe to show.
struct Message {
  enum class Level { note, warning, error };

  Level level = Level::note;
  const char* kind = "";   // for programs; never changes
  std::string file;        // that it is about, as messages call it; may be empty
  KvXmlPosition position;  // in the file; 0 where it concerns all of it, or of a line
  std::string foundation;  // that it is about, as messages call it; may be empty
  std::string sentence;
};

/// An error that begins with the file that it is about, taken apart.
Message readError(const std::string& error, const std::vector<std::string>& files);

/// How people are told it: a line with its end.
std::string makeLine(const Message& message);

/// Where messages go: to people, a line each, or to programs, an object of JSON each.
class Notes {
 public:
  enum class Form { text, json };

  /// `arguments` of the command line tell the form where it cannot be read, and name the files that
  /// errors may be about.
  Notes(std::ostream& stream, const std::vector<std::string>& arguments);

  void setForm(Form wanted);
  /// Tells errors only from here on.
  void setQuiet();

  /// What is shown while people wait: see Progress.
  void setFile(std::size_t number, std::size_t count) { progress.setFile(number, count); }
  void setPhase(const std::string& what) { progress.setPhase(what); }

  void tell(const Message& message);
  /// Tells people the same in other words: lines with their ends.
  void tell(const Message& message, const std::string& lines);
  /// An error as it was thrown, which may hold anything.
  void tellError(const std::string& error);

 private:
  Progress progress;
  std::vector<std::string> files;
  Form form = Form::text;
  bool isQuiet = false;
};

}  // namespace Commands
