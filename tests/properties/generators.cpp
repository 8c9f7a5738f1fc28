#include "properties/generators.h"

#include <cmath>
#include <cstdint>
#include <set>
#include <tuple>
#include <vector>

#include "support/double_bits.h"

namespace PropertyTest {
namespace {

rc::Gen<Vector> presentVector(const rc::Gen<double>& component) {
  return rc::gen::map(rc::gen::tuple(component, component, component),
                      [](const std::tuple<double, double, double>& xyz) {
                        const auto [x, y, z] = xyz;
                        return Vector(KvVector3D(x, y, z));
                      });
}

/// The three modes, and numbers that are none but may stand in a document.
rc::Gen<Foundation::Failure> anyFailure() {
  return rc::gen::map(rc::gen::element(0, -1, 1, -1, 1, 2, -2, largestInt, smallestInt),
                      [](int n) { return static_cast<Foundation::Failure>(n); });
}

/// One character of a name, in one or more bytes: all but control characters.
rc::Gen<std::string> anyCharacter() {
  return rc::gen::weightedOneOf<std::string>(
      {{4, rc::gen::map(rc::gen::inRange(0x20, 0x7F),
                        [](int c) { return std::string(1, static_cast<char>(c)); })},
       {2, rc::gen::map(rc::gen::inRange(0x7F, 0x100),
                        [](int c) { return std::string(1, static_cast<char>(c)); })},
       {2, rc::gen::element<std::string>("<", ">", "&", "\"", "'", "]]>", "&amp;", "&#10;", "%n")},
       {1, rc::gen::element<std::string>("\t", "\n", "\r", " ")},
       {2, rc::gen::element<std::string>("\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x8F\x97",
                                         "\xEF\xBF\xBE", "\xED\xA0\x80", "\xC0\x80")}});
}

}  // namespace

rc::Gen<double> roundDouble() {
  return rc::gen::map(rc::gen::inRange(-100000, 100001), [](int n) { return n / 8.0; });
}

rc::Gen<double> anyDouble() {
  const auto anyBits = rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>());
  return rc::gen::weightedOneOf<double>(
      {{4, roundDouble()},
       {3, rc::gen::map(anyBits, TestSupport::fromBits)},
       {2, rc::gen::element(0.0, -0.0)},
       // On both sides of the vector library's tolerance.
       {1, rc::gen::element(1e-10, 9.9e-11, -1.1e-10, 1e-12)},
       {1, rc::gen::element(Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(),
                            -Limits::quiet_NaN(), Limits::denorm_min(), -Limits::denorm_min(),
                            Limits::min(), Limits::max(), Limits::lowest(), 0.1, 1.0 / 3.0)}});
}

rc::Gen<double> finiteDouble() {
  return rc::gen::suchThat(anyDouble(), [](double value) { return std::isfinite(value); });
}

rc::Gen<Vector> anyVector(const rc::Gen<double>& component) {
  return rc::gen::weightedOneOf<Vector>(
      {{1, rc::gen::just(Vector())}, {3, presentVector(component)}});
}

rc::Gen<int> anyNumber() {
  return rc::gen::weightedOneOf<int>(
      {{4, rc::gen::inRange(-3, 20)},
       {1, rc::gen::arbitrary<int>()},
       {1, rc::gen::element(largestInt, largestInt - 1, -1, smallestInt)}});
}

rc::Gen<int> positiveNumber() {
  return rc::gen::weightedOneOf<int>(
      {{4, rc::gen::inRange(1, 1000)}, {1, rc::gen::just(largestInt)}});
}

rc::Gen<std::string> anyName() {
  const auto anyText = rc::gen::map(rc::gen::container<std::vector<std::string>>(anyCharacter()),
                                    [](const auto& characters) {
                                      std::string text;
                                      for (const std::string& character : characters)
                                        text += character;
                                      return text;
                                    });
  // A few names that clash, also with the ones that are made.
  const auto likelyName = rc::gen::element<std::string>(
      "A", "B", "A_1", "A_2", "Found0001", "Found0002", "Found0003", "Found0010", "Found2147483647",
      "Found2147483648", "found0001", "");
  return rc::gen::weightedOneOf<std::string>({{2, anyText}, {2, likelyName}});
}

rc::Gen<Record> anyRecord(const rc::Gen<int>& number, const rc::Gen<double>& value) {
  using rc::gen::set;
  return rc::gen::build<Record>(
      set(&Record::name, anyName()), set(&Record::number, number), set(&Record::changed),
      set(&Record::generated), set(&Record::failPossible), set(&Record::dispArea, anyVector(value)),
      set(&Record::dispLine, anyVector(value)), set(&Record::rotLine, anyVector(value)),
      set(&Record::failLineX, anyFailure()), set(&Record::failLineY, anyFailure()),
      set(&Record::failLineZ, anyFailure()), set(&Record::failAreaZ, anyFailure()),
      set(&Record::factorLine, value), set(&Record::factorArea, value));
}

rc::Gen<Records> anyRecords(const rc::Gen<int>& number, const rc::Gen<double>& value) {
  return rc::gen::container<Records>(anyRecord(number, value));
}

rc::Gen<Records> distinctRecords(const rc::Gen<int>& number) {
  return rc::gen::map(anyRecords(number), [](const Records& all) {
    std::set<std::string> names{""};
    std::set<int> numbers;
    Records distinct;
    for (const Record& record : all) {
      if (names.count(record.name) > 0 || numbers.count(record.number) > 0) continue;
      names.insert(record.name);
      numbers.insert(record.number);
      distinct.push_back(record);
    }
    return distinct;
  });
}

}  // namespace PropertyTest
