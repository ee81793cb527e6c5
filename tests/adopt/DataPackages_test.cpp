// SPDX-License-Identifier: Apache-2.0
// Packages in the styles of many makers, through the whole road into a course.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "AdoptedPackages.h"
#include "check/PlexoArchiveCheck.h"
#include "check/PlexoFindingTable.h"
#include "check/PlexoPackageChecker.h"
#include "host/files/TzFileUtil.h"
#include "support/ProgramRun.h"
#include "support/TestSession.h"

namespace {

using ::testing::IsEmpty;
using enum PlexoCourseEdition;

constexpr PlexoCourseEdition kEditions[] = {Scorm12, Scorm2004};

class DataPackages : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(All, DataPackages, testing::ValuesIn(DataPackageNames()), [](const auto& test) {
  std::string name = test.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
});

TEST_P(DataPackages, KeepTheBytesOfEveryFileOfTheirContent) {
  const TestFolder folder;
  const std::string archive = BuildDataPackage(GetParam());
  const auto source = ReadPackage(folder.Write("source.zip", archive));
  for (const PlexoCourseEdition edition : kEditions) {
    const Adoption adoption = Adopt(archive, ForList(edition));
    ASSERT_EQ(adoption.result.code, kTzSuccess);
    std::set<std::string> kept;
    for (const auto& package : adoption.packages) {
      for (const auto& [name, content] : package) {
        if (!name.starts_with("content/")) continue;
        // In the source it lies at the top, or all lies in one folder.
        const std::string tail = name.substr(sizeof("content/") - 1);
        const auto original = std::find_if(source.begin(), source.end(), [&tail](const auto& file) {
          return file.first == tail || file.first.ends_with("/" + tail);
        });
        ASSERT_NE(original, source.end()) << name;
        EXPECT_EQ(content, original->second) << name;
        kept.insert(original->first);
      }
    }
    for (const auto& [name, content] : source) {
      const bool isContent = !name.ends_with("imsmanifest.xml") && !name.ends_with(".xsd") &&
                             PlexoArchiveCheck::GetLeaver(name).empty();
      EXPECT_EQ(kept.contains(name), isContent) << name;
    }
  }
}

TEST_P(DataPackages, StayAsTheyAreWhenTheyAreAdoptedAgain) {
  for (const PlexoCourseEdition edition : kEditions) {
    const Adoption adoption = Adopt(BuildDataPackage(GetParam()), ForList(edition));
    EXPECT_FALSE(adoption.reasons.empty()) << "each of them needs it";
    for (const std::string& archive : adoption.archives) {
      for (const PlexoAdoptRequest& request : {PlexoAdoptRequest(), ForList(edition)}) {
        const Adoption again = Adopt(archive, request);
        EXPECT_THAT(again.reasons, IsEmpty());
        ASSERT_EQ(again.archives.size(), 1U);
        EXPECT_EQ(again.archives[0], archive);
      }
    }
  }
}

TEST_P(DataPackages, PassTheCheckOnceTheyAreAdopted) {
  const PlexoPackageChecker checker(TzPath(PLEXO_BIN "/Templates/Publish/LMS/Standard/SCORM/Default"));
  const TestFolder folder;
  for (const PlexoCourseEdition edition : kEditions) {
    for (const std::string& archive : Adopt(BuildDataPackage(GetParam()), ForList(edition)).archives) {
      for (const PlexoFinding& finding : checker.Check(folder.Write("a.zip", archive)).findings) {
        EXPECT_NE(PlexoFindingTable::GetKind(finding.id).severity, PlexoSeverity::Error)
            << PlexoFindingTable::GetText(finding);
      }
    }
  }
}

TEST_P(DataPackages, BuildInEveryTemplateOnceTheyAreAdopted) {
  const TestFolder folder;
  const auto build = [&folder](const std::string& course, const std::string& files) {
    folder.Write("course.yaml", "identifier: C\n" + course);
    return ProgramRun(PLEXO_BIN "/plexo", {"build", "course.yaml", "-o", files + ".zip", "--force"})
        .In(folder.Path())
        .Run();
  };
  for (const PlexoCourseEdition edition : kEditions) {
    const Adoption adoption = Adopt(BuildDataPackage(GetParam()), ForList(edition));
    std::string files;
    for (std::size_t index = 0; index < adoption.archives.size(); ++index) {
      const std::string name = std::string(GetScormVersion(edition)) + "-" + std::to_string(index) + ".zip";
      folder.Write(name, adoption.archives[index]);
      files += (files.empty() ? "" : ", ") + name;
    }
    const std::string first = files.substr(0, files.find(','));
    std::vector<std::string> courses = {"template: multiple-scos\nscorm: \"" +
                                        std::string(GetScormVersion(edition)) + "\"\nfiles: [" + files +
                                        "]\n"};
    if (edition == Scorm2004) {
      const std::string module = "modules: [{title: A, content: [" + files + "], post-test: " + first;
      courses.push_back("template: simple-remediation\n" + module + "}]\n");
      courses.push_back("template: test-rollup\n" + module + ", pretest: " + first + "}]\n");
    }
    for (const std::string& course : courses) {
      const ProgramResult result = build(course, "built");
      ASSERT_EQ(result.status, 0) << course << result.err;
      const auto package = ReadPackage(folder.Path() / "built.zip");
      for (const auto& [name, content] : adoption.packages[0]) {
        if (name == "imsmanifest.xml") continue;
        const auto found = std::find_if(package.begin(), package.end(),
                                        [&](const auto& file) { return file.first.ends_with("-0/" + name); });
        ASSERT_NE(found, package.end()) << name << "\n" << course;
        EXPECT_EQ(found->second, content) << name;
      }
    }
  }
}

TEST(DataPackagesTogether, ShowEveryFindingOfAnAdoption) {
  // Those that refuse, and those that an own request brings, are shown where they are tested.
  const std::set<std::string> elsewhere = {"PLX-801", "PLX-802", "PLX-803", "PLX-804", "PLX-805",
                                           "PLX-806", "PLX-807", "PLX-808", "PLX-829", "PLX-845",
                                           "PLX-851", "PLX-852", "PLX-854", "PLX-862"};
  std::set<std::string> shown;
  for (const std::string& name : DataPackageNames()) {
    for (const PlexoCourseEdition edition : kEditions) {
      for (const std::string& finding : Adopt(BuildDataPackage(name), ForList(edition)).findings) {
        shown.insert(finding.substr(0, finding.find(' ')));
      }
    }
  }
  for (const PlexoFindingKind& kind : PlexoFindingTable::GetKinds()) {
    const std::string code(kind.code);
    if (code < "PLX-8") continue;
    EXPECT_NE(shown.contains(code), elsewhere.contains(code)) << code;
  }
}

}  // namespace
