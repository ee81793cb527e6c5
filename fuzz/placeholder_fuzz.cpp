// SPDX-License-Identifier: Apache-2.0
// The substitution of placeholders, with any template, into buffers that are too small as well.
#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "fuzz/FuzzFolder.h"
#include "intake/PlexoTemplateSubstitution.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using Substitution = PlexoTemplateSubstitution;
  static const Substitution::Placeholders kPlaceholders = {
      {"@A", "a value longer than its name"}, {"@MOVIEWIDTH", "640"}, {"@", "lone"}, {"@EMPTY", ""}};
  if (size == 0) return 0;
  // The first byte sizes the buffer; a vector of its own each time lets the sanitizer see every step beyond.
  const std::vector<char> input(data + 1, data + size);
  std::vector<char> output(data[0] * std::size_t{16});
  const std::size_t written = Substitution::SubstitutePlaceholders(input, '@', kPlaceholders, output);
  if (written == Substitution::kTokenTooLong || written == Substitution::kOutputTooSmall) return 0;
  FuzzRequire(written <= output.size(), "the output fits");
  const std::string_view text(output.data(), written);
  const bool isPlain = std::ranges::find(input, '@') == input.end();
  FuzzRequire(!isPlain || std::ranges::equal(input, text), "without a marker nothing changes");
  FuzzRequire(text.find('@') == std::string_view::npos, "no marker is left");
  return 0;
}
