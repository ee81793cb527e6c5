// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoItemData.h"

#include <algorithm>
#include <array>
#include <set>

#include "adopt/PlexoLaunchAddress.h"

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

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

const PlexoManifestElement* FindPrimaryObjective(const PlexoManifestElement& item) {
  const PlexoManifestElement* sequencing = item.Find(Sequencing, "sequencing");
  const PlexoManifestElement* objectives =
      sequencing != nullptr ? sequencing->Find(Sequencing, "objectives") : nullptr;
  return objectives != nullptr ? objectives->Find(Sequencing, "primaryObjective") : nullptr;
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

/// True for sequencing that says more than the name of the primary objective.
bool IsSequenced(const PlexoManifestElement& element) {
  const PlexoManifestElement* sequencing = element.Find(Sequencing, "sequencing");
  if (sequencing == nullptr) return false;
  if (!sequencing->attributes.empty()) return true;
  for (const PlexoManifestElement* part : sequencing->children) {
    if (!part->Is(Sequencing, "objectives")) return true;
    for (const PlexoManifestElement* objective : part->children) {
      if (objective->name != "primaryObjective" || !objective->children.empty() ||
          objective->GetAttribute("satisfiedByMeasure") != nullptr) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

std::string PlexoItemData::ReadObjective(const PlexoLaunchable& launchable, PlexoAdoptFindings& findings) {
  const PlexoManifestElement* element =
      launchable.item != nullptr ? FindPrimaryObjective(*launchable.item) : nullptr;
  std::string objective = element != nullptr ? element->GetValue("objectiveID") : std::string();
  // It is an address (IMS Simple Sequencing 1.0, anyURI).
  if (PlexoLaunchAddress::ProtectSuffix(objective) == objective) return objective;
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

  constexpr std::size_t kMostTimeCharacters = 13;
  constexpr std::size_t kMostScoreCharacters = 200;
  const auto drop = [&](std::string& value, const char* name) {
    findings.Add(LaunchDataDropped,
                 {launchable.GetIdentifier(), name, value, std::string(GetScormVersion(edition))});
    value.clear();
  };
  if (!data.timeLimitAction.empty() && !IsTimeLimitAction(data.timeLimitAction)) {
    drop(data.timeLimitAction, "time limit action");
  }
  if (edition == PlexoCourseEdition::Scorm12) {
    if (data.maxTimeAllowed.size() > kMostTimeCharacters) drop(data.maxTimeAllowed, "time limit");
    if (data.masteryScore.size() > kMostScoreCharacters) drop(data.masteryScore, "mastery score");
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
  if (is12 && !sco.objective.empty()) {
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
                               PlexoAdoptFindings& findings) {
  std::set<const PlexoManifestElement*> seen;
  for (const PlexoLaunchable& launchable : launchables) {
    const PlexoManifestElement* element = launchable.item;
    for (; element != nullptr && seen.insert(element).second; element = element->parent) {
      if (IsSequenced(*element)) {
        findings.Add(SequencingDropped, {element->name, element->GetValue("identifier")});
      }
      const std::string prerequisites = GetAdlText(*element, "prerequisites");
      if (!prerequisites.empty()) {
        findings.Add(PrerequisitesDropped, {element->GetValue("identifier"), prerequisites});
      }
    }
  }
}
