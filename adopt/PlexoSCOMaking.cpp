// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoSCOMaking.h"

#include <algorithm>
#include <vector>

#include "adopt/PlexoItemData.h"
#include "adopt/PlexoLaunchAddress.h"

namespace {

using enum PlexoFindingId;

}  // namespace

PlexoAdoptedSCO PlexoSCOMaking::Make(const PlexoLaunchable& launchable, const PlexoScriptIndex* scripts) {
  const auto& settings = layout.GetLaunchSettings();
  PlexoAdoptedSCO sco;
  sco.item = launchable.GetIdentifier();
  sco.title = PlexoLaunchableItems::GetTitle(launchable, package);
  sco.manifest = package.manifest.GetRoot()->GetValue("identifier");
  if (!task.isOnly) sco.manifest += (sco.manifest.empty() ? "" : "-") + sco.item;
  sco.contentEdition = task.contentEdition;
  sco.courseEdition = task.request.edition.value_or(task.manifestEdition);
  sco.completionPasses = task.request.completion == PlexoAdoptRequest::Completion::Passes ||
                         (settings && settings->completionPasses);
  sco.launch = MakeLaunchAddress(launchable);
  sco.data =
      settings ? settings->data : PlexoItemData::ReadLaunchData(launchable, task.contentEdition, findings);
  sco.objective = PlexoItemData::ReadObjective(launchable, findings);
  if (sco.objective.empty()) sco.objective = sco.data.primaryObjective;
  if (sco.contentEdition == PlexoCourseEdition::Scorm2004) sco.data.primaryObjective = sco.objective;
  sco.metadata = metadataFiles.Find(
      launchable, task.isOnly ? PlexoMetadataFiles::Scope::Package : PlexoMetadataFiles::Scope::Item,
      findings);
  AddLaunchPageFindings(sco);
  if (!sco.completionPasses && scripts != nullptr) AddDoubts(launchable, *scripts, sco);
  CheckVersion(sco);
  return sco;
}

std::string PlexoSCOMaking::MakeLaunchAddress(const PlexoLaunchable& launchable) {
  const auto& settings = layout.GetLaunchSettings();
  std::string address = PlexoLaunchAddress::EncodePath(layout.GetTarget(*launchable.page));
  address +=
      PlexoLaunchAddress::GetSuffix(settings ? settings->content : launchable.resource->launch->written);
  const std::string parameters =
      launchable.item != nullptr ? launchable.item->GetValue("parameters") : std::string();
  if (!parameters.empty()) {
    const std::string without = address;
    address = PlexoLaunchAddress::AddParameters(address, parameters);
    const std::vector<std::string> words = {launchable.GetIdentifier(), parameters, address};
    if (address == without) {
      findings.Add(ParametersDropped, words);
    } else {
      findings.AddReason(ParametersMoved, words);
    }
  }
  const std::string suffix(PlexoLaunchAddress::GetSuffix(address));
  const std::string whole = address;
  address.resize(address.size() - suffix.size());
  address += PlexoLaunchAddress::ProtectSuffix(suffix);
  if (!PlexoLaunchAddress::IsJoinable(suffix)) findings.AddReason(AddressProtected, {whole, address});
  return address;
}

void PlexoSCOMaking::AddLaunchPageFindings(const PlexoAdoptedSCO& sco) {
  const auto& settings = layout.GetLaunchSettings();
  const bool isNew = !settings || settings->courseEdition != sco.courseEdition;
  if (sco.contentEdition != sco.courseEdition && isNew) {
    findings.AddReason(LaunchPageAdded, {sco.item, std::string(GetScormVersion(sco.contentEdition)),
                                         std::string(GetScormVersion(sco.courseEdition))});
  }
  if (!sco.data.objectives.empty() && isNew) {
    const std::string& names = sco.data.objectives;
    const auto count = static_cast<std::size_t>(std::count(names.begin(), names.end(), ' ')) + 1;
    findings.AddReason(ObjectivesPreset, {sco.item, PlexoAdoptFindings::DescribeNames(
                                                        names.substr(0, names.find(' ')), count)});
  }
  if (sco.completionPasses && (!settings || !settings->completionPasses)) {
    findings.AddReason(CompletionPasses, {sco.item});
  }
}

void PlexoSCOMaking::AddDoubts(const PlexoLaunchable& launchable, const PlexoScriptIndex& scripts,
                               const PlexoAdoptedSCO& sco) {
  PlexoScriptWords words = scripts.GetWordsOf(*launchable.resource, *launchable.page);
  if (sco.contentEdition != sco.courseEdition) {
    words.Add(PlexoScriptWords::Translated);
    if (sco.contentEdition == PlexoCourseEdition::Scorm12) words.Add(PlexoScriptWords::Content12);
  }
  if (!sco.data.masteryScore.empty()) words.Add(PlexoScriptWords::MasteryScore);
  if (words.ReportsSuccess()) return;
  findings.Add(words.ReportsCompletion() ? CompletionMayNotPass : ReportsNothing, {sco.item});
}

void PlexoSCOMaking::CheckVersion(const PlexoAdoptedSCO& sco) {
  const std::string version = package.manifest.GetRoot()->GetValue("version");
  const std::string_view right = GetManifestVersion(sco.courseEdition);
  // That the edition changes is told by the launch page.
  const bool isRightForItself = version == GetManifestVersion(task.manifestEdition);
  if (version == right || (isRightForItself && sco.contentEdition != sco.courseEdition)) return;
  findings.AddReason(VersionCorrected,
                     {version, std::string(right), std::string(GetScormVersion(sco.courseEdition))});
}
