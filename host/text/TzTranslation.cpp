// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzTranslation.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

bool TzTranslation::IsWord(const TzString& key) {
  static constexpr std::string_view kFixed[] = {"kObjective", "kBranchingIdentifier", "kSubDir"};
  const std::string name = key.GetUTF8String();
  return std::none_of(std::begin(kFixed), std::end(kFixed),
                      [&](std::string_view prefix) { return name.starts_with(prefix); });
}
