// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/ProgressBar.h"

#include <gtest/gtest.h>

namespace {

TEST(ProgressBar, FillsWithTheWorkAndFitsTheTerminal) {
  const std::string third(10, '#');
  const std::string rest(20, '.');
  EXPECT_EQ(FormatProgress("adding intro.zip", 1, 3, 80), "[" + third + rest + "]   33%  adding intro.zip");
  EXPECT_EQ(FormatProgress("x", 9, 3, 80), "[" + std::string(30, '#') + "]  100%  x");
  EXPECT_EQ(FormatProgress("adding intro.zip", 1, 3, 45).size(), 45U);
  EXPECT_EQ(FormatProgress("a\nb\x1b[2J", 0, 1, 80), "[" + std::string(30, '.') +
                                                         "]    0%  a\xEF\xBF\xBD"
                                                         "b\xEF\xBF\xBD[2J");
}

}  // namespace
