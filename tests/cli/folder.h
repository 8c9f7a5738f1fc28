#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/files.h"

/// A folder of the running test, empty at first. Returns its path.
inline std::string makeFolder(const std::string& name) {
  std::string path = makePath(name);
  std::filesystem::remove_all(path);
  std::filesystem::create_directory(path);
  return path;
}

/// Writes `text` to a file in a folder and returns its path.
inline std::string makeFileIn(const std::string& folder, const std::string& name,
                              const std::string& text) {
  std::string path = folder + "/" + name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

/// The names of what is in a folder.
inline std::vector<std::string> listFolder(const std::string& path) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}
