// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "check/PlexoReadingNotes.h"

struct PlexoNumberRange {
  double least = 0;
  double most = 0;
};

/// A word of a manifest and what it stands for.
template <typename Meaning>
struct PlexoWord {
  std::string_view word;
  Meaning meaning;
};

/// Reads values of sequencing. What a manifest leaves out keeps the value that it has: the default. What
/// isn't allowed is replaced, and noted: a number out of its range by the nearest one that is in it, anything
/// else by the default.
class PlexoSequencingValues {
 public:
  explicit PlexoSequencingValues(PlexoReadingNotes& list) : notes(list) {}

  void ReadFlag(const PlexoManifestElement& element, std::string_view attribute, bool& value) {
    ReadFlag(element, PlexoVocabulary::Packaging, attribute, value);
  }
  void ReadFlag(const PlexoManifestElement& element, PlexoVocabulary vocabulary, std::string_view attribute,
                bool& value);
  void ReadNumber(const PlexoManifestElement& element, std::string_view attribute, PlexoNumberRange range,
                  double& value);
  /// The text of the element itself.
  void ReadNumber(const PlexoManifestElement& element, PlexoNumberRange range, double& value);
  void ReadCount(const PlexoManifestElement& element, std::string_view attribute, std::uint32_t& value);
  /// False if the manifest has a word that isn't one of these.
  template <typename Meaning, std::size_t count>
  bool ReadWord(const PlexoManifestElement& element, std::string_view attribute,
                const PlexoWord<Meaning> (&words)[count], Meaning& value) {
    const std::string* written = element.GetAttribute(attribute);
    return written == nullptr || TakeWord(element, attribute, *written, words, value);
  }

 private:
  template <typename Meaning, std::size_t count>
  bool TakeWord(const PlexoManifestElement& element, std::string_view attribute, const std::string& written,
                const PlexoWord<Meaning> (&words)[count], Meaning& value) {
    for (const PlexoWord<Meaning>& word : words) {
      if (word.word != written) continue;
      value = word.meaning;
      return true;
    }
    NoteUnknown(element, attribute, written);
    return false;
  }
  void NoteUnknown(const PlexoManifestElement& element, std::string_view attribute,
                   const std::string& written);
  void TakeNumber(const PlexoManifestElement& element, const std::string& place, const std::string& written,
                  PlexoNumberRange range, double& value);

  PlexoReadingNotes& notes;
};
