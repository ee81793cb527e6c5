// SPDX-License-Identifier: Apache-2.0
#include "support/FileSystemUnderTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

std::ostream& operator<<(std::ostream& stream, FileSystemKind kind) {
  return stream << (kind == FileSystemKind::Disk ? "Disk" : "Staged");
}

FileSystemUnderTest::FileSystemUnderTest(FileSystemKind fileSystemKind) : kind(fileSystemKind) {
  if (kind == FileSystemKind::Disk) {
    files = std::make_unique<TzDiskFileSystem>();
  } else {
    files = std::make_unique<TzStagedFileSystem>(disk);
  }
  if (files->MakeFolder(Outside()) != kTzSuccess || files->MakeScratchFolder(folder) != kTzSuccess) {
    throw std::runtime_error("no folder for a test");
  }
  previous = TzFileSystem::Install(files.get());
}

FileSystemUnderTest::~FileSystemUnderTest() { TzFileSystem::Install(previous); }

std::vector<std::string> ListDisk(const TzPath& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(folder.GetNative())) {
    names.push_back(entry.path().native().substr(folder.GetNative().size() + 1));
  }
  std::ranges::sort(names);
  return names;
}

std::string ReadFromDisk(const TzPath& file) {
  const std::ifstream stream(file.GetNative(), std::ios::binary);
  EXPECT_TRUE(stream.is_open()) << file;
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

bool StandsOnDisk(const TzPath& path) { return fs::exists(fs::symlink_status(path.GetNative())); }
