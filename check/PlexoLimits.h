// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "check/PlexoEdition.h"
#include "check/PlexoFinding.h"

/// The parts that are limited: texts in their length, and the package as a whole.
enum class PlexoLimited {
  EntryCount,
  PackedBytes,
  EntryPath,
  Identifier,
  ObjectiveIdentifier,
  Title,
  Href,
  Parameters,
  LaunchData,
  MetadataTitle,
  MetadataDescription,
  MetadataKeyword,
  SuspendData,
};

/// One limit that an LMS may set without breaking its standard, or a system sets.
struct PlexoLimit {
  PlexoLimited part;
  /// The editions that it holds in, both included.
  PlexoEdition first;
  PlexoEdition last;
  /// In characters; in entries or bytes for the package.
  std::uint64_t maximum;
  PlexoFindingId id;
  /// Where it is published.
  std::string_view source;
};

/// All limits that are known: one row each, with its source.
std::span<const PlexoLimit> GetPlexoLimits();

/// The limit of a part in an edition; null if there is none.
const PlexoLimit* FindPlexoLimit(PlexoLimited part, PlexoEdition edition);
