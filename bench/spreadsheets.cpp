#include <ctime>
#include <fstream>
#include <iostream>
#include <string>

#include "documents/document.h"
#include "spreadsheets/csv_writer.h"
#include "spreadsheets/json_writer.h"

// One job on tables or JSON, done once; prints the processor time that it took in seconds:
//   kvfound_spreadsheets read|write IN OUT
// The ending of IN, or of OUT, tells the form.

namespace {

double getSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

bool isJson(const std::string& path) { return path.substr(path.size() - 5) == ".json"; }

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const std::string job = argv[1];
  double began = getSeconds();
  Documents::Document document(Documents::readFile(argv[2]));
  Found::FoundationManager& manager = document.getFoundations();
  if (job == "write") {
    began = getSeconds();
    std::ofstream file(argv[3], std::ios::binary);
    isJson(argv[3]) ? Spreadsheets::writeJson(manager, {}, file)
                    : Spreadsheets::writeCsv(manager, {}, {}, file);
    file.close();
    if (!file) return 1;
  }
  std::cout << getSeconds() - began << ' ' << manager.getFoundations().size() << '\n';
}
