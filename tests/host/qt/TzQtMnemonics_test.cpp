// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtMnemonics.h"

#include <gtest/gtest.h>

TEST(TzQtMnemonicsTest, NoTwoCaptionsOfAWindowGetTheSameLetter) {
  const struct {
    std::vector<QString> captions;
    std::vector<QString> marked;
  } cases[] = {
      {{"+ File", "Force Module Sequence"}, {"+ &File", "Force &Module Sequence"}},
      {{"Title:", "time"}, {"&Title:", "t&ime"}},
      {{"Cut & paste"}, {"&Cut && paste"}},
      {{"A", "a", ""}, {"&A", "a", ""}},
      {{"Öffnen", "日本語"}, {"&Öffnen", "日本語"}},
  };
  for (const auto& [captions, marked] : cases) {
    const std::vector<qsizetype> places = ChooseTzMnemonics(captions);
    for (std::size_t index = 0; index < captions.size(); ++index) {
      EXPECT_EQ(MarkTzMnemonic(captions[index], places[index]), marked[index]);
    }
  }
  // What stands elsewhere in the window has its letters already.
  EXPECT_EQ(GetTzMnemonic("Cut && &Paste"), 'p');
  EXPECT_EQ(ChooseTzMnemonics({"Pre-test"}, {GetTzMnemonic("&Publish")}), std::vector<qsizetype>{4});
}
