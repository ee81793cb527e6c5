// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoDuration.h"

#include <string>

namespace {

std::string FormatField(std::int64_t number) {
  std::string text = std::to_string(number);
  return text.size() == 1 ? "0" + text : text;
}

}  // namespace

PlexoDuration PlexoDuration::Parse(const TzString& text) {
  constexpr std::size_t kLength = 8;
  if (text.Length() != kLength) return {};
  return {text.Substring(0, 2).ToInteger(), text.Substring(3, 2).ToInteger(),
          text.Substring(6, 2).ToInteger()};
}

TzString PlexoDuration::Format() const {
  return FormatField(hours) + ":" + FormatField(minutes) + ":" + FormatField(seconds);
}
