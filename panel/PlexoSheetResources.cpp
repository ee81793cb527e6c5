// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoSheetResources.h"

#include <algorithm>
#include <string>

#include "host/files/TzResource.h"
#include "resources/PlexoResources.h"

namespace {

/// Images of the host's popup windows are asked for under this prefix.
constexpr std::string_view kPopupWindowPrefix = "ActionPopupWindow_";

/// What a popup window's image is called without the prefix; the whole name of any other resource.
std::string_view WithoutPopupWindow(std::string_view name) {
  if (name.starts_with(kPopupWindowPrefix)) name.remove_prefix(kPopupWindowPrefix.size());
  return name;
}

}  // namespace

std::string_view LoadSheetResource(const TzString& resourceName) {
  const std::string name = resourceName.GetUTF8String();
  const std::size_t point = std::min(name.rfind('.'), name.size());
  const std::string base = name.substr(0, point);
  const std::string type = point < name.size() ? name.substr(point + 1) : std::string();
  const TzResource* resource = GetFileResource(GetPlexoResources(), base, type);
  if (resource != nullptr) return resource->bytes;
  // The host's popup windows get nothing from here, even if an image without the prefix exists: theirs are
  // the host's own.
  [[maybe_unused]] const std::string_view popupName = WithoutPopupWindow(name);
  return {};
}
