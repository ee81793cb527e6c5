// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzFileUtil.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "host/files/TzFileSystem.h"
#include "host/files/TzScratch.h"
#include "host/files/TzZipName.h"
#include "host/session/TzProblem.h"

namespace {

std::uint64_t noSpaceCount = 0;

/// True on success. Tells the session about a failure of the machine; that something is absent or in the way
/// is an ordinary answer.
bool Succeeded(TzErrorCodeEnum result, const TzPath& path, std::string_view action) {
  if (result != kTzMachineFailure) return result == kTzSuccess;
  const int error = errno;
  if (error == ENOSPC || error == EDQUOT || error == EFBIG) ++noSpaceCount;
  TzReportSystemProblem(error, path.GetNative(), action);
  return false;
}

std::string GetEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string ReadText(const TzPath& path) {
  std::string text;
  if (const auto stream = TzFileSystem::Current().OpenRead(path); stream != nullptr) {
    constexpr std::size_t kMostBytes = std::size_t{64} << 10U;
    text.resize(kMostBytes);
    text.resize(static_cast<std::size_t>(
        std::max<std::ptrdiff_t>(stream->Read(std::as_writable_bytes(std::span(text))), 0)));
  }
  return text;
}

/// The value of the line XDG_DOCUMENTS_DIR="..." in the desktop's list of user folders, which is a fragment
/// of shell: the value is absolute or starts with $HOME, and a back-slash makes the next character plain.
std::optional<std::string> FindDocumentsFolder(std::string_view settings, const std::string& home) {
  constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=\"";
  constexpr std::string_view kHome = "$HOME";
  while (!settings.empty()) {
    const std::size_t end = std::min(settings.find('\n'), settings.size());
    std::string_view line = settings.substr(0, end);
    settings.remove_prefix(std::min(end + 1, settings.size()));
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!line.starts_with(kKey)) continue;
    line.remove_prefix(kKey.size());
    std::string folder;
    if (line.starts_with(kHome)) {
      folder = home;
      line.remove_prefix(kHome.size());
    }
    for (std::size_t index = 0; index < line.size() && line[index] != '"'; ++index) {
      if (line[index] == '\\' && index + 1 < line.size()) ++index;
      folder += line[index];
    }
    if (folder.starts_with('/')) return folder;
  }
  return std::nullopt;
}

/// Where the extension's point stands in a name; the point that hides a file is none.
std::size_t FindExtension(const std::u16string& name) {
  const std::size_t point = name.rfind(u'.');
  return point == 0 ? std::u16string::npos : point;
}

}  // namespace

TzPath TzFileUtil::CreateTempDir(const TzString& stem) { return TzScratch::Instance().MakeFolder(stem); }

TzPath TzFileUtil::CreateTempDiskDir(const TzString& stem) {
  return TzScratch::Instance().MakeDiskFolder(stem);
}

void TzFileUtil::KeepNextTempDirAt(const TzPath& folder) { TzScratch::Instance().KeepNextAt(folder); }

void TzFileUtil::DeleteAllTempFilesCreated() { TzScratch::Instance().DeleteAll(); }

TzPath TzFileUtil::GetUserDocumentsFolder() {
  const std::string home = GetEnvironment("HOME");
  std::string configuration = GetEnvironment("XDG_CONFIG_HOME");
  if (!configuration.starts_with('/')) configuration = home + "/.config";
  const std::string settings = ReadText(TzPath::FromNative(configuration + "/user-dirs.dirs"));
  return TzPath::FromNative(FindDocumentsFolder(settings, home).value_or(home + "/Documents"));
}

TzPath TzFileUtil::GetCurrentExecutablePath() {
  std::error_code error;
  return TzPath::FromNative(std::filesystem::read_symlink("/proc/self/exe", error).native());
}

TzString TzFileUtil::GetBaseFileName(const TzPath& path) {
  const TzString name = path.GetFileName();
  return name.Substring(0, FindExtension(name.GetUnits()));
}

TzString TzFileUtil::GetExtensionAsWritten(const TzPath& path) {
  const TzString name = path.GetFileName();
  const std::size_t point = FindExtension(name.GetUnits());
  return point == std::u16string::npos ? TzString() : name.Substring(point + 1, name.Length());
}

TzString TzFileUtil::GetExtension(const TzPath& path) {
  std::u16string extension = GetExtensionAsWritten(path).GetUnits();
  for (char16_t& unit : extension) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
  }
  return TzString(extension);
}

bool TzFileUtil::IsValidPath(const TzString& text) {
  const std::string native = text.GetUTF8String();
  const auto isControl = [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; };
  const auto isTooLong = [](const TzString& component) {
    return component.GetUTF8String().size() > NAME_MAX;
  };
  return !native.empty() && native.size() < PATH_MAX && std::ranges::none_of(native, isControl) &&
         std::ranges::none_of(TzPath(text).GetComponents(), isTooLong);
}

bool TzFileUtil::IsValidFileName(const TzString& text) {
  const std::string name = text.GetUTF8String();
  return IsValidPath(text) && name.find_first_of("<>:\"/\\|?*") == std::string::npos &&
         !name.ends_with(' ') && !name.ends_with('.') && !TzZipName::IsDevice(name);
}

std::uint64_t TzFileUtil::GetNoSpaceCount() { return noSpaceCount; }

bool TzFileUtil::DeleteDirectory(const TzPath& folder, bool recursive) {
  TzFileSystem& files = TzFileSystem::Current();
  const TzNodeKind kind = files.GetKind(folder);
  if (kind != TzNodeKind::Folder) return kind == TzNodeKind::Absent;
  if (!recursive) {
    std::vector<TzListedNode> entries;
    if (!Succeeded(files.List(folder, entries), folder, "can't read") || !entries.empty()) return false;
  }
  return Succeeded(files.Delete(folder), folder, "can't delete");
}

bool TzFileUtil::DeleteFile(const TzPath& file) {
  TzFileSystem& files = TzFileSystem::Current();
  if (files.GetKind(file) == TzNodeKind::Folder) return false;
  return Succeeded(files.Delete(file), file, "can't delete");
}

bool TzFileUtil::CreateDirectory(const TzPath& folder, bool withParents) {
  TzFileSystem& files = TzFileSystem::Current();
  return Succeeded(withParents ? files.MakeFolders(folder) : files.MakeFolder(folder), folder,
                   "can't make the folder");
}

bool TzFileUtil::FileCopy(const TzPath& source, const TzPath& target, bool failIfExists) {
  TzFileSystem& files = TzFileSystem::Current();
  if (files.GetKind(source) == TzNodeKind::Absent) return false;
  const TzPath folder = target.GetParentTzPath();
  if (!folder.IsEmpty() && !CreateDirectory(folder, true)) return false;
  const TzCopyMode mode = failIfExists ? TzCopyMode::FailIfExists : TzCopyMode::Replace;
  return Succeeded(files.Copy(source, target, mode), target, "can't copy '" + source.GetNative() + "' here");
}

int TzFileUtil::GetFileNamesInFolderAtPath(const TzPath& folder, std::vector<TzPath>& list, bool files,
                                           bool folders) {
  list.clear();
  std::vector<TzListedNode> entries;
  if (!Succeeded(TzFileSystem::Current().List(folder, entries), folder, "can't read")) return kTzFailure;
  for (TzListedNode& entry : entries) {
    const bool isWanted =
        entry.kind == TzNodeKind::File ? files : entry.kind == TzNodeKind::Folder && folders;
    if (isWanted) list.push_back(std::move(entry.path));
  }
  return kTzSuccess;
}
