// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <random>
#include <sstream>

#include "host/files/TzZipUtils.h"
#include "support/FileSystemUnderTest.h"
#include "support/RawZip.h"
#include "support/ReadArchive.h"
#include "support/RecordedProblems.h"

namespace {

constexpr int kOutsideFiles = 3;

std::string Prose(unsigned number, std::size_t size) {
  std::string prose;
  while (prose.size() < size) prose += "line " + std::to_string(number++ * 7919U) + "\n";
  prose.resize(size);
  return prose;
}

RawZip MakeArchive(int number) {
  const std::string page = Prose(static_cast<unsigned>(number), 3000);
  switch (number) {
    case 0:
      return {};
    case 1:
      return {{{.name = "a", .content = "stored"}, {.name = "b/"}, {.name = "b/c/", .deflate = true}}};
    case 2:
      return {{{.name = "d.htm", .content = page, .deflate = true}, {.name = "a/b/c", .content = page}}};
    default:
      return {{{.name = "c/a", .deflate = true}, {.name = "c/b", .content = "x", .deflate = true}}};
  }
}

/// The answer of an operation, with the reason why it failed.
std::string Answer(TzErrorCodeEnum result) {
  return result == kTzSuccess ? "done" : std::to_string(result) + " " + strerrorname_np(errno);
}

/// One of the two file systems that the same operations are done on. Paths are relative to its folder;
/// answers are text without a trace of where that is.
class Walker {
 public:
  explicit Walker(FileSystemKind kind) : tested(kind) {
    std::size_t size = 0;
    for (int number = 0; number < kOutsideFiles; ++number, size += 20'000) {
      WriteFile(Outside(number), Prose(static_cast<unsigned>(number), size));
    }
    for (int number = 0; number < 4; ++number) WriteFile(Archive(number), MakeArchive(number).Build());
  }

  [[nodiscard]] TzPath At(const std::string& path) const { return tested.Folder() / TzString(path); }
  [[nodiscard]] TzPath Outside(int number) const { return tested.Outside() / std::to_string(number); }
  [[nodiscard]] TzPath Archive(int number) const {
    return tested.Outside() / (std::to_string(number) + ".zip");
  }
  [[nodiscard]] TzFileSystem& Files() { return tested.Files(); }

  std::string Copy(const TzPath& source, const TzPath& target, TzCopyMode mode) {
    return Answer(Files().Copy(source, target, mode));
  }

  std::string Write(const std::string& path, std::string_view content) {
    const auto stream = Files().OpenWrite(At(path));
    if (stream == nullptr) return Answer(TzFileSystem::Failed());
    static_cast<void>(stream->Write(std::as_bytes(std::span(content))));
    return Answer(stream->Close());
  }

  /// Reads pieces of this size, as many as that or up to the end.
  std::string Read(const TzPath& path, std::size_t pieceSize, int pieces) {
    const auto stream = Files().OpenRead(path);
    if (stream == nullptr) return Answer(TzFileSystem::Failed());
    std::string content;
    std::string piece(pieceSize, '\0');
    for (int number = 0; number < pieces; ++number) {
      const std::ptrdiff_t count = stream->Read(std::as_writable_bytes(std::span(piece)));
      if (count < 0) return Answer(TzFileSystem::Failed());
      if (count == 0) return content + " and its end";
      content.append(piece, 0, static_cast<std::size_t>(count));
    }
    return content;
  }
  std::string ReadAll(const TzPath& path) { return Read(path, 10'000, 1000); }

  std::string List(const std::string& path) {
    std::vector<TzListedNode> entries;
    std::ostringstream text;
    text << Answer(Files().List(At(path), entries));
    for (const auto& [entry, kind] : entries) {
      text << ' ' << entry.GetNative().substr(tested.Folder().GetNative().size()) << static_cast<int>(kind);
    }
    return text.str();
  }

  std::string Look(const std::string& path) {
    std::ostringstream text;
    text << static_cast<int>(Files().GetKind(At(path))) << " size " << Files().GetSize(At(path))
         << " read-only " << Files().IsReadOnly(At(path));
    return text.str();
  }

  std::string ReadRealFile(const std::string& path) {
    const TzPath real = Files().GetRealFile(At(path));
    return real.IsEmpty() ? "none" : ReadFromDisk(real);
  }

  std::string Extract(int archive, const std::string& path) {
    const auto earlier = TzFileSystem::Install(&Files());
    const TzErrorCodeEnum result = TzZipUtils::ExtractFiles(Archive(archive), At(path));
    TzFileSystem::Install(earlier);
    return std::to_string(result);
  }

  /// Everything in the folder, with its content.
  std::string Tree(const std::string& path = {}) {
    std::string text = List(path);
    std::vector<TzListedNode> entries;
    static_cast<void>(Files().List(At(path), entries));
    for (const auto& entry : entries) {
      const std::string below = entry.path.GetNative().substr(tested.Folder().GetNative().size() + 1);
      text += "\n" + below + ": " + Look(below) + " ";
      text += entry.kind == TzNodeKind::Folder ? Tree(below) : ReadAll(entry.path);
    }
    return text;
  }

  /// The folder as an archive: names in their order, and the content of each.
  std::string Zip() {
    const auto earlier = TzFileSystem::Install(&Files());
    const TzPath target = tested.Outside() / "out.zip";
    EXPECT_EQ(TzZipUtils::ZipFiles({tested.Folder()}, target, tested.Folder(), 1, {}), kTzSuccess);
    TzFileSystem::Install(earlier);
    const ReadArchive archive(target);
    EXPECT_TRUE(archive.IsOpen());
    std::string text;
    for (const std::string& name : archive.Names()) text += name + ": " + archive.Content(name) + "\n";
    return text;
  }

 private:
  FileSystemUnderTest tested;
};

/// A long series of operations on both, the same for the same seed.
class Walk {
 public:
  explicit Walk(unsigned seed) : random(seed) {}

  void Step() {
    switch (Number(0, 15)) {
      case 0:
        return Same("make " + Path(), [&](Walker& on) { return Answer(on.Files().MakeFolder(on.At(path))); });
      case 1:
        return Same("make all of " + Path(),
                    [&](Walker& on) { return Answer(on.Files().MakeFolders(on.At(path))); });
      case 2:
        return Delete();
      case 3:
      case 4:
        return Copy();
      case 5:
        return Same("move " + Path() + " to " + Other(),
                    [&](Walker& on) { return Answer(on.Files().Move(on.At(path), on.At(other))); });
      case 6:
      case 7:
        return Write();
      case 8:
        return Same("read " + Path(), [&](Walker& on) { return on.ReadAll(on.At(path)); });
      case 9:
        return ReadPart();
      case 10:
        return Same("list " + Path(), [&](Walker& on) { return on.List(path); });
      case 11:
        return Same("look at " + Path(), [&](Walker& on) { return on.Look(path); });
      case 12:
        return SetReadOnly();
      case 13:
        return Same("real file of " + Path(), [&](Walker& on) { return on.ReadRealFile(path); });
      default:
        return Extract();
    }
  }

  void ExpectSameTrees() {
    Same("tree", [](Walker& on) { return on.Tree(); });
  }
  void ExpectSameArchives() {
    Same("archive", [](Walker& on) { return on.Zip(); });
  }

 private:
  int Number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random); }

  std::string RandomPath() {
    static constexpr const char* kNames[] = {"a", "b", "c", "d.htm"};
    std::string text = kNames[Number(0, 3)];
    for (int depth = Number(0, 5); depth > 2; --depth) {
      if (Number(0, 15) == 0) text += "/..";
      text += std::string("/") + kNames[Number(0, 3)];
    }
    if (Number(0, 30) == 0) text += std::string(static_cast<std::size_t>(Number(250, 256)), 'n');
    return text;
  }
  const std::string& Path() { return path = RandomPath(); }
  const std::string& Other() { return other = RandomPath(); }

  void Delete() {
    // Most deletions are of something small, so that the trees grow.
    do {
      Path();
    } while (disk.Files().GetKind(disk.At(path)) == TzNodeKind::Folder && Number(0, 3) != 0);
    Same("delete " + path, [&](Walker& on) { return Answer(on.Files().Delete(on.At(path))); });
  }

  void Copy() {
    const TzCopyMode mode = Number(0, 1) == 0 ? TzCopyMode::FailIfExists : TzCopyMode::Replace;
    const int outside = Number(0, kOutsideFiles);
    switch (Number(0, 3)) {
      case 0:
        return Same("copy from outside to " + Path(),
                    [&](Walker& on) { return on.Copy(on.Outside(outside), on.At(path), mode); });
      case 1:
        return Same("copy to outside from " + Path(), [&](Walker& on) {
          const std::string answer = on.Copy(on.At(path), on.Outside(outside), mode);
          return answer + on.ReadAll(on.Outside(outside));
        });
      default:
        return Same("copy " + Path() + " to " + Other(),
                    [&](Walker& on) { return on.Copy(on.At(path), on.At(other), mode); });
    }
  }

  void Write() {
    Path();
    // Nothing keeps a superuser from writing to a file of the disk.
    if (disk.Files().IsReadOnly(disk.At(path))) return;
    const std::string content =
        Prose(static_cast<unsigned>(Number(0, 99)), static_cast<std::size_t>(Number(0, 40'000)));
    Same("write " + path, [&](Walker& on) { return on.Write(path, content); });
  }

  void ReadPart() {
    const int pieces = Number(1, 3);
    const auto size = static_cast<std::size_t>(Number(1, 2000));
    Same("read a part of " + Path(), [&](Walker& on) { return on.Read(on.At(path), size, pieces); });
  }

  void SetReadOnly() {
    const bool readOnly = Number(0, 1) == 1;
    Path();
    // A folder of the disk may then refuse what is done in it.
    if (disk.Files().GetKind(disk.At(path)) == TzNodeKind::Folder) return;
    Same("set read-only " + path,
         [&](Walker& on) { return Answer(on.Files().SetReadOnly(on.At(path), readOnly)); });
  }

  void Extract() {
    const int archive = Number(0, 3);
    // Through ".." a folder that is absent may turn out to stand once its parents do.
    while (Path().find("..") != std::string::npos) continue;
    Same("extract to " + path, [&](Walker& on) { return on.Extract(archive, path); });
  }

  template <typename Operation>
  void Same(const std::string& what, Operation operation) {
    const std::string onDisk = operation(disk);
    const std::string onStaged = operation(staged);
    EXPECT_TRUE(onDisk == onStaged) << what << "\n  disk:   " << onDisk.substr(0, 300)
                                    << "\n  staged: " << onStaged.substr(0, 300);
  }

  std::mt19937 random;
  RecordedProblems silent;
  Walker disk{FileSystemKind::Disk};
  Walker staged{FileSystemKind::Staged};
  std::string path;
  std::string other;
};

TEST(StagedFileSystemWalk, AnswersAsTheDiskDoesWhateverIsDone) {
  constexpr int kSteps = 1000;
  for (unsigned seed = 0; seed < 4; ++seed) {
    Walk walk(seed);
    for (int step = 0; step < kSteps; ++step) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
      walk.Step();
      if (step % 50 == 0) walk.ExpectSameTrees();
      if (testing::Test::HasFailure()) return;
    }
    SCOPED_TRACE("the end of seed " + std::to_string(seed));
    walk.ExpectSameTrees();
    walk.ExpectSameArchives();
    if (testing::Test::HasFailure()) return;
  }
}

}  // namespace
