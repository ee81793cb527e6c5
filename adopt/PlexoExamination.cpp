// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoExamination.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>

#include "adopt/PlexoEditionEvidence.h"
#include "adopt/PlexoForeignFormat.h"
#include "adopt/PlexoIntakeForecast.h"
#include "adopt/PlexoItemData.h"
#include "adopt/PlexoManifestEncoding.h"
#include "adopt/PlexoSCOMaking.h"
#include "check/PlexoArchiveCheck.h"
#include "check/PlexoScratchFolder.h"
#include "host/xml/TzXMLParser.h"

namespace {

using enum PlexoFindingId;

/// What the packages of all items may hold together, in bytes, and by how much they may outgrow their source:
/// a course that repeats some shared files in every item stays far below.
constexpr std::uint64_t kMostTogether = std::uint64_t{1} << 30U;
constexpr std::uint64_t kMostGrowth = 20;
/// Each item costs a package of its own, written to the disk; courses of lessons have some hundreds.
constexpr std::size_t kMostItems = 1'000;

}  // namespace

TzErrorCodeEnum PlexoExamination::Run(std::string& failure) {
  TzErrorCodeEnum code = OpenArchive();
  for (const auto step :
       {&PlexoExamination::ReadManifest, &PlexoExamination::CheckManifest, &PlexoExamination::FindEditions,
        &PlexoExamination::ChooseItems, &PlexoExamination::ReadScripts, &PlexoExamination::MakeSCOs,
        &PlexoExamination::ShareFiles}) {
    if (code == kTzSuccess) code = (this->*step)();
  }
  failure = failureText;
  return code;
}

TzErrorCodeEnum PlexoExamination::Refuse(PlexoFindingId id, const std::vector<std::string>& words) {
  findings.Add(id, words);
  return kTzBadContent;
}

TzErrorCodeEnum PlexoExamination::Take(const TzZipFailure& problem) {
  failureText = problem.GetReason();
  return problem.code;
}

TzErrorCodeEnum PlexoExamination::OpenArchive() {
  const TzZipFailure problem = package.archive.Open(request.package);
  if (problem.code == kTzBadContent) return Refuse(ArchiveUnreadable, {problem.message});
  if (problem) return Take(problem);
  PlexoArchiveCheck::AddFaults(package, findings.GetList());
  return package.archive.GetFaults().empty() ? kTzSuccess : kTzBadContent;
}

TzErrorCodeEnum PlexoExamination::ReadManifest() {
  // The manifest is looked for among the files, before anything refers to them.
  package.IndexFiles();
  manifestEntry = PlexoPackageLayout::FindManifest(package, findings.GetList());
  if (manifestEntry == nullptr) return kTzBadContent;
  if (manifestEntry->size > TzXMLParser::kMaximumSize) {
    return Refuse(ManifestTooLarge,
                  {"larger than " + std::to_string(TzXMLParser::kMaximumSize >> 20U) + " MiB"});
  }
  const PlexoScratchFolder scratch("adopt");
  const TzPath file = scratch.GetPath() / PlexoFindingList::kManifestName;
  if (scratch.GetPath().IsEmpty()) return Take({kTzMachineFailure, {}, "there is no temporary folder", 0});
  const TzZipFailure problem = package.ReadManifest(*manifestEntry, file);
  if (problem.code == kTzBadContent) {
    return Refuse(EntryDamaged, {manifestEntry->name, problem.message});
  }
  if (problem) return Take(problem);
  const std::string encoding = PlexoManifestEncoding::Find(file);
  if (!encoding.empty()) findings.Add(EncodingChanged, {encoding});
  return kTzSuccess;
}

TzErrorCodeEnum PlexoExamination::CheckManifest() {
  const PlexoManifestDocument& manifest = package.manifest;
  if (!manifest.GetError().empty()) return Refuse(ManifestIllFormed, {manifest.GetError()});
  if (!manifest.GetExcess().empty()) return Refuse(ManifestTooLarge, {manifest.GetExcess()});
  if (manifest.GetRoot() == nullptr || manifest.GetRoot()->name != "manifest") {
    const auto* root = manifest.GetRoot();
    return Refuse(RootNotManifest, {root != nullptr ? root->qualifiedName : ""});
  }
  // "." lets references that start with a slash count from the top.
  const std::string folder(PlexoCheckedPackage::GetFolder(manifestEntry->name));
  package.Index(folder.empty() ? "." : folder);
  const std::string format = PlexoForeignFormat::FindByManifest(package);
  if (!format.empty()) return Refuse(ForeignFormat, {format});
  return kTzSuccess;
}

TzErrorCodeEnum PlexoExamination::FindEditions() {
  const auto edition = PlexoEditionEvidence::Find(package);
  if (!edition) return Refuse(EditionUntold, {package.manifest.GetRoot()->GetValue("version")});
  manifestEdition = *edition;
  layout.emplace(package, *manifestEntry, manifestEdition, launchFiles, findings);
  contentEdition = layout->GetLaunchSettings() ? layout->GetLaunchSettings()->contentEdition : *edition;
  return kTzSuccess;
}

TzErrorCodeEnum PlexoExamination::ChooseItems() {
  launchables = PlexoLaunchableItems::Find(package, findings);
  // A launch page of ours stands before one content.
  if (layout->GetLaunchSettings() && launchables.size() == 1)
    launchables.front().page = layout->GetLaunchedPage();
  LeaveOutItemsOutsideContent();
  if (launchables.empty()) return Refuse(NothingToLaunch, {});
  const std::string all = PlexoLaunchableItems::Describe(launchables, package);
  const std::string count = std::to_string(launchables.size());
  if (request.item.empty()) {
    if (launchables.size() > 1 && request.place == PlexoAdoptRequest::Place::OneSCO) {
      return Refuse(SeveralItems, {count, all});
    }
    if (launchables.size() > kMostItems) return Refuse(TooManyItems, {count, std::to_string(kMostItems)});
    if (launchables.size() > 1) findings.AddReason(ItemsSeparated, {count, all});
    taken = launchables;
    return kTzSuccess;
  }
  std::vector<PlexoLaunchable> others;
  for (const PlexoLaunchable& launchable : launchables) {
    const bool isWanted = taken.empty() && launchable.GetIdentifier() == request.item;
    (isWanted ? taken : others).push_back(launchable);
  }
  if (taken.empty()) return Refuse(ItemUnknown, {request.item, all});
  if (!others.empty()) {
    findings.AddReason(OtherItemsLeftOut, {request.item, std::to_string(others.size()),
                                           PlexoLaunchableItems::Describe(others, package)});
  }
  return kTzSuccess;
}

void PlexoExamination::LeaveOutItemsOutsideContent() {
  const auto& content = layout->GetContent();
  const std::unordered_set<const TzZipEntry*> files(content.begin(), content.end());
  std::erase_if(launchables, [&](const PlexoLaunchable& launchable) {
    if (files.contains(launchable.page)) return false;
    findings.AddReason(ItemLeftOut, {launchable.GetIdentifier(), launchable.page->name});
    return true;
  });
}

TzErrorCodeEnum PlexoExamination::ReadScripts() {
  // What they report matters where something may wait for success, and completion isn't made to count as it.
  const bool canWait = request.edition.value_or(manifestEdition) == PlexoCourseEdition::Scorm2004;
  if (request.scripts == PlexoAdoptRequest::Scripts::Skip || !canWait) return kTzSuccess;
  PlexoFindingList damaged;
  scripts.emplace(package, damaged);
  if (scripts->GetFailure()) return Take(scripts->GetFailure());
  for (const PlexoFinding& finding : damaged.Get()) findings.Add(finding.id, finding.words);
  return damaged.Get().empty() ? kTzSuccess : kTzBadContent;
}

TzErrorCodeEnum PlexoExamination::MakeSCOs() {
  const bool isOnly = launchables.size() == 1;
  PlexoSCOMaking making(package, *layout, {request, manifestEdition, contentEdition, isOnly}, findings);
  for (const PlexoLaunchable& launchable : taken) {
    scos.push_back(making.Make(launchable, scripts ? &*scripts : nullptr));
    PlexoAdoptedSCO& sco = scos.back();
    if (isOnly) PlexoIntakeForecast::AddReasons(package, launchable, sco, layout->GetContent(), findings);
    PlexoItemData::DropWithoutPlace(sco, findings);
    if (PlexoLaunchableItems::IsAsset(*launchable.resource)) {
      findings.Add(AssetLaunched, {launchable.GetIdentifier()});
    }
  }
  PlexoItemData::AddDropped(taken, package, findings);
  return kTzSuccess;
}

TzErrorCodeEnum PlexoExamination::ShareFiles() {
  shares.emplace(package, *layout, launchables);
  shares->AddFindings(findings);
  if (taken.size() == 1) return kTzSuccess;
  const std::uint64_t source = PlexoFileShares::GetPackedSize(layout->GetContent());
  const std::uint64_t most = std::max(kMostTogether, kMostGrowth * source);
  std::uint64_t together = 0;
  for (const PlexoLaunchable& launchable : taken) {
    together += PlexoFileShares::GetPackedSize(shares->GetShare(launchable));
    if (together <= most) continue;
    return Refuse(PackagesTooLarge, {std::to_string(taken.size()), std::to_string(most >> 20U)});
  }
  return kTzSuccess;
}

std::vector<PlexoAdoptedFile> PlexoExamination::GetFiles(std::size_t index) const {
  std::vector<PlexoAdoptedFile> files;
  for (const TzZipEntry* file : shares->GetShare(taken.at(index))) {
    files.push_back({file, layout->GetTarget(*file)});
  }
  return files;
}
