// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoByteReader.h"

#include <bit>

std::uint8_t PlexoByteReader::Byte() {
  if (IsAtEnd()) Fail();
  return hasFailed ? std::uint8_t{0} : bytes[at++];
}

std::uint64_t PlexoByteReader::Whole(std::uint64_t most) {
  std::uint64_t number = 0;
  for (unsigned shift = 0;; shift += 7) {
    const std::uint8_t byte = Byte();
    const std::uint64_t part = byte & 0x7FU;
    if (shift > 63 || (shift == 63 && part > 1)) Fail();
    if (hasFailed) return 0;
    number |= part << shift;
    if (byte < 0x80) break;
  }
  if (number > most) Fail();
  return hasFailed ? 0 : number;
}

std::uint32_t PlexoByteReader::Count() {
  const std::uint64_t count = Whole(UINT32_MAX);
  if (count > bytes.size() - at) Fail();
  return hasFailed ? 0 : static_cast<std::uint32_t>(count);
}

double PlexoByteReader::Real() {
  const std::uint8_t form = Byte();
  if (form == 16) return std::bit_cast<double>(Fixed());
  const unsigned scale = form & 7U;
  if (form > 15 || scale > 4) Fail();
  double power = 1;
  for (unsigned digit = 0; digit < scale; ++digit) power *= 10;
  const double size = static_cast<double>(Whole()) / power;
  return (form & 8U) != 0 ? -size : size;
}

std::string PlexoByteReader::Text() {
  const std::uint32_t length = Count();
  if (hasFailed) return {};
  const auto* first = reinterpret_cast<const char*>(bytes.data() + at);
  at += length;
  return {first, length};
}

std::uint64_t PlexoByteReader::Fixed() {
  std::uint64_t number = 0;
  for (unsigned shift = 0; shift < 64; shift += 8) number |= static_cast<std::uint64_t>(Byte()) << shift;
  return number;
}
