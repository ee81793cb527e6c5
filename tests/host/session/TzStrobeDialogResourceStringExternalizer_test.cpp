// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzStrobeDialogResourceStringExternalizer.h"

#include <gtest/gtest.h>

#include "support/TestSession.h"

TEST(TzStrobeDialogResourceStringExternalizer, WritesTheKeysWithTheirTextsInOrder) {
  TestSession session;
  session.dictionary.RegisterDefault("kB", "first & \"foremost\"");
  session.dictionary.RegisterDefault("kA", "");
  const TzStrobeDialogResourceStringExternalizer externalizer;
  EXPECT_EQ(externalizer.GetXMLForResourceStrings({"kB", "kA", "kMissing"}),
            "<strings><string key=\"kB\">first &amp; \"foremost\"</string><string key=\"kA\"/>"
            "<string key=\"kMissing\">kMissing</string></strings>");
  EXPECT_EQ(externalizer.GetXMLForResourceStrings({}), "<strings/>");
}
