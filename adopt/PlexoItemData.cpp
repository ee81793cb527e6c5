// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoItemData.h"

#include <algorithm>
#include <array>
#include <regex>
#include <set>

#include "adopt/PlexoLaunchAddress.h"

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

/// Longer values are none that an item can have.
constexpr std::size_t kMostCharacters = 100;
/// All ids of an item's objectives, in bytes. An LMS has to keep 100 objectives.
constexpr std::size_t kMostObjectiveText = std::size_t{1} << 18U;

/// An element of the ADL namespace, by its name in lower case: its spelling differs between the editions.
const PlexoManifestElement* FindAdl(const PlexoManifestElement& item, std::string_view name) {
  const auto found = std::find_if(item.children.begin(), item.children.end(), [name](const auto* child) {
    return child->vocabulary == Adlcp && PlexoCheckedPackage::FoldCase(child->name) == name;
  });
  return found != item.children.end() ? *found : nullptr;
}

std::string GetAdlText(const PlexoManifestElement& item, std::string_view name) {
  const PlexoManifestElement* element = FindAdl(item, name);
  return element != nullptr ? element->text : std::string();
}

const PlexoManifestElement* FindObjectives(const PlexoManifestElement& item) {
  const PlexoManifestElement* sequencing = item.Find(Sequencing, "sequencing");
  return sequencing != nullptr ? sequencing->Find(Sequencing, "objectives") : nullptr;
}

const PlexoManifestElement* FindPrimaryObjective(const PlexoManifestElement& item) {
  const PlexoManifestElement* objectives = FindObjectives(item);
  return objectives != nullptr ? objectives->Find(Sequencing, "primaryObjective") : nullptr;
}

/// It is an address (IMS Simple Sequencing 1.0, anyURI).
bool IsObjectiveID(const std::string& objective) {
  return PlexoLaunchAddress::ProtectSuffix(objective) == objective;
}

/// The objectives beside the primary one, of which an id is required.
std::string ReadOtherObjectives(const PlexoLaunchable& launchable, PlexoAdoptFindings& findings) {
  const PlexoManifestElement* objectives = FindObjectives(*launchable.item);
  if (objectives == nullptr) return {};
  std::string list;
  for (const PlexoManifestElement* element : objectives->FindAll(Sequencing, "objective")) {
    const std::string objective = element->GetValue("objectiveID");
    if (objective.empty()) continue;
    if (!IsObjectiveID(objective)) {
      findings.Add(LaunchDataDropped, {launchable.GetIdentifier(), "objective", objective, "2004"});
      continue;
    }
    if (list.size() + objective.size() > kMostObjectiveText) {
      findings.Add(LimitDropped,
                   {launchable.GetIdentifier(), "list of objectives beginning with", objective});
      break;
    }
    list += (list.empty() ? "" : " ") + objective;
  }
  return list;
}

bool IsTrue(const std::string& value) { return value == "true" || value == "1"; }

std::string ReadPassingScore(const PlexoManifestElement& item) {
  const PlexoManifestElement* objective = FindPrimaryObjective(item);
  if (objective == nullptr || !IsTrue(objective->GetValue("satisfiedByMeasure"))) return {};
  const PlexoManifestElement* measure = objective->Find(Sequencing, "minNormalizedMeasure");
  // IMS Simple Sequencing 1.0: without a value it is 1.
  return measure != nullptr && !measure->text.empty() ? measure->text : "1.0";
}

/// SCORM 2004 3rd Edition writes a text, the 4th an attribute.
std::string ReadCompletionThreshold(const PlexoManifestElement& item) {
  const PlexoManifestElement* threshold = FindAdl(item, "completionthreshold");
  if (threshold == nullptr) return {};
  if (!threshold->text.empty()) return threshold->text;
  if (!IsTrue(threshold->GetValue("completedByMeasure"))) return {};
  return threshold->GetValue("minProgressMeasure", "1.0");
}

std::string ReadTimeLimit(const PlexoManifestElement& item) {
  if (std::string limit = GetAdlText(item, "maxtimeallowed"); !limit.empty()) return limit;
  const PlexoManifestElement* sequencing = item.Find(Sequencing, "sequencing");
  const PlexoManifestElement* limits =
      sequencing != nullptr ? sequencing->Find(Sequencing, "limitConditions") : nullptr;
  return limits != nullptr ? limits->GetValue("attemptAbsoluteDurationLimit") : std::string();
}

bool IsTimeLimitAction(std::string_view text) {
  return text == "exit,message" || text == "exit,no message" || text == "continue,message" ||
         text == "continue,no message";
}

/// True for sequencing that says more than the names of objectives.
bool IsSequenced(const PlexoManifestElement& element) {
  const PlexoManifestElement* sequencing = element.Find(Sequencing, "sequencing");
  if (sequencing == nullptr) return false;
  if (!sequencing->attributes.empty()) return true;
  for (const PlexoManifestElement* part : sequencing->children) {
    if (!part->Is(Sequencing, "objectives")) return true;
    for (const PlexoManifestElement* objective : part->children) {
      if (!objective->children.empty() || objective->GetAttribute("satisfiedByMeasure") != nullptr) {
        return true;
      }
    }
  }
  return false;
}

void AddDroppedDetails(const PlexoManifestElement& element, PlexoAdoptFindings& findings) {
  const auto drop = [&](const char* what) {
    findings.Add(DetailDropped, {element.name, element.GetValue("identifier"), what});
  };
  if (element.GetValue("isvisible") == "false" || element.GetValue("isvisible") == "0") {
    drop("isvisible=\"false\"");
  }
  if (element.Find(Navigation, "presentation") != nullptr) drop("presentation");
  const PlexoManifestElement* metadata = element.Find(Packaging, "metadata");
  if (metadata == nullptr) return;
  const bool isWritten =
      std::any_of(metadata->children.begin(), metadata->children.end(), [](const auto* child) {
        return !child->Is(Packaging, "schema") && !child->Is(Packaging, "schemaversion") &&
               !child->Is(Adlcp, "location");
      });
  if (isWritten) drop("metadata, which isn't in a file of its own,");
}

/// SCORM 1.2 Content Aggregation Model: a number from 0 to 100.
bool IsMasteryScore(const std::string& text) {
  static const std::regex kScore(R"(\+?(100(\.0*)?|\d{1,2}(\.\d{1,100})?))");
  return text.size() <= kMostCharacters && std::regex_match(text, kScore);
}

/// SCORM 1.2 Run-Time Environment, CMITimespan; SCORM 2004 Content Aggregation Model, xs:duration.
bool IsTimeLimit(const std::string& text, PlexoCourseEdition edition) {
  static const std::regex kTimespan(R"(\d{2,4}:\d{2}:\d{2}(\.\d{1,2})?)");
  static const std::regex kDuration(R"(P(?=.)(\d+Y)?(\d+M)?(\d+D)?(T(?=.)(\d+H)?(\d+M)?(\d+(\.\d+)?S)?)?)");
  return text.size() <= kMostCharacters &&
         std::regex_match(text, edition == PlexoCourseEdition::Scorm12 ? kTimespan : kDuration);
}

}  // namespace

std::string PlexoItemData::ReadObjective(const PlexoLaunchable& launchable, PlexoAdoptFindings& findings) {
  const PlexoManifestElement* element =
      launchable.item != nullptr ? FindPrimaryObjective(*launchable.item) : nullptr;
  std::string objective = element != nullptr ? element->GetValue("objectiveID") : std::string();
  if (IsObjectiveID(objective)) return objective;
  findings.Add(LaunchDataDropped, {launchable.GetIdentifier(), "objective", objective, "2004"});
  return {};
}

PlexoLaunchData PlexoItemData::ReadLaunchData(const PlexoLaunchable& launchable, PlexoCourseEdition edition,
                                              PlexoAdoptFindings& findings) {
  if (launchable.item == nullptr) return {};
  const PlexoManifestElement& item = *launchable.item;
  PlexoLaunchData data;
  data.masteryScore = GetAdlText(item, "masteryscore");
  data.maxTimeAllowed = ReadTimeLimit(item);
  data.timeLimitAction = GetAdlText(item, "timelimitaction");
  data.dataFromLms = GetAdlText(item, "datafromlms");
  data.scaledPassingScore = ReadPassingScore(item);
  data.completionThreshold = ReadCompletionThreshold(item);
  if (edition == PlexoCourseEdition::Scorm2004) data.objectives = ReadOtherObjectives(launchable, findings);

  const auto drop = [&](std::string& value, const char* name) {
    findings.Add(LaunchDataDropped,
                 {launchable.GetIdentifier(), name, value, std::string(GetScormVersion(edition))});
    value.clear();
  };
  if (!data.timeLimitAction.empty() && !IsTimeLimitAction(data.timeLimitAction)) {
    drop(data.timeLimitAction, "time limit action");
  }
  if (!data.maxTimeAllowed.empty() && !IsTimeLimit(data.maxTimeAllowed, edition)) {
    drop(data.maxTimeAllowed, "time limit");
  }
  if (!data.masteryScore.empty() && !IsMasteryScore(data.masteryScore)) {
    drop(data.masteryScore, "mastery score");
  }
  return data;
}

void PlexoItemData::DropWithoutPlace(PlexoAdoptedSCO& sco, PlexoAdoptFindings& findings) {
  struct Limit {
    const char* name;
    std::string PlexoLaunchData::*value;
  };
  static constexpr std::array kLimits = {
      Limit{"mastery score", &PlexoLaunchData::masteryScore},
      Limit{"time limit", &PlexoLaunchData::maxTimeAllowed},
      Limit{"passing score", &PlexoLaunchData::scaledPassingScore},
      Limit{"completion threshold", &PlexoLaunchData::completionThreshold},
  };
  const bool is12 = sco.courseEdition == PlexoCourseEdition::Scorm12;
  if (is12 && sco.contentEdition == PlexoCourseEdition::Scorm12 && !sco.objective.empty()) {
    findings.Add(LimitDropped, {sco.item, "objective", sco.objective});
    sco.objective.clear();
  }
  if (sco.HasLaunchPage()) return;
  for (const auto& [name, value] : kLimits) {
    const bool hasPlace =
        is12 && (value == &PlexoLaunchData::masteryScore || value == &PlexoLaunchData::maxTimeAllowed);
    if (hasPlace || (sco.data.*value).empty()) continue;
    findings.Add(LimitDropped, {sco.item, name, sco.data.*value});
    (sco.data.*value).clear();
  }
}

void PlexoItemData::AddDropped(const std::vector<PlexoLaunchable>& launchables,
                               const PlexoCheckedPackage& package, PlexoAdoptFindings& findings) {
  std::set<const PlexoManifestElement*> seen;
  AddDroppedDetails(*package.manifest.GetRoot(), findings);
  for (const PlexoLaunchable& launchable : launchables) {
    AddDroppedDetails(*launchable.resource->element, findings);
    const PlexoManifestElement* element = launchable.item;
    for (; element != nullptr && seen.insert(element).second; element = element->parent) {
      if (IsSequenced(*element)) {
        findings.Add(SequencingDropped, {element->name, element->GetValue("identifier")});
      }
      if (element != package.manifest.GetRoot()) AddDroppedDetails(*element, findings);
      const std::string prerequisites = GetAdlText(*element, "prerequisites");
      if (!prerequisites.empty()) {
        findings.Add(PrerequisitesDropped, {element->GetValue("identifier"), prerequisites});
      }
    }
  }
}
