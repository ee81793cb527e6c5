// SPDX-License-Identifier: Apache-2.0
#include "support/TestMovies.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

TzPath TestMovie(const std::string& name) { return TzPath::FromNative(PLEXO_MOVIES "/" + name + ".swf"); }

void LinkInstalledPlayer() {
  const fs::path players = "Templates/Publish/Plexo/Players";
  const fs::path own = fs::read_symlink("/proc/self/exe").parent_path() / players;
  fs::create_directories(own.parent_path());
  // Tests that run side by side find the link of the first.
  std::error_code isThere;
  fs::create_directory_symlink(fs::path(PLEXO_BIN) / players, own, isThere);
}
