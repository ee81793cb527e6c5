// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFile.h"

#include "host/files/TzFileSystem.h"
#include "host/files/TzFileUtil.h"

bool TzFile::Exists() const { return TzFileSystem::Current().GetKind(path) != TzNodeKind::Absent; }

bool TzFile::GetAttribute(TzFileAttribute attribute) const {
  TzFileSystem& files = TzFileSystem::Current();
  switch (attribute) {
    case TzFileAttribute::IsFile:
      return files.GetKind(path) == TzNodeKind::File;
    case TzFileAttribute::IsFolder:
      return files.GetKind(path) == TzNodeKind::Folder;
    case TzFileAttribute::ReadOnly:
      return files.IsReadOnly(path);
  }
  return false;
}

bool TzFile::SetAttribute(TzFileAttribute attribute, bool value) const {
  return attribute == TzFileAttribute::ReadOnly &&
         TzFileSystem::Current().SetReadOnly(path, value) == kTzSuccess;
}

bool TzFile::MakeDirectory(bool withParents) const { return TzFileUtil::CreateDirectory(path, withParents); }
