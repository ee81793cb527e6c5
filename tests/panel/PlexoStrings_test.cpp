// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoStrings.h"

#include <gtest/gtest.h>

#include <string>

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"
#include "support/Golden.h"
#include "support/TestSession.h"

namespace {

/// Keeps what is entered, in order, a line each.
class ListingDictionary : public ITzStringDictionary {
 public:
  void RegisterDefault(const char* key, const char* text) override {
    TzString line = text;
    line.ReplaceAll("\n", "\\n");
    lines += std::string(key) + "\t" + line.GetUTF8String() + "|\n";
  }
  TzString GetString(const TzString& key) const override { return key; }

  std::string lines;
};

}  // namespace

// Each line ends in "|", so that blanks at the end of a text show.
TEST(PlexoStringsGolden, HoldsTheTextsLetterByLetterInTheirOrder) {
  ListingDictionary dictionary;
  const TzSession previous = TzSession::Install({.dictionary = &dictionary});
  RegisterDefaultStrings();
  TzSession::Install(previous);
  ExpectGolden(PLEXO_SOURCE "/tests/panel/golden", "strings.txt", dictionary.lines);
}

TEST(PlexoStrings, ATranslationOfTheHostWinsOverTheDefault) {
  TestSession session;
  session.dictionary.RegisterTranslation("kPlexoError", "Fehler");
  ASSERT_EQ(RegisterDefaultStrings(), 0);
  EXPECT_EQ(session.dictionary.GetString("kPlexoError"), "Fehler");
}
