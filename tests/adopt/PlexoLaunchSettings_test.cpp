// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoLaunchSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

PlexoLaunchSettings MakeSettings() {
  PlexoAdoptedSCO sco;
  sco.launch = "content/index.htm?x=1#y";
  sco.contentEdition = PlexoCourseEdition::Scorm12;
  sco.title = "Doors & \"exits\" </script> \\ \u2028 火 \U0001F525";
  sco.data.masteryScore = "80";
  sco.data.dataFromLms = "a\r\n\tb\x01";
  sco.data.primaryObjective = "main";
  sco.data.objectives = "first urn:x:second";
  sco.completionPasses = true;
  return PlexoLaunchSettings::Of(sco);
}

TEST(PlexoLaunchSettings, AreReadAsTheyWereWritten) {
  const PlexoLaunchSettings written = MakeSettings();
  const auto read = PlexoLaunchSettings::Read(written.Write());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->content, "../content/index.htm?x=1#y");
  EXPECT_EQ(read->title, written.title);
  EXPECT_EQ(read->data, written.data);
  EXPECT_EQ(read->contentEdition, PlexoCourseEdition::Scorm12);
  EXPECT_EQ(read->courseEdition, PlexoCourseEdition::Scorm2004);
  EXPECT_TRUE(read->completionPasses);
  EXPECT_EQ(read->Write(), written.Write());
}

TEST(PlexoLaunchSettings, HoldNothingThatEndsAScript) {
  const std::string script = MakeSettings().Write();
  EXPECT_THAT(script, Not(HasSubstr("<")));
  EXPECT_THAT(script, Not(HasSubstr("\u2028")));
  EXPECT_THAT(script, HasSubstr("\\u003c/script>"));
}

TEST(PlexoLaunchSettings, LeaveOutWhatIsEmpty) {
  PlexoAdoptedSCO sco;
  sco.launch = "content/a.htm";
  EXPECT_EQ(PlexoLaunchSettings::Of(sco).Write(),
            "var plexoLaunch = {\n  \"content\": \"../content/a.htm\",\n  \"contentEdition\": \"2004\",\n"
            "  \"courseEdition\": \"2004\",\n  \"title\": \"\"\n};\n");
}

TEST(PlexoLaunchSettings, ReadNothingElse) {
  const std::string editions = R"("contentEdition":"1.2","courseEdition":"2004")";
  EXPECT_TRUE(PlexoLaunchSettings::Read("var plexoLaunch={" + editions + "}"));
  EXPECT_EQ(
      PlexoLaunchSettings::Read("var plexoLaunch={" + editions + R"(,"title":"\ud83d\udd25\n"};)")->title,
      "\U0001F525\n");
  for (const std::string& script : {
           std::string(),
           std::string("var other = {};"),
           std::string("var plexoLaunch = {};"),
           "var plexoLaunch={" + editions,
           "var plexoLaunch={" + editions + "} + evil()",
           "var plexoLaunch={" + editions + "}; evil();",
           "var plexoLaunch={" + editions + ",\"title\":evil()}",
           "var plexoLaunch={" + editions + ",\"title\":\"\\u12g4\"}",
           "var plexoLaunch={" + editions + ",\"title\":\"\\",
           "var plexoLaunch={" + editions + ",\"title\":\"a\",\"title\":\"b\"}",
           "var plexoLaunch={" + editions + ",}",
           std::string(R"(var plexoLaunch={"contentEdition":"1.3","courseEdition":"2004"})"),
       }) {
    EXPECT_FALSE(PlexoLaunchSettings::Read(script)) << script;
  }
}

}  // namespace
