// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// What sequencing knows of a statement: true, false, or not known. There is no conversion to bool, so that
/// every use says what it makes of "unknown". The operators follow Kleene's three-valued logic, which the
/// evaluation of sequencing and rollup conditions prescribes: "unknown" negated stays unknown, and decides
/// neither "and" nor "or".
class PlexoTruth {
 public:
  constexpr PlexoTruth() = default;
  [[nodiscard]] static constexpr PlexoTruth Unknown() { return {}; }
  [[nodiscard]] static constexpr PlexoTruth True() { return PlexoTruth(Value::True); }
  [[nodiscard]] static constexpr PlexoTruth False() { return PlexoTruth(Value::False); }
  [[nodiscard]] static constexpr PlexoTruth Of(bool value) { return value ? True() : False(); }

  [[nodiscard]] constexpr bool IsKnown() const { return value != Value::Unknown; }
  [[nodiscard]] constexpr bool IsTrue() const { return value == Value::True; }
  [[nodiscard]] constexpr bool IsFalse() const { return value == Value::False; }

  friend constexpr bool operator==(PlexoTruth, PlexoTruth) = default;
  friend constexpr PlexoTruth operator!(PlexoTruth truth) {
    return truth.IsKnown() ? Of(truth.IsFalse()) : Unknown();
  }
  friend constexpr PlexoTruth operator&(PlexoTruth left, PlexoTruth right) {
    if (left.IsFalse() || right.IsFalse()) return False();
    return left.IsTrue() && right.IsTrue() ? True() : Unknown();
  }
  friend constexpr PlexoTruth operator|(PlexoTruth left, PlexoTruth right) { return !((!left) & (!right)); }

 private:
  enum class Value : std::uint8_t { Unknown, False, True };
  constexpr explicit PlexoTruth(Value known) : value(known) {}
  Value value = Value::Unknown;
};
