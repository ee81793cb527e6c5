// SPDX-License-Identifier: Apache-2.0
#include "apps/course/Weightage.h"

#include <gtest/gtest.h>

#include "core/PlexoModuleCourseModel.h"

namespace {

std::vector<WeightageShare> MakeShares(std::size_t count) {
  std::vector<WeightageShare> shares;
  for (std::size_t number = 1; number <= count; ++number) shares.push_back({std::to_string(number), {}});
  return shares;
}

TEST(Weightage, EvenSharesAddUpToTheWholeAsTheCourseCountsThem) {
  for (std::size_t count = 1; count <= 200; ++count) {
    std::vector<WeightageShare> shares = MakeShares(count);
    ShareWeightageEvenly(shares);

    PlexoModuleCourseModel course;
    for (const WeightageShare& share : shares) {
      course.AddModule(share.key, "");
      course.SetWeightage(share.key, share.fraction);
      EXPECT_GT(TzString(share.fraction).ToDouble(), 0.0) << count;
    }
    EXPECT_TRUE(course.HasValidTotalWeightage()) << count;
  }
}

TEST(Weightage, TheModuleThatIsAddedLastTakesTheRest) {
  std::vector<WeightageShare> shares = MakeShares(11);
  ShareWeightageEvenly(shares);
  // "9" is the last of the keys as texts.
  EXPECT_EQ(shares[10].fraction, "0.090909");
  EXPECT_EQ(shares[8].fraction.substr(0, 7), "0.09091") << shares[8].fraction;
}

TEST(Weightage, SixDecimalsAreKeptOfAPercentage) {
  EXPECT_EQ(MakeWeightageFraction("33.3333"), "0.333333");
  EXPECT_EQ(MakeWeightageFraction("100"), "1.000000");
  EXPECT_EQ(MakeWeightageFraction("0.0001"), "0.000001");
  EXPECT_EQ(MakeWeightageFraction("0.00001"), std::nullopt);
}

// Ten times 0.1 isn't 1 in double precision, and no tenth of six decimals mends it.
TEST(Weightage, ASumThatOnlyLooksExactIsNot) {
  std::vector<WeightageShare> shares = MakeShares(10);
  for (WeightageShare& share : shares) share.fraction = "0.100000";
  EXPECT_EQ(FormatNumber(SumWeightages(shares)), "0.9999999999999999");
  EXPECT_EQ(FindExactLastPercent(shares), std::nullopt);
}

TEST(Weightage, ThePercentageThatWouldMakeTheSumExactIsThatOfTheModuleAddedLast) {
  std::vector<WeightageShare> ten = MakeShares(10);
  for (WeightageShare& share : ten) share.fraction = "0.062500";
  ten[9].fraction = "0.250000";
  const struct {
    std::vector<WeightageShare> shares;
    const char* percent;
  } cases[] = {
      {{{"1", "0.900000"}, {"2", "0.5"}}, "10"},
      {{{"1", "0.999999"}, {"2", "0.5"}}, "0.0001"},
      {ten, "25"},
  };
  for (const auto& [shares, percent] : cases) EXPECT_EQ(FindExactLastPercent(shares), percent);
}

}  // namespace
