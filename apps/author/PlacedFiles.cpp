// SPDX-License-Identifier: Apache-2.0
#include "apps/author/PlacedFiles.h"

#include <algorithm>

#include "host/files/TzFileUtil.h"

namespace {

/// Takes the name, which a comma or the end must follow, off the text. False, and no change, without it.
bool TakeName(std::u16string_view& text, const std::u16string& name, bool& isLast) {
  if (!text.starts_with(name)) return false;
  const std::u16string_view rest = text.substr(name.size());
  if (!rest.empty() && rest.front() != u',') return false;
  isLast = rest.empty();
  text = isLast ? rest : rest.substr(1);
  return true;
}

std::vector<TzString> SplitNames(const std::vector<TzPath>& chosen, const TzString& joined) {
  std::vector<TzString> names;
  std::u16string_view text = joined.GetUnits();
  TzString previous;
  bool isLast = false;
  for (const TzPath& file : chosen) {
    const TzString base = TzFileUtil::GetBaseFileName(file);
    if (TakeName(text, base.GetUnits(), isLast)) {
      previous = base;
    } else if (!TakeName(text, previous.GetUnits(), isLast)) {
      break;
    }
    names.push_back(previous);
    if (isLast) break;
  }
  return names;
}

}  // namespace

std::vector<std::optional<TzPath>> FindPlacedFiles(const std::vector<TzPath>& chosen,
                                                   const std::vector<TzString>& names) {
  std::vector<std::optional<TzPath>> placed;
  std::optional<TzPath> previous;
  TzString previousName;
  for (std::size_t index = 0; index < std::min(chosen.size(), names.size()); ++index) {
    const TzString base = TzFileUtil::GetBaseFileName(chosen[index]);
    const bool isTaken = names[index] == base && base != previousName;
    if (isTaken) {
      previous = chosen[index];
      previousName = base;
    }
    placed.push_back(previous);
  }
  return placed;
}

std::vector<std::optional<TzPath>> FindPlacedFiles(const std::vector<TzPath>& chosen,
                                                   const TzString& joinedNames) {
  return FindPlacedFiles(chosen, SplitNames(chosen, joinedNames));
}
