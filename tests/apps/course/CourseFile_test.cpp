// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/course/CourseModules.h"
#include "apps/course/CourseYaml.h"
#include "host/files/TzFile.h"
#include "panel/PlexoStrings.h"
#include "support/TestSession.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Course files in a folder that holds a few packages.
class CourseFileTest : public ::testing::Test {
 protected:
  CourseFileTest() {
    RegisterDefaultStrings();
    for (const char* name : {"a.zip", "b.ZIP", "guide.pdf", "film.swf", "notes.txt", "sub/c.zip", "...zip",
                             "CON.zip", "C:.zip", "a\nb.zip"}) {
      folder.Write(name, name);
    }
  }

  CourseFileResult Read(const std::string& text) const {
    return ReadCourseFile(folder.Write("course.yaml", text).GetNative());
  }

  /// Each error as a line, "line:column: message" and the reason in brackets.
  std::vector<std::string> ErrorsOf(const std::string& text) const {
    std::vector<std::string> lines;
    for (const CourseFileError& error : Read(text).errors) {
      lines.push_back(std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.message +
                      (error.reason.empty() ? "" : " [" + error.reason + "]"));
    }
    return lines;
  }

  TestSession session;
  TestFolder folder;
};

constexpr const char* kStart = "template: multiple-scos\nidentifier: C\n";
constexpr const char* kEnd = "files: [a.zip]\n";

TEST_F(CourseFileTest, ReadsEveryKeyOfAFlatCourse) {
  const CourseFileResult result = Read(R"(# a comment
template: multiple-scos
scorm: 1.2
identifier: My Course 1
title: &name "Fire: \u00e4&<"
description: *name
version: 1.0
duration: "01:30:59"
subject: ""
force-sequence: true
files:
  - a.zip
  - sub/../sub/c.zip
  - "b.ZIP"
)");

  ASSERT_THAT(result.errors, IsEmpty());
  EXPECT_EQ(result.course.courseTemplate, CourseTemplate::MultipleScos);
  EXPECT_EQ(result.course.scormVersion, "1.2");
  EXPECT_EQ(result.course.identifier, "My_Course_1");
  EXPECT_EQ(result.course.title, "Fire: ä&<");
  EXPECT_EQ(result.course.description, "Fire: ä&<");
  EXPECT_EQ(result.course.version, "1.0");
  EXPECT_EQ(result.course.duration, "01:30:59");
  EXPECT_EQ(result.course.subject, "");
  EXPECT_TRUE(result.course.forceSequence);
  ASSERT_EQ(result.course.files.size(), 3U);
  EXPECT_EQ(result.course.files[1].name, "sub/../sub/c.zip");
  EXPECT_TRUE(TzFile(result.course.files[1].path).Exists());
}

TEST_F(CourseFileTest, LeavesOutWhatTheCourseDoesntGive) {
  const CourseFileResult result = Read(std::string(kStart) + kEnd);
  ASSERT_THAT(result.errors, IsEmpty());
  EXPECT_EQ(result.course.scormVersion, "2004");
  EXPECT_FALSE(result.course.title || result.course.version || result.course.duration ||
               result.course.subject);
  EXPECT_FALSE(result.course.forceSequence);
}

TEST_F(CourseFileTest, ReadsWhatIsToBeTakenOfAFile) {
  const CourseFileResult result =
      Read(std::string(kStart) +
           "intake: always\nfiles: [a.zip, {file: b.ZIP, item: I-2, title: Doors, completion-passes: "
           "true}]\n");
  ASSERT_THAT(result.errors, IsEmpty());
  EXPECT_EQ(result.course.intake, CourseIntake::Always);
  ASSERT_EQ(result.course.files.size(), 2U);
  EXPECT_EQ(result.course.files[0].item, "");
  EXPECT_FALSE(result.course.files[0].completionPasses);
  EXPECT_EQ(result.course.files[1].name, "b.ZIP");
  EXPECT_EQ(result.course.files[1].item, "I-2");
  EXPECT_EQ(result.course.files[1].title, "Doors");
  EXPECT_TRUE(result.course.files[1].completionPasses);
  const auto files =
      Read(std::string(kStart) +
           "completion-passes: true\nfiles: [a.zip, {file: b.ZIP, completion-passes: false}, guide.pdf]\n")
          .course.files;
  ASSERT_EQ(files.size(), 3U);
  EXPECT_TRUE(files[0].completionPasses);
  EXPECT_FALSE(files[1].completionPasses) << "the file's own word counts";
  EXPECT_FALSE(files[2].completionPasses) << "of packages only";
}

TEST_F(CourseFileTest, RefusesOptionsOfAFileThatHaveNoMeaning) {
  const struct {
    const char* lines;
    const char* error;
  } cases[] = {
      {"files: [{item: x}]", "3:9: a file needs 'file': its path"},
      {"files: [{file: a.zip, item: \"\"}]", "3:29: 'item' is empty; leave it out to take what there is"},
      {"files: [{file: a.zip, itme: x}]",
       "3:23: unknown key 'itme', did you mean 'item'? allowed: file, item, title, completion-passes"},
      {"intake: as-is\nfiles: [{file: a.zip, item: x}]", "4:23: 'item' can't be had with 'intake: as-is'"},
      {"intake: asis\nfiles: [a.zip]", "3:9: 'intake' must be auto, as-is or always"},
      {"files: [{file: [a.zip]}]", "3:16: 'file' must be a text"},
  };
  for (const auto& [lines, error] : cases) {
    EXPECT_THAT(ErrorsOf(std::string(kStart) + lines + "\n"), ElementsAre(error)) << lines;
  }
}

TEST_F(CourseFileTest, ReadsModulesWithTheirWeightages) {
  const CourseFileResult result = Read(R"(
template: test-rollup
identifier: C
modules:
  - title: Doors
    weightage: 33.3
    force-content-sequence: true
    pretest: a.zip
    content: [a.zip, sub/c.zip]
    post-test: b.ZIP
  - {weightage: 66.7, pretest: a.zip, content: [a.zip], post-test: a.zip}
)");
  ASSERT_THAT(result.errors, IsEmpty());
  ASSERT_EQ(result.course.modules.size(), 2U);
  const CourseModule& first = result.course.modules[0];
  EXPECT_EQ(first.title, "Doors");
  EXPECT_THAT(GetWeightageFractions(result.course.modules), ElementsAre("0.333000", "0.667000"));
  EXPECT_THAT(GetWeightageFractions(std::vector<CourseModule>(3)),
              ElementsAre("0.333333", "0.333333", "0.333334"));
  EXPECT_TRUE(first.forceContentSequence);
  EXPECT_EQ(first.preTest->name, "a.zip");
  EXPECT_EQ(first.content.size(), 2U);
  EXPECT_EQ(first.postTest->name, "b.ZIP");
}

TEST_F(CourseFileTest, RefusesAValueWithItsPlaceAndWhatIsAllowed) {
  const struct {
    const char* lines;
    const char* error;
  } cases[] = {
      {"title: [x]", "3:8: 'title' must be a text"},
      {"title:", "3:1: 'title' has no value; an empty text is written \"\""},
      {"title: \"\xE4\"", "3:8: 'title' isn't UTF-8; save the file with that encoding"},
      {"title: \"a\\0b\"", "3:8: 'title' holds a NUL character"},
      {"fils: [a.zip]",
       "3:1: unknown key 'fils', did you mean 'files'? allowed: template, scorm, identifier, title, "
       "description, "
       "version, duration, subject, force-sequence, intake, files, modules, completion-passes"},
      {"x: 1",
       "3:1: unknown key 'x'; allowed: template, scorm, identifier, title, description, version, duration, "
       "subject, force-sequence, intake, files, modules, completion-passes"},
      {"identifier: D", "3:1: 'identifier' is given twice, first in line 2"},
      {"scorm: 1.3", "3:8: 'scorm' must be 1.2 or 2004"},
      {"force-sequence: yes", "3:17: 'force-sequence' must be true or false"},
      {"duration: 1:30:00", "3:11: 'duration' must be hh:mm:ss, from 00:00:00 to 99:59:59"},
      {"duration: \"01:60:00\"", "3:11: 'duration' must be hh:mm:ss, from 00:00:00 to 99:59:59"},
      {"duration: \"01:3a:00\"", "3:11: 'duration' must be hh:mm:ss, from 00:00:00 to 99:59:59"},
      {"modules: []",
       "3:1: 'modules' doesn't belong to a 'multiple-scos' course; it lists its SCO packages in 'files'"},
  };
  for (const auto& [lines, error] : cases) {
    EXPECT_THAT(ErrorsOf(std::string(kStart) + lines + "\n" + kEnd), ElementsAre(error)) << lines;
  }
}

TEST_F(CourseFileTest, RefusesListedFilesThatACourseCantTake) {
  const std::string unnameable =
      " can't name a folder in a ZIP: it holds a control character, starts with a drive letter, is a "
      "device's "
      "name or is too long; rename the file";
  const std::string longName = std::string(252, 'x') + ".zip";
  const struct {
    std::string files;
    std::string error;
    CourseFault fault;
  } cases[] = {
      {"files: [" + longName + "]", "3:9: '" + longName + "' can't be looked at: File name too long",
       CourseFault::Wrong},
      {"files: [CON.zip]", "3:9: 'CON.zip'" + unnameable, CourseFault::Wrong},
      {"files: ['C:.zip']", "3:9: 'C:.zip'" + unnameable, CourseFault::Wrong},
      {"files: [\"a\\nb.zip\"]", "3:9: 'a\nb.zip'" + unnameable, CourseFault::Wrong},
      {"files: [a.zip, intro.zip]", "3:16: 'intro.zip' doesn't exist", CourseFault::Wrong},
      {"files: [a.zip/x.zip]", "3:9: 'a.zip/x.zip' doesn't exist", CourseFault::Wrong},
      {"files: [sub]",
       "3:9: 'sub' is a folder; expected a SCO package (.zip), a PDF document (.pdf) or a SWF movie (.swf)",
       CourseFault::Wrong},
      {"files: [notes.txt]",
       "3:9: 'notes.txt' is no SCO package (.zip), PDF document (.pdf) or SWF movie (.swf)",
       CourseFault::Wrong},
      {"files: [...zip]", "3:9: '...zip' can't name a folder in the package; rename the file",
       CourseFault::Wrong},
      {"files: [{file: film.swf, item: A}]", "3:26: 'item' is for SCO packages only", CourseFault::Wrong},
      {"files: [{file: guide.pdf, item: A}]", "3:27: 'item' is for SCO packages only", CourseFault::Wrong},
      {"files: [{file: a.zip, title: ' '}]", "3:30: 'title' is empty; leave it out to keep the file's own",
       CourseFault::Wrong},
      {"completion-passes: true\nintake: as-is\nfiles: [a.zip]",
       "3:1: 'completion-passes' can't be had with 'intake: as-is'", CourseFault::Wrong},
      {"files: [[a.zip]]", "3:9: an entry of 'files' must be a text", CourseFault::Wrong},
      {"files: []", "3:8: 'files' is empty", CourseFault::Wrong},
      {"files: a.zip", "3:8: 'files' must be a list", CourseFault::Wrong},
  };
  for (const auto& [files, error, fault] : cases) {
    const std::string text = std::string(kStart) + files + "\n";
    EXPECT_THAT(ErrorsOf(text), ElementsAre(error)) << files;
    EXPECT_EQ(Read(text).errors.at(0).fault, fault) << files;
  }
}

TEST_F(CourseFileTest, TakesIdentifiersAsTheManifestDialogDoes) {
  const std::string invalid =
      "Please enter a valid SCORM Identifier for this course! Only alpha-numeric characters and underscores "
      "are allowed. Spaces are converted to underscores automatically.";
  const auto course = [](const std::string& identifier) {
    return "template: multiple-scos\nidentifier: \"" + identifier + "\"\n" + kEnd;
  };
  for (const char* identifier : {"a-b", "a.b", "a\\tb", "\\u00e4"}) {
    EXPECT_THAT(ErrorsOf(course(identifier)), ElementsAre("2:13: " + invalid)) << identifier;
  }
  EXPECT_THAT(ErrorsOf(course("")), ElementsAre("2:13: Please enter a SCORM Identifier for this course!"));
  EXPECT_EQ(Read(course("  ")).course.identifier, "__");
  EXPECT_EQ(Read(course("9 Az_")).course.identifier, "9_Az_");
}

TEST_F(CourseFileTest, TellsAllErrorsInTheOrderOfTheFile) {
  EXPECT_THAT(
      ErrorsOf("title: []\nscorm: 3\n"),
      ElementsAre("1:1: the course file needs 'template': multiple-scos, simple-remediation or test-rollup",
                  "1:1: the course file needs 'identifier': the course's name in its manifest",
                  "1:8: 'title' must be a text", "2:8: 'scorm' must be 1.2 or 2004"));
}

TEST_F(CourseFileTest, TellsOnlyTheFirstOfManyErrors) {
  std::string text = std::string(kStart) + kEnd;
  for (int number = 0; number < 100; ++number) text += "key" + std::to_string(number) + ": x\n";
  const std::vector<std::string> errors = ErrorsOf(text);
  ASSERT_EQ(errors.size(), 21U);
  EXPECT_THAT(errors.front(), ::testing::StartsWith("4:1: unknown key 'key0'"));
  EXPECT_EQ(errors.back(), "0:0: has 80 more errors");
}

TEST_F(CourseFileTest, RefusesModulesThatDontFitTheirTemplate) {
  const std::string start = "identifier: C\ntemplate: simple-remediation\n";
  const std::string rollup = "identifier: C\ntemplate: test-rollup\n";
  const std::string fine = "{content: [a.zip], post-test: a.zip}";
  const struct {
    std::string text;
    const char* error;
  } cases[] = {
      {"identifier: C\ntemplate: flat\n",
       "2:11: unknown template 'flat'; allowed: multiple-scos, simple-remediation, test-rollup"},
      {start + "scorm: 1.2\nmodules: [" + fine + "]\n",
       "3:8: This course structure is not supported in the selected SCORM version. [a 'simple-remediation' "
       "course needs scorm 2004]"},
      {start, "1:1: the course file needs 'modules': the list of its modules"},
      {start + "modules: [" + fine + "]\nfiles: [a.zip]\n",
       "4:1: 'files' doesn't belong to a 'simple-remediation' course; it lists its SCO packages in "
       "'modules'"},
      {start + "modules: [x]\n",
       "3:11: a module must be made of keys and values; allowed: title, weightage, force-content-sequence, "
       "pretest, content, post-test"},
      {start + "modules:\n  - content: [a.zip]\n", "4:5: a module needs 'post-test': its test's SCO package"},
      {start + "modules:\n  - post-test: a.zip\n    content: []\n", "5:14: 'content' is empty"},
      {start + "modules:\n  - pretest: a.zip\n    content: [a.zip]\n    post-test: a.zip\n",
       "4:5: 'pretest' belongs to a 'test-rollup' course only"},
      {rollup + "modules: [" + fine + "]\n", "3:11: a module needs 'pretest': its pretest's SCO package"},
  };
  for (const auto& [text, error] : cases) {
    std::vector<std::string> errors = ErrorsOf(text);
    ASSERT_FALSE(errors.empty()) << text;
    EXPECT_EQ(errors.front(), error) << text;
  }
}

TEST_F(CourseFileTest, RefusesWeightagesThatArentExactlyTheWhole) {
  const auto course = [](const std::vector<std::string>& weightages) {
    std::string text = "template: simple-remediation\nidentifier: C\nmodules:\n";
    for (const std::string& weightage : weightages) {
      text += "  - {content: [a.zip], post-test: a.zip" +
              (weightage.empty() ? "" : ", weightage: " + weightage) + "}\n";
    }
    return text;
  };
  const std::string number =
      "'weightage' must be a percentage above 0 and up to 100, with up to four decimals";
  EXPECT_THAT(ErrorsOf(course({"25", "25", "50"})), IsEmpty());
  EXPECT_THAT(ErrorsOf(course({"", "", ""})), IsEmpty());
  EXPECT_THAT(
      ErrorsOf(course({"50", "", "25"})),
      ElementsAre("5:5: 'weightage' is missing here; it stands in every module, or in none to share evenly"));
  EXPECT_THAT(
      ErrorsOf(course({"50", "25"})),
      ElementsAre("3:1: the weightages must add up to exactly 100%; as fractions they come to 0.75 [a "
                  "weightage of 50 for module 2 would make it exact]"));
  EXPECT_THAT(
      ErrorsOf(course({"100", "25"})),
      ElementsAre("3:1: the weightages must add up to exactly 100%; as fractions they come to 1.25 [no "
                  "weightage for module 2 would make it exact; without any weightage all modules share "
                  "evenly]"));
  EXPECT_THAT(
      ErrorsOf(course(std::vector<std::string>(10, "10"))),
      ElementsAre("3:1: the weightages must add up to exactly 100%; as fractions they come to "
                  "0.9999999999999999 [no weightage for module 9 would make it exact; without any weightage "
                  "all modules share evenly]"));
  for (const char* weightage : {"0", "-1", "100.1", "1e1", "50%", "nan", "inf", "0.00001", "\"\"", "0x10"}) {
    EXPECT_THAT(ErrorsOf(course({"50", weightage})), ElementsAre("5:53: " + number)) << weightage;
  }
}

TEST_F(CourseFileTest, RefusesWhatIsNoCourseFile) {
  const std::string expected =
      "the course file must be made of keys and values; allowed: template, scorm, identifier, title, "
      "description, version, duration, subject, force-sequence, intake, files, modules, completion-passes";
  EXPECT_EQ(ErrorsOf("").at(0), "0:0: " + expected);
  EXPECT_EQ(ErrorsOf("- a\n").at(0), "1:1: " + expected);
  EXPECT_THAT(ErrorsOf("title: a\n---\ntitle: b\n"),
              ElementsAre("2:1: a second document starts here; a course file holds one"));
  EXPECT_THAT(ErrorsOf("---\n---\n"),
              ElementsAre("2:1: a second document starts here; a course file holds one"));
  EXPECT_THAT(ErrorsOf(","), ElementsAre("1:1: a value can't start here"));
  EXPECT_THAT(ErrorsOf("#\n,"), ElementsAre("2:1: a value can't start here"));
  EXPECT_THAT(ErrorsOf(std::string(5 << 20, '#')), ElementsAre("0:0: is larger than 4 MiB"));
  EXPECT_EQ(ReadCourseFile("/nowhere/course.yaml").errors.at(0).message, "doesn't exist");
  EXPECT_EQ(ReadCourseFile("/").errors.at(0).message, "is a folder; expected a course file");
}

TEST_F(CourseFileTest, SaysInPlainWordsWhatIsNoYaml) {
  const std::string open = "the quotation mark that opens a text behind this is never closed";
  const std::string colon =
      "a ':' can't stand here; a text that holds ': ' needs quotes, the keys of one level start in one "
      "column, "
      "and every one has its ': '";
  const std::string control = "a control character can't stand in a course file; delete it";
  const struct {
    std::string lines;
    std::string error;
  } cases[] = {
      {"title: \"a", "3:1: " + open},
      {"title: 'a\nsubject: x\n", "3:1: " + open},
      {"files:\n - \"a.zip\n - b.ZIP\n \t", "4:2: " + open},
      {"title: Fire: now\n", "3:12: " + colon},
      {"title: \xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80: now\n", "3:11: " + colon},
      {"files: [a.zip\n", "4:1: a ',' or the ']' of a list is missing before this"},
      {"title: \"C:\\path\"\n",
       "3:13: this escape means nothing in double quotes; write a back-slash twice, or use single quotes"},
      {"title: a\x04", "3:9: " + control},
      {std::string("title: a\0", 9), "3:9: " + control},
      {"title: !<x y\n", "3:11: end of verbatim tag not found"},
  };
  for (const auto& [lines, error] : cases) EXPECT_THAT(ErrorsOf(kStart + lines), ElementsAre(error)) << lines;
  for (const char* end : {"", "\n", "\n  \t", " \n# end"}) {
    EXPECT_THAT(ErrorsOf(std::string(kStart) + kEnd + "title: 'a'" + end), IsEmpty()) << end;
  }
}

TEST_F(CourseFileTest, ReadsEveryEncodingOfYaml) {
  const std::u32string text =
      U"template: multiple-scos\nidentifier: C\nfiles: [a.zip]\ntitle: \u00e4\U0001F600";
  const auto encode = [&text](std::size_t size, bool isBigEndian, bool hasMark) {
    std::string bytes;
    const auto append = [&](char32_t unit) {
      for (std::size_t index = 0; index < size; ++index) {
        bytes += static_cast<char>(unit >> (8 * (isBigEndian ? size - 1 - index : index)));
      }
    };
    if (hasMark) append(0xFEFF);
    for (const char32_t character : text) {
      if (size == 2 && character > 0xFFFF) {
        append(0xD83D);
        append(0xDE00);
      } else {
        append(character);
      }
    }
    return bytes;
  };
  for (const std::size_t size : {2U, 4U}) {
    for (const bool isBigEndian : {false, true}) {
      for (const bool hasMark : {false, true}) {
        const CourseFileResult result = Read(encode(size, isBigEndian, hasMark));
        EXPECT_THAT(result.errors, IsEmpty()) << size << isBigEndian << hasMark;
        EXPECT_EQ(result.course.title, "\xC3\xA4\xF0\x9F\x98\x80") << size << isBigEndian << hasMark;
      }
    }
  }
  EXPECT_THAT(ErrorsOf("\xEF\xBB\xBF" + std::string(kStart) + kEnd), IsEmpty());
  EXPECT_THAT(ErrorsOf("\xEF\xBB\xBFt: a: b"), ElementsAre(::testing::StartsWith("1:5: ")));
}

TEST_F(CourseFileTest, BoundsWhatAliasesMultiply) {
  const auto repeat = [](std::size_t times, const std::string& word) {
    std::string text;
    for (std::size_t time = 0; time < times; ++time) text += word;
    return text;
  };
  const std::string modules = "template: simple-remediation\nidentifier: C\nmodules:\n";
  const std::string list = " - &m {post-test: a.zip, content: [";
  const std::string size =
      "comes to more than 1000000 values, or to more than 16 MiB, with its aliases written out";
  EXPECT_THAT(ErrorsOf(modules + list + repeat(2'000, "x.zip, ") + "]}\n" + repeat(2'000, " - *m\n")),
              ElementsAre("502:4: " + size));
  EXPECT_THAT(ErrorsOf(kStart + std::string("title: &t ") + std::string(1 << 20, 't') + "\nfiles: [" +
                       repeat(100, "*t, ") + "]\n"),
              ElementsAre("4:65: " + size));

  const std::vector<std::string> errors =
      ErrorsOf(modules + list + repeat(500, "x.zip, ") + "]}\n" + repeat(300, " - *m\n"));
  ASSERT_EQ(errors.size(), 21U);
  EXPECT_EQ(errors[0], "4:36: 'x.zip' doesn't exist");
  EXPECT_EQ(ErrorsOf(kStart + std::string("files: [") + repeat(100'001, "a.zip, ") + "]\n").at(0),
            "3:700009: a course can't have more than 100000 files and modules together");
}

TEST_F(CourseFileTest, SurvivesDeepNesting) {
  for (const char* opener : {"[", "{", "- ", "? ", "{a: ", "[{b: "}) {
    std::string text = "title: ";
    if (opener[1] == ' ') text = "";
    for (int level = 0; level < 200'000; ++level) text += opener;
    const std::vector<std::string> errors = ErrorsOf(text);
    ASSERT_EQ(errors.size(), 1U) << opener;
    EXPECT_THAT(errors[0], ::testing::EndsWith("is nested deeper than 64 levels")) << opener;
  }
}

}  // namespace
