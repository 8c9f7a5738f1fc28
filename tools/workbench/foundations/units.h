#pragma once

#include <string>

/// How the units of stiffness are called. Both empty where nothing tells them.
struct Units {
  std::string force;   // such as kN
  std::string length;  // such as m
};
