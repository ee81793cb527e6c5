// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "sequencer/PlexoOutlook.h"
#include "sequencer/PlexoSequencingDefinition.h"

/// How the answers of `plexo play` write what the sequencer knows, for people and as JSON.
class PlayWords {
 public:
  using Json = nlohmann::ordered_json;

  /// "doors 'Doors & exits'"
  [[nodiscard]] static std::string Name(const PlexoSequencingDefinition& definition, PlexoIndex activity);
  [[nodiscard]] static std::string Write(PlexoTruth truth);
  /// Up to four digits behind the point; "unknown".
  [[nodiscard]] static std::string Write(PlexoMeasure measure);
  /// "retry"
  [[nodiscard]] static std::string_view Write(PlexoSequencingRequest request);
  /// The reason with its exception code: "no session is open (NB.2.1-2)". Empty without either.
  [[nodiscard]] static std::string WriteReason(const PlexoSequencingDefinition& definition,
                                               const PlexoSequencingState& state,
                                               const PlexoSequencingReason& reason,
                                               PlexoSequencingException exception);
  /// The identifier; null for kPlexoNone.
  [[nodiscard]] static Json Identify(const PlexoSequencingDefinition& definition, PlexoIndex activity);
  /// True, false or null.
  [[nodiscard]] static Json Describe(PlexoTruth truth);
  /// A number or null.
  [[nodiscard]] static Json Describe(PlexoMeasure measure);
  /// "open", "delivers", "code", "reason" and "by", the activity that says so.
  [[nodiscard]] static Json Describe(const PlexoSequencingDefinition& definition, const PlexoOutlook& outlook,
                                     const PlexoProspect& prospect);
  /// Whether the request is processed: it delivers content, or goes on past the end of the course.
  [[nodiscard]] static bool IsOpen(const PlexoProspect& prospect);
};
