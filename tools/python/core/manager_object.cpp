#include "manager_object.h"

#include <algorithm>
#include <utility>

#include "errors.h"

namespace Python {

using Found::Foundation;

ManagerObject::~ManagerObject() {
  for (const Foundation* foundation : manager.getRemovedFoundations()) delete foundation;
}

bool ManagerObject::isListed(const Foundation* foundation) const {
  return std::find(getList().begin(), getList().end(), foundation) != getList().end();
}

py::object ManagerObject::getSelf() const {
  const auto* const type = py::detail::get_type_info(typeid(ManagerObject));
  const py::handle self = py::detail::get_object_handle(this, type);
  if (!self) throwRuntimeError("this manager is not made yet");
  return py::reinterpret_borrow<py::object>(self);
}

void ManagerObject::requireUnused() const {
  if (uses > 0)
    throwRuntimeError("the manager cannot be changed while its users are asked or it is read into");
}

void ManagerObject::beginEdit() {
  requireUnused();
  ++edits;
}

void ManagerObject::failToGive() {
  throwRuntimeError("the manager was changed again and again while its foundations were listed");
}

py::object ManagerObject::makeEmpty() { return py::cast(std::make_unique<FoundationObject>()); }

/// A list with so many gaps, and at least as many empty objects.
py::list ManagerObject::makeList(std::size_t count, std::vector<py::object>& empties) {
  empties.reserve(count);
  while (empties.size() < count) empties.push_back(makeEmpty());
  py::list made(count);
  PyObject_GC_UnTrack(made.ptr());  // nobody sees it while it has gaps
  return made;
}

/// Null when there is none. An object that is about to vanish counts as none: what its end runs may
/// ask for the foundation again.
py::object ManagerObject::findObject(const Foundation* foundation) const {
  const auto place = objects.find(foundation);
  if (place == objects.end() || Py_REFCNT(place->second->self) == 0) return {};
  return py::reinterpret_borrow<py::object>(place->second->self);
}

py::object ManagerObject::give(Foundation& foundation, py::object& empty) {
  if (py::object known = findObject(&foundation)) return known;
  py::object keeper = getSelf();
  auto& object = empty.cast<FoundationObject&>();
  objects[&foundation] = &object;
  object.foundation = &foundation;
  object.manager = this;
  object.keeper = std::move(keeper);
  object.self = empty.ptr();
  return std::move(empty);
}

py::list ManagerObject::fill(py::list made, std::vector<py::object>& empties,
                             const std::vector<Foundation*>& found) {
  for (std::size_t i = 0; i < found.size(); ++i)
    PyList_SET_ITEM(made.ptr(), static_cast<Py_ssize_t>(i),
                    give(*found[i], empties[i]).release().ptr());
  PyObject_GC_Track(made.ptr());
  return made;
}

void ManagerObject::forget(const FoundationObject& object) {
  const auto place = objects.find(object.foundation);
  if (place != objects.end() && place->second == &object) objects.erase(place);
}

/// Behind it the library no longer has the foundation, and neither has this manager.
ManagerObject::Left ManagerObject::letGo(Foundation* foundation) {
  if (onLeaving) onLeaving(*foundation);
  Left left;
  left.object = findObject(foundation);
  held.erase(foundation);  // not its end, since it is in `left`
  const auto place = objects.find(foundation);
  if (place == objects.end()) {
    left.foundation.reset(foundation);
    return left;
  }
  FoundationObject& object = *place->second;
  objects.erase(place);
  object.manager = nullptr;
  // Whoever calls holds the manager, so that nothing ends with this.
  object.keeper = py::object();
  if (left.object) {
    object.own.reset(foundation);
  } else {
    object.foundation = nullptr;
    left.foundation.reset(foundation);
  }
  return left;
}

std::vector<ManagerObject::Left> ManagerObject::letGo(const std::vector<Foundation*>& gone) {
  std::vector<Left> left;
  left.reserve(gone.size());
  for (Foundation* foundation : gone) left.push_back(letGo(foundation));
  return left;
}

void ManagerObject::add(py::handle given) {
  auto& object = given.cast<FoundationObject&>();
  requireUnused();
  object.get();
  if (object.manager == this)
    throwValueError("the manager has this foundation already; add a copy");
  if (object.manager != nullptr)
    throwValueError("another manager has this foundation; take it out there first, or add a copy");
  py::object keeper = getSelf();
  try {
    objects.emplace(object.foundation, &object);
    if (!py::type::of(given).is(py::type::of<FoundationObject>()))
      held.emplace(object.foundation, py::reinterpret_borrow<py::object>(given));
    manager.add(object.foundation);
  } catch (...) {
    objects.erase(object.foundation);
    held.erase(object.foundation);
    throw;
  }
  ++edits;
  static_cast<void>(object.own.release());  // the manager owns it from here on
  object.manager = this;
  object.keeper = std::move(keeper);
  object.self = given.ptr();
}

void ManagerObject::add(std::unique_ptr<Foundation> foundation) {
  beginEdit();
  manager.add(std::move(foundation));
}

void ManagerObject::addAll(std::vector<std::unique_ptr<Foundation>> foundations) {
  beginEdit();
  const std::size_t before = getList().size();
  try {
    for (const auto& foundation : foundations) manager.add(foundation.get());
  } catch (...) {
    while (getList().size() > before) manager.remove(getList().back(), false, false);
    throw;
  }
  for (auto& foundation : foundations) static_cast<void>(foundation.release());
}

Foundation* ManagerObject::giveFoundation(const std::string& name) {
  if (Foundation* const found = manager.findFoundation(name)) return found;
  beginEdit();
  return manager.giveFoundation(name);
}

Foundation* ManagerObject::giveFoundation(const Foundation& foundation, bool findEqual) {
  if (findEqual)
    if (Foundation* const equal = manager.findFoundation(foundation)) return equal;
  beginEdit();
  return manager.giveFoundation(foundation, false);
}

void ManagerObject::requirePlace(const FoundationObject& object,
                                 const std::vector<Foundation*>& list,
                                 const char* otherwise) const {
  if (object.manager != this ||
      std::find(list.begin(), list.end(), object.foundation) == list.end())
    throwValueError(otherwise);
}

void ManagerObject::remove(FoundationObject& object, bool putAside) {
  requireUnused();
  requirePlace(object, getList(), "the foundation is not in the manager");
  ++edits;
  Foundation* const foundation = object.foundation;
  manager.remove(foundation, false, putAside);
  if (!putAside) letGo(foundation);
}

void ManagerObject::redo(FoundationObject& object) {
  requireUnused();
  requirePlace(object, getPutAside(), "the foundation is not among the removed ones");
  ++edits;
  manager.redo(object.foundation);
}

/// Lists these instead of what the library lists now; nothing is deleted.
void ManagerObject::relist(const std::vector<Foundation*>& listed,
                           const std::vector<Foundation*>& putAside, Foundation* current) {
  beginEdit();
  const auto dropAll = [](Found::FoundationManager& dropped) {
    dropped = Found::FoundationManager();
  };
  // All that may fail comes first, in a manager that is made beside.
  Found::FoundationManager next;
  try {
    for (Foundation* foundation : putAside) next.remove(foundation, false, true);
    for (const auto& user : users) next.addUser(user.get());
    for (Foundation* foundation : listed) next.add(foundation);
    next.setCurrentFoundation(current);
    next.setMaxFoundationValue(manager.getMaxFoundationValue());
    manager = next;
  } catch (...) {
    dropAll(next);
    throw;
  }
  dropAll(next);
}

void ManagerObject::forgetPutAside() {
  const std::vector<Foundation*> gone = getPutAside();
  const std::vector<Foundation*> listed = getList();
  relist(listed, {}, manager.getCurrentFoundation());
  letGo(gone);
}

void ManagerObject::exchange(Found::FoundationManager& fresh) {
  const std::vector<Foundation*> gone = getList();
  const std::vector<Foundation*> putAside = getPutAside();
  relist(fresh.getFoundations(), putAside, fresh.getCurrentFoundation());
  fresh = Found::FoundationManager();
  letGo(gone);
}

py::list ManagerObject::prune(const std::function<void(Found::FoundationManager&)>& take) {
  requireUnused();
  std::vector<Left> left;
  {
    const Use use(*this);
    const std::vector<Foundation*> before = getList();
    std::vector<Foundation*> gone;
    gone.reserve(before.size());
    take(manager);
    // Both are in the same order.
    auto stays = getList().begin();
    for (Foundation* const foundation : before) {
      if (stays != getList().end() && *stays == foundation)
        ++stays;
      else
        gone.push_back(foundation);
    }
    if (!gone.empty()) ++edits;
    left = letGo(gone);
  }
  py::list objectsOfLeft;
  for (Left& one : left)
    objectsOfLeft.append(one.object ? one.object : makeFoundation(std::move(one.foundation)));
  return objectsOfLeft;
}

void ManagerObject::addUser(std::unique_ptr<User> user) {
  requireUnused();
  users.reserve(users.size() + 1);
  manager.addUser(user.get());
  users.push_back(std::move(user));
}

std::unique_ptr<User> ManagerObject::removeUser(std::size_t index) {
  requireUnused();
  const auto place = users.begin() + static_cast<std::ptrdiff_t>(index);
  manager.removeUser(place->get());
  std::unique_ptr<User> user = std::move(*place);
  users.erase(place);
  return user;
}

namespace {

/// Tells which object users are asked about, for as long as it lives.
class Question {
 public:
  Question(std::vector<PyObject*>& kept, PyObject* object) : asked(kept), about(object) {
    asked.push_back(object);
  }
  ~Question() { asked.erase(std::find(asked.begin(), asked.end(), about)); }
  Question(const Question&) = delete;
  Question& operator=(const Question&) = delete;

 private:
  std::vector<PyObject*>& asked;
  PyObject* about;
};

}  // namespace

bool ManagerObject::isUsed(py::handle object) {
  const Foundation& foundation = object.cast<FoundationObject&>().get();
  const Use use(*this);
  const Question question(asked, object.ptr());
  return manager.checkUsed(&foundation);
}

std::size_t ManagerObject::countUsed() {
  const Use use(*this);
  return manager.getNumberOfUsedFoundations();
}

py::object ManagerObject::giveAsked(const Foundation* foundation) {
  for (PyObject* const object : asked)
    if (&py::handle(object).cast<FoundationObject&>().get() == foundation)
      return py::reinterpret_borrow<py::object>(object);
  // The library asks about its own foundations, which it may change.
  return give([foundation] { return const_cast<Foundation*>(foundation); });
}

int ManagerObject::traverse(visitproc visit, void* argument) const {
  for (const auto& user : users)
    if (const int result = visit(user->getObject().ptr(), argument)) return result;
  for (const auto& entry : held)
    if (const int result = visit(entry.second.ptr(), argument)) return result;
  return 0;
}

void ManagerObject::clear() {
  for (const auto& user : users) manager.removeUser(user.get());
  // Dropped when both lists are whole again, since that may run code of Python.
  const std::vector<std::unique_ptr<User>> droppedUsers = std::exchange(users, {});
  const Held droppedObjects = std::exchange(held, {});
}

py::object makeManager() { return py::cast(std::make_unique<ManagerObject>()); }

}  // namespace Python
