#include "report/frame.h"

#include <cerrno>
#include <cstdint>

#include "files/paths.h"
#include "files/user_error.h"
#include "report/assets.h"
#include "report/html.h"
#include "report/text.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Report {
namespace {

/// `text` as a string of a style sheet: all but letters, digits and spaces by their codes.
std::string quoteForStyle(const std::string& text) {
  std::string quoted = "\"";
  for (std::string_view rest = text; !rest.empty();) {
    const char32_t c = Utf8::take(rest);
    const bool isPlain =
        c == ' ' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (isPlain)
      quoted += static_cast<char>(c);
    else
      append(quoted, "\\{:x} ", static_cast<std::uint32_t>(c));
  }
  return quoted + '"';
}

}  // namespace

void openPage(const Frame& frame, std::string& page) {
  constexpr std::size_t longestFoot = 90;
  const std::string foot = DisplayText::shorten(frame.sheet, longestFoot);
  const std::string source =
      frame.hasScript ? "; script-src 'sha256-" + std::string(scriptSha256) + "'" : "";
  append(page,
         "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'{}\">\n"
         "<meta name=\"generator\" content=\"kvfound\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<title>{} {}</title>\n<style>{}@page {{ @bottom-left {{ content: {}; }} }}\n</style>\n"
         "</head>\n<body>\n<header>\n<p class=\"over\">{}</p>\n<h1>{}</h1>\n",
         source, escape(frame.over), escape(frame.title), styleSheet, quoteForStyle(foot),
         escape(frame.over), escape(frame.title));
}

void closeHeader(std::string& page) {
  page +=
      "<p class=\"sign\" hidden><span>Prepared</span> <span>Checked</span> "
      "<span>Date</span></p>\n"
      "</header>\n<main>\n";
}

void closePage(const Frame& frame, std::string& page) {
  page += "</main>\n<footer>\n<p>Made by kvfound " KVFOUND_VERSION ".</p>\n</footer>\n";
  if (frame.hasScript) append(page, "<script>{}</script>\n", script);
  page += "</body>\n</html>\n";
}

void appendFact(const std::string& name, const std::string& text, const std::string& remark,
                std::string& page) {
  append(page, "<li>{} <strong>{}</strong>", name, text);
  if (!remark.empty()) append(page, " <small>{}</small>", remark);
  page += "</li>\n";
}

std::string nameFile(const std::string& shownPath) {
  return showName(Paths::toText(Paths::fromText(shownPath).filename()));
}

bool isPage(std::string_view text) {
  const std::string_view start = "<!DOCTYPE html>";  // which no document of beddings has
  return text.substr(0, start.size()) == start &&
         text.find(R"(<meta name="generator" content="kvfound">)") != text.npos;
}

void requireReplaceable(const OutputFile& output) {
  const std::string there = output.readOld();
  if (!there.empty() && !isPage(there))
    throw FileError(output.getShownPath(),
                    "this is no page that kvfound made, and was not replaced; name another file",
                    EEXIST);
}

}  // namespace Report
