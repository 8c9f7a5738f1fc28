#include "recording.h"

#include <charconv>
#include <map>

namespace Recording {
namespace {

struct State {
  std::vector<std::string> log;
  int callsUntilFailure = 0;
  std::map<std::string_view, int> live;
};

State& getState() {
  static State state;
  return state;
}

template <class Number>
std::string printNumber(Number value) {
  char buffer[32];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

}  // namespace

Failure::Failure(const std::string& line) : std::runtime_error(line) {}

const std::vector<std::string>& getLog() { return getState().log; }

void clearLog() { getState().log.clear(); }

void failAt(int n) { getState().callsUntilFailure = n; }

int countLive() {
  int count = 0;
  for (const auto& kind : getState().live) count += kind.second;
  return count;
}

int countLive(const std::string& kind) {
  const auto place = getState().live.find(kind);
  return place != getState().live.end() ? place->second : 0;
}

void call(const std::string& line) {
  note(line);
  int& left = getState().callsUntilFailure;
  if (left > 0 && --left == 0) throw Failure(line);
}

void note(const std::string& line) { getState().log.push_back(line); }

Counted::Counted(std::string_view kindName) : kind(kindName) { ++getState().live[kind]; }

Counted::Counted(const Counted& other) : Counted(other.kind) {}

Counted& Counted::operator=(const Counted& /*other*/) { return *this; }

Counted::~Counted() { --getState().live[kind]; }

std::string print(bool value) { return value ? "true" : "false"; }

std::string print(int value) { return printNumber(value); }

std::string print(double value) { return printNumber(value); }

}  // namespace Recording
