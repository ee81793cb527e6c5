// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzResource.h"

#include <algorithm>
#include <string>

namespace {

char ToLower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool IsSameName(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, ToLower, ToLower);
}

}  // namespace

const TzResource* GetFileResource(const TzResourceInfo& library, std::string_view name,
                                  std::string_view type) {
  const auto found = std::ranges::find_if(library.resources, [&](const TzResource& each) {
    return IsSameName(each.name, name) && IsSameName(each.type, type);
  });
  return found != library.resources.end() ? &*found : nullptr;
}

const TzResource* GetFileResource(const TzResourceInfo& library, int number, std::string_view type) {
  return GetFileResource(library, std::to_string(number), type);
}
