// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>

#include "host/files/TzFile.h"
#include "host/text/TzString.h"

/// Replaces placeholders while a template is copied: "@NAME" up to, not including, a "<", ">", quote, blank
/// or line end. Names and values, for an example: {"@MOVIEWIDTH", "640"}.
///
/// A name that isn't known is dropped, and so is a lone "@": templates hold no other. Chunks are worked
/// through one by one, so that a placeholder which a chunk's border cuts is dropped too, and its rest comes
/// out as text: templates keep their placeholders away from the borders.
class PlexoTemplateSubstitution {
 public:
  using Placeholders = std::map<TzString, TzString>;

  static constexpr std::size_t kChunkSize = 3072;
  static constexpr std::size_t kBufferSize = 10 * kChunkSize;
  /// A placeholder, its "@" included, must be shorter.
  static constexpr std::size_t kTokenSize = 255;
  /// What `SubstitutePlaceholders` returns where it stops.
  static constexpr std::size_t kTokenTooLong = SIZE_MAX;
  static constexpr std::size_t kOutputTooSmall = SIZE_MAX - 1;

  /// Copies a template, its placeholders replaced, through a chunk and a buffer of these sizes. 0, also,
  /// with a problem reported, if the page couldn't be written to its end; 1 if one of the files can't be
  /// opened, or, with a problem reported, if the template has a placeholder that is too long or values that
  /// don't fit into the buffer.
  [[nodiscard]] static int SubstituteTemplate(const TzFile& source, const TzFile& target,
                                              const Placeholders& placeholders,
                                              std::size_t chunkSize = kChunkSize,
                                              std::size_t bufferSize = kBufferSize);

  /// One chunk. Returns how many bytes of `output` were written, values in UTF-8 whatever the template is in;
  /// or one of the constants, with `output` in an unknown state.
  [[nodiscard]] static std::size_t SubstitutePlaceholders(std::span<const char> input, char marker,
                                                          const Placeholders& placeholders,
                                                          std::span<char> output);
};
