// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipInflater.h"

#include <libdeflate.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "host/files/TzByteBuffer.h"
#include "host/files/TzZipEntryReader.h"

namespace {

/// What all workers together may take to unpack entries in one go, and what one may.
constexpr std::uint64_t kSharedBytes = std::uint64_t{40} << 20U;
constexpr std::uint64_t kMostWholeBytes = std::uint64_t{8} << 20U;
constexpr std::size_t kPieceBytes = std::size_t{256} << 10U;

constexpr const char* kOtherSize = "the entry unpacks to another size than it says";

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

/// What has been unpacked, and the file that it goes to, if any.
struct TzZipInflater::Output {
  const TzZipEntry& entry;
  TzZipProgress& progress;
  TzWriteStream* stream;
  std::uint64_t size = 0;
  std::uint32_t crc = 0;

  TzZipFailure Write(std::span<const std::byte> bytes) {
    if (progress.IsStopped()) return TzZipFailure::Cancelled();
    if (bytes.size() > entry.size - size) return TzZipFailure::BadContent(entry.name, kOtherSize);
    size += bytes.size();
    crc = libdeflate_crc32(crc, bytes.data(), bytes.size());
    return stream == nullptr || stream->Write(bytes) == kTzSuccess ? TzZipFailure() : CantWrite();
  }

  TzZipFailure Finish() {
    if (size != entry.size) return TzZipFailure::BadContent(entry.name, kOtherSize);
    if (crc != entry.crc) return TzZipFailure::BadContent(entry.name, "the entry's CRC-32 doesn't match");
    return stream == nullptr || stream->Close() == kTzSuccess ? TzZipFailure() : CantWrite();
  }

  [[nodiscard]] TzZipFailure CantWrite() const {
    return TzZipFailure::System(errno, entry.name, "can't write");
  }
};

TzZipInflater::TzZipInflater(const TzFileDescriptor& file, TzZipProgress& counter, std::size_t workers)
    : archive(file),
      progress(counter),
      wholeBytes(std::min(kSharedBytes / (2 * workers), kMostWholeBytes)),
      decoder(std::make_unique<Decoder>()) {}

TzZipInflater::~TzZipInflater() = default;

TzZipFailure TzZipInflater::Unpack(const TzZipEntry& entry, const TzPath& path) {
  return Unpack(entry, TzFileSystem::Current().OpenWrite(path));
}

TzZipFailure TzZipInflater::Unpack(const TzZipEntry& entry, std::unique_ptr<TzWriteStream> stream) {
  Output output = {entry, progress, stream.get()};
  return stream != nullptr ? Run(entry, output) : output.CantWrite();
}

TzZipFailure TzZipInflater::Check(const TzZipEntry& entry) {
  Output output = {entry, progress, nullptr};
  return Run(entry, output);
}

TzZipFailure TzZipInflater::Run(const TzZipEntry& entry, Output& output) {
  const bool isWhole = entry.isDeflated && std::max(entry.size, entry.packedSize) <= wholeBytes;
  auto failure = isWhole ? InflateWhole(entry, output) : ReadPieces(entry, output);
  return failure ? failure : output.Finish();
}

TzZipFailure TzZipInflater::InflateWhole(const TzZipEntry& entry, Output& output) {
  const auto packed = decoder->packed.Take(entry.packedSize);
  const std::ptrdiff_t count = archive.ReadAt(entry.dataOffset, packed);
  if (count < 0) return TzZipFailure::System(errno, entry.name, "can't read");
  if (static_cast<std::size_t>(count) < packed.size()) {
    return TzZipFailure::BadContent(entry.name, TzZipEntryReader::kCutShort);
  }
  progress.Advance(packed.size());
  const auto unpacked = decoder->unpacked.Take(entry.size);
  std::size_t used = 0;
  const auto result = libdeflate_deflate_decompress_ex(decoder->whole.get(), packed.data(), packed.size(),
                                                       unpacked.data(), unpacked.size(), &used, nullptr);
  if (result == LIBDEFLATE_BAD_DATA || (result == LIBDEFLATE_SUCCESS && used < packed.size())) {
    return TzZipFailure::BadContent(entry.name, TzZipEntryReader::kDamagedData);
  }
  if (result != LIBDEFLATE_SUCCESS) return TzZipFailure::BadContent(entry.name, kOtherSize);
  return output.Write(unpacked);
}

TzZipFailure TzZipInflater::ReadPieces(const TzZipEntry& entry, Output& output) {
  TzZipEntryReader reader(archive, entry.dataOffset, entry.packedSize, entry.isDeflated);
  const auto piece = decoder->unpacked.Take(kPieceBytes);
  for (;;) {
    const std::uint64_t before = reader.GetPosition();
    const std::ptrdiff_t count = reader.Read(piece);
    progress.Advance(reader.GetPosition() - before);
    if (count == 0) return {};
    if (count < 0 && reader.GetFault() != nullptr)
      return TzZipFailure::BadContent(entry.name, reader.GetFault());
    if (count < 0) return TzZipFailure::System(errno, entry.name, "can't read");
    if (auto failure = output.Write(piece.first(static_cast<std::size_t>(count)))) return failure;
  }
}
