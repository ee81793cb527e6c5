// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipPacker.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <map>
#include <mutex>
#include <new>
#include <optional>

#include "host/files/TzWorkers.h"

namespace {

constexpr std::uint64_t kWindowBytes = std::uint64_t{40} << 20U;
constexpr std::uint64_t kOverheadBytes = 1024;
/// Small enough that a stop is heard soon, and the disk begins early.
constexpr std::uint64_t kCopiedBytes = std::uint64_t{16} << 20U;

/// What the calling thread writes by itself: the rest goes through the workers.
bool IsWrittenDirectly(const TzZipSource& source) {
  return source.isFolder || source.held.has_value() || source.size > TzZipDeflater::kWholeBytes;
}

/// A file that is packed stands in memory twice: as it is, and packed.
std::uint64_t GetCost(const TzZipSource& source) { return 2 * source.size + kOverheadBytes; }

TzZipFailure OutOfMemory() { return TzZipFailure::System(ENOMEM, {}, "can't pack"); }

}  // namespace

/// The entries between the workers and the writer. Sources are handed out in order, so the one that the
/// writer waits for is always in work or the next to be handed out, and then nothing fills the window.
class TzZipPacker::Window {
 public:
  explicit Window(const std::vector<TzZipSource>& arranged) : sources(arranged) {}

  /// The next source to pack, once there is room for it; none at the end or after `Stop`.
  std::optional<std::size_t> TakeNext() {
    std::unique_lock lock(mutex);
    while (next < sources.size() && IsWrittenDirectly(sources[next])) ++next;
    change.wait(lock, [this] {
      while (next < sources.size() && IsWrittenDirectly(sources[next])) ++next;
      return stopped || next == sources.size() || usedBytes == 0 ||
             usedBytes + GetCost(sources[next]) <= kWindowBytes;
    });
    if (stopped || next == sources.size()) return std::nullopt;
    usedBytes += GetCost(sources[next]);
    return next++;
  }

  void Deliver(std::size_t index, TzPackedEntry entry) {
    const std::lock_guard guard(mutex);
    ready.emplace(index, std::move(entry));
    change.notify_all();
  }

  /// The packed source, or nothing if it isn't ready within a progress interval.
  std::optional<TzPackedEntry> Await(std::size_t index) {
    std::unique_lock lock(mutex);
    change.wait_for(lock, TzZipProgress::kInterval, [&] { return ready.contains(index); });
    auto node = ready.extract(index);
    if (node.empty()) return std::nullopt;
    return std::move(node.mapped());
  }

  void Release(std::size_t index) {
    const std::lock_guard guard(mutex);
    usedBytes -= GetCost(sources[index]);
    change.notify_all();
  }

  void Stop() {
    const std::lock_guard guard(mutex);
    stopped = true;
    change.notify_all();
  }

 private:
  const std::vector<TzZipSource>& sources;
  std::mutex mutex;
  std::condition_variable change;
  std::map<std::size_t, TzPackedEntry> ready;
  std::size_t next = 0;
  std::uint64_t usedBytes = 0;
  bool stopped = false;
};

TzZipFailure TzZipPacker::Pack(TzZipWriter& writer) {
  if (!progress.Report()) return TzZipFailure::Cancelled();
  Window window(sources);
  const TzWorkers workers(sources.size(), [this, &window] { Work(window); });
  // However the writing ends, the workers must not wait for room any more when they are waited for.
  const std::unique_ptr<Window, void (*)(Window*)> stopper(&window, [](Window* open) { open->Stop(); });
  return Write(window, writer);
}

void TzZipPacker::Work(Window& window) const {
  std::optional<TzZipDeflater> deflater;
  while (const auto index = window.TakeNext()) {
    TzPackedEntry entry;
    try {
      if (!deflater.has_value()) deflater.emplace();
      entry = deflater->PackWhole(sources[*index]);
    } catch (const std::bad_alloc&) {
      entry.failure = OutOfMemory();
    }
    window.Deliver(*index, std::move(entry));
  }
}

TzZipFailure TzZipPacker::Write(Window& window, TzZipWriter& writer) {
  TzZipDeflater deflater;
  for (std::size_t index = 0; index < sources.size(); ++index) {
    if (auto failure = WriteOne(index, window, deflater, writer)) return failure;
    if (!progress.ReportIfDue()) return TzZipFailure::Cancelled();
  }
  return ConfirmHolds();
}

TzZipFailure TzZipPacker::ConfirmHolds() const {
  const TzArchiveHold* confirmed = nullptr;
  for (const TzZipSource& source : sources) {
    if (!source.held.has_value() || source.held->hold.get() == confirmed) continue;
    confirmed = source.held->hold.get();
    if (auto failure = confirmed->Confirm(progress)) return failure;
  }
  return {};
}

TzZipFailure TzZipPacker::WriteOne(std::size_t index, Window& window, TzZipDeflater& deflater,
                                   TzZipWriter& writer) {
  const TzZipSource& source = sources[index];
  std::optional<TzPackedEntry> packed;
  if (source.isFolder) {
    packed.emplace().header.name = source.name;
  } else if (source.held.has_value()) {
    return WriteHeld(source, writer);
  } else if (IsWrittenDirectly(source)) {
    return deflater.PackStream(source, writer, progress);
  }
  while (!packed.has_value()) {
    packed = window.Await(index);
    if (!packed.has_value() && !progress.ReportIfDue()) return TzZipFailure::Cancelled();
  }
  if (packed->failure) return std::move(packed->failure);
  const std::span<const std::byte> data(packed->data.get(), packed->header.packedSize);
  if (!writer.Add(packed->header, data)) return TzZipFailure::System(errno, {}, "can't write");
  progress.Advance(source.size);
  if (!source.isFolder) window.Release(index);
  return {};
}

TzZipFailure TzZipPacker::WriteHeld(const TzZipSource& source, TzZipWriter& writer) {
  const TzHeldEntry& held = *source.held;
  if (held.hold != hold) {
    hold = held.hold;
    heldFile = hold->Open();
    if (!heldFile.IsOpen()) return TzZipFailure::System(errno, source.name, "can't read");
  }
  const auto cantWrite = [] { return TzZipFailure::System(errno, {}, "can't write"); };
  if (!writer.AddHeader({source.name, held.isDeflated, held.crc, held.packedSize, held.size}))
    return cantWrite();
  for (std::uint64_t done = 0; done < held.packedSize;) {
    const std::uint64_t bytes = std::min(kCopiedBytes, held.packedSize - done);
    if (!writer.AppendFrom(heldFile, held.offset + done, bytes)) {
      if (errno == 0) {
        if (auto failure = hold->Confirm(progress)) return failure;
        return {kTzMachineFailure, source.name, "its copy was cut short on the disk", 0};
      }
      const bool isHoldBad = !heldFile.CanRead(held.offset + done, bytes);
      return isHoldBad ? TzZipFailure::System(errno, source.name, "can't read") : cantWrite();
    }
    done += bytes;
    progress.Advance(bytes);
    if (!progress.ReportIfDue()) return TzZipFailure::Cancelled();
  }
  return {};
}
