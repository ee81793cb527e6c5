// SPDX-License-Identifier: Apache-2.0
#include "support/StagedCourse.h"

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "support/TestSession.h"

namespace {

PlexoSCOModel Stage(PlexoSCOManifest manifest, const std::string& folderName,
                    const std::vector<std::string>& strays = {}) {
  const TzPath folder = GetCourseModel()->GetWorkingFolder() / folderName / manifest.scoName;
  manifest.folderPath = folder.GetString();
  for (const TzString& file : manifest.files) WriteFile(folder / file, file.GetUTF8String());
  for (const std::string& stray : strays) WriteFile(folder / stray, stray);
  GetCourseModel()->AddSCOManifest(manifest);
  PlexoSCOModel sco;
  sco.sourcePath = manifest.sourcePath;
  sco.folderPath = manifest.folderPath;
  sco.scoName = manifest.scoName;
  sco.manifest = manifest;
  return sco;
}

}  // namespace

PlexoSCOManifest StagedCourse::Manifest(const std::string& name) {
  PlexoSCOManifest manifest;
  manifest.scoName = name;
  manifest.sourcePath = "/chosen/" + name + ".zip";
  manifest.title = "Title of " + name;
  manifest.href = "index.htm";
  manifest.files = {"index.htm"};
  return manifest;
}

void StagedCourse::AddLinear(PlexoSCOManifest manifest, const std::vector<std::string>& strays) {
  GetLinearCourseModel()->AddSCO(Stage(std::move(manifest), "Linear", strays));
}

void StagedCourse::AddLinearSCOs(int count) {
  for (int number = 1; number <= count; ++number) AddLinear(Manifest("sco" + std::to_string(number)));
}

void StagedCourse::AddModule(const std::string& key, const std::string& title, int contents) {
  PlexoModuleCourseModel* course = GetModuleCourseModel();
  course->AddModule(key, title);
  if (GetCourseModel()->GetCourseType() == PlexoCourseType::PRE_CONTENT_POST) {
    course->SetPreTest(key, Stage(Manifest("pre"), key + "/Pre_Test"));
  }
  for (int number = 1; number <= contents; ++number) {
    course->AddContentSCO(key, Stage(Manifest("content" + std::to_string(number)), key + "/Content"));
  }
  course->SetPostTest(key, Stage(Manifest("post"), key + "/Post_Test"));
}

PlexoSCOModel MakeSCO(const std::string& name) {
  PlexoSCOModel sco;
  sco.scoName = name;
  sco.sourcePath = "/chosen/" + name + ".zip";
  return sco;
}

std::vector<std::string> NamesOf(const std::vector<PlexoSCOModel>& scos) {
  std::vector<std::string> names;
  for (const PlexoSCOModel& sco : scos) names.push_back(sco.scoName.GetUTF8String());
  return names;
}
