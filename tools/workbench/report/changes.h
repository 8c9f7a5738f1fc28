#pragma once

#include <string>

#include "comparing/differences.h"
#include "documents/document.h"
#include "report/content.h"

namespace Report {

/// One of two documents that are compared.
struct Side {
  Documents::Document& document;
  Units units;  // as it names them and as they are shown; empty where nothing tells
  Date date;
};

/// What a page of changes is about.
struct Changes {
  Side before;
  Side after;
  const Comparing::Differences& differences;
  double relative = 0.0;   // the share by which values may differ and still count as alike
  bool isComplete = true;  // false when not everything could be read
};

/// The page that shows what came, went and changed. It needs neither network nor scripts.
std::string makeChangesPage(const Changes& content);

}  // namespace Report
