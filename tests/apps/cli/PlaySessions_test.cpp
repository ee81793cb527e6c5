// SPDX-License-Identifier: Apache-2.0
// Learners' sessions in whole courses: every script under tests/play, in the course of its folder. A folder
// has a course file, built of the packages below, or a manifest of another maker.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "CliTest.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> List(const fs::path& folder, const std::string& extension) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == extension) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class PlaySessionsTest : public CliTest, public ::testing::WithParamInterface<std::string> {
 protected:
  [[nodiscard]] static fs::path GetCourse() { return fs::path(PLEXO_SOURCE "/tests/play") / GetParam(); }

  void BuildPackage() const {
    if (fs::exists(GetCourse() / "imsmanifest.xml")) {
      ScoZip("package")
          .Manifest(ReadFile(TzPath::FromNative((GetCourse() / "imsmanifest.xml").string())))
          .File("index.htm", "")
          .Save(Work());
      return;
    }
    for (const char* name : {"a", "b", "c", "pre", "post"})
      ScoZip(name).Item(name, "index.htm").File("index.htm", "").Save(Work());
    Write("course.yaml", ReadFile(TzPath::FromNative((GetCourse() / "course.yaml").string())));
    const ProgramResult built = Plexo({"build", "course.yaml", "-o", "package.zip", "--quiet"});
    ASSERT_EQ(built.status, 0) << built.err;
  }
};

TEST_P(PlaySessionsTest, GoAsTheirScriptsExpect) {
  BuildPackage();
  const auto scripts = List(GetCourse(), ".txt");
  EXPECT_FALSE(scripts.empty());
  for (const std::string& script : scripts) {
    const ProgramResult result = Plexo({"play", "package.zip", (GetCourse() / script).string()});
    EXPECT_EQ(result.status, 0) << script << "\n" << result.out << result.err;
    EXPECT_THAT(result.out, ::testing::HasSubstr(" expectations hold")) << script;
  }
}

INSTANTIATE_TEST_SUITE_P(All, PlaySessionsTest, ::testing::ValuesIn(List(PLEXO_SOURCE "/tests/play", "")),
                         [](const auto& course) {
                           std::string name = course.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
