// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PackageIntake.h"

#include <map>

#include "apps/cli/AdoptWords.h"
#include "check/PlexoFindingTable.h"
#include "host/files/TzFileUtil.h"

PackageIntake::Result PackageIntake::Take(const ListedFile& file, Place place) {
  // What isn't a package is wrapped when it is added.
  if (course.intake == CourseIntake::AsIs || !file.IsPackage()) return {{file.path}};
  PlexoAdopter adopter(MakeRequest(file, place), PlexoAdopter::GetLaunchInstallFolder());
  PlexoAdoptResult examined = adopter.Examine();
  if (place.awaited != Awaited::Success) {
    std::erase_if(examined.findings, [](const PlexoFinding& finding) {
      return finding.id == PlexoFindingId::CompletionMayNotPass ||
             finding.id == PlexoFindingId::SuccessUncertain;
    });
  }
  const bool isAsked = course.intake == CourseIntake::Always || !file.item.empty() || file.completionPasses;
  if (examined.code == kTzBadContent && !isAsked && !IsRefusedByAdopter(examined)) {
    static_cast<void>(session.TakeProblems());
    return {{file.path}};
  }
  if (examined.code != kTzSuccess) return Fail(file, examined);
  if (!file.title.empty() && adopter.GetItems().size() > 1) {
    return {
        .failure = CommandFailure{
            ExitStatus::Refused,
            file.name,
            "its title is for one SCO, and the package becomes " + std::to_string(adopter.GetItems().size()),
            {"name one of its items in the course file: {file: ..., item: ..., title: ...}"}}};
  }
  const bool isAdopted = isAsked || !adopter.GetReasons().empty();
  if (isAdopted) output.Note(file.name + ": adopted: " + DescribeAdoption(adopter, examined.findings));
  Warn(file, examined.findings);
  return isAdopted ? Write(file, adopter) : Result{{file.path}};
}

PlexoAdoptRequest PackageIntake::MakeRequest(const ListedFile& file, Place place) const {
  using Request = PlexoAdoptRequest;
  const bool isList = place.kind == PlexoSCOKind::LINEAR || place.kind == PlexoSCOKind::CONTENT;
  Request request;
  request.package = file.path;
  request.item = file.item;
  request.title = file.title;
  request.edition =
      course.scormVersion == "1.2" ? PlexoCourseEdition::Scorm12 : PlexoCourseEdition::Scorm2004;
  if (isList) request.place = Request::Place::List;
  if (file.completionPasses) request.completion = Request::Completion::Passes;
  if (place.awaited == Awaited::Nothing) request.scripts = Request::Scripts::Skip;
  return request;
}

PackageIntake::Result PackageIntake::Write(const ListedFile& file, PlexoAdopter& adopter) {
  const TzPath folder = TzFileUtil::CreateTempDiskDir("adopted");
  if (folder.IsEmpty()) return Fail(file, {kTzMachineFailure, "there is no folder to adopt it in", {}});
  Result taken;
  const std::string base = TzFileUtil::GetBaseFileName(file.path).GetUTF8String();
  for (const std::string& name : MakeAdoptedNames(base, adopter.GetItems().size())) {
    taken.packages.push_back(folder / name);
  }
  const PlexoAdoptResult written = adopter.Write(taken.packages);
  if (written.code != kTzSuccess) return Fail(file, written);
  taken.isAdopted = true;
  return taken;
}

PackageIntake::Result PackageIntake::Fail(const ListedFile& file, const PlexoAdoptResult& result) const {
  return {.failure = DescribeAdoptFailure(
              result, file.name, "name one of them in the course file: {file: ..., item: ...}", session)};
}

void PackageIntake::Warn(const ListedFile& file, const std::vector<PlexoFinding>& findings) {
  constexpr std::size_t kMostOfAKind = 10;
  std::map<PlexoFindingId, std::size_t> counts;
  for (const PlexoFinding& finding : findings) {
    if (!IsToldByItself(finding) || ++counts[finding.id] > kMostOfAKind) continue;
    output.Warn(file.name + ": " + PlexoFindingTable::GetText(finding) + "; " +
                PlexoFindingTable::GetWayOut(finding));
  }
  for (const auto& [id, count] : counts) {
    if (count <= kMostOfAKind) continue;
    output.Warn(file.name + ": " + std::to_string(count - kMostOfAKind) + " more of its items: " +
                std::string(PlexoFindingTable::GetKind(id).title) + "; 'plexo adopt --json' lists them");
  }
}
