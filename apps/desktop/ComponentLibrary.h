// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "host/files/TzPath.h"
#include "shell/ITzComponent.h"

/// The component as the program gets at it: out of its library, by the one function that it is made by. The
/// library stays in the process.
struct ComponentLibrary {
  /// Null if the library can't be loaded or isn't the component's.
  ITzComponent* component = nullptr;
  /// Why; empty if it was loaded.
  std::string problem;

  static ComponentLibrary Load(const TzPath& file);
};
