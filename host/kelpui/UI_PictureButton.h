// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Button.h"
#include "host/kelpui/UI_Image.h"

namespace kelpui::controls {

/// A button that shows an image, which it asks for when it is drawn.
class UI_PictureButton : public UI_Button {
 public:
  explicit UI_PictureButton(UI_ImageSupply imageSupply) : supply(std::move(imageSupply)) {}

  [[nodiscard]] UI_ImageData GetImage() const { return supply(); }

 private:
  UI_ImageSupply supply;
};

}  // namespace kelpui::controls
