// SPDX-License-Identifier: Apache-2.0
#include "apps/course/SafeFileName.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "host/files/TzFileUtil.h"
#include "host/session/TzProblem.h"

namespace {

constexpr std::u16string_view kUnsafe = u"#%?[]{}|^`<>\"\\:*";
/// Systems that can't hold these at the end of a folder's name drop them.
constexpr std::u16string_view kUnsafeAtEnd = u" .";

std::size_t FindUnsafe(std::u16string_view name, std::size_t start) {
  const std::size_t found = name.find_first_of(kUnsafe, start);
  const bool endsUnsafe = !name.empty() && kUnsafeAtEnd.find(name.back()) != std::u16string_view::npos;
  return found == std::u16string_view::npos && endsUnsafe && start < name.size() ? name.size() - 1 : found;
}

}  // namespace

std::string SafeFileName::DescribeUnsafe(const TzString& baseName) {
  const std::u16string& name = baseName.GetUnits();
  std::string described;
  for (std::size_t at = FindUnsafe(name, 0); at != std::u16string::npos; at = FindUnsafe(name, at + 1)) {
    const std::string quoted = "'" + std::string(1, static_cast<char>(name[at])) + "'";
    if (described.find(quoted) != std::string::npos) continue;
    described += (described.empty() ? "" : ", ") + quoted;
  }
  return described;
}

TzString SafeFileName::Make(const TzString& baseName) {
  std::u16string name = baseName.GetUnits();
  for (std::size_t at = FindUnsafe(name, 0); at != std::u16string::npos; at = FindUnsafe(name, at + 1)) {
    name[at] = u'_';
  }
  return TzString(name);
}

std::optional<TzPath> SafeFileName::Provide(const TzPath& file) {
  const TzString baseName = TzFileUtil::GetBaseFileName(file);
  if (DescribeUnsafe(baseName).empty()) return file;
  const TzPath folder = TzFileUtil::CreateTempDiskDir("named");
  if (folder.IsEmpty()) return std::nullopt;
  const TzPath link = folder / (Make(baseName) + "." + TzFileUtil::GetExtensionAsWritten(file));
  std::error_code error;
  std::filesystem::create_symlink(file.GetNative(), link.GetNative(), error);
  if (!error) return link;
  TzReportSystemProblem(error.value(), link.GetNative(), "can't make a link");
  return std::nullopt;
}
