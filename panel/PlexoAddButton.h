// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "host/kelpui/UI_PictureButton.h"
#include "host/text/TzString.h"

/// The small button at the right of a header row, by which the author adds files below it. Known to a person
/// by its tooltip, which is the dictionary's text of the key.
class PlexoAddButton : public kelpui::controls::UI_PictureButton {
 public:
  PlexoAddButton(const TzString& tooltipKey, const std::function<void()>& add);

  /// To its place in a cell of this width.
  void PlaceIn(TzReal cellWidth);
};
