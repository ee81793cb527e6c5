// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoRuleEvaluation.h"

namespace {

/// The conditions of a rule combined; without any, nothing is known.
class PlexoConditionBag {
 public:
  explicit PlexoConditionBag(PlexoCombination combination) : isAll(combination == PlexoCombination::All) {}
  void Add(PlexoTruth truth) {
    if (isEmpty) {
      result = truth;
    } else {
      result = isAll ? result & truth : result | truth;
    }
    isEmpty = false;
  }
  [[nodiscard]] PlexoTruth Get() const { return result; }

 private:
  bool isAll;
  bool isEmpty = true;
  PlexoTruth result;
};

}  // namespace

PlexoTruth PlexoRuleEvaluation::Evaluate(const PlexoSequencingDefinition& definition,
                                         const PlexoSequencingState& state, PlexoIndex activity,
                                         PlexoCondition condition, PlexoIndex objective, double threshold) {
  const PlexoTrackingView tracking(definition, state);
  if (objective == kPlexoNone && condition <= PlexoCondition::ObjectiveMeasureLessThan)
    return PlexoTruth::Unknown();
  switch (condition) {
    case PlexoCondition::Satisfied:
      return tracking.GetSatisfied(activity, objective);
    case PlexoCondition::ObjectiveStatusKnown:
      return PlexoTruth::Of(tracking.GetSatisfied(activity, objective).IsKnown());
    case PlexoCondition::ObjectiveMeasureKnown:
      return PlexoTruth::Of(tracking.GetMeasure(activity, objective).IsKnown());
    case PlexoCondition::ObjectiveMeasureGreaterThan:
      return tracking.GetMeasure(activity, objective).IsAbove(threshold);
    case PlexoCondition::ObjectiveMeasureLessThan:
      return tracking.GetMeasure(activity, objective).IsBelow(threshold);
    case PlexoCondition::Completed:
      return tracking.GetCompleted(activity);
    case PlexoCondition::ActivityProgressKnown:
      return PlexoTruth::Of(state.activities[activity].isProgressKnown &&
                            tracking.GetCompleted(activity).IsKnown());
    case PlexoCondition::Attempted:
      return PlexoTruth::Of(tracking.IsAttempted(activity));
    case PlexoCondition::AttemptLimitExceeded:
      return PlexoTruth::Of(tracking.IsAttemptLimitExceeded(activity));
    case PlexoCondition::TimeLimitExceeded:
    case PlexoCondition::OutsideAvailableTimeRange:
      return PlexoTruth::Unknown();
    case PlexoCondition::Always:
      return PlexoTruth::True();
  }
  return PlexoTruth::Unknown();
}

PlexoTruth PlexoRuleEvaluation::Evaluate(const PlexoSequencingDefinition& definition,
                                         const PlexoSequencingState& state, PlexoIndex activity,
                                         const PlexoRuleCondition& condition) {
  const PlexoTruth truth = Evaluate(definition, state, activity, condition.condition, condition.objective,
                                    condition.measureThreshold);
  return condition.isNegated ? !truth : truth;
}

PlexoTruth PlexoRuleEvaluation::CheckRule(const PlexoSequencingDefinition& definition,
                                          const PlexoSequencingState& state, PlexoIndex activity,
                                          const PlexoSequencingRule& rule) {
  PlexoConditionBag bag(rule.combination);
  for (const PlexoRuleCondition& condition : rule.conditions)
    bag.Add(Evaluate(definition, state, activity, condition));
  return bag.Get();
}

PlexoTruth PlexoRuleEvaluation::CheckRollupConditions(const PlexoSequencingDefinition& definition,
                                                      const PlexoSequencingState& state, PlexoIndex child,
                                                      const PlexoRollupRule& rule) {
  PlexoConditionBag bag(rule.combination);
  for (const PlexoRollupCondition& condition : rule.conditions) {
    const PlexoTruth truth = Evaluate(definition, state, child, condition.condition, 0, 0);
    bag.Add(condition.isNegated ? !truth : truth);
  }
  return bag.Get();
}
