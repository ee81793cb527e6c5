// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adopt/PlexoAdoptedSCO.h"

/// What the launch page is told about the content that it launches: the script "settings.js" beside it.
struct PlexoLaunchSettings {
  static constexpr const char* kFolder = "launch/";
  static constexpr const char* kPage = "launch/launch.html";
  static constexpr const char* kFile = "launch/settings.js";
  /// A larger script is none of ours.
  static constexpr std::size_t kMaximumSize = std::size_t{1} << 20U;

  /// The address of the content's page, relative to the launch page.
  std::string content;
  PlexoCourseEdition contentEdition = PlexoCourseEdition::Scorm2004;
  PlexoCourseEdition courseEdition = PlexoCourseEdition::Scorm2004;
  std::string title;
  PlexoLaunchData data;
  bool completionPasses = false;

  static PlexoLaunchSettings Of(const PlexoAdoptedSCO& sco);

  /// The script: "var plexoLaunch = {...};", one JSON object (RFC 8259), safe within a page. What is empty or
  /// false is left out.
  [[nodiscard]] std::string Write() const;
  /// Reads what `Write` wrote, in any layout; none if the script is something else.
  static std::optional<PlexoLaunchSettings> Read(std::string_view script);
};
