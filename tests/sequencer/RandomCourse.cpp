// SPDX-License-Identifier: Apache-2.0
#include "sequencer/RandomCourse.h"

#include "sequencer/PlexoDefinitionBuilder.h"

std::shared_ptr<const PlexoSequencingDefinition> RandomCourse::MakeDefinition() {
  PlexoDefinitionBuilder builder(OneIn(2) ? PlexoSequencingEdition::Fourth : PlexoSequencingEdition::Third);
  builder.SetGlobalsForSystem(!OneIn(4));
  const std::uint32_t count = 2 + Draw(39);
  std::uint32_t open = 0;
  for (std::uint32_t number = 0; number < count; ++number) {
    for (; open > 1 && OneIn(2); --open) builder.Close();
    builder.Open(MakeRules(number));
    ++open;
    if (open > 1 && !OneIn(3)) {
      builder.Close();
      --open;
    }
  }
  for (; open > 0; --open) builder.Close();
  return builder.Build();
}

PlexoActivityRules RandomCourse::MakeRules(std::uint32_t number) {
  PlexoActivityRules rules;
  rules.identifier = "i" + std::to_string(number);
  rules.controls = {!OneIn(8), !OneIn(10), !OneIn(8), OneIn(6), !OneIn(4), !OneIn(4)};
  rules.constrainChoice = OneIn(10);
  rules.preventActivation = OneIn(10);
  for (std::uint32_t left = Draw(3); left > 0; --left) rules.rules.push_back(MakeRule());
  if (OneIn(8)) rules.attemptLimit = Draw(4);
  if (OneIn(2)) {
    for (std::uint32_t left = Draw(4); left > 0; --left) rules.rollupRules.push_back(MakeRollupRule());
  }
  rules.rollup.objectiveSatisfied = !OneIn(6);
  rules.rollup.progressCompletion = !OneIn(6);
  rules.rollup.measureSatisfactionIfActive = !OneIn(3);
  if (OneIn(2)) rules.rollup.objectiveMeasureWeight = Draw(4) / 3.0;
  for (auto* requirement : {&rules.rollup.requiredForSatisfied, &rules.rollup.requiredForNotSatisfied,
                            &rules.rollup.requiredForCompleted, &rules.rollup.requiredForIncomplete}) {
    if (OneIn(3)) *requirement = Pick(PlexoRequirement::IfNotSuspended);
  }
  rules.completion = {OneIn(3), Draw(5) / 4.0, Draw(4) / 2.0};
  for (std::uint32_t index = 0, all = 1 + Draw(3); index < all; ++index)
    rules.objectives.push_back(MakeObjective(index));
  if (OneIn(5)) {
    rules.randomization = {Pick(PlexoTiming::OnEachNewAttempt), Draw(4), Pick(PlexoTiming::OnEachNewAttempt),
                           OneIn(2)};
  }
  rules.delivery = {!OneIn(8), OneIn(2), OneIn(2)};
  return rules;
}

PlexoSequencingRule RandomCourse::MakeRule() {
  PlexoSequencingRule rule;
  rule.action = Pick(PlexoRuleAction::Previous);
  rule.combination = Pick(PlexoCombination::Any);
  for (std::uint32_t left = 1 + Draw(2); left > 0; --left) {
    PlexoRuleCondition& condition = rule.conditions.emplace_back();
    condition.condition = Pick(PlexoCondition::Always);
    condition.isNegated = OneIn(3);
    condition.measureThreshold = DrawMeasure();
    if (OneIn(2)) condition.referencedObjective = "o" + std::to_string(Draw(4));
  }
  return rule;
}

PlexoRollupRule RandomCourse::MakeRollupRule() {
  PlexoRollupRule rule;
  rule.childSet = Pick(PlexoChildSet::AtLeastPercent);
  rule.minimumCount = Draw(4);
  rule.minimumPercent = Draw(5) / 4.0;
  rule.combination = Pick(PlexoCombination::Any);
  rule.action = Pick(PlexoRollupAction::Incomplete);
  for (std::uint32_t left = 1 + Draw(2); left > 0; --left)
    rule.conditions.push_back({Pick(PlexoCondition::AttemptLimitExceeded), OneIn(3)});
  return rule;
}

PlexoObjectiveDefinition RandomCourse::MakeObjective(std::uint32_t number) {
  PlexoObjectiveDefinition objective{"o" + std::to_string(number), OneIn(4), DrawMeasure(), {}};
  for (std::uint32_t left = Draw(3); left > 0; --left) {
    objective.maps.push_back({"g" + std::to_string(Draw(4)), static_cast<std::uint8_t>(Draw(128)),
                              static_cast<std::uint8_t>(Draw(128)), 0});
  }
  return objective;
}

PlexoNavigationRequest RandomCourse::MakeRequest(const PlexoSequencingDefinition& definition,
                                                 const PlexoSequencingState& state) {
  PlexoNavigationRequest request{Pick(PlexoNavigation::SuspendAll), Draw(definition.GetCount())};
  if (!state.IsSessionOpen() && !OneIn(4))
    request.kind = OneIn(3)   ? PlexoNavigation::Choice
                   : OneIn(2) ? PlexoNavigation::ResumeAll
                              : PlexoNavigation::Start;
  else if (OneIn(2))
    request.kind = OneIn(2) ? PlexoNavigation::Choice : PlexoNavigation::Continue;
  return request;
}

PlexoTruth RandomCourse::DrawTruth() { return OneIn(5) ? PlexoTruth::Unknown() : PlexoTruth::Of(OneIn(2)); }

PlexoObjectiveData RandomCourse::MakeObjectiveData() {
  PlexoObjectiveData data;
  if (OneIn(2)) data.satisfied = DrawTruth();
  if (OneIn(2)) data.completed = DrawTruth();
  if (OneIn(2)) data.measure = OneIn(6) ? PlexoMeasure() : PlexoMeasure(DrawMeasure());
  if (OneIn(3)) data.progress = PlexoMeasure(Draw(5) / 4.0);
  if (OneIn(6)) data.rawScore = PlexoMeasure(Draw(100));
  if (OneIn(6)) data.minScore = PlexoMeasure(-1.5);
  if (OneIn(6)) data.maxScore = PlexoMeasure(1 / 3.0);
  return data;
}

PlexoRunTimeData RandomCourse::MakeData() {
  PlexoRunTimeData data;
  data.whole = MakeObjectiveData();
  if (OneIn(2)) {
    data.objectives.push_back(MakeObjectiveData());
    data.objectives.back().identifier = "o" + std::to_string(Draw(4));
  }
  if (OneIn(5)) data.isSuspended = !OneIn(3);
  return data;
}
