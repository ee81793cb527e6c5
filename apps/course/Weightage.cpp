// SPDX-License-Identifier: Apache-2.0
#include "apps/course/Weightage.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "host/text/TzString.h"

namespace {

constexpr int kDecimals = 6;
constexpr double kMillion = 1e6;
constexpr double kWhole = 100.0;

std::string FormatFraction(double fraction) {
  std::array<char, 64> buffer = {};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), fraction,
                                 std::chars_format::fixed, kDecimals);
  return {buffer.data(), end.ptr};
}

double ReadFraction(const std::string& text) { return TzString(text).ToDouble(); }

void SortByKey(std::vector<WeightageShare>& shares) {
  std::ranges::stable_sort(shares, {}, &WeightageShare::key);
}

}  // namespace

std::string FormatNumber(double number) {
  std::array<char, 400> buffer = {};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed);
  return {buffer.data(), end.ptr};
}

std::optional<double> ReadWeightagePercent(std::string_view percent) {
  double number = 0.0;
  const char* end = percent.data() + percent.size();
  const auto [stop, error] = std::from_chars(percent.data(), end, number, std::chars_format::fixed);
  const bool isPercent = error == std::errc() && stop == end && number >= 0.0 && number <= kWhole;
  return isPercent ? std::optional(number) : std::nullopt;
}

std::optional<std::string> MakeWeightageFraction(std::string_view percent) {
  const std::optional<double> number = ReadWeightagePercent(percent);
  if (!number) return std::nullopt;
  const std::string fraction = FormatFraction(*number / kWhole);
  return ReadFraction(fraction) > 0.0 ? std::optional(fraction) : std::nullopt;
}

double SumWeightages(std::vector<WeightageShare> shares) {
  SortByKey(shares);
  double sum = 0.0;
  for (const WeightageShare& share : shares) sum += ReadFraction(share.fraction);
  return sum;
}

void ShareWeightageEvenly(std::vector<WeightageShare>& shares) {
  if (shares.empty()) return;
  const auto last = std::ranges::max_element(shares, {}, &WeightageShare::key);
  const double share = std::floor(kMillion / static_cast<double>(shares.size())) / kMillion;
  for (WeightageShare& each : shares) each.fraction = FormatFraction(share);
  last->fraction = "0";
  // The rest is at most a half unless there is one module alone, so the subtraction is exact and adding its
  // result gives 1.0 again.
  const double rest = 1.0 - SumWeightages(shares);
  last->fraction = FormatFraction(rest);
  if (SumWeightages(shares) != 1.0) last->fraction = FormatNumber(rest);
}

std::optional<std::string> FindExactLastPercent(std::vector<WeightageShare> shares) {
  if (shares.empty()) return std::nullopt;
  const auto last = std::ranges::max_element(shares, {}, &WeightageShare::key);
  last->fraction = "0";
  const double rest = 1.0 - SumWeightages(shares);
  const double percent = std::round(rest * kMillion) / (kMillion / kWhole);
  const std::string text = FormatNumber(percent);
  const std::optional<std::string> fraction = MakeWeightageFraction(text);
  if (!fraction) return std::nullopt;
  last->fraction = *fraction;
  return SumWeightages(shares) == 1.0 ? std::optional(text) : std::nullopt;
}
