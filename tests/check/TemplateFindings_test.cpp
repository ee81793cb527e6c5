// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>

#include "check/PlexoFindingTable.h"
#include "check/PlexoPackageChecker.h"
#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "publish/PlexoPublisher.h"
#include "support/CheckedPackage.h"
#include "support/Golden.h"
#include "support/RawZip.h"
#include "support/StagedCourse.h"
#include "support/TestSession.h"

namespace {

constexpr int kMostModules = 6;

struct Template {
  const char* name;
  PlexoCourseType type;
  bool hasForcedModules;
  bool hasForcedContent;
};
constexpr Template kTemplates[] = {
    {"multiple SCOs", PlexoCourseType::LINEAR, false, false},
    {"multiple SCOs, forced", PlexoCourseType::LINEAR, true, false},
    {"remediation", PlexoCourseType::CONTENT_POST, false, false},
    {"remediation, forced content", PlexoCourseType::CONTENT_POST, false, true},
    {"remediation, forced modules", PlexoCourseType::CONTENT_POST, true, false},
    {"remediation, forced modules and content", PlexoCourseType::CONTENT_POST, true, true},
    {"rollup", PlexoCourseType::PRE_CONTENT_POST, false, false},
    {"rollup, forced content", PlexoCourseType::PRE_CONTENT_POST, false, true},
    {"rollup, forced modules", PlexoCourseType::PRE_CONTENT_POST, true, false},
    {"rollup, forced modules and content", PlexoCourseType::PRE_CONTENT_POST, true, true},
};

struct Content {
  const char* reports;
  const char* words;
};
constexpr Content kContents[] = {
    {"both", "cmi.completion_status cmi.success_status 'failed'"},
    {"completion", "cmi.completion_status"},
    {"success", "cmi.success_status 'failed'"},
    {"nothing", ""},
};

/// The manifest of a course of so many modules, each with two contents; of so many SCOs if it has no modules.
std::string WriteManifest(const Template& chosen, int modules) {
  const TestSession session;
  PlexoCourseModel* course = GetCourseModel();
  course->SetScormVersion("2004");
  course->SetCourseIdentifier("Course");
  course->SetCourseTitle("Course");
  course->SetCourseType(chosen.type);
  if (chosen.type == PlexoCourseType::LINEAR) {
    GetLinearCourseModel()->SetForcedSequence(chosen.hasForcedModules);
    StagedCourse::AddLinearSCOs(modules);
  } else {
    PlexoModuleCourseModel* model = GetModuleCourseModel();
    model->SetModuleForcedSequence(chosen.hasForcedModules);
    for (int module = 1; module <= modules; ++module) {
      const std::string key = std::to_string(module);
      StagedCourse::AddModule(key, "Module " + key, 2);
      model->SetContentForcedSequence(key, chosen.hasForcedContent);
      // Only the first counts, so that no number of modules needs rounding.
      model->SetWeightage(key, module == 1 ? "1.0" : "0.0");
    }
  }
  EXPECT_EQ(PlexoPublisher::GetPublisher()->WriteManifest(), 0);
  return ReadFile(course->GetWorkingFolder() / "imsmanifest.xml");
}

/// What is found of the course's sequencing: "PLX-516 PLX-529", or "-".
std::string FindCodes(const std::string& manifest, const std::string& page) {
  RawZip archive;
  archive.entries.push_back({.name = "imsmanifest.xml", .content = manifest});
  std::set<std::string> pages;
  const std::string start = "<file href=\"";
  for (std::size_t at = 0; (at = manifest.find(start, at)) != std::string::npos;) {
    at += start.size();
    pages.insert(manifest.substr(at, manifest.find('"', at) - at));
  }
  for (const std::string& name : pages) archive.entries.push_back({.name = name, .content = page});
  const TestFolder folder;
  const PlexoPackageChecker checker(TzPath(PLEXO_BIN "/Templates/Publish/LMS/Standard/SCORM/Default"));
  std::set<std::string> codes;
  for (const PlexoFinding& finding : checker.Check(folder.Write("a.zip", archive.Build())).findings) {
    const std::string code(PlexoFindingTable::GetKind(finding.id).code);
    if (code.starts_with("PLX-5")) codes.insert(code);
  }
  std::string text;
  for (const std::string& code : codes) text += (text.empty() ? "" : " ") + code;
  return text.empty() ? "-" : text;
}

TEST(TemplateFindingsGolden, AreThoseOfTheTable) {
  std::string table = "template | contents report | modules (or SCOs): findings\n";
  for (const Template& chosen : kTemplates) {
    std::vector<std::string> manifests;
    for (int modules = 1; modules <= kMostModules; ++modules)
      manifests.push_back(WriteManifest(chosen, modules));
    for (const auto& [reports, words] : kContents) {
      table += std::string(chosen.name) + " | " + reports + " |";
      std::string before;
      for (int modules = 1; modules <= kMostModules; ++modules) {
        const std::string codes =
            FindCodes(manifests[static_cast<std::size_t>(modules - 1)], CheckedPackage::Page2004(words));
        // From how many modules on they are found.
        if (codes != before) table += " " + std::to_string(modules) + ": " + codes;
        before = codes;
      }
      table += "\n";
    }
  }
  ExpectGolden(PLEXO_SOURCE "/tests/check/golden", "template-findings.txt", table);
}

}  // namespace
