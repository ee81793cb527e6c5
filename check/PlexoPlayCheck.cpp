// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoPlayCheck.h"

#include <algorithm>
#include <utility>

#include "check/PlexoFindingTable.h"
#include "check/PlexoSequencingReader.h"
#include "check/play/PlexoCoursePlay.h"

namespace {

using enum PlexoFindingId;

PlexoFindingId GetId(PlexoPlayedKind kind) {
  switch (kind) {
    case PlexoPlayedKind::NeverReached:
      return ContentNeverReached;
    case PlexoPlayedKind::NeverCompleted:
      return CourseNeverCompleted;
    case PlexoPlayedKind::NeverPassed:
      return CourseNeverPassed;
    case PlexoPlayedKind::Lost:
      return LearnerLost;
    case PlexoPlayedKind::LostInSession:
      return LearnerLostInSession;
    case PlexoPlayedKind::LostLater:
      return LearnerLostLater;
    case PlexoPlayedKind::PretestInVain:
      return PretestInVain;
    case PlexoPlayedKind::CompletedUnseen:
      return CompletedUnseen;
    case PlexoPlayedKind::ContinueStops:
      return ContinueStops;
    case PlexoPlayedKind::StartLaunchesNothing:
      return StartLaunchesNothing;
    case PlexoPlayedKind::RestartLaunchesNothing:
      return RestartLaunchesNothing;
    case PlexoPlayedKind::FailureSticks:
      return FailureSticks;
    default:
      return SuspensionLoses;
  }
}

class PlayCheck {
 public:
  PlayCheck(const PlexoCheckedPackage& checked, const PlexoScriptIndex& scriptIndex, PlexoFindingList& list)
      : scripts(scriptIndex), findings(list), reading(PlexoSequencingReader::Read(checked)) {}

  PlexoPlayExtent Run() {
    if (reading.definition == nullptr) return {};
    const PlexoPlayedCourse course{PlexoSequencer(reading.definition), ReadAbilities()};
    const PlexoPlayResult result = PlexoCoursePlay::Run(course);
    for (const PlexoPlayedFinding& finding : result.findings) {
      // A course of one item is started by every LMS, whatever its control modes.
      const bool isPlain = !reading.hasSequencing && reading.definition->GetCount() == 2;
      if (isPlain && finding.kind == PlexoPlayedKind::StartLaunchesNothing) continue;
      Report(course, finding);
    }
    return {result.learners, result.requests, result.states,
            result.areAllStatesSeen && !result.isWalkStopped};
  }

 private:
  [[nodiscard]] std::vector<PlexoContentAbility> ReadAbilities() const {
    std::vector<PlexoContentAbility> abilities;
    for (PlexoIndex activity = 0; activity < reading.sources.size(); ++activity)
      abilities.push_back(ReadAbility(activity));
    return abilities;
  }

  [[nodiscard]] PlexoContentAbility ReadAbility(PlexoIndex activity) const {
    const PlexoActivitySource& source = reading.sources[activity];
    if (source.kind != PlexoContentKind::Sco) {
      PlexoContentAbility silent = PlexoContentAbility::Silent();
      silent.launches = source.kind == PlexoContentKind::Asset;
      return silent;
    }
    if (!scripts.Knows(*source.resource)) return {};
    const PlexoScriptWords words = scripts.GetWordsOf(*source.resource);
    const bool isByMeasure = reading.definition->GetRules(activity).objectives.front().isSatisfiedByMeasure;
    PlexoContentAbility ability;
    ability.completes = words.ReportsCompletion();
    ability.scores = words.ReportsScore() || words.Has(PlexoScriptWords::Assembled);
    ability.passes = words.ReportsSuccess() || (isByMeasure && ability.scores);
    ability.fails = words.ReportsFailure() || (isByMeasure && ability.scores);
    ability.isLeftIncomplete = words.Has(PlexoScriptWords::Incomplete);
    return ability;
  }

  void Report(const PlexoPlayedCourse& course, const PlexoPlayedFinding& finding) {
    const PlexoFindingId id = GetId(finding.kind);
    std::vector<std::string> words = DescribeWords(finding);
    const std::string remark = std::string(PlexoFindingTable::GetKind(id).code) + ": " +
                               PlexoFindingTable::GetText({id, {}, words, {}});
    findings.AddPlayed(id, *reading.sources[finding.activities.front()].element, std::move(words),
                       finding.witness.WriteScript(course, remark));
  }

  [[nodiscard]] std::vector<std::string> DescribeWords(const PlexoPlayedFinding& finding) const {
    const PlexoIndex first = finding.activities.front();
    switch (finding.kind) {
      case PlexoPlayedKind::NeverReached:
        return {NameAll(finding.activities),
                finding.keepsFromCompleting ? ", so that no learner can complete the course" : "",
                DescribeCause(finding)};
      case PlexoPlayedKind::NeverCompleted:
      case PlexoPlayedKind::NeverPassed:
        return {Name(first), DescribeCause(finding)};
      case PlexoPlayedKind::Lost:
      case PlexoPlayedKind::LostInSession:
      case PlexoPlayedKind::LostLater:
        return {Name(first), DescribeVisit(finding.visit)};
      case PlexoPlayedKind::PretestInVain:
        return {Name(first), Name(finding.activities.back())};
      case PlexoPlayedKind::ContinueStops:
        return {Name(first), Name(finding.activities.back()), DescribeCause(finding)};
      case PlexoPlayedKind::RestartLaunchesNothing:
        return {Name(first), finding.keepsFromResuming ? "start it anew or resume it" : "start it anew"};
      default:
        return {Name(first)};
    }
  }

  static std::string DescribeVisit(PlexoVisit visit) {
    switch (visit) {
      case PlexoVisit::Failing:
        return "failing it";
      case PlexoVisit::Unfinished:
        return "leaving it half-read";
      case PlexoVisit::Idle:
        return "leaving the course behind it without suspending";
      default:
        return "finishing it";
    }
  }

  /// ": 'Doors' reports no success, as far as its scripts show", or the sequencer's words.
  [[nodiscard]] std::string DescribeCause(const PlexoPlayedFinding& finding) const {
    if (finding.silent == kPlexoNone) return finding.reason.empty() ? "" : ": " + finding.reason;
    const PlexoContentAbility ability = ReadAbility(finding.silent);
    std::string lack = "neither completion nor success";
    if (ability.completes) lack = "completion and no success";
    if (ability.passes) lack = "success and no completion";
    return ": " + Name(finding.silent) + " reports " + lack + ", as far as its scripts show";
  }

  [[nodiscard]] std::string NameAll(const std::vector<PlexoIndex>& activities) const {
    constexpr std::size_t kMostNamed = 5;
    const std::size_t named = std::min(activities.size(), kMostNamed);
    std::string names = Name(activities.front());
    for (std::size_t index = 1; index < named; ++index) {
      const bool isLast = index + 1 == activities.size();
      names += (isLast ? " and " : ", ") + Name(activities[index]);
    }
    if (named < activities.size()) names += " and " + std::to_string(activities.size() - named) + " more";
    return names;
  }

  [[nodiscard]] std::string Name(PlexoIndex activity) const {
    const PlexoActivityRules& rules = reading.definition->GetRules(activity);
    return "'" + (rules.title.empty() ? rules.identifier : rules.title) + "'";
  }

  const PlexoScriptIndex& scripts;
  PlexoFindingList& findings;
  PlexoSequencingReading reading;
};

}  // namespace

PlexoPlayExtent PlexoPlayCheck::Run(const PlexoCheckedPackage& package, const PlexoScriptIndex& scripts,
                                    PlexoFindingList& findings) {
  return PlayCheck(package, scripts, findings).Run();
}
