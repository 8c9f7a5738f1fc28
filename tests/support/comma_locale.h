#pragma once

#include <clocale>
#include <locale>
#include <string>

/// Process locales that must never show in a name, a number or a document.
namespace TestSupport {

/// While it lives, C++ streams print 12345.5 as 12.345,5.
class CommaLocale {
 public:
  CommaLocale()
      : previous(std::locale::global(std::locale(std::locale::classic(), new CommaNumbers))) {}
  ~CommaLocale() { std::locale::global(previous); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "ja"; }
    std::string do_falsename() const override { return "nein"; }
  };

  std::locale previous;
};

/// While it lives, the C library has an installed locale with a decimal comma.
class CommaCLocale {
 public:
  CommaCLocale() : previous(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "fr_FR.utf8",
                             "German_Germany.1252"}) {
      installed = std::setlocale(LC_ALL, name) != nullptr;
      if (installed) return;
    }
  }
  ~CommaCLocale() { std::setlocale(LC_ALL, previous.c_str()); }
  CommaCLocale(const CommaCLocale&) = delete;
  CommaCLocale& operator=(const CommaCLocale&) = delete;

  bool isInstalled() const { return installed; }

 private:
  std::string previous;
  bool installed = false;
};

}  // namespace TestSupport
