// SPDX-License-Identifier: Apache-2.0
// Names of files and addresses of pages that a package can't carry as they are.
#include <gmock/gmock.h>

#include "CliTest.h"
#include "support/PdfFile.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class BuildNamesTest : public CliTest {
 protected:
  ProgramResult Build(const std::string& files) const {
    WriteCourse(files);
    return Plexo({"build", "course.yaml", "-o", "out.zip", "--force"});
  }
};

TEST_F(BuildNamesTest, RefusesALaunchAddressThatLeadsOutOfThePackage) {
  for (const char* address : {"../../../etc/passwd", "%2e%2e/%2e%2e/x.htm", "javascript:alert(1)", "/x.htm",
                              "//example.com/x.htm", "http://example.com/"}) {
    ScoZip("odd").Item("Odd", address).File("x.htm", "").Save(Work());
    WriteCourse("odd.zip", "intake: as-is\n");
    const ProgramResult result = Plexo({"build", "course.yaml", "-o", "out.zip"});
    EXPECT_EQ(result.status, 1) << address;
    EXPECT_EQ(result.err,
              std::string("odd.zip: its launch address '") + address + "' leads out of the package\n");
  }
}

TEST_F(BuildNamesTest, GivesFilesSafeNamesInThePackageAndSaysSo) {
  PdfFile(1).Save(Work(), "Doors #2.pdf");
  PdfFile(1).Save(Work(), "100%25 [a]{b}?.pdf");
  ScoZip("as is #1").Item("One", "index.htm").File("index.htm", "").Save(Work());
  ScoZip("adopted ?").Scorm12().Item("Two", "index.htm").File("index.htm", "").Save(Work());
  const ProgramResult built =
      Build("\"Doors #2.pdf\", \"100%25 [a]{b}?.pdf\", \"as is #1.zip\", \"adopted ?.zip\"");
  EXPECT_EQ(built.status, 0) << built.err;
  EXPECT_THAT(built.err, HasSubstr("Doors #2.pdf: goes into the package as 'Doors _2': an address there "
                                   "can't hold '#'\n"));
  EXPECT_THAT(built.err,
              HasSubstr("'100_25 _a__b__': an address there can't hold '%', '[', ']', '{', '}', '?'"));
  const std::string package = Read("out.zip");
  for (const char* entry : {"Linear/Doors _2/Doors _2.pdf", "Linear/100_25 _a__b__/100_25 _a__b__.htm",
                            "Linear/as is _1/index.htm", "Linear/adopted _/"}) {
    EXPECT_THAT(package, HasSubstr(entry));
  }
  const ProgramResult checked = Plexo({"check", "out.zip", "--json"});
  for (const char* dead : {"PLX-4", "PLX-103"}) EXPECT_THAT(checked.out, Not(HasSubstr(dead))) << checked.out;

  // What two files would be called alike isn't guessed.
  PdfFile(1).Save(Work(), "Doors ?2.pdf");
  EXPECT_THAT(Build("\"Doors #2.pdf\", \"Doors ?2.pdf\"").err,
              HasSubstr("Doors ?2.pdf: This file has already been added. Rename the file and retry adding.\n"
                        "  the name 'Doors _2' is taken by Doors #2.pdf\n"));
}

}  // namespace
