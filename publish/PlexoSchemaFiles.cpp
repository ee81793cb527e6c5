// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoSchemaFiles.h"

#include "core/PlexoInstallFolder.h"
#include "host/files/TzFileUtil.h"

namespace {

bool IsFolder(const TzPath& path) { return TzFile(path).GetAttribute(TzFileAttribute::IsFolder); }

int CopyFile(const TzPath& source, const TzPath& target, bool failIfExists, bool clearReadOnly) {
  if (!TzFileUtil::FileCopy(source, target, failIfExists)) return 1;
  if (clearReadOnly) TzFile(target).SetAttribute(TzFileAttribute::ReadOnly, false);
  return 0;
}

/// Copies a folder into another, under its own name. What can't be copied is left out.
void CopyFolderTree(const TzPath& source, const TzPath& target) {
  const TzPath copy = target / source.GetFileName();
  std::vector<TzPath> entries;
  // A SCO's stray file of this name would keep the schema documents out of the package.
  if (TzFile(copy).GetAttribute(TzFileAttribute::IsFile)) TzFileUtil::DeleteFile(copy);
  if (!TzFile(copy).MakeDirectory(true) ||
      TzFileUtil::GetFileNamesInFolderAtPath(source, entries, true, true) != 0) {
    return;
  }
  for (const TzPath& entry : entries) {
    if (IsFolder(entry)) {
      CopyFolderTree(entry, copy);
      continue;
    }
    const TzPath file = copy / entry.GetFileName();
    // A read-only file of an earlier publish would keep the newer one out.
    TzFile(file).SetAttribute(TzFileAttribute::ReadOnly, false);
    CopyFile(entry, file, false, true);
  }
}

/// Copies what is in a folder. One file or folder that can't be copied doesn't fail the rest.
int CopyFolderContents(const TzPath& source, const TzPath& target) {
  if (!IsFolder(source) || !IsFolder(target)) return 1;
  std::vector<TzPath> entries;
  if (TzFileUtil::GetFileNamesInFolderAtPath(source, entries, true, true) != 0) return 1;
  for (const TzPath& entry : entries) {
    if (IsFolder(entry)) {
      CopyFolderTree(entry, target);
    } else if (TzFile(entry).Exists()) {
      CopyFile(entry, target / entry.GetFileName(), false, true);
    }
  }
  return 0;
}

}  // namespace

int CopySchemaFiles(const PlexoCourseModel& course) {
  const TzPath schemas = GetSchemaInstallFolder();
  const TzPath workingFolder = course.GetWorkingFolder();
  if (course.GetScormVersion() == "2004") {
    return CopyFolderContents(schemas / "2004" / "static" / "3rd", workingFolder);
  }
  const TzPath source = schemas / "1_2" / "static";
  for (std::size_t index = 0; index < course.GetScorm12SchemaFileCount(); ++index) {
    const TzString name = course.GetScorm12SchemaFile(index);
    if (CopyFile(source / name, workingFolder / name, false, true) != 0) return 1;
  }
  return 0;
}
