// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The editions that a course can have.
enum class PlexoCourseEdition { Scorm12, Scorm2004 };

/// "1.2" or "2004".
constexpr std::string_view GetScormVersion(PlexoCourseEdition edition) {
  return edition == PlexoCourseEdition::Scorm12 ? "1.2" : "2004";
}

/// What the manifest's version attribute says: "1.0" or "1.3".
constexpr std::string_view GetManifestVersion(PlexoCourseEdition edition) {
  return edition == PlexoCourseEdition::Scorm12 ? "1.0" : "1.3";
}
