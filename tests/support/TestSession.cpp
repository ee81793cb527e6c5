// SPDX-License-Identifier: Apache-2.0
#include "support/TestSession.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <stdexcept>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "host/files/TzDiskFileSystem.h"

namespace fs = std::filesystem;

namespace {

/// Lets the tests of a program run on the plain disk, where PLEXO_TEST_FILES says so: the component must not
/// know the difference.
[[maybe_unused]] const bool isOnDisk = [] {
  static TzDiskFileSystem disk;
  const char* files = std::getenv("PLEXO_TEST_FILES");
  if (files == nullptr || std::string_view(files) != "disk") return false;
  TzFileSystem::Install(&disk);
  return true;
}();

}  // namespace

TestSession::TestSession(TzHeadlessUI::Script script)
    : ui(script),
      previous(TzSession::Install({.dictionary = &dictionary,
                                   .userInterface = &ui,
                                   .windows = &windows,
                                   .problems = this,
                                   .console = this})) {
  PlexoCourseModel* course = GetCourseModel();
  course->ResetManifestDetails();
  course->SetCourseType(PlexoCourseType::LINEAR);
  course->SetCourseIdentifier({});
  course->SetCourseTitle({});
  course->SetCourseDescription({});
  course->SetCourseDuration({});
  course->SetCourseSubject({});
  GetLinearCourseModel()->Clear();
  GetModuleCourseModel()->Clear();
}

TestSession::~TestSession() { TzSession::Install(previous); }

std::vector<std::string> TestSession::BoxTexts() const {
  std::vector<std::string> texts;
  for (const TzShownBox& box : ui.GetShownBoxes()) texts.push_back(box.text.GetUTF8String());
  return texts;
}

TestFolder::TestFolder() : TestFolder(TzPath::FromNative(fs::temp_directory_path().native())) {}

TestFolder::TestFolder(const TzPath& parent) {
  std::string name = (parent / "plexo-test-XXXXXX").GetNative();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for a test");
  path = TzPath::FromNative(name);
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  fs::remove_all(path.GetNative(), ignored);
}

TzPath TestFolder::Write(const std::string& name, std::string_view content) const {
  TzPath file = path / name;
  // Not through the file system in force: its faults are meant for what is tested.
  fs::create_directories(file.GetParentTzPath().GetNative());
  std::ofstream stream(file.GetNative(), std::ios::binary);
  stream << content << std::flush;
  if (!stream) throw std::runtime_error("can't write a file for a test");
  return file;
}

std::string ReadFile(const TzPath& file) {
  const auto stream = TzFileSystem::Current().OpenRead(file);
  EXPECT_NE(stream, nullptr) << file;
  std::string content;
  if (stream == nullptr) return content;
  std::vector<char> buffer(std::size_t{64} << 10U);
  for (std::ptrdiff_t count = 1; count > 0;) {
    count = stream->Read(std::as_writable_bytes(std::span(buffer)));
    EXPECT_GE(count, 0) << file;
    if (count > 0) content.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return content;
}

void WriteFile(const TzPath& file, std::string_view content) {
  TzFileSystem& files = TzFileSystem::Current();
  EXPECT_EQ(files.MakeFolders(file.GetParentTzPath()), kTzSuccess) << file;
  const auto stream = files.OpenWrite(file);
  const bool isWritten = stream != nullptr &&
                         stream->Write(std::as_bytes(std::span(content))) == kTzSuccess &&
                         stream->Close() == kTzSuccess;
  EXPECT_TRUE(isWritten) << file;
}

namespace {

void ListInto(const TzPath& folder, std::size_t prefix, std::vector<std::string>& names) {
  std::vector<TzListedNode> entries;
  EXPECT_EQ(TzFileSystem::Current().List(folder, entries), kTzSuccess) << folder;
  for (const auto& [path, kind] : entries) {
    const bool isFolder = kind == TzNodeKind::Folder;
    names.push_back(path.GetNative().substr(prefix) + (isFolder ? "/" : ""));
    if (isFolder) ListInto(path, prefix, names);
  }
}

}  // namespace

std::vector<std::string> ListTree(const TzPath& folder) {
  std::vector<std::string> names;
  ListInto(folder, folder.GetNative().size() + 1, names);
  std::ranges::sort(names);
  return names;
}
