// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Image.h"

/// The library's icons for rows of trees.
class PlexoRowImages {
 public:
  /// The image of the add buttons, found at the first call and the same for all rows.
  static kelpui::controls::UI_ImageData GetAddImage();

  /// Lets go of what finds the images, for the library's shutdown; nothing happens if no row was shown. An
  /// image that has been found stays.
  static void ReleaseResourceManager();
};
