// SPDX-License-Identifier: Apache-2.0
#include "support/FaultyFileSystem.h"

#include <cerrno>

namespace {

class FaultyReadStream : public TzReadStream {
 public:
  FaultyReadStream(FaultyFileSystem& faulty, std::unique_ptr<TzReadStream> real)
      : faults(faulty), stream(std::move(real)) {}
  std::ptrdiff_t Read(std::span<std::byte> buffer) override {
    return faults.Fails(FaultyFileSystem::Operation::Read) ? -1 : stream->Read(buffer);
  }

 private:
  FaultyFileSystem& faults;
  std::unique_ptr<TzReadStream> stream;
};

class FaultyWriteStream : public TzWriteStream {
 public:
  FaultyWriteStream(FaultyFileSystem& faulty, std::unique_ptr<TzWriteStream> real)
      : faults(faulty), stream(std::move(real)) {}
  TzErrorCodeEnum Write(std::span<const std::byte> bytes) override {
    return faults.Fails(FaultyFileSystem::Operation::Write) ? kTzMachineFailure : stream->Write(bytes);
  }
  TzErrorCodeEnum Flush() override { return stream->Flush(); }
  TzErrorCodeEnum Close() override {
    return faults.Fails(FaultyFileSystem::Operation::Close) ? kTzMachineFailure : stream->Close();
  }

 private:
  FaultyFileSystem& faults;
  std::unique_ptr<TzWriteStream> stream;
};

}  // namespace

FaultyFileSystem::FaultyFileSystem(Operation operation, int firstFailure, int errorNumber)
    : files(TzFileSystem::Current()),
      previous(TzFileSystem::Install(this)),
      failing(operation),
      callsBefore(firstFailure - 1),
      error(errorNumber) {}

FaultyFileSystem::~FaultyFileSystem() { TzFileSystem::Install(previous); }

bool FaultyFileSystem::Fails(Operation called) {
  const std::lock_guard guard(mutex);
  if (called != failing || callsBefore-- > 0) return false;
  callsBefore = 0;
  errno = error;
  return true;
}

TzErrorCodeEnum FaultyFileSystem::List(const TzPath& folder, std::vector<TzListedNode>& entries) {
  return Fails(Operation::List) ? kTzMachineFailure : files.List(folder, entries);
}
TzErrorCodeEnum FaultyFileSystem::MakeFolder(const TzPath& folder) {
  return Fails(Operation::MakeFolder) ? kTzMachineFailure : files.MakeFolder(folder);
}
TzErrorCodeEnum FaultyFileSystem::MakeScratchFolder(const TzPath& folder) {
  return Fails(Operation::MakeFolder) ? kTzMachineFailure : files.MakeScratchFolder(folder);
}
TzErrorCodeEnum FaultyFileSystem::AddEntries(const TzPath& folder,
                                             const std::shared_ptr<const TzArchiveHold>& hold,
                                             std::span<const TzZipEntry> entries) {
  return Fails(Operation::AddEntries) ? kTzMachineFailure : files.AddEntries(folder, hold, entries);
}
TzErrorCodeEnum FaultyFileSystem::Delete(const TzPath& path) {
  return Fails(Operation::Delete) ? kTzMachineFailure : files.Delete(path);
}
TzErrorCodeEnum FaultyFileSystem::Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) {
  return Fails(Operation::Copy) ? kTzMachineFailure : files.Copy(source, target, mode);
}
TzErrorCodeEnum FaultyFileSystem::Move(const TzPath& source, const TzPath& target) {
  return Fails(Operation::Move) ? kTzMachineFailure : files.Move(source, target);
}

std::unique_ptr<TzReadStream> FaultyFileSystem::OpenRead(const TzPath& file) {
  if (Fails(Operation::OpenRead)) return nullptr;
  auto stream = files.OpenRead(file);
  return stream != nullptr ? std::make_unique<FaultyReadStream>(*this, std::move(stream)) : nullptr;
}

std::unique_ptr<TzWriteStream> FaultyFileSystem::OpenWrite(const TzPath& file) {
  if (Fails(Operation::OpenWrite)) return nullptr;
  auto stream = files.OpenWrite(file);
  return stream != nullptr ? std::make_unique<FaultyWriteStream>(*this, std::move(stream)) : nullptr;
}
