// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzVariant.h"

#include <limits>

namespace {

template <typename Content, typename Variant>
const Content& ReadOrEmpty(const Variant& content) {
  static const Content empty{};
  const auto* held = std::get_if<Content>(&content);
  return held != nullptr ? *held : empty;
}

/// A double outside of what an integer can hold takes the nearest that it can; none at all takes 0.
std::int64_t Truncate(double number) {
  constexpr double kLimit = 9223372036854775808.0;
  if (number >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (number < -kLimit) return std::numeric_limits<std::int64_t>::min();
  return number == number ? static_cast<std::int64_t>(number) : 0;
}

}  // namespace

bool TzVariant::GetBool() const { return ReadOrEmpty<bool>(content); }

std::int64_t TzVariant::GetInteger() const {
  return GetKind() == Kind::Double ? Truncate(std::get<double>(content)) : ReadOrEmpty<std::int64_t>(content);
}

double TzVariant::GetDouble() const {
  if (GetKind() == Kind::Integer) return static_cast<double>(std::get<std::int64_t>(content));
  return ReadOrEmpty<double>(content);
}

TzString TzVariant::GetString() const { return ReadOrEmpty<TzString>(content); }
const TzVariant::List& TzVariant::GetList() const { return ReadOrEmpty<List>(content); }
const TzVariant::Dictionary& TzVariant::GetDictionary() const { return ReadOrEmpty<Dictionary>(content); }

bool TzVariant::operator==(const TzVariant& other) const { return content == other.content; }

const char* GetKindWords(TzVariant::Kind kind) {
  switch (kind) {
    case TzVariant::Kind::Null:
      return "nothing";
    case TzVariant::Kind::Bool:
      return "true or false";
    case TzVariant::Kind::Integer:
      return "a whole number";
    case TzVariant::Kind::Double:
      return "a number with a fraction";
    case TzVariant::Kind::Text:
      return "a text";
    case TzVariant::Kind::List:
      return "a list";
    case TzVariant::Kind::Dictionary:
      break;
  }
  return "a dictionary";
}
