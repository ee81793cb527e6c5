// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "host/xml/TzXMLSchemaValidator.h"
#include "publish/PlexoPublisher.h"
#include "support/Golden.h"
#include "support/StagedCourse.h"
#include "support/TestSession.h"

namespace {

const std::string kGoldenFolder = PLEXO_SOURCE "/tests/publish/golden";

struct FlatCourse {
  const char* name;
  const char* scormVersion;
  bool forced;
  int scos;
};

std::string WriteAndRead() {
  EXPECT_EQ(PlexoPublisher::GetPublisher()->WriteManifest(), 0);
  return ReadFile(GetCourseModel()->GetWorkingFolder() / "imsmanifest.xml");
}

}  // namespace

TEST(PlexoManifestGolden, FlatCourses) {
  const FlatCourse courses[] = {
      {"flat-free-1.xml", "2004", false, 1},   {"flat-free-3.xml", "2004", false, 3},
      {"flat-forced-1.xml", "2004", true, 1},  {"flat-forced-3.xml", "2004", true, 3},
      {"flat-scorm12-1.xml", "1.2", false, 1}, {"flat-scorm12-3.xml", "1.2", true, 3},
  };
  for (const auto& [name, scormVersion, forced, scos] : courses) {
    TestSession session;
    GetCourseModel()->SetScormVersion(scormVersion);
    GetCourseModel()->SetCourseIdentifier("Fire_Safety");
    GetCourseModel()->SetCourseTitle("Fire safety");
    GetLinearCourseModel()->SetForcedSequence(forced);
    StagedCourse::AddLinearSCOs(scos);
    ExpectGolden(kGoldenFolder, name, WriteAndRead());
  }
}

TEST(PlexoManifestGolden, ModuleCourses) {
  struct Template {
    const char* name;
    PlexoCourseType type;
  };
  const Template templates[] = {{"remediation", PlexoCourseType::CONTENT_POST},
                                {"rollup", PlexoCourseType::PRE_CONTENT_POST}};
  const char* const weightages[] = {"0.25", "0.250000", "0.5"};
  for (const auto& [name, type] : templates) {
    for (const bool forcedModules : {false, true}) {
      for (const bool forcedContent : {false, true}) {
        for (const int modules : {1, 3}) {
          TestSession session;
          GetCourseModel()->SetCourseType(type);
          GetCourseModel()->SetCourseIdentifier("Fire_Safety");
          PlexoModuleCourseModel* course = GetModuleCourseModel();
          course->SetModuleForcedSequence(forcedModules);
          for (int index = 0; index < modules; ++index) {
            const std::string key = std::to_string(index + 7);
            // The second module has no title of its own.
            StagedCourse::AddModule(key, index == 1 ? "" : "Module of key " + key, index + 1);
            course->SetContentForcedSequence(key, forcedContent);
            course->SetWeightage(key, modules == 1 ? "1.0" : weightages[index]);
          }
          const std::string file = std::string(name) + (forcedModules ? "-forced" : "-free") +
                                   (forcedContent ? "-ordered-" : "-open-") + std::to_string(modules) +
                                   ".xml";
          ExpectGolden(kGoldenFolder, file, WriteAndRead());
        }
      }
    }
  }
}

TEST(PlexoManifestGolden, EverythingThatAScoBrings) {
  for (const char* version : {"2004", "1.2"}) {
    TestSession session;
    PlexoCourseModel* course = GetCourseModel();
    course->SetScormVersion(version);
    course->SetCourseIdentifier("Everything");
    course->SetCourseTitle("All <of> \"it\" & hack:more");
    course->SetCourseDescription("What there is");
    course->SetCourseVersion("2.1");
    course->SetCourseDuration("01:30:45");
    course->SetEnableCourseDuration(true);
    course->SetCourseSubject("Safety");
    PlexoSCOManifest sco = StagedCourse::Manifest("int ro");
    sco.title = "Doors & exits \u00fc";
    sco.href = "pages\\index.htm";
    sco.files = {"pages\\index.htm", "media/a b.png", "pages\\index.htm", "/media/c.png", "\\media\\d.png"};
    sco.metadataLocation = "meta.xml";
    sco.hasDataFromLMS = true;
    sco.dataFromLMS = "level=3";
    sco.hasTimeLimitAction = true;
    sco.timeLimitAction = "continue,no message";
    sco.hasMasteryScore = true;
    sco.masteryScore = "55";
    StagedCourse::AddLinear(sco, {"meta.xml"});
    ExpectGolden(kGoldenFolder, std::string("everything-") + version + ".xml", WriteAndRead());
  }
}

TEST(PlexoManifestGolden, DetailsThatAreSwitchedOffAreLeftOutOf2004AndNotOf12) {
  for (const char* version : {"2004", "1.2"}) {
    TestSession session;
    PlexoCourseModel* course = GetCourseModel();
    course->SetScormVersion(version);
    course->SetCourseIdentifier("Off");
    course->SetEnableCourseVersion(false);
    course->SetCourseVersion("2.1");
    course->SetCourseDuration("01:30:45");
    course->SetCourseSubject("Safety");
    PlexoSCOManifest sco = StagedCourse::Manifest("sco1");
    sco.href = "";
    sco.dataFromLMS = "level=3";
    StagedCourse::AddLinear(sco);
    ExpectGolden(kGoldenFolder, std::string("details-off-") + version + ".xml", WriteAndRead());
  }
}

TEST(PlexoManifestGolden, AreValidAgainstThePublishedSchemaDocuments) {
  const TzPath schemas = TzPath::FromNative(PLEXO_BIN "/Templates/Publish/LMS/Standard/SCORM/Default");
  const TzXMLSchemaValidator scorm12(schemas / "1_2/static", "1.2");
  const TzXMLSchemaValidator scorm2004(schemas / "2004/static/3rd", "2004");
  ASSERT_EQ(scorm12.GetSchemaError(), "");
  ASSERT_EQ(scorm2004.GetSchemaError(), "");
  const struct {
    const char* name;
    const TzXMLSchemaValidator& validator;
    std::vector<std::string> against;
  } cases[] = {
      {"flat-free-3.xml", scorm2004, {}},
      {"flat-forced-3.xml", scorm2004, {}},
      {"flat-scorm12-3.xml", scorm12, {}},
      {"remediation-forced-ordered-3.xml", scorm2004, {}},
      {"remediation-free-open-3.xml", scorm2004, {}},
      {"rollup-forced-ordered-3.xml", scorm2004, {}},
      {"rollup-free-open-3.xml", scorm2004, {}},
      {"everything-1.2.xml", scorm12, {}},
      // SCORM 2004 spells these two in camel case; the lower case is written on purpose in both versions.
      {"everything-2004.xml", scorm2004, {"adlcp:datafromlms", "adlcp:timelimitaction"}},
  };
  for (const auto& [name, validator, against] : cases) {
    const auto findings = validator.Validate(TzPath::FromNative(kGoldenFolder) / name);
    ASSERT_EQ(findings.size(), against.size())
        << name << ": " << (findings.empty() ? "" : findings[0].message);
    for (std::size_t index = 0; index < against.size(); ++index) {
      EXPECT_THAT(findings[index].message, testing::HasSubstr(against[index])) << name;
    }
  }
}
