// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoReadingNotes.h"
#include "sequencer/PlexoSequencingDefinition.h"

enum class PlexoContentKind : std::uint8_t {
  /// A cluster, or an item that launches nothing that the package has.
  None,
  /// It runs without reporting anything.
  Asset,
  Sco,
};

/// Where an activity of a definition comes from.
struct PlexoActivitySource {
  /// The organization or item.
  const PlexoManifestElement* element = nullptr;
  /// Null for a cluster, or where the reference leads nowhere.
  const PlexoResource* resource = nullptr;
  PlexoContentKind kind = PlexoContentKind::None;
};

/// What became of a manifest.
struct PlexoSequencingReading {
  /// Null if the course can't be played.
  std::shared_ptr<const PlexoSequencingDefinition> definition;
  /// One an activity. They belong to the package.
  std::vector<PlexoActivitySource> sources;
  /// False if no activity has an imsss:sequencing: everything is as the standard has it by default.
  bool hasSequencing = false;
  /// What is played otherwise than it is written.
  PlexoReadingNotes notes;
  /// Why there is no definition, and the line; 0 if it concerns none.
  std::string failure;
  int failureLine = 0;
};

/// Reads the organization of a SCORM 2004 manifest, of any maker and of the 2nd to the 4th Edition, as a
/// course to play. The manifest may hold anything: what isn't allowed is replaced or left out, and noted.
///
/// A package of SCORM 1.2 is refused. That edition leaves it to the LMS in which order items are open, so
/// whatever was played would be true of no LMS.
class PlexoSequencingReader {
 public:
  /// A title that is longer is cut.
  static constexpr std::size_t kMaxTitleBytes = 1000;

  /// The package must be indexed and have a manifest that was read without an error. Without an identifier,
  /// the organization is the default one: that which the manifest names, else its first.
  [[nodiscard]] static PlexoSequencingReading Read(const PlexoCheckedPackage& package,
                                                   std::string_view organization = {});
};
