// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipEntryReader.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>

#include "host/files/TzByteBuffer.h"

namespace {

constexpr std::size_t kPieceBytes = std::size_t{128} << 10U;

Bytef* AsZlib(std::byte* bytes) { return reinterpret_cast<Bytef*>(bytes); }

}  // namespace

struct TzZipEntryReader::Inflation {
  /// Raw data, without a header of zlib's own.
  Inflation() {
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
  }
  Inflation(const Inflation&) = delete;
  Inflation& operator=(const Inflation&) = delete;
  ~Inflation() { inflateEnd(&stream); }

  z_stream stream = {};
  TzByteBuffer packed;
  bool isAtEnd = false;
};

TzZipEntryReader::TzZipEntryReader(const TzFileDescriptor& file, std::uint64_t dataOffset,
                                   std::uint64_t dataSize, bool isDataDeflated)
    : archive(file),
      offset(dataOffset),
      size(dataSize),
      inflation(isDataDeflated ? std::make_unique<Inflation>() : nullptr) {}

TzZipEntryReader::~TzZipEntryReader() = default;

std::ptrdiff_t TzZipEntryReader::Read(std::span<std::byte> buffer) {
  return inflation != nullptr ? ReadDeflated(buffer) : ReadStored(buffer);
}

bool TzZipEntryReader::ReadPacked(std::span<std::byte> bytes) {
  const std::ptrdiff_t count = archive.ReadAt(offset + position, bytes);
  if (count >= 0 && static_cast<std::size_t>(count) < bytes.size()) fault = kCutShort;
  if (count < 0 || fault != nullptr) return false;
  position += bytes.size();
  return true;
}

std::ptrdiff_t TzZipEntryReader::ReadStored(std::span<std::byte> buffer) {
  const auto piece = buffer.first(std::min<std::uint64_t>(buffer.size(), size - position));
  return ReadPacked(piece) ? static_cast<std::ptrdiff_t>(piece.size()) : -1;
}

std::ptrdiff_t TzZipEntryReader::ReadDeflated(std::span<std::byte> buffer) {
  z_stream& stream = inflation->stream;
  buffer = buffer.first(std::min<std::size_t>(buffer.size(), std::numeric_limits<uInt>::max()));
  stream.next_out = AsZlib(buffer.data());
  stream.avail_out = static_cast<uInt>(buffer.size());
  while (stream.avail_out > 0 && !inflation->isAtEnd) {
    if (stream.avail_in == 0 && position < size) {
      const auto packed = inflation->packed.Take(std::min<std::uint64_t>(kPieceBytes, size - position));
      if (!ReadPacked(packed)) return -1;
      stream.next_in = AsZlib(packed.data());
      stream.avail_in = static_cast<uInt>(packed.size());
    }
    const int status = inflate(&stream, Z_NO_FLUSH);
    inflation->isAtEnd = status == Z_STREAM_END;
    // Without progress there is nothing left to read, and the data had no end. What is left behind the end
    // belongs to nobody.
    const bool isWrong = status != Z_OK && status != Z_STREAM_END;
    if (isWrong || (inflation->isAtEnd && (stream.avail_in > 0 || position < size))) {
      fault = kDamagedData;
      return -1;
    }
  }
  return static_cast<std::ptrdiff_t>(buffer.size() - stream.avail_out);
}
