// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoByteWriter.h"

#include <bit>
#include <cmath>

void PlexoByteWriter::Whole(std::uint64_t number) {
  for (; number >= 0x80; number >>= 7) Byte(static_cast<std::uint8_t>(number | 0x80));
  Byte(static_cast<std::uint8_t>(number));
}

// A decimal is its scale (0 to 4 digits behind the point), 8 more if it is negative, and the digits; 16
// begins eight bytes. The test below is on bits, because -0.0 equals 0.0 and is another value.
void PlexoByteWriter::Real(double number) {
  const bool isNegative = number < 0;
  const double size = isNegative ? -number : number;
  double power = 1;
  for (std::uint8_t scale = 0; scale <= 4; ++scale, power *= 10) {
    if (!(size * power < 1e15)) break;
    const auto digits = static_cast<std::uint64_t>(std::llround(size * power));
    const double same = static_cast<double>(digits) / power;
    if (std::bit_cast<std::uint64_t>(isNegative ? -same : same) != std::bit_cast<std::uint64_t>(number))
      continue;
    Byte(static_cast<std::uint8_t>(scale | (isNegative ? 8 : 0)));
    return Whole(digits);
  }
  Byte(16);
  Fixed(std::bit_cast<std::uint64_t>(number));
}

void PlexoByteWriter::Text(std::string_view text) {
  Whole(text.size());
  bytes.insert(bytes.end(), text.begin(), text.end());
}

void PlexoByteWriter::Fixed(std::uint64_t number) {
  for (int shift = 0; shift < 64; shift += 8) Byte(static_cast<std::uint8_t>(number >> shift));
}
