// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipDirectory.h"

#include <fcntl.h>
#include <libdeflate.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <span>
#include <system_error>

#include "host/files/TzZipDirectoryEnd.h"
#include "host/files/TzZipFormat.h"
#include "host/files/TzZipName.h"
#include "host/files/TzZipUtils.h"

using namespace TzZipFormat;
using namespace TzZipDirectoryEnd;

namespace {

using Bytes = std::span<const std::byte>;

constexpr std::uint64_t kMostDirectoryBytes = std::uint64_t{512} << 20U;
constexpr const char* kHeadersDisagree = "the entry's header disagrees with the directory";

std::string_view AsText(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

/// Links, pipes and devices, in the attributes that Unix and Windows systems store.
bool IsSpecial(std::uint32_t attributes) {
  constexpr std::uint32_t kWindowsLink = 0x400;
  const mode_t type = (attributes >> 16U) & S_IFMT;
  return type == S_IFLNK || type == S_IFCHR || type == S_IFBLK || type == S_IFIFO || type == S_IFSOCK ||
         (attributes & kWindowsLink) != 0;
}

/// Replaces the sizes that have all bits set by those of the ZIP64 field, which holds just these, in the
/// order given. False if the field is missing or too short.
bool ResolveZip64(Bytes extra, std::initializer_list<std::uint64_t*> values) {
  const auto isMarked = [](const std::uint64_t* value) { return *value == kIn32; };
  if (std::none_of(values.begin(), values.end(), isMarked)) return true;
  bool resolved = false;
  ForEachExtra(extra, [&](std::uint16_t identifier, Bytes content) {
    if (identifier != kZip64Extra || resolved) return;
    const auto marked = static_cast<std::size_t>(std::count_if(values.begin(), values.end(), isMarked));
    if (content.size() < marked * sizeof(std::uint64_t)) return;
    for (std::uint64_t* value : values) {
      if (!isMarked(value)) continue;
      *value = Get64(content, 0);
      content = content.subspan(sizeof(std::uint64_t));
    }
    resolved = true;
  });
  return resolved;
}

/// The name in the extra field that some archivers add, which counts only if it was made for this very name.
std::optional<std::string_view> FindUnicodePath(Bytes extra, Bytes name) {
  constexpr std::size_t kPrefixBytes = 5;
  std::optional<std::string_view> found;
  ForEachExtra(extra, [&](std::uint16_t identifier, Bytes content) {
    if (identifier != kUnicodePathExtra || content.size() <= kPrefixBytes) return;
    if (std::to_integer<int>(content[0]) != 1) return;
    if (Get32(content, 1) != libdeflate_crc32(0, name.data(), name.size())) return;
    found = AsText(content.subspan(kPrefixBytes));
  });
  return found;
}

const char* CheckPacking(unsigned flags, std::uint16_t method, const TzZipEntry& entry) {
  if ((flags & (kEncryptedFlag | kStrongEncryptionFlag | kMaskedHeaderFlag)) != 0) {
    return "the entry is encrypted";
  }
  if (entry.isFolder) return entry.size == 0 ? nullptr : "the entry is a folder with content";
  if (method != kStored && method != kDeflated) return "the entry is packed in an unknown way";
  return method == kStored && entry.packedSize != entry.size ? "the entry's sizes disagree" : nullptr;
}

}  // namespace

/// One header of the directory; the spans lie in the directory's bytes.
struct TzZipDirectory::Header {
  Bytes fixed;
  Bytes name;
  Bytes extra;

  /// The system whose archiver wrote the entry.
  [[nodiscard]] unsigned GetHost() const { return Get16(fixed, 4) >> 8U; }
  [[nodiscard]] unsigned GetFlags() const { return Get16(fixed, 8); }
  [[nodiscard]] std::uint16_t GetMethod() const { return Get16(fixed, 10); }
  [[nodiscard]] std::uint32_t GetAttributes() const { return Get32(fixed, 38); }

  /// The entry's name and kind. Returns what is wrong with the name, null if nothing is.
  const char* ReadName(TzZipEntry& entry) const {
    TzZipName read;
    const char* fault = "the entry's name is malformed UTF-8";
    const bool isFlagged = (GetFlags() & kUtf8Flag) != 0;
    const auto unicode = isFlagged ? std::nullopt : FindUnicodePath(extra, name);
    const std::string_view text = unicode.value_or(AsText(name));
    entry.isNameUtf8 = isFlagged || unicode.has_value();
    entry.hasBackslash = AsText(name).find('\\') != std::string_view::npos;
    // Unix archivers write the bytes that the disk holds, and not all of them say what these mean.
    const bool mayBeUtf8 = entry.isNameUtf8 || GetHost() == kUnixHost || GetHost() == kMacHost;
    if (mayBeUtf8 && TzZipName::IsUtf8(text)) {
      fault = read.Read(text);
    } else if (!entry.isNameUtf8) {
      fault = read.Read(TzZipName::FromCodePage437(text));
    }
    entry.name = fault == nullptr ? std::move(read.text) : TzZipName::ForMessage(AsText(name));
    entry.isFolder = read.isFolder;
    return fault;
  }

  /// Everything but the name. Returns what is wrong, null if nothing is.
  const char* ReadFields(TzZipEntry& entry) const {
    entry.isDeflated = GetMethod() == kDeflated;
    entry.crc = Get32(fixed, 16);
    entry.packedSize = Get32(fixed, 20);
    entry.size = Get32(fixed, 24);
    entry.headerOffset = Get32(fixed, 42);
    if (!ResolveZip64(extra, {&entry.size, &entry.packedSize, &entry.headerOffset})) return kDamagedDirectory;
    if (const std::uint16_t disk = Get16(fixed, 34); disk != 0 && disk != kIn16) return kSeveralDisks;
    if (IsSpecial(GetAttributes())) return "the entry is a link or a device";
    return CheckPacking(GetFlags(), GetMethod(), entry);
  }
};

TzZipFailure TzZipDirectory::Open(const TzPath& archive) { return Read(archive); }

TzZipFailure TzZipDirectory::Inspect(const TzPath& archive, std::vector<TzZipFault>& faultList) {
  faults = &faultList;
  TzZipFailure failure = Read(archive);
  faults = nullptr;
  return failure;
}

TzZipFailure TzZipDirectory::Meet(TzZipFaultKind kind, TzZipFailure failure) {
  if (!failure || faults == nullptr) return failure;
  faults->push_back({kind, std::move(failure)});
  return {};
}

TzZipFailure TzZipDirectory::Read(const TzPath& archive) try {
  if (auto failure = OpenFile(archive)) return failure;
  TzZipDirectoryPlace place;
  if (auto failure = TzZipDirectoryEnd::Find(file, fileSize, place)) return failure;
  if (place.count > TzZipUtils::kMaximumEntries) {
    return TzZipFailure::BadContent({}, "holds more than a million entries");
  }
  if (auto failure = ReadHeaders(place)) return failure;
  if (auto failure = Meet(TzZipFaultKind::Data, CheckExtents())) return failure;
  return Meet(TzZipFaultKind::Size, CheckTotal());
} catch (const std::system_error& error) {
  return TzZipFailure::System(error.code().value(), {}, "can't read");
}

std::vector<std::string_view> TzZipDirectory::GetFolders() const {
  std::vector<std::string_view> folders;
  for (const auto& [name, kind] : nodes) {
    if (kind == NodeKind::Folder) folders.push_back(name);
  }
  std::sort(folders.begin(), folders.end());
  return folders;
}

const TzZipEntry* TzZipDirectory::Find(std::string_view name) const {
  const auto found = std::find_if(entries.begin(), entries.end(), [name](const TzZipEntry& entry) {
    return !entry.isFolder && entry.name == name;
  });
  return found != entries.end() ? &*found : nullptr;
}

TzZipFailure TzZipDirectory::OpenFile(const TzPath& archive) {
  file = TzFileDescriptor(open(archive.GetNative().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status = {};
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0) {
    return TzZipFailure::System(errno, {}, "can't read");
  }
  if (!S_ISREG(status.st_mode)) return TzZipFailure::BadContent({}, "isn't a file");
  fileSize = static_cast<std::uint64_t>(status.st_size);
  return {};
}

TzZipFailure TzZipDirectory::ReadHeaders(const TzZipDirectoryPlace& place) {
  const auto damaged = [] { return TzZipFailure::BadContent({}, kDamagedDirectory); };
  if (place.size > kMostDirectoryBytes || place.count > place.size / kDirectoryHeaderBytes) return damaged();
  const auto bytes = ReadPart(file, place.start, place.size);
  if (bytes.size() != place.size) return TzZipFailure::BadContent({}, kNoArchive);
  // The names' place in memory must not change: the nodes refer to them.
  entries.reserve(place.count);
  Bytes rest = bytes;
  for (std::uint64_t index = 0; index < place.count; ++index) {
    if (rest.size() < kDirectoryHeaderBytes || Get32(rest, 0) != kDirectoryHeader) return damaged();
    const std::size_t nameBytes = Get16(rest, 28);
    const std::size_t extraBytes = Get16(rest, 30);
    const std::size_t headerBytes = kDirectoryHeaderBytes + nameBytes + extraBytes + Get16(rest, 32);
    if (rest.size() < headerBytes) return damaged();
    const Header header = {rest.first(kDirectoryHeaderBytes), rest.subspan(kDirectoryHeaderBytes, nameBytes),
                           rest.subspan(kDirectoryHeaderBytes + nameBytes, extraBytes)};
    if (auto failure = ReadHeader(place, header)) return failure;
    rest = rest.subspan(headerBytes);
  }
  return rest.empty() ? TzZipFailure() : damaged();
}

TzZipFailure TzZipDirectory::ReadHeader(const TzZipDirectoryPlace& place, const Header& header) {
  TzZipEntry& entry = entries.emplace_back();
  TzZipFaultKind kind = TzZipFaultKind::Name;
  const char* fault = header.ReadName(entry);
  const auto goOn = [&](TzZipFaultKind next, auto read) {
    if (fault != nullptr) return;
    kind = next;
    fault = read();
  };
  goOn(TzZipFaultKind::Packing, [&] { return header.ReadFields(entry); });
  goOn(TzZipFaultKind::Data, [&] { return ReadLocalHeader(place, header, entry); });
  goOn(TzZipFaultKind::Clash, [&] { return ClaimName(entry); });
  if (fault != nullptr) {
    entry.isFaulty = true;
    return Meet(kind, TzZipFailure::BadContent(TzZipName::ForMessage(AsText(header.name)), fault));
  }
  totalSize = entry.size > ~totalSize ? ~std::uint64_t{0} : totalSize + entry.size;
  totalPackedSize += entry.packedSize;
  if (nodes.size() > TzZipUtils::kMaximumEntries) {
    return TzZipFailure::BadContent({}, "holds more than a million files and folders");
  }
  return {};
}

const char* TzZipDirectory::ReadLocalHeader(const TzZipDirectoryPlace& place, const Header& header,
                                            TzZipEntry& entry) const {
  static constexpr const char* kOutside = "the entry lies outside the archive";
  constexpr unsigned kFlagsThatCount = kEncryptedFlag | kStrongEncryptionFlag | kUtf8Flag | kMaskedHeaderFlag;
  if (entry.headerOffset > place.start - place.prefixBytes) return kOutside;
  entry.headerOffset += place.prefixBytes;
  const std::size_t nameEnd = kLocalHeaderBytes + header.name.size();
  if (nameEnd > place.start - entry.headerOffset) return kOutside;
  const auto local = ReadPart(file, entry.headerOffset, nameEnd);
  if (local.empty()) return kNoArchive;
  const unsigned flags = Get16(local, 6);
  if (Get32(local, 0) != kLocalHeader || ((flags ^ header.GetFlags()) & kFlagsThatCount) != 0 ||
      Get16(local, 8) != header.GetMethod() || Get16(local, 26) != header.name.size() ||
      !std::equal(header.name.begin(), header.name.end(), local.begin() + kLocalHeaderBytes)) {
    return kHeadersDisagree;
  }
  const std::size_t extraBytes = Get16(local, 28);
  entry.dataOffset = entry.headerOffset + nameEnd + extraBytes;
  if (entry.dataOffset > place.start || entry.packedSize > place.start - entry.dataOffset) return kOutside;
  // With a descriptor behind the data, the sizes weren't known when this header was written.
  if ((flags & kDescriptorFlag) != 0) return nullptr;
  std::uint64_t packedSize = Get32(local, 18);
  std::uint64_t size = Get32(local, 22);
  if (packedSize == kIn32 || size == kIn32) {
    const auto extra = ReadPart(file, entry.headerOffset + nameEnd, extraBytes);
    if (!ResolveZip64(extra, {&size, &packedSize})) return kHeadersDisagree;
  }
  const bool agrees = Get32(local, 14) == entry.crc && packedSize == entry.packedSize && size == entry.size;
  return agrees ? nullptr : kHeadersDisagree;
}

const char* TzZipDirectory::ClaimName(const TzZipEntry& entry) {
  const std::string_view name = entry.name;
  if (name.empty()) return nullptr;
  const auto [own, isNew] = nodes.try_emplace(name, entry.isFolder ? NodeKind::Folder : NodeKind::File);
  if (!isNew && own->second == NodeKind::Folder && !entry.isFolder) {
    return "the entry is a file where others need a folder";
  }
  if (!isNew && !entry.isFolder) return "two entries have this name";
  if (!isNew && own->second == NodeKind::File) return "the entry is a folder where another is a file";
  for (std::size_t slash = name.rfind('/'); slash != std::string_view::npos;
       slash = name.rfind('/', slash - 1)) {
    const auto [parent, isNewParent] = nodes.try_emplace(name.substr(0, slash), NodeKind::Folder);
    if (parent->second == NodeKind::File) return "the entry lies in a folder that another says is a file";
    if (!isNewParent) break;
  }
  return nullptr;
}

TzZipFailure TzZipDirectory::CheckExtents() const {
  std::vector<const TzZipEntry*> order;
  order.reserve(entries.size());
  for (const TzZipEntry& entry : entries) {
    if (!entry.isFaulty) order.push_back(&entry);
  }
  std::sort(order.begin(), order.end(), [](const TzZipEntry* left, const TzZipEntry* right) {
    return left->headerOffset < right->headerOffset;
  });
  const auto overlapping =
      std::adjacent_find(order.begin(), order.end(), [](const TzZipEntry* left, const TzZipEntry* right) {
        return left->dataOffset + left->packedSize > right->headerOffset;
      });
  if (overlapping == order.end()) return {};
  return TzZipFailure::BadContent((*overlapping)->name,
                                  "the entry overlaps '" + (*std::next(overlapping))->name + "'");
}

TzZipFailure TzZipDirectory::CheckTotal() const {
  const std::uint64_t allowed = std::max(fileSize * TzZipUtils::kMaximumRatio, TzZipUtils::kRatioFloor);
  if (totalSize <= allowed) return {};
  return TzZipFailure::BadContent({}, "unpacks to more than 200 times its own size");
}
