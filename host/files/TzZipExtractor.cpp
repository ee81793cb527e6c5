// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipExtractor.h"

#include <cerrno>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <new>
#include <string>

#include "host/files/TzWorkers.h"
#include "host/files/TzZipInflater.h"

namespace {

TzPath GetPathOf(const TzPath& folder, std::string_view name) {
  std::string path;
  path.reserve(folder.GetNative().size() + 1 + name.size());
  return TzPath::FromNative(path.append(folder.GetNative()).append("/").append(name));
}

}  // namespace

/// What the workers share. Entries are handed out in the archive's order, so that when one fails, all before
/// it have been begun and tell of their own failures.
struct TzZipExtractor::Run {
  explicit Run(const TzPath& target) : folder(target) {}

  const TzPath& folder;
  std::mutex mutex;
  std::condition_variable change;
  std::size_t next = 0;
  std::size_t workersDone = 0;
  TzZipFailure failure;
  std::size_t failedIndex = std::numeric_limits<std::size_t>::max();

  /// The next file to unpack; null if there is none, or one has failed.
  const TzZipEntry* TakeNext(const std::vector<TzZipEntry>& entries) {
    const std::lock_guard guard(mutex);
    while (next < entries.size() && entries[next].isFolder) ++next;
    return next < entries.size() && !failure ? &entries[next++] : nullptr;
  }

  void Fail(std::size_t index, TzZipFailure reason) {
    const std::lock_guard guard(mutex);
    if (index >= failedIndex) return;
    failedIndex = index;
    failure = std::move(reason);
  }
};

TzZipFailure TzZipExtractor::Extract(const TzPath& folder) {
  if (!progress.Report()) return TzZipFailure::Cancelled();
  if (auto failure = MakeFolders(folder)) return failure;
  Run run(folder);
  {
    const TzWorkers workers(directory.GetEntries().size(), [this, &run] { Work(run); });
    std::unique_lock lock(run.mutex);
    while (run.workersDone < workers.GetCount()) {
      if (run.change.wait_for(lock, TzZipProgress::kInterval) != std::cv_status::timeout) continue;
      lock.unlock();
      progress.Report();
      lock.lock();
    }
  }
  if (progress.IsStopped()) return TzZipFailure::Cancelled();
  if (run.failure) return std::move(run.failure);
  return progress.Report() ? TzZipFailure() : TzZipFailure::Cancelled();
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
    TzZipInflater inflater(directory.GetFile(), progress);
    while (!progress.IsStopped() && (entry = run.TakeNext(entries)) != nullptr) {
      if (auto failure = inflater.Unpack(*entry, GetPathOf(run.folder, entry->name))) {
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
