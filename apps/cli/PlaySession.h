// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/cli/PlayAnswer.h"
#include "apps/cli/PlayLine.h"
#include "check/PlexoSequencingReader.h"
#include "sequencer/PlexoSequencer.h"

/// One learner in one course: carries out the lines of a script.
class PlaySession {
 public:
  /// The reading must have a definition. Files of "save" and "load" are relative to the folder; empty for the
  /// working folder.
  PlaySession(const PlexoSequencingReading& course, std::uint64_t seed, std::string fileFolder);

  [[nodiscard]] PlayAnswer Run(const PlayLine& line);

 private:
  [[nodiscard]] PlayAnswer Ask(const PlexoNavigationRequest& request);
  [[nodiscard]] PlayAnswer Report(const PlexoRunTimeData& data);
  /// Why the content that runs can't report this; empty if it can.
  [[nodiscard]] std::string FindObstacle(const PlexoRunTimeData& data) const;
  [[nodiscard]] PlayAnswer ExpectDelivery(const PlayLine& line) const;
  [[nodiscard]] PlayAnswer ExpectStatus(const PlayLine& line) const;
  [[nodiscard]] PlayAnswer ExpectMeasure(const PlayLine& line) const;
  [[nodiscard]] PlayAnswer ExpectProspect(const PlayLine& line) const;
  [[nodiscard]] PlayAnswer Save(const std::string& file) const;
  [[nodiscard]] PlayAnswer Load(const std::string& file);
  [[nodiscard]] std::string Resolve(const std::string& file) const;

  const PlexoSequencingReading& reading;
  PlexoSequencer sequencer;
  PlexoSequencingState state;
  std::optional<PlexoNavigationOutcome> last;
  std::string folder;
};
