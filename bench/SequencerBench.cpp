// SPDX-License-Identifier: Apache-2.0
#include "bench/SequencerBench.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <stdexcept>

#include "sequencer/PlexoDefinitionBuilder.h"
#include "sequencer/PlexoSequencer.h"
#include "sequencer/PlexoStateFormat.h"

namespace {

/// Of processor time: the slowest of many requests is looked for, and others run on the machine.
double GetMilliseconds() { return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

PlexoActivityRules MakeCluster() {
  PlexoActivityRules rules;
  rules.controls.flow = true;
  PlexoRollupRule all;
  all.conditions = {{PlexoCondition::Satisfied, false}};
  PlexoRollupRule any = all;
  any.childSet = PlexoChildSet::Any;
  any.conditions.front().isNegated = true;
  any.action = PlexoRollupAction::NotSatisfied;
  rules.rollupRules = {all, any};
  for (PlexoRollupRule& rule : rules.rollupRules)
    rule.conditions.front().condition = PlexoCondition::Completed;
  all.action = PlexoRollupAction::Completed;
  any.action = PlexoRollupAction::Incomplete;
  rules.rollupRules.push_back(all);
  rules.rollupRules.push_back(any);
  return rules;
}

/// Disabled until the one before has a status, which it reads from a global objective; or skipped, or open.
PlexoActivityRules MakeSco(std::size_t number, bool isSkipped, bool isOpen) {
  PlexoActivityRules rules;
  rules.identifier = "SCO-" + std::to_string(number);
  rules.objectives.push_back({"obj-primary", false, 1, {{"g" + std::to_string(number), 3, 3, 0}}});
  if (number > 0 && !isOpen) {
    rules.objectives.push_back({"obj-prior", false, 1, {{"g" + std::to_string(number - 1), 3, 0, 0}}});
    const bool negated = !isSkipped;
    rules.rules.push_back({isSkipped ? PlexoRuleAction::Skip : PlexoRuleAction::Disabled,
                           PlexoCombination::All,
                           {{isSkipped ? PlexoCondition::Always : PlexoCondition::ObjectiveStatusKnown,
                             negated, 0, "obj-prior", 0}}});
  }
  return rules;
}

std::shared_ptr<const PlexoSequencingDefinition> MakeCourse(const std::string& shape, std::size_t scos) {
  PlexoDefinitionBuilder builder(PlexoSequencingEdition::Third);
  builder.Open(MakeCluster());
  std::size_t depth = 1;
  const std::size_t perLevel = scos / (PlexoSequencingDefinition::kMaxDepth - 1) + 1;
  for (std::size_t number = 0; number < scos; ++number) {
    if (shape == "modules" && number % 5 == 0) {
      if (number > 0) builder.Close();
      builder.Open(MakeCluster());
    }
    if (shape == "deep" && number % perLevel == 0) {
      builder.Open(MakeCluster());
      ++depth;
    }
    builder.Open(MakeSco(number, shape == "skipped" && number + 1 < scos, shape == "deep"));
    builder.Close();
  }
  if (shape == "modules") depth = 2;
  for (; depth > 0; --depth) builder.Close();
  return builder.Build();
}

template <typename Act>
double Time(const Act& act) {
  const double start = GetMilliseconds();
  act();
  return GetMilliseconds() - start;
}

}  // namespace

std::string SequencerBench::Measure(const std::string& shape, std::size_t scos) {
  const auto course = MakeCourse(shape, scos);
  if (course == nullptr) throw std::logic_error("the course is sound");
  const PlexoSequencer sequencer(course);
  PlexoSequencingState state = sequencer.NewState();
  double slowest = 0;
  const auto ask = [&](PlexoNavigation kind, PlexoIndex target = kPlexoNone) {
    slowest = std::max(slowest, Time([&] { sequencer.Request(state, {kind, target}); }));
  };
  ask(PlexoNavigation::Start);
  for (int step = 0; step < 60; ++step) ask(PlexoNavigation::Continue);
  ask(PlexoNavigation::Previous);
  ask(PlexoNavigation::SuspendAll);
  ask(PlexoNavigation::ResumeAll);
  for (int step = 0; step < 5; ++step) {
    ask(PlexoNavigation::Choice, course->GetCount() - 1);
    ask(PlexoNavigation::Choice, 2);
  }
  const double look = Time([&] { static_cast<void>(sequencer.Look(state)); });
  PlexoSequencingState copied;
  const double copy = Time([&] { copied = state; });
  const auto bytes = PlexoStateFormat::Write(*course, state);
  ask(PlexoNavigation::ExitAll);
  char text[200];
  std::snprintf(text, sizeof text, R"({"slowest":%.4f,"look":%.4f,"copy":%.4f,"stored":%zu})", slowest, look,
                copy, bytes.size());
  return text;
}
