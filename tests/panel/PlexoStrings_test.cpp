// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoStrings.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"
#include "support/TestSession.h"

namespace {

class CountingDictionary : public ITzStringDictionary {
 public:
  void RegisterDefault(const char* key, const char* text) override {
    keys.insert(key);
    lastText = text;
    ++count;
  }
  TzString GetString(const TzString& key) const override { return key; }

  std::set<std::string> keys;
  std::string lastText;
  int count = 0;
};

}  // namespace

TEST(PlexoStrings, EntersEveryKeyExactlyOnce) {
  CountingDictionary dictionary;
  const TzSession previous = TzSession::Install({.dictionary = &dictionary});
  EXPECT_EQ(RegisterDefaultStrings(), 0);
  TzSession::Install({});
  EXPECT_EQ(RegisterDefaultStrings(), 1);
  TzSession::Install(previous);
  EXPECT_EQ(dictionary.count, 181);
  EXPECT_EQ(dictionary.keys.size(), 181U);
  EXPECT_EQ(dictionary.lastText, "Attempts");
}

TEST(PlexoStrings, HoldsTheTextsLetterByLetter) {
  TestSession session;
  ASSERT_EQ(RegisterDefaultStrings(), 0);
  const struct {
    const char* key;
    const char* text;
  } cases[] = {
      {"kPlexoManifestDialogHours", " hours"},
      {"kPlexoErrorUnzip", "Error extracting the ZIP contents!"},
      {"kPlexoErrorInvalidSCORM", "Invalid SCORM package!"},
      {"kPlexoErrorParseManifest", "There was an error parsing the XML manifest file!"},
      {"kPlexoErrorIncompatibleSCORMVersion", "SCO selected is of incompatible SCORM version!"},
      {"kPlexoErrorSCOFolderExists", "This file has already been added. Rename the file and retry adding."},
      {"kPlexoErrorDuplicateObjectiveID",
       "Another SCO with the Objective ID \"%s\" has already been added. This course may not work as "
       "expected "
       "on some LMSs."},
      {"kPlexoErrorLISWFNotAS3SWF",
       "The given file is not an Action Sscript 3 SWF file! Only AS3 SWFs supported."},
      {"kPlexoErrorZipping", "There was some error while zipping the Plexo Package!"},
      {"kPlexoErrorCopyingXSDs", "There was some error while copying XSD files!"},
      {"kPlexoUITemplate2LongDesc",
       "The course can have many modules;  each module with content and post-test."},
      {"kPlexoErrorZeroWeightage",
       "Cannot publish the course as one or more modules have zero weightage. Assign a positive integer as "
       "weightage to each module and ensure that the total weightage adds up to 100%. "},
      {"kPlexoPublishWarnZeroModuleWeight",
       "Course cannot be published as the modules have zero weightage.\n\nAssign appropriate weightage to "
       "modules and retry."},
      {"kPlexoPublishDialogCancel", "Close"},
      {"kSubDirLinear", "Linear"},
      {"kTzMBButton_DontSave", "Don't Save"},
  };
  for (const auto& [key, text] : cases) EXPECT_EQ(session.dictionary.GetString(key), text) << key;
}

TEST(PlexoStrings, ATranslationOfTheHostWinsOverTheDefault) {
  TestSession session;
  session.dictionary.RegisterTranslation("kPlexoError", "Fehler");
  ASSERT_EQ(RegisterDefaultStrings(), 0);
  EXPECT_EQ(session.dictionary.GetString("kPlexoError"), "Fehler");
}
