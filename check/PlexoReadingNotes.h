// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "check/PlexoManifestElement.h"

/// A place of a manifest that can't be played as it is written, and what is played instead.
struct PlexoReadingNote {
  int line = 0;
  std::string text;
};

/// The notes of one reading, in document order. It holds at most kMost; what comes after is counted only.
class PlexoReadingNotes {
 public:
  static constexpr std::size_t kMost = 100;

  void Add(const PlexoManifestElement& element, std::string text) {
    if (notes.size() < kMost) {
      notes.push_back({element.line, std::move(text)});
    } else {
      ++dropped;
    }
  }
  [[nodiscard]] const std::vector<PlexoReadingNote>& Get() const { return notes; }
  [[nodiscard]] std::size_t GetDropped() const { return dropped; }

 private:
  std::vector<PlexoReadingNote> notes;
  std::size_t dropped = 0;
};
