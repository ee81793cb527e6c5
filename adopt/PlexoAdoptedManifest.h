// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adopt/PlexoAdoptedSCO.h"

/// The manifest of an adopted package (SCORM 1.2, SCORM 2004 3rd Edition): one organization, one item, one
/// resource that lists every file, in the names that the manifest reader knows.
class PlexoAdoptedManifest {
 public:
  /// At the top of the package: where it stands, a course takes it along under a name of the SCO's own.
  static constexpr const char* kMetadataFile = "metadata.xml";

  /// The document, UTF-8. `files` are the files of the package, the metadata file among them.
  static std::string Write(const PlexoAdoptedSCO& sco, const std::vector<std::string>& files);

  /// The text as an identifier: letters and digits of ASCII, "_", "-" and "."; `otherwise` if it
  /// has no letter.
  static std::string MakeIdentifier(std::string_view text, std::string_view otherwise);
};
