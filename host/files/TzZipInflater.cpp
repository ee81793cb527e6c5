// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipInflater.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "host/files/TzByteBuffer.h"

namespace {

/// Up to this size, packed and unpacked, an entry is unpacked in memory in one go.
constexpr std::uint64_t kWholeBytes = std::uint64_t{16} << 20U;
constexpr std::size_t kPieceBytes = std::size_t{512} << 10U;

constexpr const char* kDamagedData = "the entry's packed data is damaged";
constexpr const char* kOtherSize = "the entry unpacks to another size than it says";

Bytef* AsZlib(std::byte* bytes) { return reinterpret_cast<Bytef*>(bytes); }

class InflateState {
 public:
  /// Raw data, without a header of zlib's own.
  InflateState() {
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
  }
  InflateState(const InflateState&) = delete;
  InflateState& operator=(const InflateState&) = delete;
  ~InflateState() { inflateEnd(&stream); }

  z_stream stream = {};
};

}  // namespace

struct TzZipInflater::Decoder {
  Decoder() {
    if (whole == nullptr) throw std::bad_alloc();
  }

  std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)> whole{
      libdeflate_alloc_decompressor(), libdeflate_free_decompressor};
  TzByteBuffer packed;
  TzByteBuffer unpacked;
};

/// The file being written, and what has gone into it.
struct TzZipInflater::Output {
  const TzZipEntry& entry;
  TzZipProgress& progress;
  std::unique_ptr<TzWriteStream> stream;
  std::uint64_t size = 0;
  std::uint32_t crc = 0;

  TzZipFailure Write(std::span<const std::byte> bytes) {
    if (progress.IsStopped()) return TzZipFailure::Cancelled();
    if (bytes.size() > entry.size - size) return TzZipFailure::BadContent(entry.name, kOtherSize);
    size += bytes.size();
    crc = libdeflate_crc32(crc, bytes.data(), bytes.size());
    progress.Advance(bytes.size());
    return stream->Write(bytes) == kTzSuccess ? TzZipFailure() : CantWrite();
  }

  TzZipFailure Finish() {
    if (size != entry.size) return TzZipFailure::BadContent(entry.name, kOtherSize);
    if (crc != entry.crc) return TzZipFailure::BadContent(entry.name, "the entry's CRC-32 doesn't match");
    return stream->Close() == kTzSuccess ? TzZipFailure() : CantWrite();
  }

  [[nodiscard]] TzZipFailure CantWrite() const {
    return TzZipFailure::System(errno, entry.name, "can't write");
  }
};

TzZipInflater::TzZipInflater(const TzFileDescriptor& file, TzZipProgress& counter)
    : archive(file), progress(counter), decoder(std::make_unique<Decoder>()) {}

TzZipInflater::~TzZipInflater() = default;

TzZipFailure TzZipInflater::Unpack(const TzZipEntry& entry, const TzPath& path) {
  return Unpack(entry, TzFileSystem::Current().OpenWrite(path));
}

TzZipFailure TzZipInflater::Unpack(const TzZipEntry& entry, std::unique_ptr<TzWriteStream> stream) {
  Output output = {entry, progress, std::move(stream)};
  if (output.stream == nullptr) return output.CantWrite();
  const bool isWhole = std::max(entry.size, entry.packedSize) <= kWholeBytes;
  auto failure = !entry.isDeflated ? CopyStored(entry, output)
                 : isWhole         ? InflateWhole(entry, output)
                                   : InflateStream(entry, output);
  return failure ? failure : output.Finish();
}

TzZipFailure TzZipInflater::InflateWhole(const TzZipEntry& entry, Output& output) {
  const auto packed = decoder->packed.Take(entry.packedSize);
  if (auto failure = ReadPacked(entry, 0, packed)) return failure;
  const auto unpacked = decoder->unpacked.Take(entry.size);
  switch (libdeflate_deflate_decompress(decoder->whole.get(), packed.data(), packed.size(), unpacked.data(),
                                        unpacked.size(), nullptr)) {
    case LIBDEFLATE_SUCCESS:
      return output.Write(unpacked);
    case LIBDEFLATE_BAD_DATA:
      return TzZipFailure::BadContent(entry.name, kDamagedData);
    default:
      return TzZipFailure::BadContent(entry.name, kOtherSize);
  }
}

TzZipFailure TzZipInflater::InflateStream(const TzZipEntry& entry, Output& output) {
  InflateState state;
  z_stream& stream = state.stream;
  const auto unpacked = decoder->unpacked.Take(kPieceBytes);
  std::uint64_t position = 0;
  for (int status = Z_OK; status != Z_STREAM_END;) {
    if (stream.avail_in == 0 && position < entry.packedSize) {
      const auto packed =
          decoder->packed.Take(std::min<std::uint64_t>(kPieceBytes, entry.packedSize - position));
      if (auto failure = ReadPacked(entry, position, packed)) return failure;
      position += packed.size();
      stream.next_in = AsZlib(packed.data());
      stream.avail_in = static_cast<uInt>(packed.size());
    }
    stream.next_out = AsZlib(unpacked.data());
    stream.avail_out = static_cast<uInt>(unpacked.size());
    status = inflate(&stream, Z_NO_FLUSH);
    // Without progress there is nothing left to read, and the data had no end.
    if (status != Z_OK && status != Z_STREAM_END) return TzZipFailure::BadContent(entry.name, kDamagedData);
    if (auto failure = output.Write(unpacked.first(unpacked.size() - stream.avail_out))) return failure;
  }
  return {};
}

TzZipFailure TzZipInflater::CopyStored(const TzZipEntry& entry, Output& output) {
  for (std::uint64_t position = 0; position < entry.packedSize;) {
    const auto piece =
        decoder->packed.Take(std::min<std::uint64_t>(kPieceBytes, entry.packedSize - position));
    if (auto failure = ReadPacked(entry, position, piece)) return failure;
    if (auto failure = output.Write(piece)) return failure;
    position += piece.size();
  }
  return {};
}

TzZipFailure TzZipInflater::ReadPacked(const TzZipEntry& entry, std::uint64_t position,
                                       std::span<std::byte> bytes) const {
  const std::ptrdiff_t count = archive.ReadAt(entry.dataOffset + position, bytes);
  if (count < 0) return TzZipFailure::System(errno, entry.name, "can't read");
  if (static_cast<std::size_t>(count) == bytes.size()) return {};
  return TzZipFailure::BadContent(entry.name, "the archive was cut short while it was read");
}
