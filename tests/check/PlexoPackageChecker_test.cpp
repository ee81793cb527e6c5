// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoPackageChecker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "FaultyPackages.h"
#include "check/PlexoFindingTable.h"
#include "support/CheckedPackage.h"
#include "support/TestSession.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TzPath Schemas() { return TzPath(PLEXO_BIN "/Templates/Publish/LMS/Standard/SCORM/Default"); }

std::vector<PlexoFinding> Check(const std::string& archive, const TzPath& schemas = Schemas()) {
  const TestFolder folder;
  const PlexoCheckResult result = PlexoPackageChecker(schemas).Check(folder.Write("package.zip", archive));
  EXPECT_EQ(result.code, kTzSuccess) << result.failure;
  return result.findings;
}

std::vector<std::string> Texts(const std::vector<PlexoFinding>& findings) {
  std::vector<std::string> texts;
  for (const PlexoFinding& finding : findings) {
    texts.push_back(std::string(PlexoFindingTable::GetKind(finding.id).code) + " " +
                    PlexoFindingTable::GetText(finding));
  }
  return texts;
}

class FaultyPackagesTest : public testing::TestWithParam<std::vector<FaultyPackage> (*)()> {};

TEST_P(FaultyPackagesTest, HaveOneFindingAndNoOther) {
  for (const FaultyPackage& faulty : GetParam()()) {
    std::vector<PlexoFindingId> expected = faulty.consequences;
    expected.push_back(faulty.id);
    std::vector<PlexoFinding> findings = Check(faulty.archive);
    // That a course would lose launch data is no fault of the package.
    std::erase_if(findings, [&](const PlexoFinding& finding) {
      return finding.id != faulty.id && finding.id == PlexoFindingId::LaunchDataUnread;
    });
    std::vector<PlexoFindingId> found;
    for (const PlexoFinding& finding : findings) found.push_back(finding.id);
    const std::string code(PlexoFindingTable::GetKind(faulty.id).code);
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected)) << code;
    EXPECT_THAT(Texts(findings), testing::Contains(testing::AllOf(HasSubstr(code), HasSubstr(faulty.word))));
  }
}

INSTANTIATE_TEST_SUITE_P(All, FaultyPackagesTest,
                         testing::Values(FaultyArchives, FaultyManifests, FaultyReferences, FaultySequencing,
                                         SilentContents, LongTexts));

TEST(PlexoPackageChecker, FindsNothingInAGoodPackage) {
  const auto packages = GoodPackages();
  for (std::size_t number = 0; number < packages.size(); ++number)
    EXPECT_THAT(Texts(Check(packages[number])), IsEmpty()) << number;
}

TEST(PlexoPackageChecker, SaysThatItCouldNotValidateWithoutTheSchemaDocuments) {
  const TestFolder empty;
  EXPECT_THAT(Texts(Check(CheckedPackage::Scorm2004().Build(), empty.Path())),
              ElementsAre(HasSubstr("PLX-104")));
}

TEST(PlexoPackageChecker, HasAPackageForEveryFinding) {
  // The schema documents are no part of a package; what playing finds has courses of its own.
  std::set<PlexoFindingId> produced = {PlexoFindingId::SchemaUnavailable};
  for (auto id = static_cast<int>(PlexoFindingId::ContentNeverReached);
       id <= static_cast<int>(PlexoFindingId::LearnerLostLater); ++id)
    produced.insert(static_cast<PlexoFindingId>(id));
  for (const auto& make :
       {FaultyArchives, FaultyManifests, FaultyReferences, FaultySequencing, SilentContents, LongTexts}) {
    for (const FaultyPackage& faulty : make()) produced.insert(faulty.id);
  }
  for (const PlexoFindingKind& kind : PlexoFindingTable::GetKinds()) {
    // From here on they are the adopter's.
    if (kind.code >= "PLX-8") break;
    EXPECT_TRUE(produced.contains(kind.id)) << kind.code;
  }
}

TEST(PlexoPackageChecker, TellsTheLineAndTheElement) {
  const auto findings = Check(CheckedPackage::Scorm2004().Replace("\"SECOND\"", "\"FIRST\"").Build());
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].place.file, "imsmanifest.xml");
  EXPECT_EQ(findings[0].place.line, 15);
  EXPECT_EQ(findings[0].place.element, "/manifest/organizations[1]/organization[1]/item[2]");

  const auto invalid = Check(CheckedPackage::Scorm2004().At("second", "<bogus\n/>\n<bogus/>").Build());
  ASSERT_EQ(invalid.size(), 1U);
  EXPECT_EQ(invalid[0].place.line, 17);
  EXPECT_EQ(invalid[0].place.element, "/manifest/organizations[1]/organization[1]/item[2]/bogus[1]");
}

TEST(PlexoPackageChecker, OrdersFindingsByIdThenLine) {
  const auto findings = Check(CheckedPackage::Scorm2004()
                                  .Listed("b/x.js")
                                  .Remove("b/x.js")
                                  .Replace("<title>Second</title>", "")
                                  .Replace("<title>First</title>", "")
                                  .Entry({.name = "__MACOSX/a"})
                                  .Build());
  std::vector<int> lines;
  for (const PlexoFinding& finding : findings) lines.push_back(finding.place.line);
  EXPECT_THAT(Texts(findings), ElementsAre(HasSubstr("PLX-014"), HasSubstr("'FIRST'"), HasSubstr("'SECOND'"),
                                           HasSubstr("PLX-401")));
  EXPECT_THAT(lines, ElementsAre(0, 11, 15, 30));
}

TEST(PlexoPackageChecker, FailsWhereTheMachineDoes) {
  const TestFolder folder;
  const PlexoCheckResult result = PlexoPackageChecker(Schemas()).Check(folder.Path() / "absent.zip");
  EXPECT_EQ(result.code, kTzMachineFailure);
  EXPECT_THAT(result.findings, IsEmpty());
}

TEST(PlexoFindingTable, IsThePageInTheDocumentation) {
  EXPECT_EQ(ReadFile(TzPath(PLEXO_SOURCE "/docs/messages.md")), PlexoFindingTable::WriteMarkdown())
      << "write it anew: plexo check --list > docs/messages.md";
}

}  // namespace
