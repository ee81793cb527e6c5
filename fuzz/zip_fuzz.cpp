// SPDX-License-Identifier: Apache-2.0
// A package as an author chooses it: inspected, unpacked on the disk, and taken into a staged folder, all by
// the same rules.
#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "fuzz/FuzzFolder.h"
#include "host/files/TzFileSystem.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzZipInspection.h"
#include "host/files/TzZipUtils.h"

namespace {

/// The files and folders below this one, with the sizes of files, each on a line.
void Describe(const TzPath& folder, std::size_t prefixBytes, std::string& tree) {
  std::vector<TzListedNode> nodes;
  FuzzRequire(TzFileSystem::Current().List(folder, nodes) == kTzSuccess, "what was unpacked can be listed");
  for (const TzListedNode& node : nodes) {
    tree += node.path.GetNative().substr(prefixBytes);
    if (node.kind == TzNodeKind::Folder) {
      Describe(node.path, prefixBytes, tree);
    } else {
      tree += ' ' + std::to_string(TzFileSystem::Current().GetSize(node.path)) + '\n';
    }
  }
}

/// What the archive becomes in this folder, which is gone again afterwards. Empty if it is refused.
std::string Unpack(const TzPath& archive, const TzPath& folder) {
  std::string tree;
  if (TzZipUtils::ExtractFiles(archive, folder) == kTzSuccess) {
    tree = "unpacked\n";
    Describe(folder, folder.GetNative().size(), tree);
    FuzzRequire(TzFileUtil::DeleteDirectory(folder, true), "what was unpacked can be deleted");
  }
  FuzzRequire(TzFileSystem::Current().GetKind(folder) == TzNodeKind::Absent,
              "a refused archive leaves nothing");
  return tree;
}

bool IsSound(const TzPath& archive) {
  TzZipInspection inspection;
  if (inspection.Open(archive) || !inspection.GetFaults().empty()) return false;
  const auto& entries = inspection.GetEntries();
  return std::all_of(entries.begin(), entries.end(), [&](const TzZipEntry& entry) {
    FuzzRequire(("/" + entry.name + "/").find("/../") == std::string::npos, "a name stays in its folder");
    return entry.isFolder || !inspection.Read(entry, [](std::span<const std::byte>) {});
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const TzPath archive = FuzzFolder::Write("package.zip", data, size);
  static const TzPath staged = TzFileUtil::CreateTempDir("staged");
  const std::string unpacked = Unpack(archive, archive.GetParentTzPath() / "unpacked");
  FuzzRequire(unpacked == Unpack(archive, staged / "unpacked"), "both file systems hold the same");
  FuzzRequire(unpacked.empty() != IsSound(archive), "an archive is unpacked if nothing is wrong with it");
  return 0;
}
