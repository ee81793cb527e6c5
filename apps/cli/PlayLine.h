// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "sequencer/PlexoNavigation.h"

/// One line of a script for `plexo play`, understood. Which fields count depends on its kind.
struct PlayLine {
  enum class Kind : std::uint8_t {
    /// Blank, or a comment.
    Empty,
    Request,
    Report,
    ExpectDelivery,
    ExpectStatus,
    ExpectMeasure,
    ExpectProspect,
    Contents,
    Tree,
    Globals,
    Why,
    Save,
    Load,
    Help,
    Quit,
  };
  enum class Delivery : std::uint8_t { Content, End, None };
  enum class Status : std::uint8_t { Completed, Satisfied, Attempted };

  Kind kind = Kind::Empty;
  /// From 1 on.
  int number = 0;
  /// Without the comment and the blanks around it.
  std::string text;
  /// Of Request; of ExpectProspect and Why, Continue, Previous or Choice.
  PlexoNavigationRequest request;
  /// Of Report.
  PlexoRunTimeData data;
  /// Of the expectations of a delivery, a status and a measure.
  PlexoIndex activity = kPlexoNone;
  Delivery delivery = Delivery::Content;
  Status status = Status::Completed;
  PlexoTruth truth;
  PlexoMeasure measure;
  /// Of ExpectProspect: "can" rather than "cannot".
  bool isOpen = true;
  /// Of Save and Load.
  std::string file;
};
