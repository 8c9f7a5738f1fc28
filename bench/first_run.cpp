// Does one job once, as a host does that was just started, and tells what it took. Nothing is warm
// but the file: no memory is there before it is needed, no name was looked up before.
//   kvfound_first_run make FOLDER N            makes the documents of N foundations
//   kvfound_first_run JOB library|pugixml FOLDER N
// The second prints seconds of the processor, the greatest memory that the job took and the size
// of the document, both in bytes. What is written stays in FOLDER/written.xml.
#include <time.h>

#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "mix.h"
#include "texts.h"
#include "yardsticks.h"

namespace {

using Found::FoundationManager;

constexpr const char* legacyFile = "legacy.xml";
constexpr const char* unnamedFile = "unnamed.xml";
constexpr const char* exchangeFile = "exchange.xml";
constexpr const char* firstExchangeFile = "exchange-1.0.xml";
constexpr const char* writtenFile = "written.xml";

// --- Jobs

struct Reading {
  const char* file;
  Mix::Parts parts;
  bool hasNames;
  void (*read)(FoundationManager&, const std::string& path);
  const std::vector<const char*>& attributes;
};

struct Writing {
  Mix::Parts parts;
  void (*write)(const FoundationManager&, const std::string& path);
  void (*writeWithPugixml)(const FoundationManager&, const std::string& path);
};

void readLegacy(FoundationManager& manager, const std::string& path) { manager.readXml(path); }

template <const char* const& Version>
void readExchange(FoundationManager& manager, const std::string& path) {
  std::ifstream file(path);
  const KvXmlN::Document document(file);
  const Tools::VersionText version(Version);
  Found::Umo::BeddingReader(manager, version).read(document.getRoot());
}

void writeLegacy(const FoundationManager& manager, const std::string& path) {
  std::ofstream out(path);
  manager.writeXml(out);
}

void writeLegacyWithPugixml(const FoundationManager& manager, const std::string& path) {
  Yardsticks::writeWithPugixml(path, manager.getFoundations());
}

template <const char* const& Version>
void writeExchange(const FoundationManager& manager, const std::string& path) {
  KvXmlN::Document document("Beddings");
  const Tools::VersionText version(Version);
  Found::Umo::BeddingWriter(manager, version).write(document.getRoot());
  std::ofstream out(path);
  document.putToStream(out);
}

template <bool IsFirstVersion>
void writeExchangeWithPugixml(const FoundationManager& manager, const std::string& path) {
  Yardsticks::writeExchangeWithPugixml(path, manager.getFoundations(), IsFirstVersion);
}

constexpr const char* current = "2.0";
constexpr const char* first = "1.0";

const std::map<std::string, Reading> readings = {
    {"readXml", {legacyFile, Mix::Parts::any, true, readLegacy, Yardsticks::legacyAttributes}},
    {"readXml-unnamed",
     {unnamedFile, Mix::Parts::any, false, readLegacy, Yardsticks::legacyAttributes}},
    {"readExchange",
     {exchangeFile, Mix::Parts::one, true, readExchange<current>, Yardsticks::exchangeAttributes}},
    {"readExchange-1.0",
     {firstExchangeFile, Mix::Parts::any, true, readExchange<first>,
      Yardsticks::firstExchangeAttributes}}};

const std::map<std::string, Writing> writings = {
    {"writeXml", {Mix::Parts::any, writeLegacy, writeLegacyWithPugixml}},
    {"writeExchange", {Mix::Parts::one, writeExchange<current>, writeExchangeWithPugixml<false>}},
    {"writeExchange-1.0", {Mix::Parts::any, writeExchange<first>, writeExchangeWithPugixml<true>}}};

// --- Measuring

double getSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// A line of what the system tells of this process, such as "VmHWM", the most memory that it has
/// had. In bytes.
long long getMemory(const std::string& line) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long long kilobytes = 0;
    if (word == line + ":" && status >> kilobytes) return kilobytes * 1024;
  }
  throw std::runtime_error("the system does not tell " + line);
}

struct Cost {
  double seconds;
  long long memory;
};

Cost measure(const std::function<void()>& job) {
  const long long memory = getMemory("VmRSS");
  const double begin = getSeconds();
  job();
  const double end = getSeconds();
  return {end - begin, getMemory("VmHWM") - memory};
}

// --- Checking, so that nothing fast and wrong is measured

bool isSame(Found::Foundation& read, Found::Foundation& expected, bool hasName) {
  for (const int dir : {0, 1, 2, 3})
    if (read.getValueArea(dir) != expected.getValueArea(dir) ||
        read.getValueLine(dir) != expected.getValueLine(dir))
      return false;
  return read.getFailAreaZ() == expected.getFailAreaZ() &&
         read.getFailLineY() == expected.getFailLineY() &&
         read.getFailLineZ() == expected.getFailLineZ() &&
         read.getFactorArea() == expected.getFactorArea() &&
         read.getFactorLine() == expected.getFactorLine() &&
         read.getNumber() == expected.getNumber() &&
         (!hasName || read.getName() == expected.getName());
}

void check(const FoundationManager& manager, const Reading& reading, std::size_t n) {
  const std::vector<Found::Foundation*>& read = manager.getFoundations();
  if (read.size() != n) throw std::runtime_error("a foundation is missing");
  for (std::size_t i = 0; i < n; ++i)
    if (!isSame(*read[i], *Mix::make(i, reading.parts), reading.hasNames))
      throw std::runtime_error("foundation " + std::to_string(i + 1) + " was read wrong");
}

Cost run(const Reading& reading, bool isLibrary, const std::string& folder, std::size_t n) {
  const std::string path = folder + reading.file;
  if (isLibrary) {
    FoundationManager manager;
    const Cost cost = measure([&] { reading.read(manager, path); });
    check(manager, reading, n);
    return cost;
  }
  double sum = 0.0;
  const Cost cost = measure([&] { sum = Yardsticks::readWithPugixml(path, reading.attributes); });
  if (sum <= static_cast<double>(n)) throw std::runtime_error("values are missing");
  return cost;
}

Cost run(const Writing& writing, bool isLibrary, const std::string& folder, std::size_t n) {
  FoundationManager manager;
  Mix::fill(manager, n, writing.parts);
  const std::string path = folder + writtenFile;
  const auto write = isLibrary ? writing.write : writing.writeWithPugixml;
  return measure([&] { write(manager, path); });
}

int make(const std::string& folder, std::size_t n) {
  using Texts::Names;
  const auto save = [&](const char* name, const std::string& text) {
    std::ofstream(folder + name) << text;
  };
  save(legacyFile, Texts::makeLegacy(n, Names::unique));
  save(unnamedFile, Texts::makeLegacy(n, Names::none));
  save(exchangeFile, Texts::makeExchange(n, false, Names::unique));
  save(firstExchangeFile, Texts::makeExchange(n, true, Names::unique));
  return 0;
}

int runJob(const std::string& job, const std::string& side, const std::string& folder,
           std::size_t n) {
  if (side != "library" && side != "pugixml") throw std::invalid_argument("no side: " + side);
  const bool isReading = readings.count(job) > 0;
  const Cost cost = isReading ? run(readings.at(job), side == "library", folder, n)
                              : run(writings.at(job), side == "library", folder, n);
  const std::string file = isReading ? readings.at(job).file : writtenFile;
  std::cout << cost.seconds << ' ' << cost.memory << ' '
            << std::filesystem::file_size(folder + file) << '\n';
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  try {
    if (argc == 4 && arguments[0] == "make")
      return make(arguments[1] + "/", std::stoul(arguments[2]));
    if (argc == 5)
      return runJob(arguments[0], arguments[1], arguments[2] + "/", std::stoul(arguments[3]));
    std::cerr << "The first lines of bench/first_run.cpp tell how this is called.\n";
  } catch (const std::exception& error) {
    std::cerr << "kvfound_first_run: " << error.what() << '\n';
  }
  return 2;
}
