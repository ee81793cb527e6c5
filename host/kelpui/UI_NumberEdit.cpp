// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_NumberEdit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kelpui::controls {

double UI_NumberData::GetNearest(double number) const {
  if (std::isnan(number)) return minimum;
  const double scale = std::pow(10.0, decimalPlaces);
  const double clamped = std::clamp(number, minimum, std::max(minimum, maximum));
  return std::round(clamped * scale) / scale;
}

void UI_NumberEdit::SetValue(double number) {
  const double nearest = data.GetNearest(number);
  if (value == nearest) return;
  value = nearest;
  NoteChange(UI_Change::State);
}

void UI_NumberEdit::EnterValue(double number) {
  const double nearest = data.GetNearest(number);
  if (!IsEnabled() || value == nearest) return;
  value = nearest;
  NoteEntered();
}

bool UI_NumberEdit::EnterText(const TzString& text) {
  std::string typed = text.GetUTF8String();
  const std::string unit = inlineUnit.GetUTF8String();
  if (!unit.empty() && typed.ends_with(unit)) typed.resize(typed.size() - unit.size());
  const std::size_t first = typed.find_first_not_of(' ');
  if (first == std::string::npos) return false;
  typed = typed.substr(first, typed.find_last_not_of(' ') - first + 1);
  double number = 0.0;
  const char* end = typed.data() + typed.size();
  const auto [stop, error] = std::from_chars(typed.data(), end, number);
  if (error != std::errc() || stop != end || !std::isfinite(number)) return false;
  EnterValue(number);
  return true;
}

TzString UI_NumberEdit::GetText() const {
  // The largest double has 309 digits in front of the point.
  std::array<char, 400> text{};
  const auto written = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed,
                                     data.decimalPlaces);
  return TzString(std::string_view(text.data(), static_cast<std::size_t>(written.ptr - text.data())));
}

void UI_NumberEdit::SetInlineUnit(const TzString& unit) {
  if (inlineUnit == unit) return;
  inlineUnit = unit;
  NoteChange(UI_Change::State);
}

void UI_NumberEdit::SetLabel(const TzString& text) {
  if (label == text) return;
  label = text;
  NoteChange(UI_Change::State);
}

}  // namespace kelpui::controls
