// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoCourseLosses.h"

#include <charconv>
#include <string_view>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

/// What every SCO of a SCORM 1.2 course has.
constexpr double kPassMark = 80.0;
constexpr std::string_view kTimeLimitAction = "exit,message";
constexpr std::string_view kLaunchData = ".";
constexpr std::size_t kShownBytes = 60;

bool IsCoursePassMark(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double mark = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), mark);
  return error == std::errc() && end == text.data() + text.size() && mark == kPassMark;
}

/// Empty for an element that stands twice, as in the courses that Plexo builds.
std::string GetOnlyText(const PlexoManifestElement& item, std::string_view name) {
  const auto found = item.FindAll(Adlcp, name);
  return found.size() == 1 ? found.front()->text : std::string();
}

}  // namespace

std::vector<PlexoFinding> PlexoCourseLosses::Find(const std::string& item, const Values& values, bool is12) {
  std::vector<PlexoFinding> losses;
  const auto add = [&](PlexoFindingId id, const char* name, const std::string& value, const char* instead) {
    losses.push_back({id, {}, {item, name, PlexoFindingList::Shorten(value, kShownBytes), instead}, {}});
  };
  const bool hasAction = !values.timeLimitAction.empty();
  const bool hasData = !values.launchData.empty();
  if (!is12) {
    if (hasData) add(LaunchDataUnread, "launch data", values.launchData, "adlcp:datafromlms");
    if (hasAction)
      add(LaunchDataUnread, "time limit action", values.timeLimitAction, "adlcp:timelimitaction");
    return losses;
  }
  if (!values.passMark.empty() && !IsCoursePassMark(values.passMark)) {
    add(LaunchValueReplaced, "pass mark", values.passMark, "80");
  }
  if (!values.timeLimit.empty()) add(LaunchValueReplaced, "time limit", values.timeLimit, "no limit");
  if (hasAction && values.timeLimitAction != kTimeLimitAction) {
    add(LaunchValueReplaced, "time limit action", values.timeLimitAction, "'exit,message'");
  }
  if (hasData && values.launchData != kLaunchData) {
    add(LaunchValueReplaced, "launch data", values.launchData, "'.'");
  }
  return losses;
}

void PlexoCourseLosses::Run(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  const PlexoNamespaceEdition declared = package.manifest.GetDeclaredEdition(Adlcp);
  const bool isNamed = package.GetEdition() != PlexoEdition::Unknown;
  if (!isNamed && declared == PlexoNamespaceEdition::Either) return;
  const bool is2004 =
      isNamed ? IsPlexo2004(package.GetEdition()) : declared == PlexoNamespaceEdition::Scorm2004;
  for (const PlexoManifestElement* item : package.GetItems()) {
    const Values values = is2004 ? Values{.timeLimitAction = GetOnlyText(*item, "timeLimitAction"),
                                          .launchData = GetOnlyText(*item, "dataFromLMS")}
                                 : Values{.passMark = GetOnlyText(*item, "masteryscore"),
                                          .timeLimit = GetOnlyText(*item, "maxtimeallowed"),
                                          .timeLimitAction = GetOnlyText(*item, "timelimitaction"),
                                          .launchData = GetOnlyText(*item, "datafromlms")};
    for (PlexoFinding& loss : Find(item->GetValue("identifier"), values, !is2004)) {
      findings.AddElement(loss.id, *item, std::move(loss.words));
    }
  }
}
