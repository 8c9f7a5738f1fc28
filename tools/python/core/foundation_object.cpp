#include "foundation_object.h"

#include <utility>

#include "errors.h"
#include "manager_object.h"

namespace Python {

FoundationObject::FoundationObject(std::unique_ptr<Found::Foundation> given)
    : foundation(given.get()), own(std::move(given)) {}

FoundationObject::~FoundationObject() {
  if (manager != nullptr) manager->forget(*this);
}

Found::Foundation& FoundationObject::get() const {
  if (foundation == nullptr) throwRuntimeError("this foundation is not made yet");
  return *foundation;
}

py::object FoundationObject::getKeeper() const { return keeper ? keeper : py::none(); }

py::object makeFoundation(std::unique_ptr<Found::Foundation> own) {
  return py::cast(std::make_unique<FoundationObject>(std::move(own)));
}

}  // namespace Python
