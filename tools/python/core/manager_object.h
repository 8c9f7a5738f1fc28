#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "found/foundation_manager.h"
#include "foundation_object.h"
#include "users.h"

namespace Python {

namespace py = pybind11;

/// What a Python object of class FoundationManager stands for: a manager of the library, and which
/// objects stand for its foundations.
///
/// Only its own Python object holds it, so make one with makeManager(). The foundations that it
/// has, listed or put aside, change hands through its operations only; what leaves goes to the
/// object that stands for it. Operations that change the list throw RuntimeError while the list is
/// in use, see Use. Unless it says otherwise, an operation runs no code of Python between looking
/// at the list and changing it.
class ManagerObject {
 public:
  ManagerObject() = default;
  ~ManagerObject();
  ManagerObject(const ManagerObject&) = delete;
  ManagerObject& operator=(const ManagerObject&) = delete;

  /// For whatever leaves the list alone.
  Found::FoundationManager& get() { return manager; }
  const std::vector<Found::Foundation*>& getList() const { return manager.getFoundations(); }
  const std::vector<Found::Foundation*>& getPutAside() const {
    return manager.getRemovedFoundations();
  }
  bool isListed(const Found::Foundation* foundation) const;

  /// Its Python object.
  py::object getSelf() const;

  /// While one exists, the list stays as it is.
  class Use {
   public:
    explicit Use(ManagerObject& used) : manager(used) { ++manager.uses; }
    ~Use() { --manager.uses; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    ManagerObject& manager;
  };
  /// Throws RuntimeError while the list is in use.
  void requireUnused() const;
  /// The same, and counts the change that comes.
  void beginEdit();

  /// The object that stands for what `look` returns, a foundation that this manager has or null for
  /// None. Making an object may run code of Python, so `look` is asked again behind that.
  template <class Look>
  py::object give(const Look& look) {
    if (Found::Foundation* const found = look())
      if (py::object known = findObject(found)) return known;
    py::object made = makeEmpty();
    Found::Foundation* const found = look();
    return found != nullptr ? give(*found, made) : py::none();
  }

  /// The objects that stand for what `look` returns, a vector of foundations that this manager has.
  /// Throws RuntimeError when code that runs while they are made changes their count every time.
  template <class Look>
  py::list giveAll(const Look& look) {
    const std::size_t most = 4 * look().size() + 1000;  // beyond, no end is to be expected
    std::vector<py::object> empties;  // kept, since making one may run code each time
    for (int tries = 0; tries < mostTries && look().size() <= most; ++tries) {
      py::list made = makeList(look().size(), empties);
      const std::vector<Found::Foundation*>& found = look();
      if (found.size() == made.size()) return fill(std::move(made), empties, found);
    }
    failToGive();
  }

  /// The object that stands for what `change` returns, which may change the list: it is called
  /// once, behind all that may run code of Python.
  template <class Change>
  py::object giveChanged(const Change& change) {
    py::object made = makeEmpty();
    return give(*change(), made);
  }

  /// How often the list was changed.
  std::size_t getEdits() const { return edits; }

  /// What the library does to find or create a foundation in its list.
  Found::Foundation* giveFoundation(const std::string& name);
  Found::Foundation* giveFoundation(const Found::Foundation& foundation, bool findEqual);

  /// Takes over the foundation that the object stands for, at the end of the list. Throws
  /// ValueError when a manager has it already.
  void add(py::handle object);
  /// Takes over a foundation that no object stands for.
  void add(std::unique_ptr<Found::Foundation> foundation);
  /// The same for several, or for none of them when it throws.
  void addAll(std::vector<std::unique_ptr<Found::Foundation>> foundations);

  /// Takes it out of the list; it becomes the object's own, or is put aside for redo. Throws
  /// ValueError when it is not in the list.
  void remove(FoundationObject& object, bool putAside);
  /// Takes it back at the end of the list. Throws ValueError when it is not put aside here.
  void redo(FoundationObject& object);
  /// Lets go of what is put aside.
  void forgetPutAside();

  /// Replaces list and current foundation; what was listed leaves. `fresh` is empty behind it.
  void exchange(Found::FoundationManager& fresh);

  /// Calls `take`, which asks users and takes foundations out of the library's list, and returns
  /// the objects of what left. When a user raises, nothing has changed.
  py::list prune(const std::function<void(Found::FoundationManager&)>& take);

  /// @name Users
  /// @{
  const std::vector<std::unique_ptr<User>>& getUsers() const { return users; }
  void addUser(std::unique_ptr<User> user);
  /// Returns the registration that was taken out, for the caller to drop.
  std::unique_ptr<User> removeUser(std::size_t index);
  /// Whether a user uses it; it need not be in the list.
  bool isUsed(py::handle object);
  std::size_t countUsed();
  /// The object to ask users about.
  py::object giveAsked(const Found::Foundation* foundation);
  /// @}

  /// Is told of each foundation that the manager has no longer. It must not throw, nor run Python.
  void setOnLeaving(std::function<void(const Found::Foundation&)> told) {
    onLeaving = std::move(told);
  }
  /// Whether somebody is told.
  bool tellsLeaving() const { return static_cast<bool>(onLeaving); }

  /// @name For the garbage collector
  /// @{
  int traverse(visitproc visit, void* argument) const;
  /// Lets go of what makes circles.
  void clear();
  /// @}

 private:
  friend class FoundationObject;

  /// A foundation that left: an object of it, or nothing but itself.
  struct Left {
    py::object object;
    std::unique_ptr<Found::Foundation> foundation;
  };
  using Held = std::unordered_map<const Found::Foundation*, py::object>;

  static constexpr int mostTries = 10;

  [[noreturn]] static void failToGive();
  static py::object makeEmpty();
  static py::list makeList(std::size_t count, std::vector<py::object>& empties);
  py::object findObject(const Found::Foundation* foundation) const;
  py::object give(Found::Foundation& foundation, py::object& empty);
  py::list fill(py::list made, std::vector<py::object>& empties,
                const std::vector<Found::Foundation*>& found);
  void forget(const FoundationObject& object);
  Left letGo(Found::Foundation* foundation);
  std::vector<Left> letGo(const std::vector<Found::Foundation*>& gone);
  void relist(const std::vector<Found::Foundation*>& listed,
              const std::vector<Found::Foundation*>& putAside, Found::Foundation* current);
  void requirePlace(const FoundationObject& object, const std::vector<Found::Foundation*>& list,
                    const char* otherwise) const;

  Found::FoundationManager manager;
  std::unordered_map<const Found::Foundation*, FoundationObject*> objects;
  Held held;  // of subclasses
  std::vector<std::unique_ptr<User>> users;
  std::vector<PyObject*> asked;  // objects that users are asked about just now; not held
  std::function<void(const Found::Foundation&)> onLeaving;
  std::size_t edits = 0;
  int uses = 0;
};

/// A new Python object of class FoundationManager.
py::object makeManager();

}  // namespace Python
