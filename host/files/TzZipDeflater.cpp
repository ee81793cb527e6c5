// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipDeflater.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "host/files/TzByteBuffer.h"

namespace {

constexpr int kLevel = 6;
/// A file beyond this size is judged by its beginning.
constexpr std::uint64_t kJudgedBytes = std::uint64_t{256} << 10U;
constexpr std::size_t kSampleBytes = std::size_t{64} << 10U;
constexpr std::size_t kPieceBytes = std::size_t{1} << 20U;

TzZipFailure CantRead(const TzZipSource& source) {
  return TzZipFailure::System(errno, source.name, "can't read");
}
TzZipFailure Changed(const TzZipSource& source) {
  return {kTzFailure, source.name, "changed while it was packed", 0};
}
TzZipFailure CantWrite() { return TzZipFailure::System(errno, {}, "can't write"); }

class DeflateState {
 public:
  /// Raw data, without a header of zlib's own.
  DeflateState() {
    constexpr int kMostMemory = 9;
    if (deflateInit2(&stream, kLevel, Z_DEFLATED, -MAX_WBITS, kMostMemory, Z_DEFAULT_STRATEGY) != Z_OK) {
      throw std::bad_alloc();
    }
  }
  DeflateState(const DeflateState&) = delete;
  DeflateState& operator=(const DeflateState&) = delete;
  ~DeflateState() { deflateEnd(&stream); }

  z_stream stream = {};
};

}  // namespace

struct TzZipDeflater::Encoder {
  Encoder() {
    if (whole == nullptr) throw std::bad_alloc();
  }

  std::size_t Deflate(std::span<const std::byte> content, std::span<std::byte> packed) {
    return libdeflate_deflate_compress(whole.get(), content.data(), content.size(), packed.data(),
                                       packed.size());
  }

  std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> whole{
      libdeflate_alloc_compressor(kLevel), libdeflate_free_compressor};
  TzByteBuffer input;
  TzByteBuffer output;
};

TzZipDeflater::TzZipDeflater() : encoder(std::make_unique<Encoder>()) {}

TzZipDeflater::~TzZipDeflater() = default;

TzPackedEntry TzZipDeflater::PackWhole(const TzZipSource& source) {
  TzPackedEntry packed;
  packed.header = {source.name, false, 0, source.size, source.size};
  if (source.size == 0) return packed;
  const auto stream = TzFileSystem::Current().OpenRead(source.path);
  // One byte more than there should be, so that a file which has grown shows.
  auto content = std::make_unique_for_overwrite<std::byte[]>(source.size + 1);
  const auto count = stream != nullptr ? stream->Read({content.get(), source.size + 1}) : -1;
  if (count < 0)
    packed.failure = CantRead(source);
  else if (static_cast<std::uint64_t>(count) != source.size)
    packed.failure = Changed(source);
  if (packed.failure) return packed;

  const std::span<const std::byte> bytes(content.get(), source.size);
  packed.header.crc = libdeflate_crc32(0, bytes.data(), bytes.size());
  if (source.size <= kJudgedBytes || Shrinks(bytes)) {
    auto deflated = std::make_unique_for_overwrite<std::byte[]>(bytes.size());
    const std::size_t size = encoder->Deflate(bytes, {deflated.get(), bytes.size() - 1});
    packed.header.isDeflated = size != 0;
    if (size != 0) packed.header.packedSize = size;
    if (size != 0) content = std::move(deflated);
  }
  packed.data = std::move(content);
  return packed;
}

TzZipFailure TzZipDeflater::PackStream(const TzZipSource& source, TzZipWriter& writer,
                                       TzZipProgress& progress) {
  TzZipEntryHeader header = {source.name, false, 0, 0, source.size};
  if (auto failure = IsWorthDeflating(source, header.isDeflated)) return failure;
  if (!writer.Begin(header)) return CantWrite();
  if (header.isDeflated) {
    if (auto failure = DeflatePieces(source, writer, progress, header)) return failure;
    if (header.packedSize >= header.size) {
      header.isDeflated = false;
      if (!writer.RestartData()) return CantWrite();
      progress.TakeBack(source.size);
    }
  }
  if (!header.isDeflated) {
    if (auto failure = StorePieces(source, writer, progress, header)) return failure;
  }
  return writer.End(header) ? TzZipFailure() : CantWrite();
}

bool TzZipDeflater::Shrinks(std::span<const std::byte> content) {
  const auto sample = content.first(std::min(content.size(), kSampleBytes));
  // At least 3% less: what gains nothing is not worth the reader's time either.
  return encoder->Deflate(sample, encoder->output.Take(sample.size() / 100 * 97)) != 0;
}

TzZipFailure TzZipDeflater::IsWorthDeflating(const TzZipSource& source, bool& isWorth) {
  const auto stream = TzFileSystem::Current().OpenRead(source.path);
  const auto sample = encoder->input.Take(kSampleBytes);
  const auto count = stream != nullptr ? stream->Read(sample) : -1;
  if (count < 0) return CantRead(source);
  isWorth = Shrinks(sample.first(static_cast<std::size_t>(count)));
  return {};
}

TzZipFailure TzZipDeflater::ForEachPiece(const TzZipSource& source, TzZipProgress& progress,
                                         const TakePiece& take) {
  const auto stream = TzFileSystem::Current().OpenRead(source.path);
  if (stream == nullptr) return CantRead(source);
  const auto buffer = encoder->input.Take(kPieceBytes);
  for (std::uint64_t rest = source.size; rest > 0;) {
    const auto count = stream->Read(buffer);
    if (count < 0) return CantRead(source);
    const auto piece = buffer.first(static_cast<std::size_t>(count));
    if (piece.empty() || piece.size() > rest) return Changed(source);
    rest -= piece.size();
    if (auto failure = take(piece, rest == 0)) return failure;
    progress.Advance(piece.size());
    if (!progress.ReportIfDue()) return TzZipFailure::Cancelled();
  }
  return stream->Read(buffer.first(1)) == 0 ? TzZipFailure() : Changed(source);
}

TzZipFailure TzZipDeflater::DeflatePieces(const TzZipSource& source, TzZipWriter& writer,
                                          TzZipProgress& progress, TzZipEntryHeader& header) {
  DeflateState state;
  z_stream& stream = state.stream;
  const auto output = encoder->output.Take(kPieceBytes);
  header.crc = 0;
  header.packedSize = 0;
  return ForEachPiece(source, progress, [&](std::span<const std::byte> piece, bool isLast) -> TzZipFailure {
    header.crc = libdeflate_crc32(header.crc, piece.data(), piece.size());
    // zlib only reads from here; its type for it says so in one build configuration alone.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(piece.data()));
    stream.avail_in = static_cast<uInt>(piece.size());
    do {
      stream.next_out = reinterpret_cast<Bytef*>(output.data());
      stream.avail_out = static_cast<uInt>(output.size());
      deflate(&stream, isLast ? Z_FINISH : Z_NO_FLUSH);
      const auto packed = output.first(output.size() - stream.avail_out);
      header.packedSize += packed.size();
      if (!writer.AppendData(packed)) return CantWrite();
    } while (stream.avail_out == 0);
    return {};
  });
}

TzZipFailure TzZipDeflater::StorePieces(const TzZipSource& source, TzZipWriter& writer,
                                        TzZipProgress& progress, TzZipEntryHeader& header) {
  header.crc = 0;
  return ForEachPiece(source, progress, [&](std::span<const std::byte> piece, bool) -> TzZipFailure {
    header.crc = libdeflate_crc32(header.crc, piece.data(), piece.size());
    return writer.AppendData(piece) ? TzZipFailure() : CantWrite();
  });
}
