// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "CliTest.h"

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// A manifest of a version that a course refuses, whose items launch the pages of these names.
std::string ForeignManifest(const std::vector<std::string>& pages) {
  std::string items;
  std::string resources;
  for (const std::string& page : pages) {
    items +=
        "<item identifier='I-" + page + "' identifierref='R-" + page + "'><title>" + page + "</title></item>";
    resources += "<resource identifier='R-" + page + "' type='webcontent' adlcp:scormType='sco' href='" +
                 page + ".htm'><file href='" + page + ".htm'/></resource>";
  }
  return "<manifest identifier='M' version='1' xmlns='http://www.imsglobal.org/xsd/imscp_v1p1' "
         "xmlns:adlcp='http://www.adlnet.org/xsd/adlcp_v1p3'><metadata><schema>ADL SCORM</schema>"
         "<schemaversion>2004 3rd Edition</schemaversion></metadata><organizations default='O'>"
         "<organization identifier='O'><title>O</title>" +
         items + "</organization></organizations><resources>" + resources + "</resources></manifest>";
}

class PackageIntakeTest : public CliTest {
 protected:
  PackageIntakeTest() {
    ScoZip("clean").Item("Clean", "index.htm").File("index.htm", "").Save(Work());
    SaveForeign("odd", {"start"});
    SaveForeign("many", {"one", "two"});
  }

  void SaveForeign(const std::string& name, const std::vector<std::string>& pages,
                   const std::string& content = "<p>page</p>") const {
    ScoZip zip(name);
    zip.Manifest(ForeignManifest(pages));
    for (const std::string& page : pages) zip.File(page + ".htm", content);
    zip.Save(Work());
  }

  /// Builds a flat course; `more` are further lines of its file.
  [[nodiscard]] ProgramResult Build(const std::string& files, const std::string& more = {}) const {
    WriteCourse(files, more);
    return Plexo({"build", "course.yaml", "-o", "out.zip", "--force"});
  }

  /// Builds a course of one module; `more` are further keys of it.
  [[nodiscard]] ProgramResult BuildModule(const std::string& pretest, const std::string& content,
                                          const std::string& more = {}) const {
    Write("course.yaml", "template: test-rollup\nidentifier: C\nmodules:\n  - {pretest: " + pretest +
                             ", content: [" + content + "], post-test: clean.zip" + more + "}\n");
    return Plexo({"build", "course.yaml", "-o", "out.zip", "--force"});
  }
};

TEST_F(PackageIntakeTest, AdoptsWhatTheCourseWouldRefuseAndNothingElse) {
  const ProgramResult result = Build("clean.zip, odd.zip");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "out.zip\n  Clean  index.htm          1 file\n  start  content/start.htm  1 file\n");
  EXPECT_THAT(result.err, AllOf(StartsWith("odd.zip: adopted: "), HasSubstr("version")));
  EXPECT_EQ(std::ranges::count(result.err, '\n'), 1);
  EXPECT_EQ(Plexo({"check", "out.zip"}).status, 0);

  WriteCourse("clean.zip, odd.zip");
  const auto scos =
      nlohmann::json::parse(Plexo({"build", "course.yaml", "-o", "b.zip", "--json"}).out)["scos"];
  EXPECT_EQ(scos[0]["adopted"], false);
  EXPECT_EQ(scos[1]["adopted"], true);
  EXPECT_EQ(Read("b.zip") == Read("out.zip"), true);
}

TEST_F(PackageIntakeTest, TakesFilesAsTheyAreOrAdoptsThemAllWhenAsked) {
  const ProgramResult asIs = Build("odd.zip", "intake: as-is\n");
  EXPECT_EQ(asIs.status, 1);
  EXPECT_THAT(asIs.err, StartsWith("odd.zip: SCO selected is of incompatible SCORM version!\n"));

  const ProgramResult always = Build("clean.zip", "intake: always\n");
  EXPECT_EQ(always.status, 0);
  EXPECT_EQ(always.err, "clean.zip: adopted: the course file asks for it\n");
  EXPECT_EQ(always.out, "out.zip\n  Clean  content/index.htm  1 file\n");
}

TEST_F(PackageIntakeTest, MakesSCOsOfAllItemsInAListAndOfTheNamedOneElsewhere) {
  EXPECT_EQ(Build("many.zip, clean.zip").out,
            "out.zip\n  one    content/one.htm  1 file\n  two    content/two.htm  1 file\n"
            "  Clean  index.htm        1 file\n");
  EXPECT_THAT(BuildModule("clean.zip", "many.zip").out,
              AllOf(HasSubstr("content    one"), HasSubstr("content    two")));

  const ProgramResult refused = BuildModule("many.zip", "clean.zip");
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, AllOf(StartsWith("many.zip: "), HasSubstr("I-one"), HasSubstr("I-two"),
                                 HasSubstr("{file: ..., item: ...}")));
  const ProgramResult named = BuildModule("{file: many.zip, item: I-two}", "clean.zip");
  EXPECT_EQ(named.status, 0) << named.err;
  EXPECT_THAT(named.out, HasSubstr("pretest    two    content/two.htm"));
  EXPECT_THAT(Build("{file: many.zip, item: none}").err, StartsWith("many.zip: "));
}

TEST_F(PackageIntakeTest, WarnsOfContentThatNeverPassesWhereACourseWaitsForIt) {
  SaveForeign("finisher", {"start"},
              "<script>API_1484_11.Initialize('');API_1484_11.SetValue('cmi.completion_status','completed');"
              "API_1484_11.Terminate('');</script>");
  const std::string warning = "warning: finisher.zip: item 'I-start': reports completion and never success";
  EXPECT_THAT(Build("finisher.zip", "force-sequence: true\n").err, HasSubstr(warning));
  EXPECT_THAT(BuildModule("clean.zip", "finisher.zip", ", force-content-sequence: true").err,
              HasSubstr(warning));
  EXPECT_THAT(BuildModule("finisher.zip", "clean.zip").err, HasSubstr(warning));
  EXPECT_THAT(BuildModule("clean.zip", "finisher.zip").err, Not(HasSubstr("warning: finisher")))
      << "a module asks whether its content is completed";
  EXPECT_THAT(Build("finisher.zip").err, Not(HasSubstr("warning")));

  EXPECT_THAT(Build("clean.zip", "force-sequence: true\n").err,
              HasSubstr("warning: clean.zip: item 'I-clean': reports neither completion nor success"));

  const ProgramResult passing =
      Build("{file: finisher.zip, completion-passes: true}", "force-sequence: true\n");
  EXPECT_EQ(passing.status, 0);
  EXPECT_THAT(passing.err, Not(HasSubstr("warning")));
  EXPECT_THAT(passing.out, HasSubstr("content/start.htm"));
}

TEST_F(PackageIntakeTest, WarnsOfContentThatMayBeSetToCompleteOnly) {
  SaveForeign("library", {"start"},
              "<script>API_1484_11.Initialize('');"
              "function complete(){API_1484_11.SetValue('cmi.completion_status','completed');}"
              "function pass(){complete();API_1484_11.SetValue('cmi.success_status','passed');complete();}"
              "function end(){API_1484_11.SetValue('cmi.completion_status', 'completed');"
              "API_1484_11.Terminate('');}</script>");
  const std::string warning = "warning: library.zip: item 'I-start': can't tell whether it reports success";
  const std::string error = Build("library.zip", "force-sequence: true\n").err;
  EXPECT_THAT(error, AllOf(HasSubstr(warning), HasSubstr("'completion-passes: true' in the course file, "
                                                         "beside the file or for the whole course")));
  const ProgramResult passing = Build("library.zip", "force-sequence: true\ncompletion-passes: true\n");
  EXPECT_EQ(passing.status, 0);
  EXPECT_THAT(passing.err, Not(HasSubstr("warning")));
  EXPECT_THAT(Read("out.zip"), HasSubstr("launch/settings.js"));
}

TEST_F(PackageIntakeTest, SaysWhatTheCourseLosesOfEachSCO) {
  ScoZip("quiz")
      .Scorm12()
      .Item("Quiz", "q.htm")
      .ItemContent(
          "<adlcp:datafromlms>level=2</adlcp:datafromlms><adlcp:masteryscore>70</adlcp:masteryscore>")
      .File("q.htm", "")
      .Save(Work());
  const std::string mark =
      "warning: quiz.zip: item 'I-quiz': its pass mark '70' is lost in a course of SCORM 1.2";
  const std::string data = "warning: quiz.zip: item 'I-quiz': its launch data 'level=2' is lost";
  for (const char* intake : {"intake: always\n", "intake: as-is\n", ""}) {
    const std::string error = Build("quiz.zip", std::string("scorm: 1.2\n") + intake).err;
    EXPECT_THAT(error, AllOf(HasSubstr(mark), HasSubstr(data))) << intake;
  }
  EXPECT_THAT(Plexo({"adopt", "quiz.zip"}).out,
              HasSubstr("warning PLX-865: item 'I-quiz': its pass mark '70'"));
  EXPECT_THAT(Plexo({"check", "quiz.zip"}).out, HasSubstr("its launch data 'level=2' is lost"));
  EXPECT_THAT(Plexo({"check", "out.zip"}).out,
              HasSubstr("LMSs that keep the last one lose the value 'level=2'"));
}

TEST_F(PackageIntakeTest, RefusesWhatWouldLaunchNothing) {
  const std::string good = ScoZip("x").Scorm12().Item("X", "x.htm").File("x.htm", "").GetManifest();
  const auto save = [&](const std::string& name, const std::string& find, const std::string& replacement) {
    std::string manifest = good;
    manifest.replace(manifest.find(find), find.size(), replacement);
    ScoZip(name).File("x.htm", "").File("i.htm", "").Manifest(manifest).Save(Work());
  };
  save("torn", "</item>", "</itm>");
  save("gone", "href=\"x.htm\">", "href=\"gone.htm\">");
  save("away", "href=\"x.htm\">", "href=\"http://www.example.com/x.htm\">");
  save("above", "href=\"x.htm\">", "href=\"../../x.htm\">");
  save("moved", "href=\"x.htm\">", "href=\"i.htm\">");
  const struct {
    const char* file;
    const char* adopted;
    const char* asIs;
  } cases[] = {
      {"torn.zip", "imsmanifest.xml", "its manifest names no launch page"},
      {"gone.zip", "its page 'gone.htm' isn't in the package",
       "its launch page 'gone.htm' isn't in the package"},
      {"away.zip", "is on another server",
       "its launch page 'http://www.example.com/x.htm' is on another server"},
      {"above.zip", "lies outside the package", "its launch page '../../x.htm' lies outside the package"},
      {"moved.zip", nullptr, "its launch page 'i.htm' isn't among the files that its manifest lists"},
  };
  for (const auto& [file, adopted, asIs] : cases) {
    if (adopted != nullptr) {
      for (const ProgramResult& result : {Build(file, "scorm: 1.2\n"), Plexo({"inspect", file})}) {
        EXPECT_EQ(result.status, 1) << file;
        EXPECT_THAT(result.err, AllOf(StartsWith(std::string(file) + ": "), HasSubstr(adopted)));
      }
    } else {
      EXPECT_EQ(Build(file, "scorm: 1.2\n").status, 0);
    }
    const ProgramResult taken = Build(file, "scorm: 1.2\nintake: as-is\n");
    EXPECT_EQ(taken.status, 1) << file;
    EXPECT_THAT(taken.err, HasSubstr(std::string(file) + ": " + asIs));
  }
}

TEST_F(PackageIntakeTest, TellsWhatMattersMostOfAnAdoption) {
  std::string manifest = ForeignManifest({"one"});
  manifest.insert(
      manifest.find("</item>"),
      "<imsss:sequencing xmlns:imsss='http://www.imsglobal.org/xsd/imsss'><imsss:deliveryControls/>"
      "</imsss:sequencing>");
  ScoZip("old").Manifest(manifest).File("one.htm", "").Save(Work());
  EXPECT_THAT(Build("old.zip").err,
              StartsWith("old.zip: adopted: item 'I-one': its sequencing was dropped, for the course's own "
                         "takes its place; 'plexo adopt' tells 1 more\n"));
  EXPECT_THAT(Plexo({"adopt", "old.zip"}).out,
              testing::ContainsRegex("PLX-846[^\n]*\n(.*\n)*warning PLX-811"));
}

TEST_F(PackageIntakeTest, PublishesTheTitlesThatFilesAreGiven) {
  EXPECT_EQ(Build("{file: clean.zip, title: Doors}, {file: odd.zip, title: Exits}").out,
            "out.zip\n  Doors  index.htm          1 file\n  Exits  content/start.htm  1 file\n");
  EXPECT_EQ(Build("{file: clean.zip, title: Doors}", "intake: as-is\n").status, 0);
  const ProgramResult refused = Build("{file: many.zip, title: Two}");
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, StartsWith("many.zip: its title is for one SCO, and the package becomes 2\n"));
  EXPECT_THAT(Build("{file: many.zip, item: I-two, title: Two}").out, HasSubstr("Two  content/two.htm"));
}

TEST_F(PackageIntakeTest, NamesOtherFormatsAlikeInEveryCommand) {
  ScoZip("other").WithoutManifest().File("sub/cmi5.xml", "").Save(Work());
  EXPECT_THAT(Build("other.zip").err, StartsWith("other.zip: is a cmi5 package, not SCORM\n"));
  for (const char* command : {"inspect", "adopt"}) {
    EXPECT_THAT(Plexo({command, "other.zip"}).err, StartsWith("other.zip: is a cmi5 package, not SCORM\n"));
  }
  const std::string checked = Plexo({"check", "other.zip"}).out;
  EXPECT_THAT(checked, HasSubstr("the package: is a cmi5 package, not SCORM"));
  EXPECT_THAT(checked, HasSubstr("other.zip: 1 error\n"));
}

TEST_F(PackageIntakeTest, BringsOldContentIntoACourseThatOnlyTheNewEditionHas) {
  const std::string script =
      "<script>API.LMSInitialize('');API.LMSSetValue('cmi.core.lesson_status',isRight?'passed':'failed');"
      "API.LMSFinish('');</script>";
  ScoZip("old").Scorm12().Item("Old", "a.htm").File("a.htm", script).Save(Work());
  const ProgramResult result = BuildModule("old.zip", "old.zip");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("pretest    Old    content/a.htm"));
  EXPECT_THAT(Read("out.zip"), HasSubstr("launch/settings.js"));
  EXPECT_EQ(Plexo({"check", "out.zip"}).status, 0);
}

TEST_F(PackageIntakeTest, TellsOfTheListedFileWhenItsNameIsTaken) {
  std::filesystem::create_directory((Work() / "sub").GetNative());
  std::filesystem::copy((Work() / "odd.zip").GetNative(), (Work() / "sub").GetNative());
  const std::string error = Build("odd.zip, sub/odd.zip").err;
  EXPECT_THAT(error, HasSubstr("the name 'odd' is taken by odd.zip\n"));
}

TEST_F(PackageIntakeTest, LeavesABrokenPackageToTheCoursesOwnWords) {
  Write("text.zip", "no archive");
  EXPECT_THAT(Build("text.zip").err, StartsWith("text.zip: Error extracting the ZIP contents!\n"));
  ScoZip("bare").WithoutManifest().File("x.htm", "").Save(Work());
  EXPECT_THAT(Build("bare.zip").err, StartsWith("bare.zip: Invalid SCORM package!\n"));
}

}  // namespace
