// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "CliTest.h"
#include "support/CheckedPackage.h"

namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;

class AdoptCommandTest : public CliTest {
 protected:
  /// A package of one item, which a course refuses for its version.
  void WriteOne() const {
    ScoZip zip = ScoZip("intro").Item("Fire doors", "index.htm").File("index.htm", "x").File("a.js", "x");
    std::string manifest = zip.GetManifest();
    manifest.replace(manifest.find("\"1.3\""), 5, "\"1\"");
    Write("intro.zip", zip.Manifest(manifest).Build());
  }
  /// A package of the two items FIRST and SECOND.
  void WriteTwo() const { Write("two.zip", CheckedPackage::Scorm2004().Build()); }
};

TEST_F(AdoptCommandTest, WritesThePackageBesideItsSourceAndTellsWhatItChanged) {
  WriteOne();
  const ProgramResult result = Plexo({"adopt", "intro.zip"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "intro-adopted.zip\n"
            "  Fire doors\n"
            "warning PLX-811: the manifest: its version '1' became '1.3', that of SCORM 2004\n");
  EXPECT_EQ(Plexo({"adopt", "intro-adopted.zip", "-o", "again.zip"}).out,
            "again.zip\n  Fire doors\nintro-adopted.zip: a course takes it as it is, too\n");
  EXPECT_EQ(Read("again.zip"), Read("intro-adopted.zip"));
}

TEST_F(AdoptCommandTest, TellsMachinesTheSame) {
  WriteTwo();
  const ProgramResult result = Plexo({"adopt", "two.zip", "-d", "out", "--json"});
  EXPECT_EQ(result.status, 0);
  const Json document = Json::parse(result.out);
  EXPECT_EQ(document["source"], "two.zip");
  EXPECT_EQ(document["needed"], true);
  EXPECT_EQ(document["packages"],
            Json::parse(R"([{"path": "out/two-1.zip", "title": "First", "item": "FIRST"},
                                                 {"path": "out/two-2.zip", "title": "Second", "item": "SECOND"}])"));
  EXPECT_EQ(document["findings"][0]["id"], "PLX-841");
  EXPECT_TRUE(Exists("out/two-1.zip") && Exists("out/two-2.zip"));
}

TEST_F(AdoptCommandTest, ListsTheItemsWhereItCanTakeOne) {
  WriteTwo();
  const ProgramResult refused = Plexo({"adopt", "two.zip"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            "two.zip: 2 of its items can be launched, and one is wanted: 'FIRST' (First), 'SECOND' (Second)\n"
            "  --item ID takes one of them, -d FOLDER makes a package of each\n");
  EXPECT_EQ(Plexo({"adopt", "two.zip", "--item", "SECOND"}).status, 0);
  EXPECT_THAT(Plexo({"inspect", "two-adopted.zip"}).out, HasSubstr("SECOND"));
}

TEST_F(AdoptCommandTest, MakesContentFitTheOtherEdition) {
  Write("old.zip", ScoZip("old").Scorm12().Item("Old", "index.htm").File("index.htm", "x").Build());
  EXPECT_EQ(Plexo({"adopt", "old.zip", "-o", "new.zip", "--scorm", "2004", "--completion-passes"}).status, 0);
  const Json manifest = Json::parse(Plexo({"inspect", "new.zip", "--json"}).out);
  EXPECT_EQ(manifest["scormVersion"], "2004");
  EXPECT_EQ(manifest["href"], "launch/launch.html");
  WriteCourse("new.zip");
  EXPECT_EQ(Plexo({"build", "course.yaml", "-o", "course.zip"}).status, 0);
}

TEST_F(AdoptCommandTest, LetsTheCheckOfACourseSeeThroughTheLaunchPage) {
  const std::string page =
      "<script>API.LMSInitialize(''); API.LMSSetValue('cmi.core.lesson_status', 'completed');"
      "API.LMSFinish('');</script>";
  for (const char* name : {"first", "second"}) {
    Write(std::string(name) + ".zip",
          ScoZip(name).Scorm12().Item(name, "index.htm").File("index.htm", page).Build());
  }
  const auto check = [this](const std::string& target, const std::vector<std::string>& more) {
    for (const char* name : {"first.zip", "second.zip"}) {
      std::vector<std::string> arguments = {"adopt", name, "-d", target, "--scorm", "2004"};
      arguments.insert(arguments.end(), more.begin(), more.end());
      EXPECT_EQ(Plexo(arguments).status, 0);
    }
    WriteCourse(target + "/first.zip, " + target + "/second.zip", "force-sequence: true\n");
    EXPECT_EQ(Plexo({"build", "course.yaml", "-o", target + ".zip"}).status, 0);
    return Plexo({"check", target + ".zip"}).out;
  };
  EXPECT_THAT(check("reported", {}), HasSubstr("PLX-520"));
  EXPECT_EQ(check("passing", {"--completion-passes"}), "passing.zip: nothing found\n");
}

TEST_F(AdoptCommandTest, ReplacesNothingUnlessItIsForcedTo) {
  WriteOne();
  Write("intro-adopted.zip", "mine");
  const ProgramResult kept = Plexo({"adopt", "intro.zip"});
  EXPECT_EQ(kept.status, 1);
  EXPECT_EQ(kept.err, "intro-adopted.zip: exists already; --force replaces it\n");
  EXPECT_EQ(Read("intro-adopted.zip"), "mine");
  EXPECT_EQ(Plexo({"adopt", "intro.zip", "--force"}).status, 0);
  EXPECT_NE(Read("intro-adopted.zip"), "mine");

  const std::string source = Read("intro.zip");
  const ProgramResult itself = Plexo({"adopt", "intro.zip", "-d", ".", "--force"});
  EXPECT_EQ(itself.status, 2);
  EXPECT_THAT(itself.err, HasSubstr("is the package that is adopted"));
  EXPECT_EQ(Read("intro.zip"), source);
}

TEST_F(AdoptCommandTest, RefusesWithTheReasonAndTheWayOut) {
  WriteOne();
  Write("away.zip", ScoZip("away").Item("Away", "http://www.example.com/").Build());
  Write("aicc.zip", ScoZip("a").WithoutManifest().File("course.crs", "x").Build());
  std::string damaged = ScoZip("damaged").Item("Damaged", "a.htm").File("a.htm", "whole").Build();
  damaged.replace(damaged.find("whole"), 5, "other");
  Write("damaged.zip", damaged);
  const struct {
    std::vector<std::string> arguments;
    int status;
    const char* message;
  } cases[] = {
      {{"adopt", "aicc.zip"},
       1,
       "aicc.zip: is an AICC package, not SCORM\n  export the course as SCORM 1.2 or SCORM 2004\n"},
      {{"adopt", "away.zip"},
       1,
       "away.zip: the manifest: no item leads to a page of the package\n"
       "  correct the identifierref of its items, or the href of its resources\n"
       "  item 'I-away': left out: its page 'http://www.example.com/' is on another server\n"},
      {{"adopt", "damaged.zip"},
       1,
       "damaged.zip: can't be unpacked\n  a.htm: the entry's CRC-32 doesn't match\n"},
      {{"adopt", "absent.zip"}, 2, "absent.zip: doesn't exist"},
      {{"adopt"}, 2, "required"},
      {{"adopt", "intro.zip", "--scorm", "1.3"}, 2, "--scorm: '1.3' must be 1.2 or 2004"},
      {{"adopt", "intro.zip", "-o", "a.zip", "-d", "b"}, 2, "excludes"},
      {{"adopt", "intro.zip", "-o", "a.txt"}, 2, "must end in .zip"},
      {{"adopt", "intro.zip", "-o", "none/a.zip"}, 2, "the folder 'none' doesn't exist"},
      {{"adopt", "intro.zip", "-d", "none/b"}, 2, "none/b: the folder can't be made"},
  };
  for (const auto& [arguments, status, message] : cases) {
    const ProgramResult result = Plexo(arguments);
    EXPECT_EQ(result.status, status) << message;
    EXPECT_THAT(result.err, HasSubstr(message));
  }
  EXPECT_THAT(Json::parse(Plexo({"adopt", "aicc.zip", "--json"}).out)["error"]["message"],
              "is an AICC package, not SCORM");
}

}  // namespace
