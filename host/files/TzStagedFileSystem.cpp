// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzStagedFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <mutex>
#include <new>
#include <stdexcept>

#include "host/files/TzZipEntryReader.h"

namespace {

TzErrorCodeEnum FailWith(int error) {
  errno = error;
  return TzFileSystem::Failed();
}

/// What is below the folder in the path, if the path leads there: with the slash in front, or nothing.
std::optional<std::string_view> FindBelow(const std::string& folder, std::string_view path) {
  if (!path.starts_with(folder)) return std::nullopt;
  path.remove_prefix(folder.size());
  if (!path.empty() && path.front() != '/') return std::nullopt;
  return path;
}

/// The content of a held entry, unpacked as it is read.
class HeldReadStream final : public TzReadStream {
 public:
  explicit HeldReadStream(const TzHeldEntry& entry)
      : hold(entry.hold),
        archive(hold->Open()),
        reader(archive, entry.offset, entry.packedSize, entry.isDeflated) {}

  [[nodiscard]] bool IsOpen() const { return archive.IsOpen(); }

  std::ptrdiff_t Read(std::span<std::byte> buffer) override {
    const std::ptrdiff_t count = reader.Read(buffer);
    // The data was checked when it was taken: if it is wrong by now, the disk is. What is borrowed is still
    // being checked, which tells better.
    if (count < 0 && reader.GetFault() != nullptr) errno = EIO;
    return count;
  }

 private:
  std::shared_ptr<const TzArchiveHold> hold;
  TzFileDescriptor archive;
  TzZipEntryReader reader;
};

std::unique_ptr<TzReadStream> OpenHeld(const TzHeldEntry& entry) {
  try {
    auto stream = std::make_unique<HeldReadStream>(entry);
    return stream->IsOpen() ? std::move(stream) : nullptr;
  } catch (const std::bad_alloc&) {
    errno = ENOMEM;
    return nullptr;
  }
}

TzErrorCodeEnum CopyAll(TzReadStream& source, TzWriteStream& target) {
  std::vector<std::byte> buffer(std::size_t{256} << 10U);
  for (;;) {
    const std::ptrdiff_t count = source.Read(buffer);
    if (count < 0) return TzFileSystem::Failed();
    if (count == 0) return target.Close();
    const auto piece = std::span(buffer).first(static_cast<std::size_t>(count));
    if (const TzErrorCodeEnum result = target.Write(piece); result != kTzSuccess) return result;
  }
}

TzNodeKind KindOf(const TzStagedNode& node) {
  return node.IsFolder() ? TzNodeKind::Folder : TzNodeKind::File;
}

}  // namespace

/// A staged scratch folder. One that was deleted is made again as one.
struct TzStagedFileSystem::Scratch {
  explicit Scratch(TzPath folder) : path(std::move(folder)) {}

  TzPath path;
  bool stands = true;
  TzStagedTree tree;
};

/// A place in a scratch folder.
struct TzStagedFileSystem::Spot {
  Scratch& scratch;
  std::string_view path;

  [[nodiscard]] bool IsTop() const { return path.find_first_not_of('/') == std::string_view::npos; }
  /// False, with `errno` set, if nothing can.
  [[nodiscard]] bool CanHoldAnything() const {
    const bool isTooLong = scratch.path.GetNative().size() + path.size() >= PATH_MAX;
    errno = isTooLong ? ENAMETOOLONG : ENOENT;
    return scratch.stands && !isTooLong;
  }
  /// Null, with `errno` set, if nothing stands there.
  [[nodiscard]] TzStagedNode* Find() const { return CanHoldAnything() ? scratch.tree.Find(path) : nullptr; }
  /// Puts a new node there, as `TzStagedTree::Put` does.
  TzStagedNode* Put(std::unique_ptr<TzStagedNode> node) const {
    return CanHoldAnything() ? scratch.tree.Put(path, std::move(node)) : nullptr;
  }
};

TzStagedFileSystem::TzStagedFileSystem(TzFileSystem& underlying) : disk(underlying) {}

TzStagedFileSystem::~TzStagedFileSystem() = default;

bool TzStagedFileSystem::IsStaged(const TzPath& path) {
  const std::shared_lock lock(mutex);
  return std::any_of(scratches.begin(), scratches.end(), [&path](const auto& scratch) {
    return FindBelow(scratch->path.GetNative(), path.GetNative()).has_value();
  });
}

TzStagedFileSystem::Spot TzStagedFileSystem::FindSpot(const TzPath& path) {
  for (const auto& scratch : scratches) {
    const auto below = FindBelow(scratch->path.GetNative(), path.GetNative());
    if (below.has_value()) return {*scratch, *below};
  }
  throw std::logic_error("the path leads into a scratch folder");
}

TzPath TzStagedFileSystem::MakeStoragePath(const Scratch& scratch) {
  return TzPath::FromNative(scratch.path.GetNative() + "/" + std::to_string(++storedCount));
}

TzNodeKind TzStagedFileSystem::GetKind(const TzPath& path) {
  if (!IsStaged(path)) return disk.GetKind(path);
  const std::shared_lock lock(mutex);
  const TzStagedNode* node = FindSpot(path).Find();
  return node != nullptr ? KindOf(*node) : TzNodeKind::Absent;
}

TzErrorCodeEnum TzStagedFileSystem::List(const TzPath& folder, std::vector<TzListedNode>& entries) {
  if (!IsStaged(folder)) return disk.List(folder, entries);
  const std::shared_lock lock(mutex);
  entries.clear();
  TzStagedNode* node = FindSpot(folder).Find();
  if (node == nullptr) return Failed();
  if (!node->IsFolder()) return FailWith(ENOTDIR);
  entries.reserve(node->AsFolder()->size());
  for (const auto& [name, child] : *node->AsFolder()) {
    std::string path;
    path.reserve(folder.GetNative().size() + 1 + name.size());
    path.append(folder.GetNative()).append("/").append(name);
    entries.push_back({TzPath::FromNative(std::move(path)), KindOf(*child)});
  }
  return kTzSuccess;
}

TzErrorCodeEnum TzStagedFileSystem::MakeFolder(const TzPath& folder) {
  if (!IsStaged(folder)) return disk.MakeFolder(folder);
  const std::unique_lock lock(mutex);
  const Spot spot = FindSpot(folder);
  if (spot.IsTop() && !spot.scratch.stands) {
    const TzErrorCodeEnum made = disk.MakeFolder(spot.scratch.path);
    spot.scratch.stands = made == kTzSuccess;
    return made;
  }
  if (const TzStagedNode* node = spot.Find(); node != nullptr) {
    return node->IsFolder() ? kTzSuccess : FailWith(EEXIST);
  }
  return spot.Put(std::make_unique<TzStagedNode>()) != nullptr ? kTzSuccess : Failed();
}

TzErrorCodeEnum TzStagedFileSystem::Delete(const TzPath& path) {
  if (!IsStaged(path)) {
    ClearScratchesBelow(path);
    return disk.Delete(path);
  }
  // What was taken goes after the lock: it may be many files of the disk.
  std::unique_ptr<TzStagedNode> taken;
  const std::unique_lock lock(mutex);
  const Spot spot = FindSpot(path);
  if (spot.IsTop()) return Clear(spot.scratch);
  if (spot.Find() != nullptr) taken = spot.scratch.tree.Take(spot.path);
  return taken != nullptr || errno == ENOENT ? kTzSuccess : Failed();
}

void TzStagedFileSystem::ClearScratchesBelow(const TzPath& folder) {
  const std::unique_lock lock(mutex);
  for (const auto& scratch : scratches) {
    if (scratch->stands && FindBelow(folder.GetNative(), scratch->path.GetNative())) {
      static_cast<void>(Clear(*scratch));
    }
  }
}

TzErrorCodeEnum TzStagedFileSystem::Clear(Scratch& scratch) {
  scratch.stands = false;
  scratch.tree.Clear();
  return disk.Delete(scratch.path);
}

std::unique_ptr<TzStagedNode> TzStagedFileSystem::ShareContent(const TzPath& source, Scratch& target) {
  auto shared = std::make_unique<TzStagedNode>();
  const auto scratch = std::find_if(scratches.begin(), scratches.end(), [&source](const auto& candidate) {
    return FindBelow(candidate->path.GetNative(), source.GetNative()).has_value();
  });
  // What lies in another scratch folder goes with that one, so it can't be shared.
  if (scratch == scratches.end() || scratch->get() != &target) {
    const TzPath real = scratch == scratches.end() ? source : FindRealFile(FindSpot(source));
    const TzPath place = MakeStoragePath(target);
    if (real.IsEmpty() || disk.Copy(real, place, TzCopyMode::FailIfExists) != kTzSuccess) return nullptr;
    shared->content = std::make_shared<const TzStoredFile>(place);
    return shared;
  }
  const TzStagedNode* node = FindSpot(source).Find();
  if (node == nullptr) return nullptr;
  if (node->IsFolder()) {
    errno = EISDIR;
    return nullptr;
  }
  if (const auto* stored = std::get_if<TzStagedNode::Stored>(&node->content)) shared->content = *stored;
  if (const auto* held = std::get_if<TzHeldEntry>(&node->content)) shared->content = *held;
  shared->unpacked = node->unpacked;
  return shared;
}

TzErrorCodeEnum TzStagedFileSystem::Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) {
  if (!IsStaged(target)) {
    if (!IsStaged(source)) return disk.Copy(source, target, mode);
    const TzPath real = GetRealFile(source);
    return real.IsEmpty() ? Failed() : disk.Copy(real, target, mode);
  }
  const std::unique_lock lock(mutex);
  const Spot spot = FindSpot(target);
  auto copy = ShareContent(source, spot.scratch);
  if (copy == nullptr) return Failed();
  if (const TzStagedNode* standing = spot.Find(); standing != nullptr) {
    if (mode == TzCopyMode::FailIfExists || standing->IsFolder()) return FailWith(EEXIST);
    if (source == target) return kTzSuccess;
  }
  return spot.Put(std::move(copy)) != nullptr ? kTzSuccess : Failed();
}

TzErrorCodeEnum TzStagedFileSystem::Move(const TzPath& source, const TzPath& target) {
  if (!IsStaged(source) && !IsStaged(target)) return disk.Move(source, target);
  if (!IsStaged(source) || !IsStaged(target)) return FailWith(EXDEV);
  const std::unique_lock lock(mutex);
  const Spot from = FindSpot(source);
  const Spot to = FindSpot(target);
  if (&from.scratch != &to.scratch) return FailWith(EXDEV);
  if (!from.CanHoldAnything() || !to.CanHoldAnything()) return Failed();
  return from.scratch.tree.Move(from.path, to.path) ? kTzSuccess : Failed();
}

std::uint64_t TzStagedFileSystem::GetSize(const TzPath& file) {
  if (!IsStaged(file)) return disk.GetSize(file);
  const std::shared_lock lock(mutex);
  const TzStagedNode* node = FindSpot(file).Find();
  if (node == nullptr || node->IsFolder()) return 0;
  const auto* held = std::get_if<TzHeldEntry>(&node->content);
  return held != nullptr ? held->size
                         : disk.GetSize(std::get<TzStagedNode::Stored>(node->content)->GetPath());
}

bool TzStagedFileSystem::IsReadOnly(const TzPath& file) {
  if (!IsStaged(file)) return disk.IsReadOnly(file);
  const std::shared_lock lock(mutex);
  const TzStagedNode* node = FindSpot(file).Find();
  return node != nullptr && node->isReadOnly;
}

TzErrorCodeEnum TzStagedFileSystem::SetReadOnly(const TzPath& file, bool readOnly) {
  if (!IsStaged(file)) return disk.SetReadOnly(file, readOnly);
  const std::unique_lock lock(mutex);
  TzStagedNode* node = FindSpot(file).Find();
  if (node == nullptr) return Failed();
  node->isReadOnly = readOnly;
  return kTzSuccess;
}

std::unique_ptr<TzReadStream> TzStagedFileSystem::OpenRead(const TzPath& file) {
  if (!IsStaged(file)) return disk.OpenRead(file);
  const std::shared_lock lock(mutex);
  const TzStagedNode* node = FindSpot(file).Find();
  if (node == nullptr) return nullptr;
  if (node->IsFolder()) {
    errno = EISDIR;
    return nullptr;
  }
  const auto* held = std::get_if<TzHeldEntry>(&node->content);
  if (held != nullptr) return OpenHeld(*held);
  return disk.OpenRead(std::get<TzStagedNode::Stored>(node->content)->GetPath());
}

std::unique_ptr<TzWriteStream> TzStagedFileSystem::OpenWrite(const TzPath& file) {
  if (!IsStaged(file)) return disk.OpenWrite(file);
  const std::unique_lock lock(mutex);
  const Spot spot = FindSpot(file);
  const TzStagedNode* standing = spot.Find();
  if (standing != nullptr && standing->isReadOnly && !standing->IsFolder()) {
    errno = EACCES;
    return nullptr;
  }
  auto node = std::make_unique<TzStagedNode>();
  const TzPath place = MakeStoragePath(spot.scratch);
  auto stream = spot.scratch.stands ? disk.OpenWrite(place) : nullptr;
  if (stream == nullptr) return nullptr;
  node->content = std::make_shared<const TzStoredFile>(place);
  return spot.Put(std::move(node)) != nullptr ? std::move(stream) : nullptr;
}

TzErrorCodeEnum TzStagedFileSystem::MakeScratchFolder(const TzPath& folder) {
  if (IsStaged(folder)) return MakeFolder(folder);
  if (const TzErrorCodeEnum made = disk.MakeFolder(folder); made != kTzSuccess) return made;
  const std::unique_lock lock(mutex);
  scratches.push_back(std::make_unique<Scratch>(folder));
  return kTzSuccess;
}

std::shared_ptr<TzArchiveHold> TzStagedFileSystem::MakeHold(const TzPath& folder) {
  if (!IsStaged(folder)) return nullptr;
  const std::unique_lock lock(mutex);
  Scratch& scratch = FindSpot(folder).scratch;
  // Unpacking makes all folders that are missing; this one must stand before the archive can be kept in it.
  if (!scratch.stands) scratch.stands = disk.MakeFolders(scratch.path) == kTzSuccess;
  return std::make_shared<TzArchiveHold>(MakeStoragePath(scratch));
}

TzErrorCodeEnum TzStagedFileSystem::AddEntries(const TzPath& folder,
                                               const std::shared_ptr<const TzArchiveHold>& hold,
                                               std::span<const TzZipEntry> entries) {
  if (!IsStaged(folder)) return disk.AddEntries(folder, hold, entries);
  const auto isTooLong = [&folder](const TzZipEntry& entry) {
    return folder.GetNative().size() + 1 + entry.name.size() >= PATH_MAX;
  };
  if (std::any_of(entries.begin(), entries.end(), isTooLong)) return FailWith(ENAMETOOLONG);
  const std::unique_lock lock(mutex);
  TzStagedNode* node = FindSpot(folder).Find();
  if (node == nullptr) return Failed();
  if (!node->IsFolder() || !node->AsFolder()->empty())
    return FailWith(node->IsFolder() ? ENOTEMPTY : ENOTDIR);
  TzStagedTree::Fill(*node->AsFolder(), hold, entries);
  return kTzSuccess;
}

std::optional<TzHeldEntry> TzStagedFileSystem::GetHeldEntry(const TzPath& file) {
  if (!IsStaged(file)) return disk.GetHeldEntry(file);
  const std::shared_lock lock(mutex);
  const TzStagedNode* node = FindSpot(file).Find();
  const auto* held = node != nullptr ? std::get_if<TzHeldEntry>(&node->content) : nullptr;
  return held != nullptr ? std::optional(*held) : std::nullopt;
}

TzPath TzStagedFileSystem::GetRealFile(const TzPath& file) {
  if (!IsStaged(file)) return disk.GetRealFile(file);
  const std::unique_lock lock(mutex);
  return FindRealFile(FindSpot(file));
}

TzPath TzStagedFileSystem::FindRealFile(const Spot& spot) {
  TzStagedNode* node = spot.Find();
  if (node == nullptr) return {};
  if (node->IsFolder()) {
    errno = EISDIR;
    return {};
  }
  if (const auto* stored = std::get_if<TzStagedNode::Stored>(&node->content)) return (*stored)->GetPath();
  if (node->unpacked != nullptr) return node->unpacked->GetPath();
  auto unpacked = std::make_shared<const TzStoredFile>(MakeStoragePath(spot.scratch));
  const auto source = OpenHeld(std::get<TzHeldEntry>(node->content));
  const auto target = source != nullptr ? disk.OpenWrite(unpacked->GetPath()) : nullptr;
  if (target == nullptr || CopyAll(*source, *target) != kTzSuccess) return {};
  node->unpacked = std::move(unpacked);
  return node->unpacked->GetPath();
}
