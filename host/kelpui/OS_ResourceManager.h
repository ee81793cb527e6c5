// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/files/TzResource.h"
#include "host/kelpui/UI_Image.h"

namespace kelpui::utility {

/// Finds the images of one library.
class OS_ResourceManager {
 public:
  explicit OS_ResourceManager(const TzResourceInfo& libraryInfo) : library(libraryInfo) {}

  /// The PNG of this base name, in capitals or not, with its double-size twin (`<name>_AT_2X`).
  [[nodiscard]] controls::UI_ImageData GetImage(const TzString& name) const;

 private:
  TzResourceInfo library;
};

}  // namespace kelpui::utility
