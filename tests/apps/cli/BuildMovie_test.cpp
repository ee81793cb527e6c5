// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>

#include "CliTest.h"
#include "support/TestMovies.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class BuildMovieTest : public CliTest {
 protected:
  /// The browser of a test that runs as root works as another user.
  BuildMovieTest() {
    using std::filesystem::perms;
    for (const TzPath& path : {Temporary(), Temporary().GetParentTzPath()}) {
      std::filesystem::permissions(path.GetNative(),
                                   perms::owner_all | perms::group_exec | perms::others_exec);
    }
  }

  void Bring(const char* movie) const {
    std::filesystem::copy(TestMovie(movie).GetNative(), Work().GetNative());
  }
};

TEST_F(BuildMovieTest, MakesAScoOfAMovieBesidePackages) {
  Bring("interaction");
  ScoZip("intro").Scorm12().Item("Intro", "index.htm").File("index.htm", "").Save(Work());
  WriteCourse("intro.zip, {file: interaction.swf}", "scorm: 1.2\nintake: always\n");
  const ProgramResult built = Plexo({"build", "course.yaml", "-o", "out.zip"});
  EXPECT_EQ(built.status, 0) << built.err;
  EXPECT_THAT(built.out, HasSubstr("interaction.htm    6 files\n"));
  const std::string package = Read("out.zip");
  for (const char* entry :
       {"Linear/interaction/interaction.swf", "Linear/interaction/SCORM_support/scorm_support.swf",
        "plexo_players/ruffle/ruffle.js"}) {
    EXPECT_THAT(package, HasSubstr(entry));
  }

  // The player that the pages share isn't listed in the manifest, and needn't be.
  const ProgramResult checked = Plexo({"check", "out.zip", "--json"});
  EXPECT_EQ(checked.status, 0) << checked.out;
  EXPECT_THAT(checked.out, Not(HasSubstr("plexo_players")));
}

TEST_F(BuildMovieTest, SaysWhyAMovieIsRefused) {
  Bring("no-height");
  Write("packed.swf", "PK\3\4 an archive");
  const struct {
    const char* file;
    const char* reason;
  } cases[] = {
      {"no-height.swf", "The given Learning Interaction SWF file has errors!\n  its 'MovieWidth' and"},
      {"packed.swf", "The given file is not a SWF file!\n  isn't a movie"},
  };
  for (const auto& [file, reason] : cases) {
    WriteCourse(file);
    const ProgramResult result = Plexo({"build", "course.yaml", "-o", "out.zip"});
    EXPECT_EQ(result.status, 1) << file;
    EXPECT_THAT(result.err, HasSubstr(std::string(file) + ": " + reason));
    EXPECT_FALSE(Exists("out.zip"));
  }
  Bring("interaction");
  WriteCourse("interaction.swf");
  const ProgramResult unasked =
      Program({"build", "course.yaml", "-o", "out.zip"}).With("PATH", "/nowhere").Run();
  EXPECT_EQ(unasked.status, 3);
  EXPECT_THAT(unasked.err, HasSubstr("install Chromium"));
}

}  // namespace
