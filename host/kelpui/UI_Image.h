// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string_view>

#include "host/kelpui/UI_Node.h"

namespace kelpui::controls {

/// An image file as it is found in a library: a PNG. Empty bytes where there is none of the name.
struct UI_ImageData {
  /// As it was asked for.
  TzString name;
  std::string_view bytes;
  /// The same in double size; empty if there is none.
  std::string_view doubleSizeBytes;
};

/// Gives an image when it is first drawn.
using UI_ImageSupply = std::function<UI_ImageData()>;

/// A picture to look at.
class UI_Image : public UI_Node {
 public:
  explicit UI_Image(UI_ImageSupply imageSupply)
      : UI_Node(UI_NodeKind::Image), supply(std::move(imageSupply)) {}

  [[nodiscard]] UI_ImageData GetImage() const { return supply(); }

 private:
  UI_ImageSupply supply;
};

}  // namespace kelpui::controls
