#include "files/dates.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "files/paths.h"
#include "support/temporary_files.h"

namespace {

/// "0000-00-00 00:00" for every date.
std::string hideDigits(std::string date) {
  for (char& c : date)
    if (c >= '0' && c <= '9') c = '0';
  return date;
}

TEST(Dates, HaveAYearAMonthADayAndATime) {
  EXPECT_EQ(hideDigits(Dates::now()), "0000-00-00 00:00");
}

TEST(Dates, OfAFileAreWhenItWasWritten) {
  namespace fs = std::filesystem;
  std::tm time = {};
  time.tm_year = 126;
  time.tm_mon = 2;
  time.tm_mday = 1;
  time.tm_hour = 9;
  time.tm_min = 30;
  time.tm_sec = 30;  // far from both ends of the minute
  time.tm_isdst = -1;
  const auto age =
      std::chrono::system_clock::now() - std::chrono::system_clock::from_time_t(std::mktime(&time));
  const TestSupport::TemporaryFile file("text");
  fs::last_write_time(
      Paths::fromText(file.get()),
      fs::file_time_type::clock::now() - std::chrono::duration_cast<std::chrono::seconds>(age));

  EXPECT_EQ(Dates::ofFile(file.get()), "2026-03-01 09:30");
}

TEST(Dates, OfAFileThatWasJustWrittenAreThePresent) {
  const std::string before = Dates::now();
  const TestSupport::TemporaryFile file("text");
  const std::string date = Dates::ofFile(file.get());

  EXPECT_LE(before, date);
  EXPECT_LE(date, Dates::now());
}

TEST(Dates, OfNoFileAreEmpty) {
  const TestSupport::TemporaryPath path("M\xFChle.xml");

  EXPECT_EQ(Dates::ofFile(path.get()), "");
  EXPECT_EQ(Dates::ofFile(""), "");
}

TEST(Dates, AreOfFilesInTheCodePageOfTheProcess) {
  const TestSupport::TemporaryPath path("M\xFChle.xml");
  TestSupport::store(path.get(), "text");

  EXPECT_EQ(hideDigits(Dates::ofFile(path.get())), "0000-00-00 00:00");
}

}  // namespace
