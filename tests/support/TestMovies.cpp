// SPDX-License-Identifier: Apache-2.0
#include "support/TestMovies.h"

#include <filesystem>

namespace fs = std::filesystem;

TzPath TestMovie(const std::string& name) { return TzPath::FromNative(PLEXO_MOVIES "/" + name + ".swf"); }

void LinkInstalledPlayer() {
  const fs::path players = "Templates/Publish/Plexo/Players";
  const fs::path own = fs::read_symlink("/proc/self/exe").parent_path() / players;
  fs::create_directories(own.parent_path());
  if (fs::is_symlink(fs::symlink_status(own))) fs::remove(own);
  fs::create_directory_symlink(fs::path(PLEXO_BIN) / players, own);
}
