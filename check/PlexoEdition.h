// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The editions of SCORM, in the order they came out.
enum class PlexoEdition { Unknown, Scorm12, Scorm2004Second, Scorm2004Third, Scorm2004Fourth };

/// The edition that a manifest's schemaversion names.
constexpr PlexoEdition GetPlexoEdition(std::string_view schemaVersion) {
  if (schemaVersion == "1.2") return PlexoEdition::Scorm12;
  if (schemaVersion == "CAM 1.3") return PlexoEdition::Scorm2004Second;
  if (schemaVersion == "2004 3rd Edition") return PlexoEdition::Scorm2004Third;
  if (schemaVersion == "2004 4th Edition") return PlexoEdition::Scorm2004Fourth;
  return PlexoEdition::Unknown;
}

constexpr bool IsPlexo2004(PlexoEdition edition) { return edition >= PlexoEdition::Scorm2004Second; }
