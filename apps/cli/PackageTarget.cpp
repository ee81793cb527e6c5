// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PackageTarget.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "host/files/TzFileUtil.h"

namespace fs = std::filesystem;

namespace {

std::string GetFolderName(const std::string& path) {
  const std::string folder = fs::path(path).parent_path().native();
  return folder.empty() ? "." : folder;
}

}  // namespace

PackageTarget::PackageTarget(const std::string& path) : name(path) {
  std::error_code error;
  fs::path file(path);
  if (fs::is_symlink(fs::symlink_status(file, error))) {
    const fs::path linked = fs::canonical(file, error);
    if (!error) file = linked;
  }
  const fs::path absolute = fs::absolute(GetFolderName(file.native()), error);
  if (!error) folder = TzPath::FromNative(absolute.native());
  fileName = TzString(file.filename().native());
  isNameText = fileName.GetUTF8String() == file.filename().native();
}

std::optional<CommandFailure> PackageTarget::Check(Existing existing) const {
  std::optional<CommandFailure> failure = CheckName();
  if (!failure) failure = CheckFolder();
  if (!failure) failure = CheckExisting(existing);
  if (failure || access(folder.GetNative().c_str(), W_OK | X_OK) == 0) return failure;
  return Fail(ExitStatus::Machine, "can't write into the folder '" + GetFolderName(name) +
                                       "': " + std::generic_category().message(errno));
}

CommandFailure PackageTarget::Fail(ExitStatus status, const std::string& message) const {
  return {status, name, message, {}};
}

std::optional<CommandFailure> PackageTarget::CheckName() const {
  constexpr std::size_t kMostBytes = 255;
  const fs::path written = fs::path(name).filename();
  if (TzFileUtil::GetExtension(TzPath::FromNative(written.native())) != "zip" || !isNameText) {
    return Fail(ExitStatus::Usage, "the package's name must end in .zip");
  }
  if (fileName.GetUTF8String().find('\\') != std::string::npos) {
    return Fail(ExitStatus::Usage, "the package's name can't hold a back-slash");
  }
  if (written.native().size() > kMostBytes) {
    return Fail(ExitStatus::Usage,
                "the package's name is longer than " + std::to_string(kMostBytes) + " bytes");
  }
  return std::nullopt;
}

std::optional<CommandFailure> PackageTarget::CheckFolder() const {
  if (folder.IsEmpty()) return Fail(ExitStatus::Machine, "the current folder can't be found");
  std::error_code error;
  const fs::file_status status = fs::status(folder.GetNative(), error);
  if (fs::is_directory(status)) return std::nullopt;
  const std::string which = "the folder '" + GetFolderName(name) + "' ";
  if (status.type() == fs::file_type::none) {
    return Fail(ExitStatus::Machine, which + "can't be looked at: " + error.message());
  }
  return Fail(ExitStatus::Usage, which + (fs::exists(status) ? "isn't a folder" : "doesn't exist"));
}

std::optional<CommandFailure> PackageTarget::CheckExisting(Existing existing) const {
  std::error_code error;
  const std::string path = folder.GetNative() + "/" + fileName.GetUTF8String();
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) return Fail(ExitStatus::Usage, "is a folder");
  if (fs::is_symlink(fs::symlink_status(path, error))) {
    return Fail(ExitStatus::Refused, "exists already, as a link to no file; remove it first");
  }
  if (!fs::exists(status)) return std::nullopt;
  if (!fs::is_regular_file(status)) return Fail(ExitStatus::Usage, "isn't a file");
  if (existing == Existing::Replace) return std::nullopt;
  return Fail(ExitStatus::Refused, "exists already; --force replaces it");
}

bool PackageTarget::IsSameFileAs(const TzPath& file) const {
  std::error_code error;
  return fs::equivalent(folder.GetNative() + "/" + fileName.GetUTF8String(), file.GetNative(), error);
}
