// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "CliTest.h"
#include "support/PdfFile.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class BuildCommandTest : public CliTest {
 protected:
  BuildCommandTest() {
    const std::string passing =
        "<script>API_1484_11.Initialize('');API_1484_11.SetValue('cmi.completion_status','completed');"
        "API_1484_11.SetValue('cmi.success_status','passed');API_1484_11.Terminate('');</script>";
    for (const std::string name : {"intro", "doors"}) {
      ScoZip(name).Item("The " + name, "index.htm").File("index.htm", name + passing).Save(Work());
    }
    WriteCourse("intro.zip, doors.zip");
  }

  ProgramResult Build(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"build", "course.yaml", "-o", "out.zip"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Plexo(arguments);
  }

  /// Builds a course that is refused, of packages as they are, and returns what it says.
  std::string Refusal(const std::string& files, const std::string& more = {}) const {
    WriteCourse(files, "intake: as-is\n" + more);
    const ProgramResult result = Build();
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_FALSE(Exists("out.zip"));
    return result.err;
  }
};

TEST_F(BuildCommandTest, MakesAPackageAndTellsWhatIsInIt) {
  const ProgramResult result = Build();
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "out.zip\n"
            "  The intro  index.htm  1 file\n"
            "  The doors  index.htm  1 file\n");
  EXPECT_THAT(Read("out.zip"), HasSubstr("Linear/intro/index.htm"));
}

TEST_F(BuildCommandTest, WrapsPdfDocuments) {
  PdfFile(3).Save(Work(), "guide.pdf");
  for (const std::string version : {"1.2", "2004"}) {
    WriteCourse("guide.pdf", "scorm: " + version + "\n");
    const ProgramResult result = Build({"--json", "--force"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    const auto sco = nlohmann::json::parse(result.out)["scos"][0];
    EXPECT_EQ(sco["href"], "guide.htm");
    EXPECT_THAT(Read("out.zip"), HasSubstr("Linear/guide/guide.pdf"));
    EXPECT_THAT(Read("out.zip"), HasSubstr("Linear/guide/SCORM_support/scorm_support.js"));
  }
  PdfFile(1).Catalog("/AcroForm << /SigFlags 1 >>").Save(Work(), "signed.pdf");
  WriteCourse("signed.pdf");
  const ProgramResult result = Build({"--force"});
  EXPECT_THAT(result.err, StartsWith("warning: signed.pdf: its signatures don't hold in the course"));
  EXPECT_EQ(result.status, 0);

  PdfFile(1).Catalog("/Collection << >>").Save(Work(), "portfolio.pdf");
  Write("text.pdf", "no document");
  std::filesystem::remove((Work() / "out.zip").GetNative());
  EXPECT_EQ(Refusal("portfolio.pdf"),
            "portfolio.pdf: PDF portfolios are not supported.\n"
            "  add the documents in it one by one\n");
  EXPECT_THAT(Refusal("text.pdf"), StartsWith("text.pdf: Invalid PDF file\n  unable to find trailer"));
}

TEST_F(BuildCommandTest, TakesScorm12Packages) {
  ScoZip("old").Scorm12().Item("Old", "a.htm").File("a.htm", "").File("b.js", "").Save(Work());
  WriteCourse("old.zip", "scorm: 1.2\n");
  const ProgramResult result = Build();
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "out.zip\n  Old  a.htm  2 files\n");
}

TEST_F(BuildCommandTest, TellsMachinesInJson) {
  const auto document = nlohmann::json::parse(Build({"--json"}).out);
  EXPECT_EQ(document, nlohmann::json::parse(R"({
    "package": "out.zip", "identifier": "My_Course_1", "scorm": "2004", "template": "multiple-scos",
    "scos": [
      {"title": "The intro", "identifier": "SCO-Item_1", "href": "index.htm", "page": "index.htm", "files": 1,
       "source": "intro.zip", "adopted": false},
      {"title": "The doors", "identifier": "SCO-Item_2", "href": "index.htm", "page": "index.htm", "files": 1,
       "source": "doors.zip", "adopted": false}]})"));

  const ProgramResult refused = Build({"--json"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err, "out.zip: exists already; --force replaces it\n");
  EXPECT_EQ(nlohmann::json::parse(refused.out), nlohmann::json::parse(R"({"error": {
    "subject": "out.zip", "message": "exists already; --force replaces it", "reason": "", "status": 1}})"));
}

TEST_F(BuildCommandTest, MakesTheSameBytesTwice) {
  ASSERT_EQ(Build({"--quiet"}).out, "out.zip\n");
  const std::string first = Read("out.zip");
  ASSERT_EQ(Build({"--quiet", "--force"}).status, 0);
  EXPECT_EQ(Read("out.zip"), first);
}

TEST_F(BuildCommandTest, ReplacesAPackageOnlyByForce) {
  Write("out.zip", "mine");
  EXPECT_EQ(Build().status, 1);
  EXPECT_EQ(Read("out.zip"), "mine");
  EXPECT_EQ(Build({"--force"}).status, 0);
  EXPECT_THAT(Read("out.zip"), StartsWith("PK"));
}

TEST_F(BuildCommandTest, NeverReplacesAFileOfTheCourse) {
  const std::string before = Read("intro.zip");
  const ProgramResult result = Plexo({"build", "course.yaml", "-o", "./intro.zip", "--force"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "./intro.zip: is a file of the course; give the package another name\n");
  EXPECT_EQ(Read("intro.zip"), before);
}

TEST_F(BuildCommandTest, RefusesAWrongCommandLineBeforeAnyWork) {
  Write("file", "");
  Write("folder.zip/file", "");
  std::filesystem::create_symlink("nowhere", (Work() / "link").GetNative());
  const struct {
    std::vector<std::string> arguments;
    std::string err;
  } cases[] = {
      {{"build", "course.yaml"}, "plexo build: --output is required\n  'plexo build --help' tells more\n"},
      {{"build", "course.yaml", "-o", "out.tar"}, "out.tar: the package's name must end in .zip\n"},
      {{"build", "course.yaml", "-o", ".zip"}, ".zip: the package's name must end in .zip\n"},
      {{"build", "course.yaml", "-o", ""},
       "plexo build: --output: can't be empty\n  'plexo build --help' tells more\n"},
      {{"build", "a", "b", "-o", "x.zip"},
       "plexo build: unexpected argument 'b'; a path that holds blanks needs quotes\n"
       "  'plexo build --help' tells more\n"},
      {{"check", "x.zip", "--strct"},
       "plexo check: unknown option '--strct'; allowed: --help, --strict, --verbose, --witness, --json, "
       "--list\n"
       "  'plexo check --help' tells more\n"},
      {{"inspect", "x.zip", "--scorm"},
       "plexo inspect: --scorm needs a value\n  'plexo inspect --help' tells more\n"},
      {{"build", "c", "-o", "x.zip", "-o", "y.zip"},
       "plexo build: --output is given more than once\n  'plexo build --help' tells more\n"},
      {{"check", ""}, "plexo check: PACKAGE.zip: can't be empty\n  'plexo check --help' tells more\n"},
      {{"build", "course.yaml", "-o", std::string(252, 'x') + ".zip"},
       std::string(252, 'x') + ".zip: the package's name is longer than 255 bytes\n"},
      {{"bild"},
       "plexo: unknown command 'bild'; allowed: adopt, build, check, inspect, play\n  'plexo --help' tells "
       "more\n"},
      {{"bild", "--help"},
       "plexo: unknown command 'bild'; allowed: adopt, build, check, inspect, play\n  'plexo --help' tells "
       "more\n"},
      {{"build", "course.yaml", "-o", "a\\b.zip"}, "a\\b.zip: the package's name can't hold a back-slash\n"},
      {{"build", "course.yaml", "-o", "no/x.zip"}, "no/x.zip: the folder 'no' doesn't exist\n"},
      {{"build", "course.yaml", "-o", "file/x.zip"}, "file/x.zip: the folder 'file' isn't a folder\n"},
      {{"build", "course.yaml", "-o", "folder.zip", "--force"}, "folder.zip: is a folder\n"},
      {{"build", "none.yaml", "-o", "x.zip"}, "none.yaml: doesn't exist\n"},
      {{"build", "course.yaml", "-o", "x.zip", "--working-folder", "file"}, "file: isn't a folder\n"},
      {{"build", "course.yaml", "-o", "x.zip", "--working-folder", "link"}, "link: is a link to no folder\n"},
      {{"inspect", "x.zip", "--scorm", "1.3"}, "--scorm: '1.3' must be 1.2 or 2004\n"},
      {{"inspect", "none.zip"}, "none.zip: doesn't exist\n"},
      {{},
       "plexo: a command is missing; allowed: adopt, build, check, inspect, play\n  'plexo --help' tells "
       "more\n"},
      {{"--bogus"},
       "plexo: unknown option '--bogus'; first comes a command: adopt, build, check, inspect, play\n"
       "  'plexo --help' tells more\n"},
  };
  for (const auto& [arguments, err] : cases) {
    const ProgramResult result = Plexo(arguments);
    EXPECT_EQ(result.status, 2) << err;
    EXPECT_EQ(result.err, err);
    EXPECT_EQ(result.out, "") << err;
  }
}

TEST_F(BuildCommandTest, ReplacesTheFileThatALinkLeadsTo) {
  Write("real/out.bin", "mine");
  const std::filesystem::path work = Work().GetNative();
  std::filesystem::create_symlink("real/out.bin", work / "out.zip");
  std::filesystem::create_symlink("nowhere.zip", work / "dangling.zip");
  std::filesystem::create_symlink("looping.zip", work / "looping.zip");

  EXPECT_EQ(Build().err, "out.zip: exists already; --force replaces it\n");
  EXPECT_EQ(Build({"--force"}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(work / "out.zip"));
  EXPECT_THAT(Read("real/out.bin"), StartsWith("PK"));
  for (const std::string name : {"dangling.zip", "looping.zip"}) {
    for (const char* option : {"--quiet", "--force"}) {
      const ProgramResult result = Plexo({"build", "course.yaml", "-o", name, option});
      EXPECT_EQ(result.status, 1) << name;
      EXPECT_EQ(result.err, name + ": exists already, as a link to no file; remove it first\n");
    }
  }
  EXPECT_FALSE(Exists("nowhere.zip"));
}

TEST_F(BuildCommandTest, SaysThatTheCurrentFolderIsGone) {
  Write("gone/x", "");
  const std::string gone = (Work() / "gone").GetNative();
  const std::string course = (Work() / "course.yaml").GetNative();
  const auto leave = [gone] {
    static_cast<void>(chdir(gone.c_str()));
    unlink("x");
    rmdir(gone.c_str());
  };
  const ProgramResult result = Program({"build", course, "-o", "x.zip"}).Prepare(leave).Run();
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "x.zip: the current folder can't be found\n");
}

TEST_F(BuildCommandTest, SpeaksJsonOnlyIfAskedTo) {
  Write("--json", "");
  const struct {
    std::vector<std::string> arguments;
    bool isJson;
  } cases[] = {
      {{"inspect", "none.zip", "--json=true"}, true},
      {{"inspect", "none.zip", "--json=false"}, false},
      {{"inspect", "--", "--json"}, false},
      {{"inspect", "--json"}, true},
      {{"inspect", "--", "none.zip", "--json"}, false},
  };
  for (const auto& [arguments, isJson] : cases) {
    const ProgramResult result = Plexo(arguments);
    EXPECT_NE(result.status, 0);
    EXPECT_EQ(result.out.starts_with("{"), isJson) << arguments.back() << result.out;
  }
}

TEST_F(BuildCommandTest, TellsEveryErrorOfTheCourseFile) {
  Write("course.yaml", "template: multiple-scos\nidentifier: C\nfils: []\nfiles: [none.zip]\n");
  const ProgramResult result = Build({"--json"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, StartsWith("course.yaml:3:1: unknown key 'fils', did you mean 'files'? allowed: "));
  EXPECT_THAT(result.err, HasSubstr("\ncourse.yaml:4:9: 'none.zip' doesn't exist\n"));
  const auto document = nlohmann::json::parse(result.out);
  EXPECT_EQ(document["error"]["subject"], "course.yaml:3:1");
  EXPECT_EQ(document["more"][0]["message"], "'none.zip' doesn't exist");
}

TEST_F(BuildCommandTest, BuildsModulesUnderTheirKeys) {
  Write(
      "course.yaml",
      "template: test-rollup\nidentifier: C\nforce-sequence: true\nmodules:\n"
      "  - {title: Doors, pretest: doors.zip, content: [intro.zip, doors.zip], post-test: intro.zip}\n"
      "  - {pretest: doors.zip, content: [intro.zip], post-test: doors.zip, force-content-sequence: true}\n");
  const ProgramResult result = Build({"--working-folder", "kept"});
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "out.zip\n"
            "  module 1  pretest    The doors  index.htm  1 file\n"
            "  module 1  content    The intro  index.htm  1 file\n"
            "  module 1  content    The doors  index.htm  1 file\n"
            "  module 1  post-test  The intro  index.htm  1 file\n"
            "  module 2  pretest    The doors  index.htm  1 file\n"
            "  module 2  content    The intro  index.htm  1 file\n"
            "  module 2  post-test  The doors  index.htm  1 file\n");
  EXPECT_TRUE(Exists("kept/1/Content/doors/index.htm"));
  EXPECT_TRUE(Exists("kept/2/Pre_Test/doors/index.htm"));
  const std::string manifest = Read("kept/imsmanifest.xml");
  EXPECT_THAT(manifest, HasSubstr("objectiveMeasureWeight=\"0.500000\""));
  EXPECT_THAT(manifest, HasSubstr("<title>Doors</title>"));
  EXPECT_THAT(manifest, HasSubstr("<title>Module_2</title>"));

  const auto scos = nlohmann::json::parse(Build({"--json", "--force"}).out)["scos"];
  EXPECT_EQ(scos[2]["identifier"], "SCO-Module_1_Content_2");
  EXPECT_EQ(scos[6]["identifier"], "SCO-Module_2_PostTest");
  EXPECT_EQ(scos[6]["module"], 2);
  EXPECT_EQ(scos[6]["role"], "post-test");
}

TEST_F(BuildCommandTest, PublishesTheDetailsAndTheOrderThatTheCourseFileGives) {
  const auto manifest = [this](const std::string& more) {
    WriteCourse("intro.zip, doors.zip", more);
    EXPECT_EQ(Build({"--force", "--working-folder", "kept"}).status, 0);
    std::string text = Read("kept/imsmanifest.xml");
    std::filesystem::remove_all((Work() / "kept").GetNative());
    return text;
  };
  const std::string given = manifest(
      "force-sequence: true\ntitle: T1\ndescription: D1\nversion: 3.7\nduration: \"01:02:03\"\nsubject: "
      "S1\n");
  for (const char* text : {"<title>T1<", ">D1<", "<version>", ">3.7<", ">PT1H2M", ">S1<",
                           "choice=\"false\" forwardOnly=\"true\"", "<imsss:preConditionRule>"}) {
    EXPECT_THAT(given, HasSubstr(text));
  }
  const std::string absent = manifest("");
  for (const char* text : {"<version>", "<imsss:preConditionRule>"})
    EXPECT_THAT(absent, Not(HasSubstr(text)));
}

TEST_F(BuildCommandTest, RefusesAContentThatItsModuleHasAlready) {
  ScoZip("intro").Item("Other", "x.htm").File("x.htm", "").Save(Work() / "sub");
  Write("course.yaml",
        "template: simple-remediation\nidentifier: C\nmodules: [{content: [intro.zip, sub/intro.zip], "
        "post-test: doors.zip}]\n");
  const ProgramResult result = Build();
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("sub/intro.zip: This file has already been added."));
  EXPECT_THAT(result.err, HasSubstr("is taken by /"));
}

TEST_F(BuildCommandTest, SaysWhyAPackageIsRefused) {
  const std::string version = ": SCO selected is of incompatible SCORM version!\n  ";
  const std::string parse = ": There was an error parsing the XML manifest file!\n  ";
  ScoZip("intro").Item("Other", "x.htm").File("x.htm", "").Save(Work() / "sub");
  ScoZip("bare").WithoutManifest().File("x.htm", "").Save(Work());
  ScoZip("packed").InFolder("packed").File("x.htm", "").Save(Work());
  ScoZip("odd").Manifest("<manifest version=\"1\"/>").Save(Work());
  ScoZip("none").Manifest("<manifest/>").Save(Work());
  ScoZip("page").Manifest("<html/>").Save(Work());
  ScoZip("cut").Manifest("<html>\n<body").Save(Work());
  ScoZip("typed").Manifest("<!DOCTYPE manifest><manifest version='1.3'/>").Save(Work());
  ScoZip("nohref")
      .Manifest("<manifest version='1.3'><resources><resource identifier='R1'/></resources></manifest>")
      .Save(Work());
  ScoZip("noid")
      .Manifest("<manifest version='1.3'><organizations><item/></organizations></manifest>")
      .Save(Work());
  ScoZip("score").ItemContent("<adlcp:masteryscore>70</adlcp:masteryscore>").Save(Work());
  ScoZip("outside").File("../x", "").Save(Work());
  Write("text.zip", "no archive");

  const std::string taken = Refusal("intro.zip, sub/intro.zip");
  EXPECT_THAT(taken, StartsWith("sub/intro.zip: This file has already been added. Rename the file and retry "
                                "adding.\n  the name 'intro' is taken by /"));
  EXPECT_THAT(taken, HasSubstr("/desk/intro.zip\n"));
  const std::string unzip = ": Error extracting the ZIP contents!\n  ";
  EXPECT_THAT(Refusal("intro.zip, text.zip"), StartsWith("text.zip" + unzip));
  EXPECT_THAT(Refusal("outside.zip"), StartsWith("outside.zip" + unzip + "../x: "));
  EXPECT_EQ(Refusal("bare.zip"),
            "bare.zip: Invalid SCORM package!\n  it has no imsmanifest.xml at its top\n");
  EXPECT_EQ(Refusal("packed.zip"),
            "packed.zip: Invalid SCORM package!\n  it has no imsmanifest.xml at its top\n"
            "  it has 'packed/imsmanifest.xml'; pack the content of the folder, not the folder\n");
  EXPECT_EQ(Refusal("odd.zip"),
            "odd.zip" + version + "its manifest says version '1'; expected '1.0' or '1.3'\n");
  EXPECT_EQ(Refusal("none.zip"),
            "none.zip" + version + "its manifest says no version; expected '1.0' or '1.3'\n");
  EXPECT_EQ(Refusal("page.zip"), "page.zip" + version + "its imsmanifest.xml has no manifest element\n");
  EXPECT_THAT(Refusal("cut.zip"), StartsWith("cut.zip" + version + "its imsmanifest.xml: line 2, column "));
  EXPECT_EQ(Refusal("typed.zip"),
            "typed.zip" + parse +
                "its imsmanifest.xml: line 1, column 19: a document type declaration isn't allowed\n");
  EXPECT_EQ(
      Refusal("intro.zip", "scorm: 1.2\n"),
      "intro.zip" + version + "its manifest says version '1.3' (SCORM 2004), the course is SCORM 1.2\n");
  EXPECT_EQ(Refusal("score.zip"),
            "score.zip" + version +
                "its element adlcp:masteryscore belongs to SCORM 1.2, the course is SCORM 2004\n");
  EXPECT_EQ(Refusal("nohref.zip"),
            "nohref.zip" + parse + "its element resource 'R1' lacks the attribute href\n");
  EXPECT_EQ(Refusal("noid.zip"), "noid.zip" + parse + "its element item lacks the attribute identifier\n");
}

TEST_F(BuildCommandTest, LeavesTheUsersManifestAloneWithoutATemporaryFolder) {
  ScoZip("odd").Manifest("<manifest version=\"1\"/>").Save(Work());
  WriteCourse("odd.zip", "intake: as-is\n");
  Write("imsmanifest.xml", "precious");
  ProgramRun run = Program({"build", "course.yaml", "-o", "out.zip", "--working-folder", "kept"});
  const ProgramResult result = run.With("TMPDIR", "/proc").Run();
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, StartsWith("odd.zip: SCO selected is of incompatible SCORM version!\n"));
  EXPECT_EQ(Read("imsmanifest.xml"), "precious");
}

TEST_F(BuildCommandTest, WarnsOfAManifestThatCouldOnlyBeReadInPart) {
  const std::string manifest = ScoZip("torn").Item("Torn", "i.htm").File("i.htm", "").GetManifest();
  ScoZip("torn").Manifest(manifest.substr(0, manifest.find("</manifest>"))).File("i.htm", "").Save(Work());
  WriteCourse("torn.zip", "intake: as-is\n");
  const ProgramResult result = Build();
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, StartsWith("warning: torn.zip: imsmanifest.xml: line "));
}

TEST_F(BuildCommandTest, WarnsOfAnIdentifierThatNoManifestCanHave) {
  Write("course.yaml", "template: multiple-scos\nidentifier: 1 C\nfiles: [intro.zip]\n");
  const ProgramResult result = Build();
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "warning: course.yaml: the identifier '1_C' starts with a digit, which the manifest's schema "
            "forbids; put a letter in front\n");
}

TEST_F(BuildCommandTest, KeepsControlCharactersOffTheTerminal) {
  ScoZip("evil")
      .Item(
          "\xC2\x9B"
          "31mRed&#9;tab",
          "i.htm")
      .File("i.htm", "")
      .Save(Work());
  WriteCourse("evil.zip");
  EXPECT_EQ(Build().out,
            "out.zip\n  \xEF\xBF\xBD"
            "31mRed\xEF\xBF\xBDtab  i.htm  1 file\n");
}

}  // namespace
