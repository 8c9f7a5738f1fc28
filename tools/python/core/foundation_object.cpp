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

void overwrite(Found::Foundation& foundation, const Found::Foundation& other) {
  if (&foundation == &other) return;
  // A copy keeps vectors that the other one lacks, and does not see the sign of a zero.
  foundation.clearAreaValues();
  foundation.clearLineValues();
  foundation.setFactorArea(1.0);
  foundation.setFactorLine(1.0);
  foundation.copy(other);
  foundation.setName(other.getName());
  foundation.setNumber(other.getNumber());
  foundation.setChanged(other.getChanged());
}

std::unique_ptr<Found::Foundation> duplicate(const Found::Foundation& other) {
  auto made = std::make_unique<Found::Foundation>();
  overwrite(*made, other);
  return made;
}

}  // namespace Python
