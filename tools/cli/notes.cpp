#include "notes.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>
#include <system_error>
#include <utility>

#include <nlohmann/json.hpp>

#include "terminal.h"
#include "text/display_text.h"

namespace Commands {
namespace {

using Json = nlohmann::ordered_json;
using Level = Message::Level;

constexpr const char* formOption = "--messages";

bool asksForJson(const std::vector<std::string>& arguments) {
  const std::string joined = std::string(formOption) + "=json";
  const auto end = std::find(arguments.begin(), arguments.end(), "--");
  if (std::find(arguments.begin(), end, joined) != end) return true;
  const auto option = std::find(arguments.begin(), end, formOption);
  return option != end && option + 1 != end && *(option + 1) == "json";
}

/// What may be a path on the command line, and what stands for "-" in messages.
std::vector<std::string> listFiles(const std::vector<std::string>& arguments) {
  std::vector<std::string> files = {"standard input", "standard output"};
  for (const std::string& argument : arguments) {
    files.push_back(argument);
    const std::size_t sign = argument.find('=');
    if (argument.rfind("--", 0) == 0 && sign != argument.npos)
      files.push_back(argument.substr(sign + 1));
  }
  return files;
}

/// Takes a number and the colon behind it off the start of `text`; 0 when there is none.
std::size_t takeNumber(std::string_view& text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const auto length = static_cast<std::size_t>(end - text.data());
  if (error != std::errc() || length == text.size() || *end != ':') return 0;
  text.remove_prefix(length + 1);
  return number;
}

KvXmlPosition takePosition(std::string_view& text) {
  KvXmlPosition position;
  position.line = takeNumber(text);
  if (position.line > 0) position.column = takeNumber(text);
  return position;
}

/// As editors understand it, behind the name of a file.
std::string showPosition(KvXmlPosition position) {
  std::string text;
  if (position.line > 0) text += std::to_string(position.line) + ":";
  if (position.column > 0) text += std::to_string(position.column) + ":";
  return text;
}

const char* getWord(Level level) {
  return level == Level::error ? "error" : level == Level::warning ? "warning" : "note";
}

std::string makeJson(const Message& message) {
  Json json;
  json["level"] = getWord(message.level);
  json["kind"] = message.kind;
  if (!message.file.empty()) json["file"] = message.file;
  if (message.position.line > 0) json["line"] = message.position.line;
  if (message.position.column > 0) json["column"] = message.position.column;
  if (!message.foundation.empty()) json["foundation"] = message.foundation;
  json["sentence"] = message.sentence;
  return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string makeLine(const Message& message) {
  const Terminal::Style style =
      message.level == Level::error ? Terminal::Style::red : Terminal::Style::plain;
  std::string line = Terminal::Painter(stderr).paint(style, "kvfound:") + " ";
  if (!message.file.empty()) line += message.file + ":";
  line += showPosition(message.position);
  if (!message.file.empty()) line += " ";
  if (!message.foundation.empty()) line += message.foundation + ": ";
  return line + message.sentence + "\n";
}

Message readError(const std::string& error, const std::vector<std::string>& files) {
  std::string file;
  for (const std::string& candidate : files) {
    const bool isLonger = candidate.size() > file.size();
    if (isLonger && error.rfind(candidate + ":", 0) == 0) file = candidate;
  }
  std::string_view rest = error;
  KvXmlPosition position;
  if (!file.empty()) {
    rest.remove_prefix(file.size() + 1);
    position = takePosition(rest);
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  }
  return {Level::error, "error", DisplayText::fromName(file),
          position,     "",      DisplayText::fromName(std::string(rest))};
}

Notes::Notes(std::ostream& stream, const std::vector<std::string>& arguments)
    : progress(stream), files(listFiles(arguments)) {
  setForm(asksForJson(arguments) ? Form::json : Form::text);
}

void Notes::setForm(Form wanted) {
  form = wanted;
  if (form == Form::json) progress.disable();
}

void Notes::setQuiet() {
  isQuiet = true;
  progress.disable();
}

void Notes::tell(const Message& message) { tell(message, makeLine(message)); }

void Notes::tell(const Message& message, const std::string& lines) {
  if (isQuiet && message.level != Level::error) return;
  progress.print(form == Form::json ? makeJson(message) : lines);
}

void Notes::tellError(const std::string& error) { tell(readError(error, files)); }

}  // namespace Commands
