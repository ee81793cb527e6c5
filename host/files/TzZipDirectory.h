// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzZipFailure.h"

struct TzZipDirectoryPlace;

/// One entry of an archive.
struct TzZipEntry {
  /// As `TzZipName` reads it.
  std::string name;
  bool isFolder = false;
  bool isDeflated = false;
  /// The archive says that the name is UTF-8.
  bool isNameUtf8 = false;
  /// The name is written with back-slashes.
  bool hasBackslash = false;
  /// Only where an archive was inspected: the entry broke a rule, and may not be read.
  bool isFaulty = false;
  std::uint32_t crc = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  /// Where the local header and the packed data start in the file.
  std::uint64_t headerOffset = 0;
  std::uint64_t dataOffset = 0;
};

/// What part of an archive a fault is about.
enum class TzZipFaultKind { Archive, Name, Packing, Data, Clash, Size };

/// Something wrong with an archive that is read in spite of it.
struct TzZipFault {
  TzZipFaultKind kind = TzZipFaultKind::Archive;
  TzZipFailure failure;
};

/// The central directory of an archive.
///
/// Guarantees: after a successful `Open` every entry obeys the rules that `TzZipUtils::ExtractFiles` names,
/// its data lies inside the archive, and nothing but the data itself remains to be checked.
class TzZipDirectory {
 public:
  TzZipDirectory() = default;
  TzZipDirectory(const TzZipDirectory&) = delete;
  TzZipDirectory& operator=(const TzZipDirectory&) = delete;

  /// Opens the archive, reads its directory and checks it.
  TzZipFailure Open(const TzPath& archive);
  /// Likewise, but goes on after a fault, and fails only if there is no directory to read. An entry tells its
  /// first fault; one whose fault is its name bears it as a message may show it. The guarantees hold for an
  /// entry without a fault.
  TzZipFailure Inspect(const TzPath& archive, std::vector<TzZipFault>& faultList);

  /// The archive itself, from which the packed data is read.
  [[nodiscard]] const TzFileDescriptor& GetFile() const { return file; }
  [[nodiscard]] std::uint64_t GetFileSize() const { return fileSize; }
  [[nodiscard]] const std::vector<TzZipEntry>& GetEntries() const { return entries; }
  /// Every folder that the entries are or lie in, parents before children.
  [[nodiscard]] std::vector<std::string_view> GetFolders() const;
  /// What all entries hold packed, in bytes.
  [[nodiscard]] std::uint64_t GetPackedSize() const { return totalPackedSize; }
  /// What all entries unpack to, in bytes.
  [[nodiscard]] std::uint64_t GetTotalSize() const { return totalSize; }
  /// The file of this name; null if there is none.
  [[nodiscard]] const TzZipEntry* Find(std::string_view name) const;

 private:
  struct Header;
  enum class NodeKind { File, Folder };

  /// What the system can't read is no fault of the archive, and always ends the reading.
  TzZipFailure Read(const TzPath& archive);
  /// Returns the failure if the reading must end with it.
  TzZipFailure Meet(TzZipFaultKind kind, TzZipFailure failure);
  TzZipFailure OpenFile(const TzPath& archive);
  TzZipFailure ReadHeaders(const TzZipDirectoryPlace& place);
  TzZipFailure ReadHeader(const TzZipDirectoryPlace& place, const Header& header);
  const char* ReadLocalHeader(const TzZipDirectoryPlace& place, const Header& header,
                              TzZipEntry& entry) const;
  const char* ClaimName(const TzZipEntry& entry);
  [[nodiscard]] TzZipFailure CheckExtents() const;
  [[nodiscard]] TzZipFailure CheckTotal() const;

  TzFileDescriptor file;
  std::uint64_t fileSize = 0;
  std::uint64_t totalPackedSize = 0;
  std::uint64_t totalSize = 0;
  /// Null if the first fault ends the reading.
  std::vector<TzZipFault>* faults = nullptr;
  std::vector<TzZipEntry> entries;
  /// The keys are parts of the entries' names.
  std::unordered_map<std::string_view, NodeKind> nodes;
};
