// SPDX-License-Identifier: Apache-2.0
#include "support/StagedCourse.h"

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "support/TestSession.h"

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
  const TzPath folder = GetCourseModel()->GetWorkingFolder() / "Linear" / manifest.scoName;
  manifest.folderPath = folder.GetString();
  for (const TzString& file : manifest.files) WriteFile(folder / file, file.GetUTF8String());
  for (const std::string& stray : strays) WriteFile(folder / stray, stray);
  GetCourseModel()->AddSCOManifest(manifest);
  PlexoSCOModel sco;
  sco.sourcePath = manifest.sourcePath;
  sco.folderPath = manifest.folderPath;
  sco.scoName = manifest.scoName;
  sco.manifest = manifest;
  GetLinearCourseModel()->AddSCO(sco);
}

void StagedCourse::AddLinearSCOs(int count) {
  for (int number = 1; number <= count; ++number) AddLinear(Manifest("sco" + std::to_string(number)));
}
