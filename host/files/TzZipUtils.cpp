// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipUtils.h"

#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "host/files/TzArchiveLoan.h"
#include "host/files/TzZipExtractor.h"
#include "host/files/TzZipInflater.h"
#include "host/files/TzZipPacker.h"
#include "host/session/TzProblem.h"

namespace {

constexpr std::string_view kUnpackNeed = "unpacks to";

/// Whether a held archive is a copy of our own.
enum class Holding { Copy, Lent };

std::string MakeActivity(std::string_view verb, const TzPath& archive) {
  return std::string(verb) + " " + archive.GetFileName().GetUTF8String();
}

/// Runs the operation; what its libraries throw becomes a failure.
template <typename Operation>
TzZipFailure Guard(Operation operation) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    return TzZipFailure::System(ENOMEM, {}, "can't go on");
  } catch (const std::system_error& error) {
    return TzZipFailure::System(error.code().value(), {}, "can't start a thread");
  }
}

/// The unit, and the bytes in it, that tells the size in two digits or more where that can be.
std::pair<const char*, std::uint64_t> GetUnit(std::uint64_t size) {
  constexpr std::uint64_t kKilobyte = 1024;
  if (size >= 10 * kKilobyte * kKilobyte * kKilobyte) return {" GB", kKilobyte * kKilobyte * kKilobyte};
  if (size >= 10 * kKilobyte * kKilobyte) return {" MB", kKilobyte * kKilobyte};
  return {" KB", kKilobyte};
}

/// Fails if the disk that the folder is on, or will be, hasn't this much room. `need` tells for what.
TzZipFailure CheckSpace(const TzPath& folder, std::uint64_t size, std::string_view need) {
  struct statvfs status = {};
  TzPath standing = folder;
  while (statvfs(standing.IsEmpty() ? "." : standing.GetNative().c_str(), &status) != 0) {
    // Making the folder tells better what is wrong with the disk than its size does.
    if (errno != ENOENT || standing.IsEmpty() || standing == standing.GetParentTzPath()) return {};
    standing = standing.GetParentTzPath();
  }
  const std::uint64_t free = std::uint64_t{status.f_bavail} * status.f_frsize;
  if (size <= free) return {};
  const auto [unit, bytes] = GetUnit(size);
  const std::uint64_t needed = size / bytes + (size % bytes != 0 ? 1 : 0);
  return {kTzMachineFailure,
          {},
          std::string(need) + " " + std::to_string(needed) + unit + ", but '" + folder.GetNative() +
              "' has room for " + std::to_string(free / bytes) + unit,
          0};
}

/// The time that all entries of a new archive bear, in seconds since 1970.
std::int64_t GetEntryTime() {
  std::int64_t time = 0;
  if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH"); epoch != nullptr) {
    const std::string_view text = epoch;
    std::from_chars(text.data(), text.data() + text.size(), time);
  }
  return time;
}

TzZipFailure GatherSources(const std::vector<TzPath>& files, const TzPath& basePath,
                           const std::vector<TzPath>& extra, TzZipSources& sources) {
  for (const TzPath& path : files) {
    if (auto failure = sources.Add(path, basePath)) return failure;
  }
  for (const TzPath& path : extra) {
    if (auto failure = sources.AddAtTop(path)) return failure;
  }
  return sources.Arrange();
}

TzZipFailure WriteArchive(const TzZipSources& sources, const TzPath& target, TzReplacementFile& file) {
  TzZipProgress progress(MakeActivity("packing", target), sources.GetTotalWork());
  TzZipWriter writer(file, GetEntryTime());
  if (auto failure = TzZipPacker(sources.GetSources(), progress).Pack(writer)) return failure;
  if (!progress.Report()) return TzZipFailure::Cancelled();
  if (!writer.Finish() || !file.Commit()) return TzZipFailure::System(errno, {}, "can't write");
  return {};
}

/// A folder that is made now, and goes again unless it is kept.
class NewFolder {
 public:
  explicit NewFolder(const TzPath& folder) : path(folder) {}
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;
  ~NewFolder() {
    if (isMade && !isKept) static_cast<void>(TzFileSystem::Current().Delete(path));
  }

  TzZipFailure Make() {
    isMade = TzFileSystem::Current().MakeFolders(path) == kTzSuccess;
    if (isMade) return {};
    return TzZipFailure::System(errno, {}, "can't make the folder '" + path.GetNative() + "'");
  }
  void Keep() { isKept = true; }

 private:
  const TzPath& path;
  bool isMade = false;
  bool isKept = false;
};

/// Unpacks the archive file by file.
TzZipFailure Unpack(const TzPath& archive, const TzPath& folder) {
  TzZipDirectory directory;
  if (auto failure = directory.Open(archive)) return failure;
  if (auto failure = CheckSpace(folder, directory.GetTotalSize(), kUnpackNeed)) return failure;
  NewFolder made(folder);
  if (auto failure = made.Make()) return failure;
  TzZipProgress progress(MakeActivity("unpacking", archive), directory.GetPackedSize());
  auto failure = TzZipExtractor(directory, progress).Extract(folder);
  if (!failure) made.Keep();
  return failure;
}

/// Checks the archive while it is copied into the hold.
TzZipFailure Copy(const TzZipDirectory& directory, const TzArchiveHold& hold, TzZipProgress& progress) {
  if (auto failure = CheckSpace(hold.GetPath().GetParentTzPath(), directory.GetFileSize(), "takes"))
    return failure;
  return TzZipExtractor(directory, progress).Hold(hold);
}

/// Lets the folder show the entries of the archive that is held.
TzZipFailure Show(const TzPath& folder, const std::shared_ptr<const TzArchiveHold>& hold,
                  const TzZipDirectory& directory) {
  NewFolder made(folder);
  if (auto failure = made.Make()) return failure;
  if (TzFileSystem::Current().AddEntries(folder, hold, directory.GetEntries()) != kTzSuccess) {
    return TzZipFailure::System(errno, {}, "can't unpack");
  }
  made.Keep();
  return {};
}

/// Takes a copy of the archive as it is.
TzZipFailure Stage(const TzPath& archive, const TzPath& folder, const std::shared_ptr<TzArchiveHold>& hold) {
  TzZipDirectory directory;
  if (auto failure = directory.Open(archive)) return failure;
  TzZipProgress progress(MakeActivity("adding", archive),
                         directory.GetPackedSize() + directory.GetFileSize());
  if (auto failure = Copy(directory, *hold, progress)) return failure;
  return Show(folder, hold, directory);
}

/// Takes the archive where it is.
TzZipFailure Borrow(const TzPath& archive, const TzPath& folder) {
  auto directory = std::make_unique<TzZipDirectory>();
  if (auto failure = directory->Open(archive)) return failure;
  const auto loan = std::make_shared<TzArchiveLoan>(archive, std::move(directory));
  return Show(folder, loan, loan->GetDirectory());
}

TzErrorCodeEnum Extract(const TzPath& archive, const TzPath& folder, Holding holding) {
  TzFileSystem& files = TzFileSystem::Current();
  if (files.GetKind(folder) != TzNodeKind::Absent) {
    return TzReportProblem(kTzFailure, folder.GetNative(), "exists already");
  }
  return Guard([&] {
           const auto hold = files.MakeHold(folder);
           if (hold == nullptr) return Unpack(archive, folder);
           return holding == Holding::Lent ? Borrow(archive, folder) : Stage(archive, folder, hold);
         })
      .Report(archive);
}

}  // namespace

TzErrorCodeEnum TzZipUtils::ExtractFiles(const TzPath& archive, const TzPath& folder) {
  return Extract(archive, folder, Holding::Copy);
}

TzErrorCodeEnum TzZipUtils::BorrowFiles(const TzPath& archive, const TzPath& folder) {
  return Extract(archive, folder, Holding::Lent);
}

TzErrorCodeEnum TzZipUtils::ExtractFile(const TzPath& archive, const TzString& entryName,
                                        const TzPath& file) {
  TzZipDirectory directory;
  TzZipFailure failure = Guard([&] { return directory.Open(archive); });
  if (failure) return failure.Report(archive);
  const TzZipEntry* entry = directory.Find(entryName.GetUTF8String());
  if (entry == nullptr) return kTzFailure;
  failure = CheckSpace(file.GetParentTzPath(), entry->size, kUnpackNeed);
  if (failure) return failure.Report(archive);
  TzZipProgress progress(MakeActivity("unpacking", archive), entry->packedSize);
  failure = Guard([&] { return TzZipInflater(directory.GetFile(), progress).Unpack(*entry, file); });
  if (failure) static_cast<void>(TzFileSystem::Current().Delete(file));
  return failure.Report(archive);
}

TzErrorCodeEnum TzZipUtils::ZipFiles(const std::vector<TzPath>& files, const TzPath& target,
                                     const TzPath& basePath, int flag, const std::vector<TzPath>& extra) {
  TzZipSources sources;
  if (flag == 1) sources.KeepEmptyFolders();
  const TzZipFailure gathered = Guard([&] { return GatherSources(files, basePath, extra, sources); });
  if (gathered) return gathered.Report(target);
  TzReplacementFile file(target);
  if (!file.Create()) {
    return errno == EISDIR
               ? TzReportProblem(kTzMachineFailure, target.GetNative(), "is a folder")
               : TzReportSystemProblem(errno, file.GetFolder(), "can't make a file in the folder");
  }
  return Guard([&] { return WriteArchive(sources, target, file); }).Report(target);
}
