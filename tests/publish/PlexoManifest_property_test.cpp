// SPDX-License-Identifier: Apache-2.0
// What holds in the manifest of every course, tried on random ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <random>
#include <set>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "publish/PlexoPublisher.h"
#include "support/ReadArchive.h"
#include "support/StagedCourse.h"
#include "support/TestSession.h"

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace {

class RandomCourse {
 public:
  explicit RandomCourse(unsigned seed) : random(seed) {}

  void Stage() {
    const auto type = static_cast<PlexoCourseType>(Number(0, 2));
    GetCourseModel()->SetCourseType(type);
    GetCourseModel()->SetCourseIdentifier("Random");
    if (type == PlexoCourseType::LINEAR) {
      StageFlatCourse();
    } else {
      StageModules();
    }
  }

 private:
  void StageFlatCourse() {
    if (Number(0, 3) == 0) GetCourseModel()->SetScormVersion("1.2");
    GetLinearCourseModel()->SetForcedSequence(Flag());
    for (int sco = Number(1, 7); sco > 0; --sco) {
      PlexoSCOManifest manifest = StagedCourse::Manifest("sco" + std::to_string(sco));
      if (Flag()) manifest.files.emplace_back("media\\deep/a.png");
      if (Flag()) manifest.href = "pages\\start.htm";
      manifest.files.push_back(manifest.href);
      StagedCourse::AddLinear(manifest,
                              Flag() ? std::vector<std::string>{"stray.txt"} : std::vector<std::string>{});
    }
  }

  void StageModules() {
    PlexoModuleCourseModel* course = GetModuleCourseModel();
    course->SetModuleForcedSequence(Flag());
    for (int module = Number(1, 12); module > 0; --module) {
      const std::string key = std::to_string(module);
      StagedCourse::AddModule(key, Flag() ? "Module" : "", Number(1, 5));
      course->SetContentForcedSequence(key, Flag());
    }
  }

  int Number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random); }
  bool Flag() { return Number(0, 1) == 1; }

  std::mt19937 random;
};

std::vector<std::string> Values(const pugi::xml_document& manifest, const char* path) {
  std::vector<std::string> values;
  for (const pugi::xpath_node& found : manifest.select_nodes(path)) {
    values.emplace_back(found.attribute() ? found.attribute().value() : found.node().child_value());
  }
  return values;
}

std::set<std::string> SetOf(const std::vector<std::string>& values) { return {values.begin(), values.end()}; }

void ExpectIdentifiersAndReferences(const pugi::xml_document& manifest) {
  const auto identifiers =
      Values(manifest, "//organization/@identifier | //item/@identifier | //resource/@identifier");
  EXPECT_EQ(SetOf(identifiers).size(), identifiers.size());
  const auto resources = Values(manifest, "//resource/@identifier");
  EXPECT_THAT(Values(manifest, "//item/@identifierref"), testing::UnorderedElementsAreArray(resources));
}

void ExpectFilesInPackage(const pugi::xml_document& manifest, const std::set<std::string>& names) {
  for (const std::string& href : Values(manifest, "//resource/@href | //file/@href")) {
    EXPECT_THAT(href, Not(HasSubstr("\\")));
    EXPECT_THAT(names, Contains(href));
  }
  // No two SCOs of the courses share a launch file.
  const auto launched = Values(manifest, "//resource/@href");
  EXPECT_EQ(SetOf(launched).size(), launched.size());
}

void ExpectEveryReadObjectiveToBeWritten(const pugi::xml_document& manifest) {
  const auto written =
      SetOf(Values(manifest,
                   "//*[name()='imsss:mapInfo'][@writeSatisfiedStatus or @writeNormalizedMeasure]"
                   "/@targetObjectiveID"));
  for (const std::string& target : Values(manifest,
                                          "//*[name()='imsss:mapInfo'][not(@writeSatisfiedStatus)]"
                                          "/@targetObjectiveID")) {
    EXPECT_THAT(written, Contains(target));
  }
}

void ExpectRulesToNameObjectivesOfTheirActivity(const pugi::xml_document& manifest) {
  for (const pugi::xpath_node& found : manifest.select_nodes("//*[@referencedObjective]")) {
    pugi::xml_node sequencing = found.node();
    while (sequencing.name() != std::string("imsss:sequencing")) sequencing = sequencing.parent();
    const std::string objective = found.node().attribute("referencedObjective").value();
    EXPECT_FALSE(sequencing.select_nodes((".//*[@objectiveID='" + objective + "']").c_str()).empty())
        << objective;
  }
}

void ExpectObjectivesOfAnActivityToDiffer(const pugi::xml_document& manifest) {
  for (const pugi::xpath_node& found : manifest.select_nodes("//*[name()='imsss:objectives']")) {
    std::set<std::string> identifiers;
    for (const pugi::xml_node objective : found.node().children()) {
      const std::string identifier = objective.attribute("objectiveID").value();
      EXPECT_TRUE(identifiers.insert(identifier).second) << identifier;
    }
  }
}

void ExpectSchemaOrder(const pugi::xml_document& manifest) {
  const std::vector<std::string> order = {"imsss:controlMode", "imsss:sequencingRules", "imsss:rollupRules",
                                          "imsss:objectives", "imsss:deliveryControls"};
  for (const pugi::xpath_node& found : manifest.select_nodes("//*[name()='imsss:sequencing']")) {
    auto expected = order.begin();
    for (const pugi::xml_node child : found.node().children()) {
      expected = std::find(expected, order.end(), child.name());
      ASSERT_NE(expected, order.end()) << child.name() << " out of order";
      ++expected;
    }
  }
}

void ExpectPreTestsToSeeEveryContent(const pugi::xml_document& manifest) {
  for (const pugi::xpath_node& preTest : manifest.select_nodes("//item[contains(@identifier, '_PreTest')]")) {
    const auto count = [&](const char* path) { return preTest.node().select_nodes(path).size(); };
    const std::size_t contents = count("../item[contains(@identifier, 'CLUSTER')]/item");
    EXPECT_EQ(count(".//*[starts-with(@referencedObjective, 'obj-content_')]"), contents);
    EXPECT_EQ(count(".//*[starts-with(@objectiveID, 'obj-content_')]"), contents);
  }
}

}  // namespace

TEST(PlexoManifestProperty, HoldsForRandomCoursesOfAllTemplates) {
  const TestFolder target;
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    TestSession session;
    RandomCourse(seed).Stage();
    GetCourseModel()->SetPublishFolder(target.Path());
    GetCourseModel()->SetPackageName("course.zip");
    ASSERT_EQ(PlexoPublisher::GetPublisher()->PublishPackage(), 0);
    pugi::xml_document manifest;
    const std::string text = ReadFile(GetCourseModel()->GetWorkingFolder() / "imsmanifest.xml");
    ASSERT_TRUE(manifest.load_string(text.c_str()));
    ExpectIdentifiersAndReferences(manifest);
    ExpectFilesInPackage(manifest, SetOf(ReadArchive(target.Path() / "course.zip").Names()));
    ExpectEveryReadObjectiveToBeWritten(manifest);
    ExpectRulesToNameObjectivesOfTheirActivity(manifest);
    ExpectObjectivesOfAnActivityToDiffer(manifest);
    ExpectSchemaOrder(manifest);
    ExpectPreTestsToSeeEveryContent(manifest);
    if (HasFailure()) return;
  }
}
