#include "models/snapshot.h"

#include <utility>

#include "foundations/copying.h"

namespace Models {

void Snapshot::add(const Found::Foundation& original, std::size_t origin) {
  std::unique_ptr<Found::Foundation> copied = Copying::duplicate(original);
  Found::Foundation* const copy = copied.get();
  copies.add(std::move(copied));
  items.push_back({&original, origin, copy});
}

}  // namespace Models
