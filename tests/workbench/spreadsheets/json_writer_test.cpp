#include "spreadsheets/json_writer.h"

#include <limits>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "workbench/spreadsheets/sheets.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;
using SheetTest::writeData;

TEST(JsonWriter, WritesEveryFieldOfEveryFoundation) {
  FoundationManager manager;
  auto raft = std::make_unique<Foundation>();
  raft->setNumber(7);
  raft->setName("Raft");
  raft->setGenerated(true);
  const KvVector3D area(1.5, -0.0, 1e300);
  raft->setDispArea(&area);
  raft->setFailAreaZ(Foundation::Tension);
  raft->setFactorArea(0.1);
  auto strip = std::make_unique<Foundation>();
  strip->setNumber(-3);
  const KvVector3D line(std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::quiet_NaN());
  strip->setDispLine(&line);
  strip->setFailLineY(static_cast<Foundation::Failure>(-7));
  manager.add(std::move(raft));
  manager.setCurrentFoundation(strip.get());
  manager.add(std::move(strip));

  EXPECT_EQ(writeData(manager, {"kN", "m\""}), R"({
  "format": "kvfound-foundations",
  "version": 1,
  "units": {
    "force": "kN",
    "length": "m\""
  },
  "foundations": [
    {
      "number": 7,
      "name": "Raft",
      "generated": true,
      "areaX": 1.5,
      "areaY": -0.0,
      "areaZ": 1e+300,
      "areaFailureZ": "tension",
      "areaFactor": 0.1,
      "lineX": null,
      "lineY": null,
      "lineZ": null,
      "lineRotationX": null,
      "lineFailureX": "none",
      "lineFailureY": "none",
      "lineFailureZ": "none",
      "lineFactor": 0.0,
      "current": false
    },
    {
      "number": -3,
      "name": "",
      "generated": false,
      "areaX": null,
      "areaY": null,
      "areaZ": null,
      "areaFailureZ": "none",
      "areaFactor": 0.0,
      "lineX": "inf",
      "lineY": "-inf",
      "lineZ": "nan",
      "lineRotationX": null,
      "lineFailureX": "none",
      "lineFailureY": "-7",
      "lineFailureZ": "none",
      "lineFactor": 0.0,
      "current": true
    }
  ],
  "maximum": 1e+300
}
)");
}

TEST(JsonWriter, WritesAnEmptyListOfNoFoundations) {
  FoundationManager manager;

  EXPECT_EQ(writeData(manager),
            "{\n  \"format\": \"kvfound-foundations\",\n  \"version\": 1,\n  \"foundations\": [],\n"
            "  \"maximum\": 0.0\n}\n");
}

TEST(JsonWriter, EscapesWhatTextsCannotHold) {
  const struct {
    const char* name;
    const char* written;
  } rows[] = {{"\"A\"", R"("\"A\"")"}, {"A\\n", R"("A\\n")"},
              {"A\nB", R"("A\nB")"},   {"\t\r", R"("\u0009\u000d")"},
              {"\x7F/", "\"\x7F/\""},  {"W\xC3\xBCst", "\"W\xC3\xBCst\""}};
  for (const auto& row : rows) {
    FoundationManager manager;
    auto foundation = std::make_unique<Foundation>();
    foundation->setName(row.name);
    manager.add(std::move(foundation));
    const std::string member = std::string("\n      \"name\": ") + row.written + ",\n";
    EXPECT_NE(writeData(manager).find(member), std::string::npos) << writeData(manager);
  }
}

}  // namespace
