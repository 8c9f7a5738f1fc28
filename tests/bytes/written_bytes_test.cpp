#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "found/kvml_writer.h"
#include "kv/xml_n.h"
#include "support/double_bits.h"
#include "support/foundations.h"
#include "support/random.h"
#include "support/temporary_files.h"

// Processors, compilers and standard libraries must not show in documents. Many numbers, in
// documents too long to stand here, are computed and written, and the check sum of the bytes is
// that of every platform.

using Found::Foundation;
using Found::FoundationManager;

namespace {

/// "size hash", the latter FNV-1a with 64 bits.
std::string sumUp(const std::string& text) {
  std::uint64_t hash = 0xcbf29ce484222325u;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
  std::ostringstream sum;
  sum << text.size() << ' ' << std::hex << hash;
  return sum.str();
}

/// Foundations of numbers that people write, and of any bits at all; every other one is computed
/// from the two before it.
class WrittenBytes : public testing::Test {
 protected:
  WrittenBytes() {
    for (int number = 1; number <= 2000; ++number) {
      Foundation& foundation = TestSupport::addFoundation(manager, number, "Bedding");
      if (number % 2 == 0)
        compute(foundation, static_cast<std::size_t>(number) - 2);
      else
        fill(foundation);
    }
  }

  std::string print(const KvXmlN::Document& document) {
    std::ostringstream out;
    document.putToStream(out);
    return out.str();
  }

  FoundationManager manager;

 private:
  void fill(Foundation& foundation) {
    const double x = draw();
    const double y = draw();
    const double z = draw();
    TestSupport::setDispArea(foundation, x, y, z);
    TestSupport::setDispLine(foundation, z, x, drawUsual());
    TestSupport::setRotLine(foundation, y, 0.0, 0.0);
    foundation.setFactorArea(drawUsual());
    foundation.setFactorLine(drawUsual());
  }

  void compute(Foundation& foundation, std::size_t last) {
    const Foundation& a = *manager.getFoundations()[last];
    const Foundation& b = *manager.getFoundations()[last > 1 ? last - 2 : last];
    foundation.interpolate(a, b, drawUsual() / 1000.0);
    foundation.scaleValues(0.1);
    foundation.addValues(a);
  }

  /// Up to five digits, of them up to three behind the point.
  double drawUsual() {
    const double digits = random.between(1, 99999);
    const double scales[] = {1.0, 10.0, 100.0, 1000.0};
    return digits / random.pick(scales);
  }

  double draw() {
    if (!random.oneIn(4)) return drawUsual();
    const std::uint64_t high = random.below(0x7FF00000u);
    const std::uint64_t low = random.below(0xFFFFFFFFu);
    return TestSupport::fromBits(high << 32 | low);
  }

  TestSupport::Random random{15};
};

}  // namespace

TEST_F(WrittenBytes, OfTheLegacyFormAreThoseOfEveryPlatform) {
  const TestSupport::TemporaryPath path;
  std::ofstream out(path.get());
  manager.writeXml(out);
  out.close();

  EXPECT_EQ(sumUp(TestSupport::load(path.get())), "485840 1d984e3583986e8a");
}

TEST_F(WrittenBytes, OfTheExchangeFormAreThoseOfEveryPlatform) {
  KvXmlN::Document document("Beddings");
  const Tools::VersionText version("2.0");
  Found::Umo::BeddingWriter(manager, version).write(document.getRoot());

  EXPECT_EQ(sumUp(print(document)), "842140 fe339647772a1c61");
}

TEST_F(WrittenBytes, OfListingsAreThoseOfEveryPlatform) {
  KvXmlN::Document document("Kvml");
  const std::set<Foundation*> all(manager.getFoundations().begin(), manager.getFoundations().end());
  Found::KvmlWriter().write(document.getRoot(), all, all);

  EXPECT_EQ(sumUp(print(document)), "851638 c18bef758a62efce");
}
