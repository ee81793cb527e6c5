// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The shares of a course's modules, as LMSs and the publish check count them: texts of fractions, read as
/// doubles and added up in the order of the modules' keys, compared as plain text ("1", "10", "2"). They must
/// add up to exactly 1.0.

/// One module's share by its key.
struct WeightageShare {
  std::string key;
  /// "0.250000" for a quarter.
  std::string fraction;
};

/// The fraction's text for a percentage, with six decimals whatever the locale. None unless the percentage is
/// a plain decimal number with 0 < n <= 100 that doesn't vanish in six decimals.
std::optional<std::string> MakeWeightageFraction(std::string_view percent);

/// The percentage as a number. None unless it is a plain decimal number from 0 to 100.
std::optional<double> ReadWeightagePercent(std::string_view percent);

/// The sum in the order of the keys.
double SumWeightages(std::vector<WeightageShare> shares);

/// Gives every module the same six decimals, and the rest to the one that is added last, with as many
/// decimals as it takes for a sum of exactly 1.0.
void ShareWeightageEvenly(std::vector<WeightageShare>& shares);

/// The percentage that would make the sum exact in place of the share that is added last. None if no
/// percentage above 0 with four decimals does.
std::optional<std::string> FindExactLastPercent(std::vector<WeightageShare> shares);

/// The number's shortest decimal text that reads back as the same number.
std::string FormatNumber(double number);
