// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencingReason.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "sequencer/PlexoRuleEvaluation.h"

namespace {

/// In the order of PlexoReasonKind.
constexpr std::string_view kPatterns[] = {
    "",
    "no session is open",
    "a session is open already",
    "nothing is suspended",
    "{activity} has already ended",
    "the course has no such activity",
    "this request isn't supported",
    "{activity} isn't among the selected activities",
    "{activity} doesn't allow going on from one of its activities to the next ('flow' is off)",
    "{activity} can only be gone through forward ('forwardOnly' is on)",
    "{activity} doesn't let its activities be chosen ('choice' is off)",
    "{activity} can't be left by choosing ('choiceExit' is off)",
    "{activity} lets only its neighbours be chosen ('constrainChoice' is on)",
    "{activity} isn't open yet, and its activities can't be chosen before ('preventActivation' is on)",
    "{activity} is skipped: {rule}",
    "{activity} is disabled: {rule}",
    "{activity} is hidden: {rule}",
    "nothing behind {activity} can be chosen: {rule}",
    "{activity} has no attempt left of {limit}",
    "{activity} has no available activities",
    "nothing comes before the first activity",
    "nothing comes after the last activity",
    "{activity} has no content of its own",
    "{activity} hasn't ended",
};
static_assert(std::size(kPatterns) == static_cast<std::size_t>(PlexoReasonKind::StillActive) + 1);

constexpr std::string_view kConditionNames[] = {
    "satisfied",
    "objectiveStatusKnown",
    "objectiveMeasureKnown",
    "objectiveMeasureGreaterThan",
    "objectiveMeasureLessThan",
    "completed",
    "activityProgressKnown",
    "attempted",
    "attemptLimitExceeded",
    "timeLimitExceeded",
    "outsideAvailableTimeRange",
    "always",
};

constexpr std::string_view kActionNames[] = {
    "skip",     "disabled",   "hiddenFromChoice", "stopForwardTraversal",
    "exit",     "exitParent", "exitAll",          "retry",
    "retryAll", "continue",   "previous"};

std::string WriteWhole(std::uint64_t number) {
  std::string digits;
  do {
    digits.insert(digits.begin(), static_cast<char>('0' + number % 10));
    number /= 10;
  } while (number > 0);
  return digits;
}

/// A measure with up to four digits behind the point, which is all that a reason needs. What content reports
/// or a stored state holds may be far out of range.
std::string WriteMeasure(double measure) {
  const bool isNegative = measure < 0;
  const double size = std::min(std::fabs(measure), 1e9);
  const auto scaled = static_cast<std::uint64_t>(std::llround(size * 10'000));
  std::string text = (isNegative && scaled > 0 ? "-" : "") + WriteWhole(scaled / 10'000);
  std::string digits = WriteWhole(10'000 + scaled % 10'000);
  while (digits.back() == '0') digits.pop_back();
  if (digits.size() > 1) text += "." + digits.substr(1);
  return text;
}

std::string_view WriteTruth(PlexoTruth truth) {
  if (!truth.IsKnown()) return "unknown";
  return truth.IsTrue() ? "true" : "false";
}

/// "not satisfied of 'obj-prior' (unknown)"
std::string WriteCondition(const PlexoSeenCondition& seen) {
  const PlexoRuleCondition& condition = seen.condition;
  std::string text = condition.isNegated ? "not " : "";
  text += PlexoReasonText::GetName(condition.condition);
  const bool hasThreshold = condition.condition == PlexoCondition::ObjectiveMeasureGreaterThan ||
                            condition.condition == PlexoCondition::ObjectiveMeasureLessThan;
  if (hasThreshold) text += " " + WriteMeasure(condition.measureThreshold);
  if (!condition.referencedObjective.empty()) text += " of '" + condition.referencedObjective + "'";
  text += " is ";
  text += WriteTruth(seen.result);
  if (hasThreshold && seen.measure.IsKnown()) text += ", at " + WriteMeasure(seen.measure.GetValue());
  return text;
}

std::string WriteRule(const PlexoSequencingDefinition& definition, const PlexoSequencingState& state,
                      const PlexoSequencingReason& reason) {
  const PlexoSequencingRule& rule = definition.GetRules(reason.activity).rules[reason.rule];
  const std::string_view joint = rule.combination == PlexoCombination::All ? " and " : ", or ";
  std::string text;
  for (const PlexoSeenCondition& seen : PlexoReasonText::GetSeenConditions(definition, state, reason)) {
    if (!text.empty()) text += joint;
    text += WriteCondition(seen);
  }
  return text;
}

void Replace(std::string& text, std::string_view parameter, const std::string& word) {
  if (const std::size_t at = text.find(parameter); at != std::string::npos)
    text.replace(at, parameter.size(), word);
}

}  // namespace

std::string_view PlexoReasonText::GetPattern(PlexoReasonKind kind) {
  return kPatterns[static_cast<std::size_t>(kind)];
}

std::vector<PlexoSeenCondition> PlexoReasonText::GetSeenConditions(
    const PlexoSequencingDefinition& definition, const PlexoSequencingState& state,
    const PlexoSequencingReason& reason) {
  std::vector<PlexoSeenCondition> seen;
  if (reason.rule == kPlexoNone) return seen;
  const PlexoTrackingView tracking(definition, state);
  for (const PlexoRuleCondition& condition :
       definition.GetRules(reason.activity).rules[reason.rule].conditions) {
    PlexoSeenCondition& one = seen.emplace_back();
    one.condition = condition;
    one.result = PlexoRuleEvaluation::Evaluate(definition, state, reason.activity, condition);
    if (condition.objective != kPlexoNone)
      one.measure = tracking.GetMeasure(reason.activity, condition.objective);
    one.attemptCount = state.activities[reason.activity].attemptCount;
  }
  return seen;
}

std::string PlexoReasonText::Write(const PlexoSequencingDefinition& definition,
                                   const PlexoSequencingState& state, const PlexoSequencingReason& reason) {
  std::string text(GetPattern(reason.kind));
  // The activity comes last: its title is the author's, and may hold a parameter's name.
  if (reason.rule != kPlexoNone) Replace(text, "{rule}", WriteRule(definition, state, reason));
  if (reason.activity == kPlexoNone) return text;
  const PlexoActivityRules& rules = definition.GetRules(reason.activity);
  Replace(text, "{limit}", WriteWhole(rules.attemptLimit));
  if (const std::size_t at = GetPattern(reason.kind).find("{activity}"); at != std::string_view::npos)
    text.replace(at, std::size("{activity}") - 1,
                 "'" + (rules.title.empty() ? rules.identifier : rules.title) + "'");
  return text;
}

std::string_view PlexoReasonText::GetName(PlexoCondition condition) {
  return kConditionNames[static_cast<std::size_t>(condition)];
}

std::string_view PlexoReasonText::GetName(PlexoRuleAction action) {
  return kActionNames[static_cast<std::size_t>(action)];
}
