// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PackageIntake.h"

#include <algorithm>

#include "apps/cli/AdoptWords.h"
#include "check/PlexoFindingTable.h"
#include "host/files/TzFileUtil.h"

namespace {

bool IsWarning(const PlexoFinding& finding) {
  return PlexoFindingTable::GetKind(finding.id).severity == PlexoSeverity::Warning;
}

/// The course's own words tell better what is wrong with an archive or a manifest that can't be read at all.
bool IsOfAdoption(const PlexoAdoptResult& result) {
  static constexpr PlexoFindingId kRefusals[] = {
      PlexoFindingId::ForeignFormat,    PlexoFindingId::SeveralManifests, PlexoFindingId::EditionUntold,
      PlexoFindingId::NothingToLaunch,  PlexoFindingId::SeveralItems,     PlexoFindingId::ItemUnknown,
      PlexoFindingId::PackagesTooLarge, PlexoFindingId::TooManyItems};
  return std::ranges::any_of(result.findings, [](const PlexoFinding& finding) {
    return std::ranges::find(kRefusals, finding.id) != std::end(kRefusals);
  });
}

/// In a module whose content has no order, completion is all that the content needs to report.
bool NeedsSuccess(PlexoSCOKind kind, const CourseModule* module) {
  return kind != PlexoSCOKind::CONTENT || module == nullptr || module->forceContentSequence;
}

}  // namespace

PackageIntake::Result PackageIntake::Take(const ListedFile& file, PlexoSCOKind kind,
                                          const CourseModule* module) {
  // What isn't a package is wrapped when it is added.
  if (course.intake == CourseIntake::AsIs || !file.IsPackage()) return {{file.path}};
  PlexoAdopter adopter(MakeRequest(file, kind), PlexoAdopter::GetLaunchInstallFolder());
  PlexoAdoptResult examined = adopter.Examine();
  if (!NeedsSuccess(kind, module)) {
    std::erase_if(examined.findings, [](const PlexoFinding& finding) {
      return finding.id == PlexoFindingId::CompletionMayNotPass;
    });
  }
  const bool isAsked = course.intake == CourseIntake::Always || !file.item.empty() || file.completionPasses;
  if (examined.code == kTzBadContent && !isAsked && !IsOfAdoption(examined)) {
    static_cast<void>(session.TakeProblems());
    return {{file.path}};
  }
  if (examined.code != kTzSuccess) return Fail(file, examined);
  TellDoubts(file, examined.findings);
  if (!isAsked && adopter.GetReasons().empty()) return {{file.path}};
  TellReasons(file, adopter.GetReasons(), examined.findings);
  return Write(file, adopter);
}

PlexoAdoptRequest PackageIntake::MakeRequest(const ListedFile& file, PlexoSCOKind kind) const {
  using Request = PlexoAdoptRequest;
  const bool isList = kind == PlexoSCOKind::LINEAR || kind == PlexoSCOKind::CONTENT;
  Request request;
  request.package = file.path;
  request.item = file.item;
  request.edition =
      course.scormVersion == "1.2" ? PlexoCourseEdition::Scorm12 : PlexoCourseEdition::Scorm2004;
  if (isList) request.place = Request::Place::List;
  if (file.completionPasses) request.completion = Request::Completion::Passes;
  if (!ReadsScripts()) request.scripts = Request::Scripts::Skip;
  return request;
}

/// Whether the sequencing holds something back until a SCO has reported its completion or success.
bool PackageIntake::ReadsScripts() const {
  const bool isLinear = course.courseTemplate == CourseTemplate::MultipleScos;
  return course.scormVersion == "2004" && (!isLinear || course.forceSequence);
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

void PackageIntake::TellReasons(const ListedFile& file, const std::vector<PlexoFinding>& reasons,
                                const std::vector<PlexoFinding>& findings) {
  std::string text = "the course file asks for it";
  auto more = std::ranges::count_if(findings, IsWarning);
  if (!reasons.empty()) {
    text = PlexoFindingTable::GetText(reasons.front());
    more -= IsWarning(reasons.front()) ? 1 : 0;
  }
  if (more > 0) text += "; 'plexo adopt' tells " + std::to_string(more) + " more";
  output.Note(file.name + ": adopted: " + text);
}

void PackageIntake::TellDoubts(const ListedFile& file, const std::vector<PlexoFinding>& findings) {
  for (const PlexoFinding& finding : findings) {
    const bool isDoubt =
        finding.id == PlexoFindingId::CompletionMayNotPass || finding.id == PlexoFindingId::ReportsNothing;
    if (!isDoubt) continue;
    output.Warn(file.name + ": " + PlexoFindingTable::GetText(finding) + "; " +
                PlexoFindingTable::GetWayOut(finding));
  }
}
