// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "CliTest.h"
#include "support/CheckedPackage.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Json = nlohmann::json;

class CheckCommandTest : public CliTest {
 protected:
  void Save(const CheckedPackage& package) const { Write("a.zip", package.Build()); }
};

TEST_F(CheckCommandTest, PassesAPackageWithoutFaults) {
  Save(CheckedPackage::Scorm2004());
  const ProgramResult result = Plexo({"check", "a.zip"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "a.zip: nothing found\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(CheckCommandTest, TellsPeopleWhatIsWrongWhereAndTheWayOut) {
  Save(CheckedPackage::Scorm2004().Replace("identifierref=\"RES-B\"", "identifierref=\"NONE\""));
  const ProgramResult result = Plexo({"check", "a.zip"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(
      result.out,
      "error PLX-304: An item's resource doesn't exist\n"
      "  imsmanifest.xml:15: /manifest/organizations[1]/organization[1]/item[2]: item 'SECOND': refers to "
      "resource 'NONE', which doesn't exist\n"
      "  Way out: correct the identifierref, or add the resource\n"
      "\n"
      "hint PLX-212: A SCO is never launched\n"
      "  imsmanifest.xml:28: /manifest/resources[1]/resource[2]: resource 'RES-B': a SCO that no item "
      "launches\n"
      "  Way out: add an item for it, or remove it\n"
      "\n"
      "a.zip: 1 error, 1 hint\n");
}

TEST_F(CheckCommandTest, TellsMachinesTheSame) {
  Save(CheckedPackage::Scorm2004().File("stray.txt", ""));
  const ProgramResult result = Plexo({"check", "a.zip", "--json"});
  EXPECT_EQ(result.status, 0);
  Json document = Json::parse(result.out);
  EXPECT_GT(document["played"]["states"], 1);
  EXPECT_EQ(document["played"]["complete"], true);
  document.erase("played");
  EXPECT_EQ(document, Json::parse(R"({
    "package": "a.zip", "errors": 0, "warnings": 0, "hints": 1,
    "findings": [{"id": "PLX-405", "severity": "hint", "title": "A file isn't listed in the manifest",
      "file": "stray.txt", "line": 0, "element": "",
      "text": "'stray.txt': no resource lists it, so an LMS may leave it out",
      "wayOut": "list it, or remove it"}]})"));
}

TEST_F(CheckCommandTest, PrintsTheScriptThatShowsAFinding) {
  Save(CheckedPackage::Scorm2004().Replace("<imsss:controlMode flow=\"true\"/>", ""));
  EXPECT_THAT(Plexo({"check", "a.zip"}).out,
              HasSubstr("  See it: plexo check a.zip --witness PLX-528 | plexo play a.zip\n"));
  const ProgramResult witness = Plexo({"check", "a.zip", "--witness", "PLX-528"});
  EXPECT_EQ(witness.status, 0);
  EXPECT_EQ(Json::parse(Plexo({"check", "a.zip", "--json"}).out)["findings"][0]["witness"], witness.out);
  Write("script", witness.out);
  EXPECT_EQ(Plexo({"play", "a.zip", "script"}).status, 0);
  // The course without the fault doesn't behave so.
  Save(CheckedPackage::Scorm2004());
  EXPECT_EQ(Plexo({"play", "a.zip", "script"}).status, 3);
  const ProgramResult none = Plexo({"check", "a.zip", "--witness", "PLX-528"});
  EXPECT_EQ(none.status, 2);
  EXPECT_THAT(none.err, HasSubstr("a.zip: has no finding 'PLX-528' that comes of playing the course\n"));
}

TEST_F(CheckCommandTest, FailsOnWarningsOnlyIfItIsStrict) {
  Save(CheckedPackage::Scorm2004().Replace("<file href=\"b/index.htm\"/>", ""));
  EXPECT_EQ(Plexo({"check", "a.zip"}).status, 0);
  EXPECT_EQ(Plexo({"check", "a.zip", "--strict"}).status, 3);
}

TEST_F(CheckCommandTest, ShowsSomeOfAKindAndAllIfItIsVerbose) {
  CheckedPackage package = CheckedPackage::Scorm2004();
  for (int number = 0; number < 12; ++number)
    package.Entry({.name = "a/stray" + std::to_string(number) + "?"});
  package.File("a/large", "large").File("a/late.js", "");
  Save(package);
  EXPECT_THAT(Plexo({"check", "a.zip"}).out,
              StartsWith("warning PLX-013: A name can't be used on Windows\n  '"));
  EXPECT_THAT(Plexo({"check", "a.zip"}).out, HasSubstr("  and 2 more; --verbose shows them all\n"));
  EXPECT_THAT(
      Plexo({"check", "a.zip"}).out,
      HasSubstr("\nhint PLX-405: A file isn't listed in the manifest: 14, such as 'a/late.js', 'a/large', "
                "'a/stray0?'; --verbose tells more\n\n"));
  const std::string all = Plexo({"check", "a.zip", "--verbose"}).out;
  EXPECT_THAT(all, HasSubstr("\n  'a/stray11?': no resource lists it"));
  EXPECT_THAT(all, HasSubstr("\n  Way out: list it, or remove it\n"));
  EXPECT_THAT(all, Not(HasSubstr("more")));
  EXPECT_EQ(Json::parse(Plexo({"check", "a.zip", "--json"}).out)["findings"].size(), 26U);
}

TEST_F(CheckCommandTest, RefusesWhatItCannotCheck) {
  const struct {
    std::vector<std::string> arguments;
    const char* message;
  } cases[] = {
      {{"check", "absent.zip"}, "absent.zip: doesn't exist"},
      {{"check", "."}, ".: isn't a file; expected a SCORM package"},
      {{"check"}, "required"},
      {{"check", "a.zip", "--list"}, "2 were given"},
  };
  for (const auto& [arguments, message] : cases) {
    const ProgramResult result = Plexo(arguments);
    EXPECT_EQ(result.status, 2) << message;
    EXPECT_THAT(result.err, HasSubstr(message));
  }
}

TEST_F(CheckCommandTest, TellsAFailureOfTheMachineFromFindings) {
  Save(CheckedPackage::Scorm2004());
  const ProgramResult result =
      Program({"check", "a.zip"}).Prepare([] { static_cast<void>(freopen("/dev/full", "w", stdout)); }).Run();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "standard output: can't write\n");
}

TEST_F(CheckCommandTest, PrintsTheTableThatTheDocumentationHolds) {
  EXPECT_EQ(Plexo({"check", "--list"}).out, ReadFile(TzPath(PLEXO_SOURCE "/docs/messages.md")));
}

TEST_F(CheckCommandTest, FindsNoErrorInTheExamplesAndTheCoursesMadeOfThem) {
  const std::filesystem::path examples = PLEXO_SOURCE "/examples/fire-safety";
  const std::filesystem::path work = Work().GetNative();
  ASSERT_EQ(ProgramRun(examples / "build-packages", {work / "packages"}).Run().status, 0);
  std::vector<std::string> packages;
  for (const auto& file : std::filesystem::recursive_directory_iterator(work / "packages"))
    if (file.is_regular_file()) packages.push_back(file.path().string());
  for (const auto& file : std::filesystem::directory_iterator(examples)) {
    if (file.path().extension() != ".yaml") continue;
    std::filesystem::copy(file, work);
    packages.push_back(file.path().stem().string() + ".zip");
    ASSERT_EQ(Plexo({"build", file.path().filename(), "-o", packages.back()}).status, 0) << packages.back();
  }
  EXPECT_EQ(packages.size(), 11U);
  for (const std::string& package : packages) {
    const ProgramResult result = Plexo({"check", package});
    EXPECT_EQ(result.status, 0) << package << "\n" << result.out;
  }
}

}  // namespace
