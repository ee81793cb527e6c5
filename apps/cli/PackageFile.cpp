// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PackageFile.h"

#include <filesystem>
#include <system_error>

std::optional<CommandFailure> CheckPackageFile(const std::string& path, const std::string& expected,
                                               ExitStatus unseen) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (std::filesystem::is_regular_file(status)) return std::nullopt;
  if (status.type() == std::filesystem::file_type::none) {
    return CommandFailure{unseen, path, "can't be looked at: " + error.message(), {}};
  }
  const bool isAbsent = status.type() == std::filesystem::file_type::not_found;
  return CommandFailure{
      ExitStatus::Usage, path, isAbsent ? "doesn't exist" : "isn't a file; expected " + expected, {}};
}
