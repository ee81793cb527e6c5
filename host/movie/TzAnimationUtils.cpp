// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzAnimationUtils.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace {

std::optional<double> ReadNumber(const TzVariant& variant) {
  if (variant.IsNumber()) return variant.GetDouble();
  if (variant.GetKind() != TzVariant::Kind::Text) return std::nullopt;
  const std::string text = variant.GetString().GetUTF8String();
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

TzErrorCodeEnum TzAnimationUtils::GetVariableForTzSWF(TzStrobePlayer& player, TzActionScriptVersionEnum,
                                                      const TzString& name, std::int32_t& value) {
  TzString escaped = name;
  escaped.ReplaceAll("&", "&amp;");
  escaped.ReplaceAll("<", "&lt;");
  escaped.ReplaceAll(">", "&gt;");
  const auto number = ReadNumber(
      player.CallActionScriptFunction(R"(<invoke name="tzGetValue" returntype="xml"><arguments><string>)" +
                                      escaped + "</string></arguments></invoke>"));
  using Limits = std::numeric_limits<std::int32_t>;
  if (!number || std::isnan(*number) || std::trunc(*number) < Limits::min() ||
      std::trunc(*number) > Limits::max()) {
    return kTzFailure;
  }
  value = static_cast<std::int32_t>(*number);
  return kTzSuccess;
}
