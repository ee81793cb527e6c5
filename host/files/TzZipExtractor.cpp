// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipExtractor.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>

#include "host/files/TzWorkers.h"

namespace {

/// Small enough that workers wait little for the first of it, and a stop is heard soon.
constexpr std::uint64_t kCopiedBytes = std::uint64_t{4} << 20U;
constexpr std::uint64_t kEverything = std::numeric_limits<std::uint64_t>::max();
/// What has to be unpacked for a further worker to be worth its start, and what an entry counts beside its
/// content.
constexpr std::uint64_t kWorkerBytes = std::uint64_t{256} << 10U;
constexpr std::uint64_t kEntryBytes = std::uint64_t{4} << 10U;

TzZipFailure CantKeep(const TzArchiveHold& hold) {
  return TzZipFailure::System(
      errno, {}, "can't keep a copy of it in '" + hold.GetPath().GetParentTzPath().GetNative() + "'");
}

TzPath GetPathOf(const TzPath& folder, std::string_view name) {
  std::string path;
  path.reserve(folder.GetNative().size() + 1 + name.size());
  return TzPath::FromNative(path.append(folder.GetNative()).append("/").append(name));
}

}  // namespace

/// What the workers share. Entries are handed out in the archive's order, so that when one fails, all before
/// it have been begun and tell of their own failures.
struct TzZipExtractor::Run {
  Run(const TzFileDescriptor& readable, Visit toDo, std::uint64_t arrivedBytes)
      : file(readable), visit(std::move(toDo)), arrived(arrivedBytes) {}
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  /// However this ends, the workers must not wait for data any more when they are waited for.
  ~Run() { Stop(); }

  /// Where the data is read from.
  const TzFileDescriptor& file;
  Visit visit;
  std::mutex mutex;
  std::condition_variable change;
  /// Up to where the data can be read.
  std::uint64_t arrived;
  bool isStopped = false;
  std::size_t next = 0;
  std::size_t workersDone = 0;
  TzZipFailure failure;
  std::size_t failedIndex = std::numeric_limits<std::size_t>::max();
  bool survivesBadFiles = false;
  /// By index; empty unless the run survives them.
  std::map<std::size_t, TzZipFailure> badFiles;
  /// The last, for the others are theirs.
  std::optional<TzWorkers> workers;

  /// The next file, once its data has arrived; null if there is none, or one has failed.
  const TzZipEntry* TakeNext(const std::vector<TzZipEntry>& entries) {
    std::unique_lock lock(mutex);
    while (next < entries.size() && (entries[next].isFolder || entries[next].isFaulty)) ++next;
    if (next == entries.size() || failure) return nullptr;
    const TzZipEntry& entry = entries[next++];
    change.wait(lock, [&] { return isStopped || entry.dataOffset + entry.packedSize <= arrived; });
    return isStopped ? nullptr : &entry;
  }

  /// False if there is no use in more.
  bool Arrive(std::uint64_t bytes) {
    const std::lock_guard guard(mutex);
    arrived = bytes;
    change.notify_all();
    return !failure;
  }

  void Stop() {
    const std::lock_guard guard(mutex);
    isStopped = true;
    change.notify_all();
  }

  void Fail(std::size_t index, TzZipFailure reason) {
    const std::lock_guard guard(mutex);
    if (survivesBadFiles && reason.code == kTzBadContent) {
      badFiles.emplace(index, std::move(reason));
      return;
    }
    if (index >= failedIndex) return;
    failedIndex = index;
    failure = std::move(reason);
  }
};

TzZipExtractor::TzZipExtractor(const TzZipDirectory& archive, TzZipProgress& counter)
    : directory(archive), progress(counter) {}

TzZipExtractor::~TzZipExtractor() {
  if (check != nullptr) progress.Stop();
}

TzZipFailure TzZipExtractor::Extract(const TzPath& folder) {
  if (!progress.Report()) return TzZipFailure::Cancelled();
  if (auto failure = MakeFolders(folder)) return failure;
  const auto unpack = [&folder](TzZipInflater& inflater, const TzZipEntry& entry) {
    return inflater.Unpack(entry, GetPathOf(folder, entry.name));
  };
  Run run(directory.GetFile(), unpack, kEverything);
  return RunWorkers(run, [] { return TzZipFailure(); });
}

TzZipFailure TzZipExtractor::Hold(const TzArchiveHold& hold) {
  if (!progress.Report()) return TzZipFailure::Cancelled();
  const auto stamp = directory.GetFile().GetStamp();
  TzFileDescriptor copy = hold.Create();
  if (!copy.IsOpen()) return CantKeep(hold);
  Run run(copy, &TzZipInflater::Check, 0);
  auto failure = RunWorkers(run, [&] { return CopyInto(copy, hold, run); });
  if (failure.code == kTzBadContent && directory.GetFile().GetStamp() != stamp) {
    return TzZipFailure::BadContent({}, "changed while it was read; try again");
  }
  if (!failure && !copy.Close()) return CantKeep(hold);
  return failure;
}

TzZipFailure TzZipExtractor::VisitAll(const Visit& visit, std::vector<TzZipFailure>& badFiles) {
  if (!progress.Report()) return TzZipFailure::Cancelled();
  Run run(directory.GetFile(), visit, kEverything);
  run.survivesBadFiles = true;
  if (auto failure = RunWorkers(run, [] { return TzZipFailure(); })) return failure;
  for (auto& [index, failure] : run.badFiles) badFiles.push_back(std::move(failure));
  return {};
}

void TzZipExtractor::BeginCheck() {
  check = std::make_unique<Run>(directory.GetFile(), &TzZipInflater::Check, kEverything);
  StartWorkers(*check);
}

TzZipFailure TzZipExtractor::FinishCheck(TzZipProgress& waiting) const {
  AwaitWorkers(*check, waiting);
  return check->isStopped ? TzZipFailure::Cancelled() : check->failure;
}

TzZipFailure TzZipExtractor::CopyInto(const TzFileDescriptor& copy, const TzArchiveHold& hold, Run& run) {
  const std::uint64_t size = directory.GetFileSize();
  for (std::uint64_t done = 0; done < size;) {
    const std::uint64_t wanted = std::min(kCopiedBytes, size - done);
    const std::int64_t count = directory.GetFile().CopyRange(done, wanted, copy, done);
    if (count < 0) {
      const bool isSourceBad = !directory.GetFile().CanRead(done, wanted);
      return isSourceBad ? TzZipFailure::System(errno, {}, "can't read") : CantKeep(hold);
    }
    done += wanted;
    progress.Advance(wanted);
    if (!progress.ReportIfDue()) return TzZipFailure::Cancelled();
    // An archive that was cut short meanwhile is found out by who reads the copy.
    const bool goesOn = run.Arrive(static_cast<std::uint64_t>(count) < wanted ? kEverything : done);
    // One worker has failed, and the others wait for data that won't come.
    if (!goesOn) {
      run.Stop();
      return {};
    }
  }
  run.Arrive(kEverything);
  return {};
}

TzZipFailure TzZipExtractor::RunWorkers(Run& run, const std::function<TzZipFailure()>& meanwhile) {
  StartWorkers(run);
  TzZipFailure own = meanwhile();
  if (own) run.Stop();
  AwaitWorkers(run, progress);
  if (progress.IsStopped()) return TzZipFailure::Cancelled();
  if (own) return own;
  if (run.failure) return std::move(run.failure);
  return progress.Report() ? TzZipFailure() : TzZipFailure::Cancelled();
}

void TzZipExtractor::StartWorkers(Run& run) const {
  const std::size_t entries = directory.GetEntries().size();
  const std::uint64_t worthwhile = (directory.GetTotalSize() + entries * kEntryBytes) / kWorkerBytes + 1;
  run.workers.emplace(std::min<std::uint64_t>(worthwhile, entries), [this, &run] { Work(run); });
}

void TzZipExtractor::AwaitWorkers(Run& run, TzZipProgress& waiting) const {
  std::unique_lock lock(run.mutex);
  while (run.workersDone < run.workers->GetCount()) {
    if (run.change.wait_for(lock, TzZipProgress::kInterval) != std::cv_status::timeout) continue;
    lock.unlock();
    if (!waiting.Report()) {
      progress.Stop();
      run.Stop();
    }
    lock.lock();
  }
}

TzZipFailure TzZipExtractor::MakeFolders(const TzPath& folder) const {
  for (const std::string_view name : directory.GetFolders()) {
    if (TzFileSystem::Current().MakeFolder(GetPathOf(folder, name)) != kTzSuccess) {
      return TzZipFailure::System(errno, name, "can't make the folder");
    }
  }
  return {};
}

void TzZipExtractor::Work(Run& run) const {
  const auto& entries = directory.GetEntries();
  const TzZipEntry* entry = entries.data();
  try {
    TzZipInflater inflater(run.file, progress, TzWorkers::GetCores());
    while (!progress.IsStopped() && (entry = run.TakeNext(entries)) != nullptr) {
      if (auto failure = run.visit(inflater, *entry)) {
        run.Fail(static_cast<std::size_t>(entry - entries.data()), std::move(failure));
      }
    }
  } catch (const std::bad_alloc&) {
    run.Fail(static_cast<std::size_t>(entry - entries.data()),
             TzZipFailure::System(ENOMEM, {}, "can't unpack"));
  }
  const std::lock_guard guard(run.mutex);
  ++run.workersDone;
  run.change.notify_all();
}
