#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "found/export.h"
#include "found/foundation.h"

class KvXmlData;
class KvXmlTree;

namespace Found {

class FoundationUser;

/// The foundations of one model, in the order in which they were added.
///
/// Owns the foundations in its live list, and nothing else: users, foundations on the removed list
/// and the current foundation are only pointed to. Numbers and names are not kept unique. Every
/// walk goes through the live list in order and the first match wins; null entries (a host may add
/// one) are passed over. Operations are plain linear walks.
///
/// Operations report through their results only. They throw std::bad_alloc, and pass on whatever
/// the XML library, a stream or a user throws; unless an operation says otherwise, the manager is
/// then as before the call.
///
/// Not synchronised: one thread at a time.
class FOUND_API FoundationManager {
 public:
  /// An empty manager, maximum 0.0, no current foundation.
  FoundationManager();

  /// Both managers then hold the same foundations: nothing is duplicated. Since the destructor and
  /// reset() delete the live foundations, only one of the two may stay their owner; the host takes
  /// them out of the other one with remove(f, false, false) before that one goes away.
  FoundationManager(const FoundationManager& other);

  /// Shares the foundations like the copy constructor. The foundations held until now are dropped,
  /// not deleted.
  FoundationManager& operator=(const FoundationManager& other);

  /// Deletes the live foundations. Those on the removed list belong to whoever removed them.
  ~FoundationManager();

  /// Deletes the live foundations and empties the list. Everything else stays, deliberately the
  /// current foundation too: a host sets it anew after reset(), until then it may dangle.
  void reset();

  /// Appends `f`, which may be null, and owns it from here on. Name, number and flags stay as they
  /// are; nothing is checked. A foundation that is listed more than once would be deleted more than
  /// once: a host takes it out of all places but one before reset() or the end of the manager.
  /// Throws std::bad_alloc: the list is unchanged, `f` stays the caller's.
  void add(Foundation* f);

  /// The same; when std::bad_alloc is thrown, the object is deleted with the argument.
  void add(std::unique_ptr<Foundation> f);

  /// @name Look-up
  /// The first match in the live list, or null. The manager keeps ownership. The removed list is
  /// not searched.
  /// @{

  /// The first foundation that compares equal to `f` (values only, see Foundation::operator==).
  Foundation* findFoundation(const Foundation& f) const;
  /// The first foundation of exactly this name, byte for byte; empty finds one without a name.
  Foundation* findFoundation(const std::string& name) const;
  /// The first foundation with this number; -1 finds one that is not numbered.
  Foundation* findFoundation(int number) const;
  /// @}

  /// The foundation last set as current, or null. Not owned.
  Foundation* getCurrentFoundation() const;
  /// Stores `f` (or null) unchecked. Removing or pruning the current foundation clears it.
  void setCurrentFoundation(Foundation* f);

  /// The live list. May hold null entries when the host added them.
  const std::vector<Foundation*>& getFoundations() const;
  /// What remove() put aside for redo(), in order of removal.
  const std::vector<Foundation*>& getRemovedFoundations() const;

  /// Takes `f` out of the live list, at its first place there, and clears the current foundation if
  /// it is `f`. Then:
  ///
  ///     deleteFoundation  keepRemoved
  ///     false             false        the caller owns `f`
  ///     true              false        `f` is deleted
  ///     any               true         `f` goes on the removed list, where redo() finds it; the
  ///                                    manager will not delete it there
  ///
  /// All of it also happens when `f` is not in the list. Users are not told, numbers stay.
  void remove(Foundation* f, bool deleteFoundation, bool keepRemoved);

  /// Moves `f` from the removed list to the end of the live list, unchanged. Ignored when `f` is
  /// null or not on the removed list.
  void redo(Foundation* f);

  /// @name Find or create
  /// The result is never null and owned by the manager. A foundation that is created is appended
  /// and numbered one above the highest positive number in the list (1 in an empty one). When that
  /// is the largest int already, the new foundation gets the largest int too.
  /// @{

  /// With `findEqual`, the first foundation that compares equal to `foundation`, unchanged, even
  /// when its name or number differ. Otherwise a copy; when it has no name it gets
  /// giveNextFoundationName() of its number, else its name is taken unchecked.
  Foundation* giveFoundation(const Foundation& foundation, bool findEqual);
  /// The first foundation of exactly this name, otherwise a new one without values of this name.
  /// An empty name stays empty.
  Foundation* giveFoundation(const std::string& name);
  /// @}

  /// A default name ("Found" and a number of at least four digits: Found0001, Found12345) that no
  /// foundation in the list has. Tries `start` or the highest number in the list, whichever is
  /// greater, then counts up, past the largest int if need be.
  std::string giveNextFoundationName(int start) const;

  /// @name Users
  /// @{

  /// Registers `user`, which is not owned. Registered twice, it is asked twice and must be removed
  /// twice. Null is stored but never asked.
  void addUser(FoundationUser* user);
  /// Takes out the first registration of `user`; ignored when there is none.
  void removeUser(FoundationUser* user);
  /// True as soon as one user, asked in order of registration, uses `foundation`, which need not
  /// be in the list and may be null.
  bool checkUsed(const Foundation* foundation) const;
  /// How many foundations of the live list are used.
  std::size_t getNumberOfUsedFoundations() const;
  /// @}

  /// @name Pruning
  /// Takes foundations out of the live list without deleting them and without putting them on the
  /// removed list: a user may still refer to one, so from here on they belong to the host, which
  /// reads getFoundations() beforehand to know them. The current foundation is cleared when it is
  /// among them. All users are asked before anything is taken out; when one throws, nothing has
  /// changed.
  /// @{

  /// Takes out all generated foundations, used or not, and renumbers the rest 1, 2, 3, ...
  void removeAllGenerated();
  /// Takes out all foundations that no user uses. Numbers stay, gaps included, on purpose: whoever
  /// defined the rest may know them by number.
  void removeAllNotUsed();
  /// Takes out the generated foundations that no user uses, and renumbers the rest 1, 2, 3, ...
  void removeAllNotUsedGenerated();
  /// @}

  /// @name Largest stiffness
  /// A plain magnitude that mixes area, line and rotation stiffness on purpose, without factors.
  /// @{

  /// What was last set or computed; 0.0 at first. Not kept up to date with the list.
  double getMaxFoundationValue() const;
  /// Stores `value` unchecked.
  void setMaxFoundationValue(double value);
  /// Computes and stores the greatest length of any stiffness vector in the live list, 0.0 when
  /// there is none. A length that is not a number does not count.
  void updateFoundationMaximum();
  /// @}

  /// @name Legacy model document
  /// Elements "SMOD" / "FOUNDATIONS" / "FOUND".
  /// @{

  /// Replaces the live foundations by those of the first "FOUNDATIONS" element below `data`, and
  /// the current foundation by the one it names. When `data` is null or has no such element the
  /// manager is left empty. The old foundations are deleted. Names, numbers and failure modes are
  /// taken as they stand, unchecked; what is absent takes its default. A line translation or
  /// rotation whose length is 0 or not a number reads as absent, a factor of -0.0 as 0.0. What the
  /// XML library throws passes through; foundations read until then stay.
  void createFromXml(KvXmlData* data);

  /// Reads the file at `path` like createFromXml(). False, and the manager is untouched, when the
  /// file cannot be opened or its first line does not contain "xml" in any letter case. The first
  /// line is consumed by that test, so the root element must start on a later line. KvXmlError,
  /// and the manager is untouched, when the rest is not well-formed or cannot be read, or the first
  /// line has more than 1,023 characters. True otherwise, also when the document holds no
  /// foundations and the manager is now empty. A file that ends within or right after its first
  /// line is such a document.
  ///
  /// `path` goes to the operating system as it is: on Windows as text in the code page that the
  /// process opens files in, and where it cannot be opened there, once more in its short form.
  bool readXml(const std::string& path);

  /// Writes the foundations below the current element of `tree`, which ends as current again.
  /// With no current element "FOUNDATIONS" is the root, and when the root is another one nothing is
  /// written: a host opens the element of its model first. Updates the "FOUND" element with a
  /// foundation's number or appends one; no element and no attribute is deleted, so a value that is
  /// now absent, and a foundation that went away, stay in the tree as they were. Foundations that
  /// share a number share an element: the later one overwrites what it writes. Ignored when `tree`
  /// is null. When the XML library throws, what was written until then stays in the tree and the
  /// cursor where it stood then: a host sets it back before it tries again.
  void updateXml(KvXmlTree* tree) const;

  /// Prints a complete document of the foundations to `out`. Opening, checking and closing the
  /// file is the caller's business; that a device is full may only be told on closing.
  void writeXml(std::ofstream& out) const;
  /// @}

 private:
  struct FOUND_LOCAL Predicate;

  bool hasUniqueName(const std::string& name) const;
  void renumberFoundations();
  std::vector<Foundation*> collectFoundations(const Predicate& predicate);
  void removeToPredicate(const Predicate& predicate);
  void removeFoundations(const std::vector<Foundation*>& selected);

  double maxFoundationValue = 0.0;
  std::vector<Foundation*> foundations;
  std::vector<Foundation*> removedFoundations;
  std::vector<FoundationUser*> users;
  Foundation* currentFoundation = nullptr;
};

}  // namespace Found
