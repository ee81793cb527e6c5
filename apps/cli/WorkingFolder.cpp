// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/WorkingFolder.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <vector>

#include "host/files/TzFileUtil.h"

namespace fs = std::filesystem;

WorkingFolder::~WorkingFolder() {
  if (folder.empty() || !isOwned) return;
  std::error_code error;
  std::vector<fs::path> content;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) content.push_back(entry);
  for (const fs::path& each : content) fs::remove_all(each, error);
  for (fs::path made = folder; made != existing && fs::remove(made, error);) made = made.parent_path();
}

std::optional<CommandFailure> WorkingFolder::Check() const {
  if (name.empty()) return std::nullopt;
  const auto fail = [this](ExitStatus status, const std::string& message) {
    return CommandFailure{status, name, message, {}};
  };
  std::error_code error;
  const fs::file_status status = fs::status(name, error);
  if (status.type() == fs::file_type::none) {
    return fail(ExitStatus::Machine, "can't be looked at: " + error.message());
  }
  if (status.type() == fs::file_type::not_found) {
    const bool isLink = fs::is_symlink(fs::symlink_status(name, error));
    return isLink ? std::optional(fail(ExitStatus::Usage, "is a link to no folder")) : std::nullopt;
  }
  if (!fs::is_directory(status)) return fail(ExitStatus::Usage, "isn't a folder");
  const bool isEmpty = fs::is_empty(name, error);
  if (error) return fail(ExitStatus::Machine, "can't read: " + error.message());
  if (!isEmpty) return fail(ExitStatus::Usage, "isn't empty; the working folder must be new or empty");
  if (access(name.c_str(), W_OK | X_OK) == 0) return std::nullopt;
  return fail(ExitStatus::Machine, "can't write into the folder: " + std::generic_category().message(errno));
}

bool WorkingFolder::Start() {
  if (name.empty()) return true;
  std::error_code error;
  const fs::path absolute = fs::absolute(name, error);
  if (error) return false;
  folder = fs::weakly_canonical(absolute, error);
  if (error) folder = absolute;
  if (!folder.has_filename()) folder = folder.parent_path();
  existing = folder;
  while (!fs::exists(existing, error) && existing.has_relative_path()) existing = existing.parent_path();
  TzFileUtil::KeepNextTempDirAt(TzPath::FromNative(folder.native()));
  return true;
}
