// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzVariant.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

TEST(TzVariant, ReadsAsTheEmptyValueOfAnyOtherKindAndNumbersAsEachOther) {
  const struct {
    const char* name;
    TzVariant value;
    bool asBool;
    std::int64_t asInteger;
    double asDouble;
    TzString asText;
  } cases[] = {
      {"nothing", {}, false, 0, 0.0, {}},
      {"true", true, true, 0, 0.0, {}},
      {"an integer", 7, false, 7, 7.0, {}},
      {"a double", -7.9, false, -7, -7.9, {}},
      {"a double beyond integers", 1e300, false, std::numeric_limits<std::int64_t>::max(), 1e300, {}},
      {"a double below integers", -1e300, false, std::numeric_limits<std::int64_t>::min(), -1e300, {}},
      {"a text of digits", "12", false, 0, 0.0, "12"},
      {"a list", TzVariant::List{1, 2}, false, 0, 0.0, {}},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(each.value.GetBool(), each.asBool) << each.name;
    EXPECT_EQ(each.value.GetInteger(), each.asInteger) << each.name;
    EXPECT_EQ(each.value.GetDouble(), each.asDouble) << each.name;
    EXPECT_EQ(each.value.GetString(), each.asText) << each.name;
  }
  EXPECT_EQ(TzVariant(std::numeric_limits<double>::quiet_NaN()).GetInteger(), 0);
}

TEST(TzVariant, EqualsOnlyTheSameKindWithTheSameContent) {
  const TzVariant values[] = {{},
                              false,
                              0,
                              0.0,
                              "",
                              "0",
                              TzVariant::List{},
                              TzVariant::List{0},
                              TzVariant::Dictionary{},
                              TzVariant::Dictionary{{"a", 1}}};
  for (const TzVariant& left : values) {
    for (const TzVariant& right : values) EXPECT_EQ(left == right, &left == &right);
  }
}
