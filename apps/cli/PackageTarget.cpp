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

PackageTarget::PackageTarget(const std::string& path)
    : name(path),
      folder(TzPath::FromNative(fs::absolute(GetFolderName(path)).native())),
      fileName(fs::path(path).filename().native()) {}

std::optional<CommandFailure> PackageTarget::Check(Existing existing) const {
  const auto fail = [this](ExitStatus status, const std::string& message) {
    return CommandFailure{status, name, message, {}};
  };
  const bool isNameExact = fileName.GetUTF8String() == fs::path(name).filename().native();
  if (TzFileUtil::GetExtension(TzPath(fileName)) != "zip" || !isNameExact || name.find('\0') != name.npos) {
    return fail(ExitStatus::Usage, "the package's name must end in .zip");
  }
  if (name.find('\\', name.rfind('/') + 1) != std::string::npos) {
    return fail(ExitStatus::Usage, "the package's name can't hold a back-slash");
  }
  std::error_code error;
  if (!fs::is_directory(folder.GetNative(), error)) {
    const bool isThere = fs::exists(folder.GetNative(), error);
    const std::string which = "the folder '" + GetFolderName(name) + "' ";
    return fail(ExitStatus::Usage, which + (isThere ? "isn't a folder" : "doesn't exist"));
  }
  const fs::file_status status = fs::status(folder.GetNative() + "/" + fileName.GetUTF8String(), error);
  if (fs::is_directory(status)) return fail(ExitStatus::Usage, "is a folder");
  if (fs::exists(status) && !fs::is_regular_file(status)) return fail(ExitStatus::Usage, "isn't a file");
  if (fs::exists(status) && existing == Existing::Keep) {
    return fail(ExitStatus::Refused, "exists already; --force replaces it");
  }
  if (access(folder.GetNative().c_str(), W_OK | X_OK) != 0) {
    return fail(ExitStatus::Machine, "can't write into the folder '" + GetFolderName(name) +
                                         "': " + std::generic_category().message(errno));
  }
  return std::nullopt;
}

bool PackageTarget::IsSameFileAs(const TzPath& file) const {
  std::error_code error;
  return fs::equivalent(folder.GetNative() + "/" + fileName.GetUTF8String(), file.GetNative(), error);
}

std::optional<CommandFailure> CheckWorkingFolder(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return std::nullopt;
  const auto fail = [&](ExitStatus exitStatus, const std::string& message) {
    return CommandFailure{exitStatus, path, message, {}};
  };
  if (!fs::is_directory(status)) return fail(ExitStatus::Usage, "isn't a folder");
  const bool isEmpty = fs::is_empty(path, error);
  if (error) return fail(ExitStatus::Machine, "can't read: " + error.message());
  if (isEmpty) return std::nullopt;
  return fail(ExitStatus::Usage, "isn't empty; the working folder must be new or empty");
}
