// A host that is linked with static libraries, its own objects before theirs, and that writes and
// reads documents in the constructor and in the destructor of a static object: before anything of
// the libraries is made, and after everything is gone that goes when a program ends.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "found/kvml_writer.h"
#include "kv/version_text.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;

void expect(bool holds, const char* what, const char* when) {
  if (holds) return;
  std::fprintf(stderr, "%s does not work in a %s\n", what, when);
  std::_Exit(1);
}

void fill(FoundationManager& manager) {
  const KvVector3D disp(1.5, 2.5, 3.5);
  Foundation foundation(&disp, &disp);
  foundation.setName("Gravel");
  foundation.setFailAreaZ(Foundation::Tension);
  foundation.setFailLineZ(Foundation::Compression);
  foundation.setFactorArea(0.25);
  foundation.setFactorLine(0.75);
  manager.setCurrentFoundation(manager.giveFoundation(foundation, false));
}

/// Name and a value of each kind, as far as the documents carry them.
bool isGravel(const FoundationManager& manager) {
  if (manager.getFoundations().size() != 1) return false;
  Foundation& read = *manager.getFoundations().front();
  return read.getName() == "Gravel" && read.getValueLine(1) == 2.5 && read.getValueLine(3) == 1.5 &&
         read.getFailLineZ() == Foundation::Compression && read.getFactorLine() == 0.75;
}

bool passesLegacy(const std::string& path) {
  FoundationManager written;
  fill(written);
  std::ofstream out(path);
  written.writeXml(out);
  out.close();
  FoundationManager read;
  return read.readXml(path) && isGravel(read) && read.getCurrentFoundation() != nullptr &&
         read.getFoundations()[0]->getFailAreaZ() == Foundation::Tension;
}

bool passesExchange(const char* versionText, const char* longName) {
  FoundationManager written;
  fill(written);
  const Tools::VersionText version(versionText);
  KvXmlN::Document document("Beddings");
  Found::Umo::BeddingWriter(written, version).write(document.getRoot());
  FoundationManager read;
  Found::Umo::BeddingReader(read, version).read(document.getRoot());
  std::ostringstream printed;
  document.putToStream(printed);
  return isGravel(read) && printed.str().find(longName) != std::string::npos;
}

bool passesKvml() {
  FoundationManager written;
  fill(written);
  const std::set<Foundation*> chosen = {written.getFoundations()[0]};
  KvXmlN::Document document("Kvml");
  Found::KvmlWriter().write(document.getRoot(), chosen, chosen);
  std::ostringstream printed;
  document.putToStream(printed);
  return printed.str().find("<BeddingBeam Number=\"1\" Name=\"Gravel\" ksx=\"1.5\"") !=
         std::string::npos;
}

void passAllForms(const char* when) {
  expect(passesLegacy("static_host.xml"), "The legacy document", when);
  expect(passesExchange("1.0", "TangentialSurfaceStiffnessXYFactor=\"0.25\""),
         "The first exchange document", when);
  expect(passesExchange("2.0", "TangentialStiffnessXYFactor=\"0.25\""), "The exchange document",
         when);
  expect(passesKvml(), "The listing", when);
}

struct Session {
  Session() { passAllForms("constructor"); }
  ~Session() { passAllForms("destructor"); }
};

const Session session;

}  // namespace

int main() {}
