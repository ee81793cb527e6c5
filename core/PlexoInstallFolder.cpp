// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoInstallFolder.h"

#include "host/files/TzFileUtil.h"

namespace {

TzPath PublishTemplates() {
  return TzFileUtil::GetCurrentExecutablePath().GetParentTzPath(-1) / "Templates" / "Publish";
}

}  // namespace

TzPath GetPlexoInstallFolder() { return PublishTemplates() / "Plexo"; }

TzPath GetSchemaInstallFolder() { return PublishTemplates() / "LMS" / "Standard" / "SCORM" / "Default"; }
