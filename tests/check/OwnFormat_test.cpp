// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "check/PlexoFindingTable.h"
#include "check/PlexoPackageChecker.h"
#include "support/CheckedPackage.h"
#include "support/RawZip.h"
#include "support/TestSession.h"

namespace {

/// Adds every text of the manifest that stands between these two, and holds a point.
void AddNames(const std::string& manifest, const std::string& start, const std::string& end,
              std::set<std::string>& names) {
  for (std::size_t at = 0; (at = manifest.find(start, at)) != std::string::npos;) {
    at += start.size();
    const std::string name = manifest.substr(at, manifest.find(end, at) - at);
    if (name.find('.') != std::string::npos) names.insert(name);
  }
}

/// A package around a manifest: every file that it names, with contents that report everything.
std::string PackAround(const std::string& manifest) {
  const std::string page = CheckedPackage::Page2004("cmi.completion_status cmi.success_status 'failed'") +
                           "<script>API.LMSInitialize(''); API.LMSFinish('')</script>";
  std::set<std::string> names;
  AddNames(manifest, "href=\"", "\"", names);
  AddNames(manifest, "<adlcp:location>", "<", names);
  std::set<std::string> schemas;
  AddNames(manifest, "schemaLocation=\"", "\"", schemas);
  for (const std::string& locations : schemas) {
    std::istringstream words(locations);
    for (std::string uri, name; words >> uri >> name;) names.insert(name);
  }
  RawZip archive;
  archive.entries.push_back({.name = "imsmanifest.xml", .content = manifest});
  for (const std::string& file : names) archive.entries.push_back({.name = file, .content = page});
  return archive.Build();
}

std::set<std::string> FindCodes(const std::string& archive) {
  const TestFolder folder;
  const PlexoPackageChecker checker(TzPath(PLEXO_BIN "/Templates/Publish/LMS/Standard/SCORM/Default"));
  std::set<std::string> codes;
  for (const PlexoFinding& finding : checker.Check(folder.Write("package.zip", archive)).findings) {
    codes.emplace(PlexoFindingTable::GetKind(finding.id).code);
  }
  return codes;
}

TEST(OwnFormat, HasOnlyTheFindingsThatItIsKnownFor) {
  const std::map<std::string, std::set<std::string>> known = {
      // Their SCO names no launch file.
      {"details-off-1.2", {"PLX-402"}},
      {"details-off-2004", {"PLX-402"}},
      {"everything-1.2", {"PLX-214"}},
      {"everything-2004", {"PLX-213"}},
      {"flat-forced-3", {"PLX-516"}},
      {"remediation-forced-open-3", {"PLX-516"}},
      {"remediation-forced-ordered-3", {"PLX-516"}},
      {"remediation-free-ordered-3", {"PLX-516"}},
      {"rollup-free-open-1", {"PLX-529"}},
      {"rollup-free-open-3", {"PLX-529"}},
      {"rollup-free-ordered-1", {"PLX-529"}},
      {"rollup-free-ordered-3", {"PLX-516", "PLX-529"}},
      {"rollup-forced-open-1", {"PLX-529"}},
      {"rollup-forced-open-3", {"PLX-512", "PLX-529", "PLX-532"}},
      {"rollup-forced-ordered-1", {"PLX-529"}},
      {"rollup-forced-ordered-3", {"PLX-512", "PLX-516", "PLX-529", "PLX-532"}},
  };
  std::size_t count = 0;
  for (const auto& file : std::filesystem::directory_iterator(PLEXO_SOURCE "/tests/publish/golden")) {
    const std::string name = file.path().stem().string();
    const auto expected = known.find(name);
    EXPECT_EQ(FindCodes(PackAround(ReadFile(TzPath(file.path().string())))),
              expected != known.end() ? expected->second : std::set<std::string>())
        << name;
    ++count;
  }
  EXPECT_GE(count, 20U);
}

}  // namespace
