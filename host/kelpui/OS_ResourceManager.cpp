// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/OS_ResourceManager.h"

namespace kelpui::utility {

controls::UI_ImageData OS_ResourceManager::GetImage(const TzString& name) const {
  const std::string base = name.GetUTF8String();
  const TzResource* image = GetFileResource(library, base, "png");
  const TzResource* doubleSize = GetFileResource(library, base + "_AT_2X", "png");
  return {name, image != nullptr ? image->bytes : std::string_view(),
          doubleSize != nullptr ? doubleSize->bytes : std::string_view()};
}

}  // namespace kelpui::utility
