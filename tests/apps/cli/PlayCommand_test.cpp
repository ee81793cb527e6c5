// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "CliTest.h"

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Json = nlohmann::json;

/// A course of two items in a 2004 package, "one" and "two", of which the second opens when the first is
/// passed.
const std::string kManifest =
    R"(<manifest xmlns="http://www.imsglobal.org/xsd/imscp_v1p1" identifier="M" version="1.3"
  xmlns:imsss="http://www.imsglobal.org/xsd/imsss" xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3">
<metadata><schema>ADL SCORM</schema><schemaversion>2004 3rd Edition</schemaversion></metadata>
<organizations default="C"><organization identifier="C"><title>Course</title>
<item identifier="one" identifierref="R"><title>First</title><imsss:sequencing><imsss:objectives>
  <imsss:primaryObjective objectiveID="p"><imsss:mapInfo targetObjectiveID="g" writeSatisfiedStatus="true"/>
  </imsss:primaryObjective></imsss:objectives>
  <imsss:deliveryControls completionSetByContent="true" objectiveSetByContent="true"/></imsss:sequencing></item>
<item identifier="two" identifierref="A"><title>Second</title><imsss:sequencing><imsss:sequencingRules>
  <imsss:preConditionRule><imsss:ruleConditions conditionCombination="any">
    <imsss:ruleCondition condition="satisfied" referencedObjective="o" operator="not"/>
    <imsss:ruleCondition condition="objectiveStatusKnown" referencedObjective="o" operator="not"/>
  </imsss:ruleConditions><imsss:ruleAction action="disabled"/></imsss:preConditionRule></imsss:sequencingRules>
  <imsss:objectives><imsss:primaryObjective/><imsss:objective objectiveID="o">
    <imsss:mapInfo targetObjectiveID="g"/></imsss:objective></imsss:objectives></imsss:sequencing></item>
<imsss:sequencing><imsss:controlMode flow="true"/></imsss:sequencing></organization></organizations>
<resources><resource identifier="R" adlcp:scormType="sco" href="index.htm"/>
<resource identifier="A" adlcp:scormType="asset" href="index.htm"/></resources></manifest>)";

class PlayCommandTest : public CliTest {
 protected:
  PlayCommandTest() { ScoZip("course").Manifest(kManifest).File("index.htm", "").Save(Work()); }

  ProgramResult Play(const std::string& script, const std::vector<std::string>& options = {}) const {
    Write("script.txt", script);
    std::vector<std::string> arguments = {"play", "course.zip", "script.txt"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Plexo(arguments);
  }
  std::vector<Json> PlayAsJson(const std::string& script, int status) const {
    const ProgramResult result = Play(script, {"--json"});
    EXPECT_EQ(result.status, status) << result.err;
    std::vector<Json> objects;
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) objects.push_back(Json::parse(line));
    return objects;
  }
  /// The script comes from standard input.
  ProgramResult Pipe(const std::string& script, const std::vector<std::string>& options = {}) const {
    Write("piped.txt", script);
    std::vector<std::string> arguments = {"play", "course.zip"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ProgramRun run = Program(arguments);
    const std::string path = (Work() / "piped.txt").GetNative();
    run.Prepare([path] { dup2(open(path.c_str(), O_RDONLY), STDIN_FILENO); });
    return run.Run();
  }
};

TEST_F(PlayCommandTest, TellsWhatEachLineComesTo) {
  const ProgramResult result =
      Play("# a comment\nstart\n\n  success   failed # another\ncontinue\nwhy two\n");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(
      result.out,
      "> start\n  delivers one 'First'\n> success   failed\n> continue\n"
      "  delivers nothing: 'Second' is disabled: not satisfied of 'o' is true, or not objectiveStatusKnown "
      "of "
      "'o' is false (SB.2.2-2)\n> why two\n"
      "  closed: 'Second' is disabled: not satisfied of 'o' is true, or not objectiveStatusKnown of 'o' is "
      "false (DB.1.1-3)\n");
}

TEST_F(PlayCommandTest, FailsWithEveryExpectationThatIsNotMet) {
  const struct {
    const char* expectation;
    const char* found;
  } cases[] = {
      {"deliver two", "expected: two; found: one"},
      {"deliver end", "expected: end; found: one"},
      {"deliver none", "expected: none; found: one"},
      {"completed one true", "expected: true; found: unknown"},
      {"satisfied one unknown", "expected: unknown; found: true"},
      {"attempted two true", "expected: true; found: false"},
      {"measure one 0.75", "expected: 0.75; found: 0.8"},
      {"measure one unknown", "expected: unknown; found: 0.8"},
      {"measure two 0.8", "expected: 0.8; found: unknown"},
      {"cannot continue", "expected: cannot; found: can"},
      {"cannot choice two", "expected: cannot; found: can"},
      {"can previous", "expected: can; found: cannot: nothing comes before the first activity (SB.2.1-3)"},
  };
  std::string script = "start\nsuccess passed\nscore 0.8\nexpect deliver one\nexpect measure one 0.8\n";
  for (const auto& [expectation, found] : cases) script += std::string("expect ") + expectation + "\n";
  const ProgramResult result = Play(script);
  EXPECT_EQ(result.status, 3);
  int line = 6;
  for (const auto& [expectation, found] : cases) {
    EXPECT_THAT(result.out, HasSubstr("\n> expect " + std::string(expectation) + "\n  script.txt:" +
                                      std::to_string(line++) + ": failed: " + found + "\n"));
  }
  EXPECT_THAT(result.out, EndsWith("\n12 of 14 expectations failed\n"));
  EXPECT_THAT(Play("expect deliver none\n").out, HasSubstr("found: nothing was requested yet"));
}

TEST_F(PlayCommandTest, NamesTheWordOfAScriptThatIsWrong) {
  const struct {
    const char* line;
    const char* mistake;
  } cases[] = {
      {"contine", "1: 'contine' isn't understood; allowed: start, continue, previous, choice, jump, exit, "},
      {"  start now", "9: 'now' is one word too many; nothing follows here\n"},
      {"choice", "7: an item's identifier is missing\n"},
      {"choice   three", "10: the course has no item 'three'; 'tree' lists all of them\n"},
      {"choice \"one", "8: the quote doesn't end\n"},
      {"status passed", "8: 'passed' isn't one of completed, incomplete, unknown\n"},
      {"score 80", "7: '80' is out of range; allowed are -1 to 1, as the content reports it\n"},
      {"progress -0.5", "10: '-0.5' is out of range; allowed are 0 to 1"},
      {"score nan", "7: 'nan' isn't a number; expected one such as 0.8, or 'unknown'\n"},
      {"score 1e999", "7: '1e999' isn't a number"},
      {"objective ö fail", "13: 'fail' isn't one of passed, failed, unknown\n"},
      {"expect", "7: one of deliver, completed, satisfied, attempted, measure, can, cannot is missing\n"},
      {"expect completed one yes", "22: 'yes' isn't one of true, false, unknown\n"},
      {"expect can jump one", "12: 'jump' isn't one of continue, previous, choice\n"},
      {"save \"\"", "6: the file's name is empty\n"},
  };
  for (const auto& [line, mistake] : cases) {
    const ProgramResult result = Play(std::string("start\n") + line + "\n");
    EXPECT_EQ(result.status, 2) << line;
    EXPECT_THAT(result.err, StartsWith(std::string("script.txt:2:") + mistake)) << line;
    EXPECT_EQ(result.out, "") << "nothing is played of a script with a mistake";
  }
}

TEST_F(PlayCommandTest, TakesScriptsOfAnyEditor) {
  EXPECT_THAT(Play("\xEF\xBB\xBFstart\r\nexpect deliver \"one\"\r\nquit\r\nexpect deliver two").out,
              EndsWith("\nthe expectation holds\n"));
}

TEST_F(PlayCommandTest, PlaysFromStandardInputUpToAMistake) {
  const ProgramResult result = Pipe("start\nbegin\ncontinue\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.out, "> start\n  delivers one 'First'\n");
  EXPECT_THAT(result.err, StartsWith("standard input:2:1: 'begin' isn't understood"));
  EXPECT_EQ(Pipe("start\nexpect deliver two\n", {"-"}).status, 3);
}

TEST_F(PlayCommandTest, SaysWhatIsNotRecorded) {
  const ProgramResult result = Play(
      "score 1\nstart\nobjective x passed\nsuccess passed\ncontinue\nexpect deliver two\nsuccess "
      "failed\nexit\n"
      "expect satisfied two true\n");
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_THAT(result.out, HasSubstr("> score 1\n  not recorded: no content is running\n"));
  EXPECT_THAT(result.out, HasSubstr("  not recorded: one 'First' declares no objective 'x'\n"));
  EXPECT_THAT(result.out, HasSubstr("  not recorded: two 'Second' is an asset, which reports nothing\n"));
}

TEST_F(PlayCommandTest, ShowsWhatTheLearnerSeesAndWhatIsTracked) {
  const ProgramResult result = Play("start\nscore 0.25\nstatus completed\ntoc\ntree\nglobals\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("  >   one 'First'   completed  -  open\n"));
  EXPECT_THAT(result.out, HasSubstr("  continue: closed: 'Second' is disabled: "));
  EXPECT_THAT(
      result.out,
      HasSubstr("    one 'First'      true       unknown    0.25     -         1         current, active\n"));
  EXPECT_THAT(result.out, HasSubstr("      objective 'o'             unknown    -\n"));
  EXPECT_THAT(result.out, HasSubstr("  g  unknown    -        unknown    -\n"));
}

TEST_F(PlayCommandTest, AnswersAProgramInALineOfJsonEach) {
  const auto objects =
      PlayAsJson("start\nscore 0.25\nexpect deliver two\ntoc\ntree\nglobals\nwhy two\ncontinue\n", 3);
  ASSERT_EQ(objects.size(), 8U);
  EXPECT_EQ(objects[0]["delivered"], "one");
  EXPECT_EQ(objects[0]["line"], 1);
  EXPECT_EQ(objects[1]["recorded"], true);
  EXPECT_EQ(objects[2]["holds"], false);
  EXPECT_EQ(objects[2]["found"], "one");
  EXPECT_EQ(objects[3]["toc"][1]["current"], true);
  EXPECT_EQ(objects[3]["continue"]["open"], false);
  EXPECT_EQ(objects[4]["tree"][1]["measure"], 0.25);
  EXPECT_EQ(objects[4]["tree"][1]["completed"], nullptr);
  EXPECT_EQ(objects[4]["tree"][2]["objectives"][0]["id"], "o");
  EXPECT_EQ(objects[5]["globals"][0]["satisfied"], nullptr);
  EXPECT_EQ(objects[6]["by"], "two");
  EXPECT_EQ(objects[6]["conditions"][1]["result"], true);
  EXPECT_EQ(objects[7]["delivered"], nullptr);
  EXPECT_EQ(objects[7]["code"], "SB.2.2-2");
  const auto mistakes = PlayAsJson("begin\n", 2);
  ASSERT_EQ(mistakes.size(), 1U);
  EXPECT_EQ(mistakes[0]["error"]["subject"], "script.txt:1:1");
}

TEST_F(PlayCommandTest, KeepsALearnerInAFileBesideTheScript) {
  EXPECT_EQ(Play("start\nsuccess passed\nsuspendall\nsave learner\n").status, 0);
  EXPECT_TRUE(Exists("learner"));
  EXPECT_EQ(Play("load learner\nresumeall\nexpect deliver one\ncontinue\nexpect deliver two\nsave learner\n")
                .status,
            0);
  EXPECT_EQ(Play("load learner\nexpect attempted two true\nexit\nexpect deliver none").status, 0);

  Write("precious.txt", "mine");
  Write("damaged", Read("learner") + "x");
  const struct {
    const char* script;
    int status;
    const char* message;
  } cases[] = {
      {"save precious.txt", 1,
       "precious.txt: exists already and isn't a saved learner; choose another name\n"},
      {"save none/learner", 3, "none/learner: can't be written: No such file or directory\n"},
      {"load precious.txt", 1, "precious.txt: isn't a saved learner\n"},
      {"load damaged", 1, "damaged: is damaged, or was saved in another course\n"},
      {"load gone", 2, "gone: there is no such file; 'save' makes one\n"},
  };
  for (const auto& [script, status, message] : cases) {
    const ProgramResult result = Play(script);
    EXPECT_EQ(result.status, status) << script;
    EXPECT_EQ(result.err, message) << script;
  }
  EXPECT_EQ(Read("precious.txt"), "mine");
}

TEST_F(PlayCommandTest, SelectsBySeed) {
  std::string items;
  for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h"})
    items += "<item identifier='" + std::string(name) + "' identifierref='R'><title>T</title></item>";
  ScoZip("course")
      .Manifest(R"(<manifest xmlns="http://www.imsglobal.org/xsd/imscp_v1p1" identifier="M" version="1.3"
        xmlns:imsss="http://www.imsglobal.org/xsd/imsss" xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3">
        <metadata><schemaversion>2004 3rd Edition</schemaversion></metadata><organizations>
        <organization identifier="C">)" +
                items + R"(<imsss:sequencing><imsss:controlMode flow="true"/>
        <imsss:randomizationControls randomizationTiming="once" reorderChildren="true"/></imsss:sequencing>
        </organization></organizations><resources>
        <resource identifier="R" adlcp:scormType="sco" href="index.htm"/></resources></manifest>)")
      .Save(Work());
  const std::string script = "start\ncontinue\ncontinue\ncontinue\ncontinue\n";
  EXPECT_EQ(Play(script, {"--seed", "7"}).out, Play(script, {"--seed", "7"}).out);
  EXPECT_NE(Play(script, {"--seed", "7"}).out, Play(script, {"--seed", "8"}).out);
}

TEST_F(PlayCommandTest, SaysWhyAPackageCanNotBePlayed) {
  ScoZip("old")
      .Manifest("<manifest><metadata><schemaversion>1.2</schemaversion></metadata></manifest>")
      .Save(Work());
  ScoZip("bare").WithoutManifest().File("i.htm", "").Save(Work());
  ScoZip("broken").Manifest("<manifest>\n<a></manifest>").Save(Work());
  ScoZip("page").Manifest("<html/>").Save(Work());
  ScoZip("unversioned").Manifest("<manifest/>").Save(Work());
  Write("text.zip", "no archive");
  Write("script.txt", "start\n");
  const struct {
    const char* package;
    int status;
    const char* message;
  } cases[] = {
      {"old.zip", 1,
       "old.zip: the package is of SCORM 1.2, which leaves the order of its items to the LMS; only "},
      {"bare.zip", 1, "bare.zip: it has no imsmanifest.xml at its top\n"},
      {"broken.zip", 1, "broken.zip: imsmanifest.xml:2: "},
      {"page.zip", 1, "page.zip: its imsmanifest.xml has no manifest element\n"},
      {"unversioned.zip", 1,
       "unversioned.zip: the manifest's schemaversion names no edition of SCORM 2004\n"},
      {"text.zip", 1, "text.zip: "},
      {"gone.zip", 2, "gone.zip: doesn't exist\n"},
  };
  for (const auto& [package, status, message] : cases) {
    const ProgramResult result = Plexo({"play", package, "script.txt"});
    EXPECT_EQ(result.status, status) << package;
    EXPECT_THAT(result.err, StartsWith(message)) << package;
    EXPECT_EQ(result.out, "") << package;
  }
  const ProgramResult scriptless = Plexo({"play", "course.zip", "gone.txt"});
  EXPECT_EQ(scriptless.status, 2);
  EXPECT_EQ(scriptless.err, "gone.txt: can't be read: No such file or directory\n");
  EXPECT_THAT(Plexo({"play", "course.zip", "."}).err, StartsWith(".: can't be read: "));
}

TEST_F(PlayCommandTest, WarnsOfWhatItPlaysOtherwiseThanWritten) {
  std::string manifest = kManifest;
  manifest.replace(manifest.find("flow=\"true\""), 11, "flow=\"yes\"");
  ScoZip("course").Manifest(manifest).File("index.htm", "").Save(Work());
  const ProgramResult result = Play("start\nexpect deliver none\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "warning: course.zip: imsmanifest.xml:16: 'flow' of 'controlMode': 'yes' isn't one of the values "
            "allowed; "
            "it is ignored\n");
}

}  // namespace
