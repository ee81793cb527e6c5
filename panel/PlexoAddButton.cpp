// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoAddButton.h"

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"
#include "panel/PlexoRowImages.h"

namespace {

constexpr TzReal kSize = 16.0;
constexpr TzReal kMargin = 15.0;

}  // namespace

PlexoAddButton::PlexoAddButton(const TzString& tooltipKey, const std::function<void()>& add)
    : UI_PictureButton(PlexoRowImages::GetAddImage) {
  if (const ITzStringDictionary* dictionary = GetStringDictionary(); dictionary != nullptr) {
    SetTooltip(dictionary->GetString(tooltipKey));
  }
  InstallChangeNotification(add);
}

void PlexoAddButton::PlaceIn(TzReal cellWidth) {
  const TzReal left = cellWidth - kSize - kMargin;
  SetFrame({left, 0.0, left + kSize, kSize});
}
