// SPDX-License-Identifier: Apache-2.0
#include "fuzz/FuzzFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "host/files/TzFileUtil.h"

namespace {

/// A folder of the disk: the component is to meet files as they come from an author.
const TzPath& GetFolder() {
  static const TzPath folder = [] {
    if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 0);
    TzPath made = TzFileUtil::CreateTempDiskDir("fuzz");
    // Behind the making, so that what it works on goes after it.
    std::atexit(TzFileUtil::DeleteAllTempFilesCreated);
    return made;
  }();
  return folder;
}

}  // namespace

TzPath FuzzFolder::Write(const char* name, const std::uint8_t* data, std::size_t size) {
  TzPath path = GetFolder() / name;
  std::ofstream stream(path.GetNative(), std::ios::binary);
  stream.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  stream.close();
  FuzzRequire(stream.good(), "an input can be written to the folder for temporary files");
  return path;
}

void FuzzRequire(bool holds, const char* invariant) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", invariant);
  std::abort();
}
