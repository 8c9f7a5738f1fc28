#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "support/allocation_faults.h"

/// What the operations are tried on.
namespace FaultTest {

using Found::Foundation;
using Found::FoundationManager;

/// Longer than the room that a std::string has inside.
inline const std::string longName = "a name that no string has the room for inside";

/// Gives a foundation a long name and all kinds of values; `changed` ends clear.
void fill(Foundation& foundation);
/// "12 <longName> " and the values that fill() gives.
inline const std::string filled =
    "12 " + longName +
    " [area (1, 2, 3), line (4, 5, 6), rotation (7, 8, 9), fails area z -1, "
    "fails line x 1, fails line y -1, fails line z 7, factor area 0.5, "
    "factor line 0.25, can fail, generated]";

/// Number and name, values in brackets, and whether it changed: "4 A [line (1, 2, 3)] changed".
std::string describe(Foundation& foundation);

/// Foundations that stand for themselves.
struct FoundationScene {
  FoundationScene();
  std::string describe();

  Foundation target;  // without values, not numbered
  Foundation full;    // filled, not described unless it changes
  std::optional<Foundation> made;
  std::optional<double> result;
};

/// Uses one foundation, or none.
class HostUser : public Found::FoundationUser {
 public:
  HostUser(char userName, std::string& askedNames) : name(userName), asked(askedNames) {}

  bool usesFoundation(const Foundation* foundation) override;

  const Foundation* used = nullptr;

 private:
  char name;
  std::string& asked;
};

/// A manager that has something of everything: see `everything`.
struct ManagerScene {
  ManagerScene();
  ~ManagerScene();
  ManagerScene(const ManagerScene&) = delete;
  ManagerScene& operator=(const ManagerScene&) = delete;

  std::string describe();

  /// A foundation that the scene deletes at its end, unless a manager does so.
  Foundation* make(int number, const std::string& name);

  FoundationManager manager;
  FoundationManager other;  // holds a foundation of its own
  std::optional<FoundationManager> copied;
  Foundation* slab = nullptr;   // the first
  Foundation* beam = nullptr;   // the second; current, and used by the user u
  Foundation* plain = nullptr;  // the fourth, behind a null entry
  Foundation* old = nullptr;    // on the removed list
  Foundation* spare = nullptr;  // in no list
  HostUser u;
  HostUser v;
  std::optional<double> result;
  std::string text;

 private:
  std::string describeManager(const FoundationManager& described);
  std::string describeRest(const FoundationManager& described);
  void deleteWhatNobodyOwns();

  std::vector<Foundation*> all;
  Foundation probe;
  std::string asked;
  std::optional<Found::Tests::ReleaseLog> deletions;
};

/// Such a manager, and a file to read.
struct FileScene : ManagerScene {
  ~FileScene();

  /// Makes the file, whose name holds `row`.
  void store(const std::string& row, const std::string& content);
  /// The result is 1 when there was something to read, else 0.
  void read();

  std::string path;
};

/// The manager of the scene, the whole and in parts.
inline const std::string slabText = "5 Slab [area (3, 4, 0), generated]";
inline const std::string beamText = "9 " + longName + " [line (0, 0, 2)]";
inline const std::string plainText = "-1  [generated]";
inline const std::string listText = slabText + ", " + beamText + ", null, " + plainText;
inline const std::string restText = "; current 9; removed 7 Old; maximum 1.5; users uv";
inline const std::string everything = listText + restText;

}  // namespace FaultTest
