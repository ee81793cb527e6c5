// SPDX-License-Identifier: Apache-2.0
#include "support/OwnInstallTree.h"

#include <filesystem>

namespace fs = std::filesystem;

void LayOwnInstallTree() {
  const fs::path own = fs::read_symlink("/proc/self/exe").parent_path() / "Templates";
  const fs::path root = own / "Publish/Plexo";
  const fs::path built = fs::path(PLEXO_BIN) / "Templates/Publish/Plexo";
  fs::remove_all(own);
  fs::create_directories(root);
  fs::copy(built / "SCORM", root / "SCORM", fs::copy_options::recursive);
  fs::copy(built / "standard.js", root / "standard.js");
  fs::create_directory_symlink(built / "PDF_Tracking", root / "PDF_Tracking");
  fs::create_directory_symlink(built / "Players", root / "Players");
}
