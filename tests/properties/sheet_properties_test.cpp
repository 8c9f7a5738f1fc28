#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "properties/generators.h"
#include "text/utf8.h"
#include "workbench/spreadsheets/sheets.h"

// Whatever foundations hold comes back from tables and data, bit by bit.

namespace {

using namespace PropertyTest;
using Spreadsheets::Dialect;

/// What XML allows of a name.
std::string keepXmlText(const std::string& name) {
  std::string kept;
  for (std::string_view rest = name; !rest.empty();) {
    const std::string_view all = rest;
    Utf8::take(rest);
    const std::string character(all.substr(0, all.size() - rest.size()));
    const bool isSpace = character == "\t" || character == "\n" || character == "\r";
    if (isSpace || Utf8::isXmlText(character)) kept += character;
  }
  return kept;
}

rc::Gen<Records> anyRows() {
  return rc::gen::map(anyRecords(), [](Records records) {
    for (Record& record : records) {
      record.name = keepXmlText(record.name);
      // No document has more of a rotation than this, or a sign of what is not a number.
      if (record.rotLine) record.rotLine = KvVector3D(record.rotLine->x, 0.0, 0.0);
      record.failPossible = false;
      const auto forgetSign = [](double& value) {
        if (std::isnan(value)) value = Limits::quiet_NaN();
      };
      for (Vector* vector : {&record.dispArea, &record.dispLine, &record.rotLine})
        if (*vector)
          for (double* component : {&(*vector)->x, &(*vector)->y, &(*vector)->z})
            forgetSign(*component);
      forgetSign(record.factorArea);
      forgetSign(record.factorLine);
    }
    return records;
  });
}

rc::Gen<Dialect> anyDialect() {
  return rc::gen::map(rc::gen::pair(rc::gen::element(',', ';', '\t'), rc::gen::element('.', ',')),
                      [](const std::pair<char, char>& chosen) {
                        return Dialect{chosen.first, chosen.second};
                      });
}

std::vector<std::string> describeAll(const FoundationManager& manager) {
  std::vector<std::string> texts;
  for (Foundation* foundation : manager.getFoundations()) {
    Record record = recordOf(*foundation);
    record.failPossible = false;  // follows from the modes
    texts.push_back(describeUnmarked(record));
  }
  return texts;
}

void makeAnyCurrent(FoundationManager& manager) {
  const std::vector<Foundation*>& all = manager.getFoundations();
  const std::size_t chosen = *rc::gen::inRange<std::size_t>(0, all.size() + 1);
  if (chosen < all.size()) manager.setCurrentFoundation(all[chosen]);
}

std::string nameCurrent(const FoundationManager& manager) {
  const std::vector<Foundation*>& all = manager.getFoundations();
  for (std::size_t i = 0; i < all.size(); ++i)
    if (all[i] == manager.getCurrentFoundation()) return std::to_string(i);
  return "none";
}

RC_GTEST_PROP(SheetProperty, TablesReadBackAsTheyWereWritten, ()) {
  const Records records = *anyRows();
  const Dialect dialect = *anyDialect();
  FoundationManager written;
  add(written, records);
  makeAnyCurrent(written);
  const std::string bytes = SheetTest::writeTable(written, dialect);
  RC_LOG() << bytes << "\n";

  FoundationManager read;
  SheetTest::read(bytes, {}, read);

  RC_ASSERT(describeAll(read) == describeUnmarked(records));
  RC_ASSERT(nameCurrent(read) == nameCurrent(written));
  RC_ASSERT(SheetTest::writeTable(read, dialect) == bytes);
}

RC_GTEST_PROP(SheetProperty, DataReadsBackAsItWasWritten, ()) {
  const Records records = *anyRows();
  FoundationManager written;
  add(written, records);
  makeAnyCurrent(written);
  const std::string bytes = SheetTest::writeData(written);
  RC_LOG() << bytes << "\n";

  FoundationManager read;
  SheetTest::readData(bytes, read);

  RC_ASSERT(describeAll(read) == describeUnmarked(records));
  RC_ASSERT(nameCurrent(read) == nameCurrent(written));
  RC_ASSERT(SheetTest::writeData(read) == bytes);
}

}  // namespace
