#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "files/output_file.h"

namespace Report {

/// What stands around every page.
struct Frame {
  std::string title;  // in UTF-8, not yet escaped
  std::string over;   // above the heading
  std::string sheet;  // what each sheet of paper tells at its foot
  bool hasScript = false;
};

/// From the start of a page to behind its heading. Nothing is loaded, and no script runs but the
/// page's own, whatever a document holds.
void openPage(const Frame& frame, std::string& page);
/// What stands between the facts below the heading and all that is shown: on paper, lines to sign.
void closeHeader(std::string& page);
void closePage(const Frame& frame, std::string& page);

/// A line of the list of facts below the heading; `text` and `remark` are HTML.
void appendFact(const std::string& name, const std::string& text, const std::string& remark,
                std::string& page);

/// How a page calls a file: its name without its folder, safe to show.
std::string nameFile(const std::string& shownPath);

/// True for a text that is a page of this program.
bool isPage(std::string_view text);

/// Throws FileError where something is there that a page must not take the place of: all but an
/// older page.
void requireReplaceable(const OutputFile& output);

}  // namespace Report
