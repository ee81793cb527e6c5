// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "CliTest.h"

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Json = nlohmann::json;

class InspectCommandTest : public CliTest {
 protected:
  InspectCommandTest() {
    ScoZip("old")
        .Scorm12()
        .Item("Doors &amp; exits", "i.htm")
        .ItemContent("<adlcp:masteryscore>70</adlcp:masteryscore>")
        .File("i.htm", "")
        .File("a/b.js", "")
        .Save(Work());
  }

  Json InspectAsJson(const std::vector<std::string>& options, int status) const {
    std::vector<std::string> arguments = {"inspect", "old.zip", "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramResult result = Plexo(arguments);
    EXPECT_EQ(result.status, status) << result.err;
    return Json::parse(result.out);
  }
};

TEST_F(InspectCommandTest, TellsEveryFieldOfTheReader) {
  const Json expected = Json::parse(R"({
    "identifier": "I-old", "title": "Doors & exits", "href": "i.htm", "metadataLocation": "", "objectiveId": "",
    "scormVersion": "1.2", "masteryScore": "70", "hasMasteryScore": true, "maxTimeAllowed": "",
    "hasMaxTimeAllowed": false, "timeLimitAction": "", "hasTimeLimitAction": false, "dataFromLMS": "",
    "hasDataFromLMS": false, "files": ["i.htm", "a/b.js"], "failed": false, "failureCode": "NONE"})");
  for (const std::vector<std::string>& options : {std::vector<std::string>(), {"--scorm", "1.2"}}) {
    Json document = InspectAsJson(options, 0);
    EXPECT_EQ(document["adoption"]["needed"], false);
    document.erase("adoption");
    EXPECT_EQ(document, expected);
  }
}

TEST_F(InspectCommandTest, SaysWhatAdoptionGivesWhereACourseAdoptsFirst) {
  const Json document = InspectAsJson({"--scorm", "2004"}, 0);
  EXPECT_EQ(document["failed"], true);
  EXPECT_EQ(document["failureCode"], "VERSION");
  EXPECT_EQ(document["masteryScore"], "");
  EXPECT_EQ(document["files"], Json::array());
  EXPECT_EQ(document["adoption"]["needed"], true);
  EXPECT_EQ(document["adoption"]["items"][0]["page"], "content/i.htm");

  const ProgramResult result = Plexo({"inspect", "old.zip", "--scorm", "2004"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "adopted first: item 'I-old': content of SCORM 1.2, launched in SCORM 2004 through a page that "
            "translates\n"
            "  identifier     I-old\n"
            "  title          Doors & exits\n"
            "  launch page    content/i.htm\n"
            "  SCORM version  2004, through a page that translates its SCORM 1.2\n"
            "  files          2\n");
  ScoZip("deep").Item("Deep", "i.htm").File("i.htm", "").InFolder("sub").Save(Work());
  EXPECT_THAT(
      Plexo({"inspect", "deep.zip"}).out,
      StartsWith("adopted first: 'sub/imsmanifest.xml': moved to the top\n  identifier     I-deep\n"));
}

TEST_F(InspectCommandTest, TellsPeopleTheSame) {
  const ProgramResult result = Plexo({"inspect", "old.zip"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_THAT(result.out, StartsWith("identifier         I-old\ntitle              Doors & exits\n"));
  EXPECT_THAT(result.out, HasSubstr("\nlaunch data        -\nfiles              2\n  i.htm\n  a/b.js\n"));
}

TEST_F(InspectCommandTest, SaysWhatIsWrongWithAPackage) {
  ScoZip("bare").WithoutManifest().File("x.htm", "").Save(Work());
  ScoZip("odd").Manifest("<manifest version='1'/>").Save(Work());
  ScoZip("page").Manifest("<html/>").Save(Work());
  ScoZip("nohref").Manifest("<manifest version='1.3'><resource/></manifest>").Save(Work());
  Write("text.zip", "no archive");
  const struct {
    const char* package;
    const char* code;
    const char* message;
    const char* reason;
  } cases[] = {
      {"bare.zip", nullptr, "Invalid SCORM package!", "it has no imsmanifest.xml at its top"},
      {"text.zip", nullptr, "Error extracting the ZIP contents!", ""},
      {"odd.zip", "VERSION",
       "the manifest: neither its schemaversion nor its namespaces, its resources or "
       "its version '1' tell an edition of SCORM",
       "export the course as SCORM 1.2 or SCORM 2004"},
      {"page.zip", "NONE", "'html': the document's element must be 'manifest'", "export the course as SCORM"},
      {"nohref.zip", "PARSE", "the manifest: no item leads to a page of the package",
       "correct the identifierref"},
  };
  for (const auto& [package, code, message, reason] : cases) {
    const ProgramResult result = Plexo({"inspect", package, "--json"});
    EXPECT_EQ(result.status, 1) << package;
    EXPECT_THAT(result.err, StartsWith(std::string(package) + ": " + message + "\n  ")) << package;
    EXPECT_THAT(result.err, HasSubstr(reason)) << package;
    const Json document = Json::parse(result.out);
    if (code != nullptr) {
      EXPECT_EQ(document["failureCode"], code) << package;
    } else {
      EXPECT_EQ(document["error"]["message"], message) << package;
    }
  }
}

TEST_F(InspectCommandTest, LeavesTheUsersManifestAloneWithoutATemporaryFolder) {
  Write("imsmanifest.xml", "precious");
  ProgramRun run = Program({"inspect", "old.zip"});
  // Nobody can make a folder there.
  const ProgramResult result = run.With("TMPDIR", "/proc").Run();
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, StartsWith("old.zip: there is no folder to unpack its manifest into\n  /proc: "));
  EXPECT_EQ(Read("imsmanifest.xml"), "precious");
}

}  // namespace
