#include "texts.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "mix.h"

namespace Texts {
namespace {

void makeClashes(const Found::FoundationManager& manager) {
  const std::vector<Found::Foundation*>& all = manager.getFoundations();
  for (std::size_t i = 10; i < all.size(); i += 10) all[i]->setName(all[i - 1]->getName());
}

std::string removeAttribute(const std::string& text, const std::string& key) {
  const std::string begin = " " + key + "=\"";
  std::string rest;
  std::size_t kept = 0;
  for (std::size_t at = text.find(begin); at != text.npos; at = text.find(begin, kept)) {
    rest.append(text, kept, at - kept);
    kept = text.find('"', at + begin.size()) + 1;
  }
  return rest.append(text, kept);
}

}  // namespace

std::string makeLegacy(std::size_t n, Names names) {
  Found::FoundationManager manager;
  Mix::fill(manager, n, Mix::Parts::any);
  if (names == Names::clashing) makeClashes(manager);
  const std::string path = makeFile("");
  std::ofstream out(path);
  manager.writeXml(out);
  out.close();

  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return names == Names::none ? removeAttribute(removeAttribute(text.str(), "NUMBER"), "NAME")
                              : text.str();
}

std::string makeExchange(std::size_t n, bool isFirstVersion, Names names) {
  Found::FoundationManager manager;
  Mix::fill(manager, n, isFirstVersion ? Mix::Parts::any : Mix::Parts::one);
  if (names == Names::clashing) makeClashes(manager);
  KvXmlN::Document document("Beddings");
  const Tools::VersionText version(isFirstVersion ? "1.0" : "2.0");
  Found::Umo::BeddingWriter(manager, version).write(document.getRoot());
  std::ostringstream text;
  document.putToStream(text);
  return text.str();
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
