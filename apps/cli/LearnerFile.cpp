// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/LearnerFile.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "host/files/TzReplacementFile.h"

namespace {

/// The first line of a file.
constexpr std::string_view kMark = "plexo learner\n";

CommandFailure Fail(ExitStatus status, const std::string& path, const std::string& message) {
  return {status, path, message, {}};
}

/// False too if the file is missing.
bool HasMark(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string start(kMark.size(), '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  return file.good() && start == kMark;
}

}  // namespace

std::optional<CommandFailure> LearnerFile::Write(const std::string& path,
                                                 std::span<const std::uint8_t> state) {
  std::error_code error;
  const bool exists = std::filesystem::exists(path, error);
  if (exists && !HasMark(path))
    return Fail(ExitStatus::Refused, path, "exists already and isn't a saved learner; choose another name");
  TzReplacementFile file(TzPath::FromNative(path));
  const bool isWritten = file.Create() && file.Append(std::as_bytes(std::span(kMark))) &&
                         file.Append(std::as_bytes(state)) && file.Commit();
  if (isWritten) return std::nullopt;
  return Fail(ExitStatus::Machine, path, "can't be written: " + std::generic_category().message(errno));
}

std::optional<CommandFailure> LearnerFile::Read(const std::string& path, std::vector<std::uint8_t>& state) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error))
    return Fail(ExitStatus::Usage, path, "there is no such file; 'save' makes one");
  if (std::filesystem::file_size(path, error) > kMaxBytes || !HasMark(path))
    return Fail(ExitStatus::Refused, path, "isn't a saved learner");
  std::ifstream file(path, std::ios::binary);
  file.seekg(static_cast<std::streamoff>(kMark.size()));
  state.assign(std::istreambuf_iterator<char>(file), {});
  if (file.bad()) return Fail(ExitStatus::Machine, path, "can't be read");
  return std::nullopt;
}
