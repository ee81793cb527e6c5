// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipInspection.h"

#include <stdexcept>

#include "host/files/TzFileSystem.h"
#include "host/files/TzZipExtractor.h"
#include "host/files/TzZipInflater.h"
#include "host/files/TzZipProgress.h"

namespace {

/// Hands everything on.
class PieceStream : public TzWriteStream {
 public:
  explicit PieceStream(const TzZipInspection::PieceHandler& handler) : take(handler) {}

  [[nodiscard]] TzErrorCodeEnum Write(std::span<const std::byte> bytes) override {
    take(bytes);
    return kTzSuccess;
  }
  [[nodiscard]] TzErrorCodeEnum Flush() override { return kTzSuccess; }
  [[nodiscard]] TzErrorCodeEnum Close() override { return kTzSuccess; }

 private:
  const TzZipInspection::PieceHandler& take;
};

}  // namespace

TzZipInspection::TzZipInspection() = default;

TzZipInspection::~TzZipInspection() = default;

TzZipFailure TzZipInspection::Open(const TzPath& archive) {
  if (auto failure = directory.Inspect(archive, faults)) return failure;
  progress = std::make_unique<TzZipProgress>("reading " + archive.GetFileName().GetUTF8String(),
                                             directory.GetPackedSize());
  inflater = std::make_unique<TzZipInflater>(directory.GetFile(), *progress);
  return {};
}

TzZipFailure TzZipInspection::Read(const TzZipEntry& entry, const PieceHandler& take) {
  if (entry.isFaulty) throw std::logic_error("a faulty entry isn't read");
  if (!progress->ReportIfDue()) return TzZipFailure::Cancelled();
  return inflater->Unpack(entry, std::make_unique<PieceStream>(take));
}

TzZipFailure TzZipInspection::VisitAll(const Visitor& visit, std::vector<TzZipFailure>& badFiles) {
  const auto visitWith = [&visit](TzZipInflater& reading, const TzZipEntry& entry) {
    return visit(entry, [&](const PieceHandler& take) {
      return take ? reading.Unpack(entry, std::make_unique<PieceStream>(take)) : reading.Check(entry);
    });
  };
  return TzZipExtractor(directory, *progress).VisitAll(visitWith, badFiles);
}
