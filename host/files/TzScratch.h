// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <mutex>
#include <optional>
#include <vector>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzFileSystem.h"
#include "host/files/TzPath.h"

/// The temporary folders of this process, each for its user alone, under one private folder in TMPDIR (else
/// /tmp). That folder holds a lock held while the process runs: a folder whose lock nobody holds was left by
/// a killed process, and goes when another process of the same user makes its own.
class TzScratch {
 public:
  static TzScratch& Instance();

  /// A new empty folder, its name made from the stem. Empty path, with a problem reported, if that fails.
  TzPath MakeFolder(const TzString& stem);
  /// Likewise, a folder of the disk: what stands in it can be read by its path.
  TzPath MakeDiskFolder(const TzString& stem);
  /// Likewise one that this user can work in too. For processes of root, who may give folders away.
  TzPath MakeDiskFolderFor(const TzString& stem, uid_t user, gid_t group);
  /// Lets the next `MakeFolder` take this folder, which `DeleteAll` then leaves alone.
  void KeepNextAt(const TzPath& folder);
  /// Deletes everything that `MakeFolder` made, and the private folder.
  void DeleteAll();

 private:
  using Make = TzErrorCodeEnum (TzFileSystem::*)(const TzPath& folder);

  TzPath MakeBelowRoot(const TzString& stem, Make make);
  bool MakeRoot();

  std::mutex mutex;
  TzPath root;
  TzFileDescriptor lock;
  std::vector<TzPath> made;
  std::optional<TzPath> keptNext;
};
