// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "core/PlexoSCOModel.h"

/// One module of a module course. A value: copied freely.
struct PlexoModuleModel {
  /// Identity of the module and name of its folder: a decimal number from `GetNextTreeId`.
  TzString key;
  /// What the author calls it.
  TzString title;
  /// Used by courses with pretests only.
  PlexoSCOModel preTest;
  std::vector<PlexoSCOModel> contents;
  PlexoSCOModel postTest;
  /// The content SCOs are to be taken in order.
  bool contentForcedSequence = false;
  /// Allowed attempts of the post-test, decimal.
  TzString attempts = "1";
  /// Share of the module in the course as a fraction: "0.25" is a quarter.
  TzString weightage = "1.0";

  bool operator==(const PlexoModuleModel&) const = default;
};
