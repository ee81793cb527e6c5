// SPDX-License-Identifier: Apache-2.0
#include "support/RawZip.h"

#include <zlib.h>

#include <stdexcept>

namespace {

constexpr std::uint32_t kWide = 0xFFFFFFFF;

std::string Number(std::uint64_t value, int bytes) {
  std::string text;
  for (int index = 0; index < bytes; ++index) text += static_cast<char>((value >> (8 * index)) & 0xFFU);
  return text;
}
std::string U16(std::uint64_t value) { return Number(value, 2); }
std::string U32(std::uint64_t value) { return Number(value, 4); }
std::string U64(std::uint64_t value) { return Number(value, 8); }

std::uint32_t Crc(const std::string& content) {
  return static_cast<std::uint32_t>(
      crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size())));
}

/// With `Z_FULL_FLUSH` in place of `Z_FINISH`, more such pieces may follow.
std::string Deflate(const std::string& content, int flush = Z_FINISH) {
  z_stream stream = {};
  if (deflateInit2(&stream, 1, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("zlib");
  }
  std::string packed(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, flush);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

/// An entry with everything that wasn't given filled in.
struct Record {
  explicit Record(const RawEntry& given) : entry(given) {
    packed = entry.packed.value_or(entry.deflate ? Deflate(entry.content) : entry.content);
    method = entry.method.value_or(entry.deflate ? 8 : 0);
    flags = static_cast<std::uint16_t>(entry.flags | (entry.descriptor ? 8 : 0));
    crc = entry.crc.value_or(Crc(entry.content));
    size = entry.size.value_or(entry.content.size());
    packedSize = entry.packedSize.value_or(packed.size());
  }

  [[nodiscard]] std::string Local() const {
    const std::string name = entry.localName.value_or(entry.name);
    const bool late = entry.descriptor;
    const std::string wide = entry.zip64 ? RawZip::Extra(1, U64(size) + U64(packedSize)) : "";
    std::string header = U32(0x04034b50) + U16(20) + U16(entry.localFlags.value_or(flags)) +
                         U16(entry.localMethod.value_or(method)) + U32(entry.time) + U32(late ? 0 : crc) +
                         U32(entry.zip64 ? kWide
                             : late      ? 0
                                         : packedSize) +
                         U32(entry.zip64 ? kWide
                             : late      ? 0
                                         : entry.localSize.value_or(size)) +
                         U16(name.size()) + U16(wide.size()) + name + wide + packed;
    if (late) header += U32(0x08074b50) + U32(crc) + U32(packedSize) + U32(size);
    return header;
  }

  [[nodiscard]] std::string Directory(std::uint64_t realOffset) const {
    const std::uint64_t offset = entry.offset.value_or(realOffset);
    const std::string extra =
        (entry.zip64 ? RawZip::Extra(1, U64(size) + U64(packedSize) + U64(offset)) : "") + entry.extra;
    return U32(0x02014b50) + U16(entry.host << 8U) + U16(20) + U16(flags) + U16(method) + U32(entry.time) +
           U32(crc) + U32(entry.zip64 ? kWide : packedSize) + U32(entry.zip64 ? kWide : size) +
           U16(entry.name.size()) + U16(extra.size()) + U16(0) + U16(entry.disk) + U16(0) +
           U32(entry.attributes) + U32(entry.zip64 ? kWide : offset) + entry.name + extra;
  }

  const RawEntry& entry;
  std::string packed;
  std::uint16_t method = 0;
  std::uint16_t flags = 0;
  std::uint32_t crc = 0;
  std::uint64_t size = 0;
  std::uint64_t packedSize = 0;
};

}  // namespace

std::string RawZip::Build() const {
  std::string archive;
  std::string directory;
  for (const RawEntry& entry : entries) {
    const Record record(entry);
    directory += record.Directory(archive.size());
    archive += record.Local();
  }
  const std::uint64_t start = archive.size();
  const std::uint64_t told = count.value_or(entries.size());
  const std::uint64_t size = directorySize.value_or(static_cast<std::uint32_t>(directory.size()));
  archive += directory;
  if (zip64End) {
    const std::uint64_t end = archive.size();
    archive += U32(0x06064b50) + U64(44) + U16(45) + U16(45) + U32(disk) + U32(0) + U64(told) + U64(told) +
               U64(size) + U64(start);
    archive += U32(0x07064b50) + U32(0) + U64(locatorOffset.value_or(end)) + U32(locatorDisks);
  }
  archive += U32(0x06054b50) + U16(plainDisk.value_or(disk)) + U16(0);
  archive += zip64End ? U16(0xFFFF) + U16(0xFFFF) + U32(kWide) + U32(kWide)
                      : U16(told) + U16(told) + U32(size) + U32(start);
  return prefix + archive + U16(comment.size()) + comment;
}

RawEntry RawZip::Zeros(const std::string& name, std::uint64_t size) {
  const std::string piece(std::size_t{32} << 20U, '\0');
  const std::string rest(size % piece.size(), '\0');
  const std::string packedPiece = Deflate(piece, Z_FULL_FLUSH);
  RawEntry entry = {.name = name, .deflate = true, .zip64 = true, .crc = 0, .size = size, .packed = ""};
  const auto append = [&entry](const std::string& packed, std::uint32_t crc, std::size_t bytes) {
    *entry.packed += packed;
    entry.crc = static_cast<std::uint32_t>(crc32_combine(*entry.crc, crc, static_cast<z_off_t>(bytes)));
  };
  const std::uint32_t pieceCrc = Crc(piece);
  for (std::uint64_t done = rest.size(); done < size; done += piece.size()) {
    append(packedPiece, pieceCrc, piece.size());
  }
  append(Deflate(rest), Crc(rest), rest.size());
  return entry;
}

std::string RawZip::Extra(std::uint16_t identifier, const std::string& content) {
  return U16(identifier) + U16(content.size()) + content;
}

std::string RawZip::UnicodePath(const std::string& writtenName, const std::string& utf8Name) {
  return Extra(0x7075, "\x01" + U32(Crc(writtenName)) + utf8Name);
}
