// SPDX-License-Identifier: Apache-2.0
#include "support/SmallDisk.h"

#include <sched.h>
#include <sys/mount.h>

#include <string>

SmallDisk::SmallDisk(std::size_t bytes) {
  const std::string room = "size=" + std::to_string(bytes);
  // Nobody else sees it, and it goes with this process whatever becomes of it.
  isMounted = unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
              mount("tmpfs", Path().GetNative().c_str(), "tmpfs", 0, room.c_str()) == 0;
}

SmallDisk::~SmallDisk() {
  if (isMounted) umount2(Path().GetNative().c_str(), MNT_DETACH);
}
