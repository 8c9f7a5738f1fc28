#include "texts.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

namespace Texts {
namespace {

std::string makeName(std::size_t i, Names names) {
  const bool isClash = names == Names::clashing && i % 10 == 0 && i > 0;
  return "Soil " + std::to_string(isClash ? i - 1 : i);
}

std::string attribute(const char* key, const std::string& value) {
  return std::string(" ") + key + "=\"" + value + "\"";
}

std::string attribute(const char* key, double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.7g", value);
  return attribute(key, std::string(text));
}

std::string vector(const char* x, const char* y, const char* z, double horizontal,
                   double vertical) {
  return attribute(x, horizontal) + attribute(y, horizontal) + attribute(z, vertical);
}

double areaOf(std::size_t i) { return 1000.0 + static_cast<double>(i % 977) * 12.5; }
double lineOf(std::size_t i) { return 100.25 * static_cast<double>(i % 89 + 1); }
double rotationOf(std::size_t i) { return 2.5 * static_cast<double>(i % 31 + 1); }

}  // namespace

std::string makeLegacy(std::size_t n, Names names) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SMOD>\n  <FOUNDATIONS>\n";
  for (std::size_t i = 0; i < n; ++i) {
    text += "    <FOUND";
    if (names != Names::none)
      text += attribute("NUMBER", std::to_string(i + 1)) + attribute("NAME", makeName(i, names));
    text += vector("FXAREA", "FYAREA", "FZAREA", areaOf(i) / 10, areaOf(i)) +
            vector("FXLINE", "FYLINE", "FZLINE", lineOf(i) / 10, lineOf(i)) +
            attribute("FXX", rotationOf(i)) +
            " FAILZAREA=\"-1\" FAILXLINE=\"1\" FAILYLINE=\"-1\" FAILZLINE=\"1\""
            " FACAREA=\"0.1\" FACLINE=\"0.25\" IsGenerated=\"1\" />\n";
  }
  return text + "  </FOUNDATIONS>\n</SMOD>\n";
}

std::string makeExchange(std::size_t n, bool isFirstVersion, Names names) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Beddings>\n";
  for (std::size_t i = 0; i < n; ++i) {
    const std::string number = attribute("Number", std::to_string(i + 1));
    const std::string name = attribute("Name", makeName(i, names));
    if (isFirstVersion)
      text += "  <Bedding" + name +
              vector("SurfaceStiffnessX", "SurfaceStiffnessY", "SurfaceStiffnessZ", areaOf(i) / 10,
                     areaOf(i)) +
              " SurfaceStiffnessZFailure=\"tension\" TangentialSurfaceStiffnessXYFactor=\"0.1\"" +
              vector("CurveStiffnessX", "CurveStiffnessY", "CurveStiffnessZ", lineOf(i) / 10,
                     lineOf(i)) +
              attribute("CurveStiffnessXX", rotationOf(i)) +
              " CurveStiffnessYFailure=\"none\" CurveStiffnessZFailure=\"compression\""
              " TangentialCurveStiffnessX=\"0.25\" />\n";
    else if (i % 2 == 0)
      text += "  <CurveBedding" + number + name +
              vector("StiffnessX", "StiffnessY", "StiffnessZ", lineOf(i) / 10, lineOf(i)) +
              attribute("StiffnessXX", rotationOf(i)) +
              " StiffnessYFailure=\"none\" StiffnessZFailure=\"compression\" "
              "TangentialStiffnessXFactor=\"0.25\" />\n";
    else
      text += "  <SurfaceBedding" + number + name +
              vector("StiffnessX", "StiffnessY", "StiffnessZ", areaOf(i) / 10, areaOf(i)) +
              " StiffnessZFailure=\"tension\" TangentialStiffnessXYFactor=\"0.1\" />\n";
  }
  return text + "</Beddings>\n";
}

std::string makeFile(const std::string& text) {
  struct Files {
    ~Files() {
      for (const std::string& path : paths) std::remove(path.c_str());
    }
    std::vector<std::string> paths;
  };
  static Files files;
  const auto folder = std::filesystem::temp_directory_path();
  files.paths.push_back(
      (folder / ("kvfound-bench-" + std::to_string(files.paths.size()) + ".xml")).string());
  std::ofstream(files.paths.back(), std::ios::binary) << text;
  return files.paths.back();
}

}  // namespace Texts
