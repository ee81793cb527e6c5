// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the content of an activity can report to the LMS. The default is content of which nothing is known:
/// it is given the benefit of the doubt, so that no finding rests on a guess.
struct PlexoContentAbility {
  bool completes = true;
  bool passes = true;
  bool fails = true;
  bool scores = true;
  /// Leaving it half-read sets it to incomplete.
  bool isLeftIncomplete = false;
  /// False for a cluster, and for an item without a page.
  bool launches = true;

  /// An asset, or content whose scripts report nothing.
  [[nodiscard]] static constexpr PlexoContentAbility Silent() {
    return {.completes = false, .passes = false, .fails = false, .scores = false};
  }
  [[nodiscard]] constexpr bool ReportsAnything() const { return completes || passes || fails || scores; }
  [[nodiscard]] constexpr bool LacksResult() const { return !completes || !passes; }
};
