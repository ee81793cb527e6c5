// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoExamination.h"

#include <unordered_set>

#include "adopt/PlexoAdoptedManifest.h"
#include "adopt/PlexoEditionEvidence.h"
#include "adopt/PlexoForeignFormat.h"
#include "adopt/PlexoIntakeForecast.h"
#include "adopt/PlexoItemData.h"
#include "adopt/PlexoLaunchAddress.h"
#include "adopt/PlexoManifestEncoding.h"
#include "check/PlexoArchiveCheck.h"
#include "check/PlexoScratchFolder.h"
#include "host/xml/TzXMLParser.h"

namespace {

using enum PlexoFindingId;

}  // namespace

TzErrorCodeEnum PlexoExamination::Run(std::string& failure) {
  TzErrorCodeEnum code = OpenArchive();
  for (const auto step :
       {&PlexoExamination::ReadManifest, &PlexoExamination::CheckManifest, &PlexoExamination::FindEditions,
        &PlexoExamination::ChooseItems, &PlexoExamination::ReadScripts, &PlexoExamination::MakeSCOs}) {
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
  failureText = problem.message;
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
  if (manifest.IsCutShort()) {
    return Refuse(ManifestTooLarge,
                  {"more than " + std::to_string(PlexoManifestDocument::kMaximumElements) + " elements"});
  }
  if (manifest.GetRoot() == nullptr || manifest.GetRoot()->name != "manifest") {
    const auto* root = manifest.GetRoot();
    return Refuse(RootNotManifest, {root != nullptr ? root->qualifiedName : ""});
  }
  // "." lets references that start with a slash count from the top.
  const std::string folder = PlexoPackageLayout::GetFolder(*manifestEntry);
  package.Index(folder.empty() ? "." : folder);
  const std::string_view format = PlexoForeignFormat::FindByManifest(package);
  if (!format.empty()) return Refuse(ForeignFormat, {std::string(format)});
  layout.emplace(package, *manifestEntry, findings);
  return kTzSuccess;
}

TzErrorCodeEnum PlexoExamination::FindEditions() {
  const auto edition = PlexoEditionEvidence::Find(package);
  if (!edition) return Refuse(EditionUntold, {package.manifest.GetRoot()->GetValue("version")});
  manifestEdition = *edition;
  contentEdition = layout->GetLaunchSettings() ? layout->GetLaunchSettings()->contentEdition : *edition;
  return kTzSuccess;
}

TzErrorCodeEnum PlexoExamination::ChooseItems() {
  launchables = PlexoLaunchableItems::Find(package, findings);
  // A launch page of ours stands before one content.
  if (layout->GetLaunchSettings() && launchables.size() == 1)
    launchables.front().page = layout->GetLaunchedPage();
  LeaveOutStrangers();
  if (launchables.empty()) return Refuse(NothingToLaunch, {});
  const std::string all = PlexoLaunchableItems::Describe(launchables, package);
  const std::string count = std::to_string(launchables.size());
  if (request.item.empty()) {
    if (launchables.size() > 1 && request.place == PlexoAdoptRequest::Place::OneSCO) {
      return Refuse(SeveralItems, {count, all});
    }
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

void PlexoExamination::LeaveOutStrangers() {
  const auto& content = layout->GetContent();
  const std::unordered_set<const TzZipEntry*> files(content.begin(), content.end());
  std::erase_if(launchables, [&](const PlexoLaunchable& launchable) {
    if (files.contains(launchable.page)) return false;
    findings.Add(ItemLeftOut, {launchable.GetIdentifier(), launchable.page->name});
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
  metadataFiles.emplace(package);
  for (const PlexoLaunchable& launchable : taken) {
    scos.push_back(MakeSCO(launchable));
    PlexoAdoptedSCO& sco = scos.back();
    AddLaunchPageFindings(launchable, sco);
    CheckVersion(sco);
    if (launchables.size() == 1) {
      PlexoIntakeForecast::AddReasons(package, launchable, sco, layout->GetContent(), findings);
    }
    PlexoItemData::DropWithoutPlace(sco, findings);
    if (PlexoLaunchableItems::IsAsset(*launchable.resource)) {
      findings.Add(AssetLaunched, {launchable.GetIdentifier()});
    }
  }
  PlexoItemData::AddDropped(taken, findings);
  shares.emplace(package, *layout, launchables);
  shares->AddFindings(findings);
  return kTzSuccess;
}

std::vector<PlexoAdoptedFile> PlexoExamination::GetFiles(std::size_t index) const {
  std::vector<PlexoAdoptedFile> files;
  for (const TzZipEntry* file : shares->GetShare(taken.at(index))) {
    files.push_back({file, layout->GetTarget(*file)});
  }
  return files;
}

PlexoAdoptedSCO PlexoExamination::MakeSCO(const PlexoLaunchable& launchable) {
  const bool isOnly = launchables.size() == 1;
  const auto& settings = layout->GetLaunchSettings();
  PlexoAdoptedSCO sco;
  sco.item = launchable.GetIdentifier();
  sco.title = PlexoLaunchableItems::GetTitle(launchable, package);
  sco.manifest = package.manifest.GetRoot()->GetValue("identifier");
  if (!isOnly) sco.manifest += (sco.manifest.empty() ? "" : "-") + sco.item;
  sco.contentEdition = contentEdition;
  sco.courseEdition = request.edition.value_or(manifestEdition);
  sco.completionPasses =
      request.completion == PlexoAdoptRequest::Completion::Passes || (settings && settings->completionPasses);
  sco.launch = MakeLaunchAddress(launchable);
  sco.objective = PlexoItemData::ReadObjective(launchable, findings);
  sco.data = settings ? settings->data : PlexoItemData::ReadLaunchData(launchable, contentEdition, findings);
  sco.metadata = metadataFiles->Find(
      launchable, isOnly ? PlexoMetadataFiles::Scope::Package : PlexoMetadataFiles::Scope::Item, findings);
  return sco;
}

std::string PlexoExamination::MakeLaunchAddress(const PlexoLaunchable& launchable) {
  const auto& settings = layout->GetLaunchSettings();
  std::string address = PlexoLaunchAddress::EncodePath(layout->GetTarget(*launchable.page));
  address +=
      PlexoLaunchAddress::GetSuffix(settings ? settings->content : launchable.resource->launch->written);
  const std::string parameters =
      launchable.item != nullptr ? launchable.item->GetValue("parameters") : std::string();
  if (!parameters.empty()) {
    address = PlexoLaunchAddress::AddParameters(address, parameters);
    findings.AddReason(ParametersMoved, {launchable.GetIdentifier(), parameters, address});
  }
  const std::string suffix(PlexoLaunchAddress::GetSuffix(address));
  const std::string whole = address;
  address.resize(address.size() - suffix.size());
  address += PlexoLaunchAddress::ProtectSuffix(suffix);
  if (!PlexoLaunchAddress::IsJoinable(suffix)) findings.AddReason(AddressProtected, {whole, address});
  return address;
}

void PlexoExamination::AddLaunchPageFindings(const PlexoLaunchable& launchable, const PlexoAdoptedSCO& sco) {
  const auto& settings = layout->GetLaunchSettings();
  const bool isNew = !settings || settings->courseEdition != sco.courseEdition;
  if (sco.contentEdition != sco.courseEdition && isNew) {
    findings.AddReason(LaunchPageAdded, {sco.item, std::string(GetScormVersion(sco.contentEdition)),
                                         std::string(GetScormVersion(sco.courseEdition))});
  }
  if (sco.completionPasses) {
    if (!settings || !settings->completionPasses) findings.AddReason(CompletionPasses, {sco.item});
    return;
  }
  if (!scripts) return;
  PlexoScriptWords words = scripts->GetWordsOf(*launchable.resource, *launchable.page);
  if (sco.HasLaunchPage()) words.Add(PlexoScriptWords::Translated);
  if (!sco.data.masteryScore.empty()) words.Add(PlexoScriptWords::MasteryScore);
  if (words.ReportsCompletion() && !words.ReportsSuccess()) findings.Add(CompletionMayNotPass, {sco.item});
}

void PlexoExamination::CheckVersion(const PlexoAdoptedSCO& sco) {
  const std::string version = package.manifest.GetRoot()->GetValue("version");
  const std::string_view right = GetManifestVersion(sco.courseEdition);
  // That the edition changes is told by the launch page.
  const bool isRightForItself = version == GetManifestVersion(manifestEdition);
  if (version == right || (isRightForItself && sco.contentEdition != sco.courseEdition)) return;
  findings.AddReason(VersionCorrected,
                     {version, std::string(right), std::string(GetScormVersion(sco.courseEdition))});
}
