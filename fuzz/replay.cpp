#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void run(const std::filesystem::path& file) {
  std::printf("%s\n", file.string().c_str());
  std::fflush(stdout);  // the last one printed is the one that ends the program
  std::ifstream in(file, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  // A copy of exactly this size, so that a sanitizer sees reading behind its end.
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

}  // namespace

/// Runs a target once on every file of the folders given.
int main(int count, char** folders) {
  std::vector<std::filesystem::path> files;
  for (int i = 1; i < count; ++i)
    for (const auto& entry : std::filesystem::directory_iterator(folders[i]))
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  for (const std::filesystem::path& file : files) run(file);
  return files.empty() ? 1 : 0;
}
