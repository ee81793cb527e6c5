// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

/// How long the sequencer takes with courses of many SCOs: forced order through global objectives, as the
/// publisher writes it, in one flat list, in modules of five, and in a tree as deep as may be.
class SequencerBench {
 public:
  /// The slowest request of a session through the course, an outlook, a copy and the stored form, in
  /// milliseconds and bytes, as JSON. Shapes: "flat", "modules", "deep", "skipped" (a flat course of which
  /// all but the ends are skipped).
  static std::string Measure(const std::string& shape, std::size_t scos);
};
