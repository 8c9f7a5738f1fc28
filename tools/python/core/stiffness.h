#pragma once

#include <array>

#include "found/foundation.h"

/// The stiffness vectors of a foundation, and the columns of tables that hold their components.
namespace Python {

struct Stiffness {
  bool (Found::Foundation::*get)(KvVector3D&) const;
  void (Found::Foundation::*set)(const KvVector3D*);
  std::array<const char*, 3> columns;  // null for a component that is in no table
};

constexpr std::array<Stiffness, 3> stiffnesses = {{{&Found::Foundation::getDispArea,
                                                    &Found::Foundation::setDispArea,
                                                    {{"areaX", "areaY", "areaZ"}}},
                                                   {&Found::Foundation::getDispLine,
                                                    &Found::Foundation::setDispLine,
                                                    {{"lineX", "lineY", "lineZ"}}},
                                                   {&Found::Foundation::getRotLine,
                                                    &Found::Foundation::setRotLine,
                                                    {{"lineRotationX", nullptr, nullptr}}}}};

constexpr std::array<double KvVector3D::*, 3> components = {
    {&KvVector3D::x, &KvVector3D::y, &KvVector3D::z}};

}  // namespace Python
