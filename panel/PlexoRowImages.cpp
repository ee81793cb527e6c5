// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoRowImages.h"

#include <memory>
#include <optional>

#include "host/kelpui/OS_ResourceManager.h"
#include "resources/PlexoResources.h"

using kelpui::controls::UI_ImageData;
using kelpui::utility::OS_ResourceManager;

namespace {

std::shared_ptr<OS_ResourceManager>& GetHolder() {
  static std::shared_ptr<OS_ResourceManager> holder;
  return holder;
}

OS_ResourceManager& GetResourceManager() {
  auto& holder = GetHolder();
  if (holder == nullptr) holder = std::make_shared<OS_ResourceManager>(GetPlexoResources());
  return *holder;
}

}  // namespace

UI_ImageData PlexoRowImages::GetAddImage() {
  static const UI_ImageData image = GetResourceManager().GetImage("addswf");
  return image;
}

void PlexoRowImages::ReleaseResourceManager() { GetHolder().reset(); }
