#pragma once

#include <functional>
#include <string>

#include "faults/every_fault.h"
#include "faults/scenes.h"

namespace FaultTest {

/// An operation on the manager of its scene.
inline Operation on(const std::string& name, Meets meets,
                    const std::function<void(ManagerScene&)>& run, const States& failed,
                    const std::string& completed) {
  return makeOperation<ManagerScene>(name, meets, nullptr, run, failed, completed);
}

}  // namespace FaultTest
