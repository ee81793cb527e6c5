// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzTranslationFolder.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string>

#include "host/files/TzFileUtil.h"
#include "host/session/TzErrorCode.h"
#include "host/text/TzTranslationFile.h"

namespace {

constexpr const char* kExtension = "yaml";

bool IsLetter(char each) { return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z'); }

bool IsLetterOrDigit(char each) { return IsLetter(each) || (each >= '0' && each <= '9'); }

/// "de_AT" of "de-AT.UTF-8@euro"; empty if the locale isn't letters and digits, so that it names no other
/// folder's file.
std::string GetIdentifier(const TzString& locale) {
  std::string identifier = locale.GetUTF8String();
  identifier.resize(std::min(identifier.find_first_of(".@"), identifier.size()));
  std::ranges::replace(identifier, '-', '_');
  const bool isPlain =
      std::ranges::all_of(identifier, [](char each) { return each == '_' || IsLetterOrDigit(each); });
  if (!isPlain || identifier.empty() || !IsLetter(identifier.front())) return {};
  const std::size_t language = std::min(identifier.find('_'), identifier.size());
  for (char& each : std::span(identifier).first(language)) {
    if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
  }
  return identifier;
}

}  // namespace

TzTranslationFolder TzTranslationFolder::Installed() {
  return TzTranslationFolder(TzFileUtil::GetCurrentExecutablePath().GetParentTzPath() / "translations");
}

std::vector<TzTranslationFolder::Language> TzTranslationFolder::List() const {
  std::vector<TzPath> files;
  // Without the folder, a program speaks English.
  if (TzFileUtil::GetFileNamesInFolderAtPath(folder, files, true, false) != kTzSuccess) return {};
  std::vector<Language> languages;
  for (const TzPath& file : files) {
    if (TzFileUtil::GetExtension(file) != kExtension) continue;
    if (const auto translation = TzTranslationFile::Read(file)) {
      languages.push_back({TzFileUtil::GetBaseFileName(file), translation->name});
    }
  }
  return languages;
}

TzPath TzTranslationFolder::Find(const TzString& locale) const {
  std::string identifier = GetIdentifier(locale);
  while (!identifier.empty()) {
    TzPath file = folder / (identifier + "." + kExtension);
    if (TzFile(file).GetAttribute(TzFileAttribute::IsFile)) return file;
    const std::size_t last = identifier.rfind('_');
    identifier.resize(last == std::string::npos ? 0 : last);
  }
  return {};
}

TzString TzTranslationFolder::GetSystemLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}
