// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <limits>

#include "sequencer/PlexoTruth.h"

/// A number that tracking may know: a normalized measure (-1 to 1), an amount of progress (0 to 1) or a
/// score. Comparing an unknown measure gives "unknown".
class PlexoMeasure {
 public:
  constexpr PlexoMeasure() = default;
  /// What isn't a finite number is unknown.
  constexpr explicit PlexoMeasure(double known) : value(IsFinite(known) ? known : kUnknown) {}
  [[nodiscard]] static constexpr PlexoMeasure Unknown() { return {}; }

  [[nodiscard]] constexpr bool IsKnown() const { return value == value; }
  /// Not a number if it is unknown.
  [[nodiscard]] constexpr double GetValue() const { return value; }
  [[nodiscard]] constexpr PlexoTruth IsAtLeast(double least) const {
    return IsKnown() ? PlexoTruth::Of(value >= least) : PlexoTruth::Unknown();
  }
  [[nodiscard]] constexpr PlexoTruth IsAbove(double threshold) const {
    return IsKnown() ? PlexoTruth::Of(value > threshold) : PlexoTruth::Unknown();
  }
  [[nodiscard]] constexpr PlexoTruth IsBelow(double threshold) const {
    return IsKnown() ? PlexoTruth::Of(value < threshold) : PlexoTruth::Unknown();
  }

  friend constexpr bool operator==(PlexoMeasure left, PlexoMeasure right) {
    return left.value == right.value || (!left.IsKnown() && !right.IsKnown());
  }

 private:
  static constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  static constexpr bool IsFinite(double number) {
    return number >= std::numeric_limits<double>::lowest() && number <= std::numeric_limits<double>::max();
  }
  double value = kUnknown;
};
