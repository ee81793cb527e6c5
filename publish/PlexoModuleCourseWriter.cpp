// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoModuleCourseWriter.h"

#include "core/PlexoModuleCourseModel.h"
#include "host/session/TzSession.h"
#include "publish/PlexoModuleActivities.h"
#include "publish/PlexoSequencing.h"

namespace {

using enum ChildActivitySet;
using enum RollupOperator;
using enum ConditionCombination;

constexpr RollupRule kModuleRollup[] = {
    {All, Plain, RollupCondition::Satisfied, RollupAction::Satisfied},
    {Any, Not, RollupCondition::Satisfied, RollupAction::NotSatisfied},
    {All, Plain, RollupCondition::Completed, RollupAction::Completed},
    {Any, Not, RollupCondition::Completed, RollupAction::Incomplete},
};

/// A pass in either test makes the module.
constexpr RollupRule kModuleRollupWithPreTest[] = {
    {All, Not, RollupCondition::Satisfied, RollupAction::NotSatisfied},
    {All, Not, RollupCondition::Satisfied, RollupAction::Incomplete},
    {Any, Plain, RollupCondition::Satisfied, RollupAction::Satisfied},
    {All, Plain, RollupCondition::Completed, RollupAction::Completed},
    {Any, Plain, RollupCondition::Satisfied, RollupAction::Completed},
};

constexpr RollupRule kWrapperRollup[] = {
    {All, Plain, RollupCondition::Satisfied, RollupAction::Satisfied},
    {Any, Not, RollupCondition::Completed, RollupAction::Incomplete},
    {Any, Not, RollupCondition::ActivityProgressKnown, RollupAction::Incomplete},
    {All, Plain, RollupCondition::Completed, RollupAction::Completed},
    {Any, Not, RollupCondition::Satisfied, RollupAction::NotSatisfied},
};

/// The rules of the wrapper in another order, which decides where two of them apply.
constexpr RollupRule kOrganizationRollup[] = {
    {All, Plain, RollupCondition::Completed, RollupAction::Completed},
    {All, Plain, RollupCondition::Satisfied, RollupAction::Satisfied},
    {Any, Not, RollupCondition::Completed, RollupAction::Incomplete},
    {Any, Not, RollupCondition::ActivityProgressKnown, RollupAction::Incomplete},
    {Any, Not, RollupCondition::Satisfied, RollupAction::NotSatisfied},
};

/// The sequencing on a module's own item.
class ModuleSequencing {
 public:
  ModuleSequencing(PlexoManifestTree& manifestTree, std::uint32_t moduleIndex, bool withPreTest,
                   bool forcedSequence)
      : tree(manifestTree),
        sequencing(manifestTree),
        index(moduleIndex),
        hasPreTest(withPreTest),
        waits(forcedSequence && moduleIndex != 0),
        forced(forcedSequence) {}

  void Write(TzDOMNode item, const TzString& weightage) {
    const TzDOMNode node = tree.WriteEmptyNode("imsss:sequencing", item);
    sequencing.WriteFreeControlMode(node);
    WriteRules(node);
    const std::span<const RollupRule> rollup =
        hasPreTest ? std::span<const RollupRule>(kModuleRollupWithPreTest) : kModuleRollup;
    sequencing.WriteRollupRules(node, {true, true, weightage}, rollup);
    if (hasPreTest || forced) WriteObjectives(node);
  }

 private:
  void WriteRules(TzDOMNode node) {
    if (!hasPreTest) {
      if (waits) sequencing.WriteForcedPriorRule(node);
      return;
    }
    if (index == 0) return;
    const TzDOMNode rules = tree.WriteEmptyNode("imsss:sequencingRules", node);
    const RuleCondition known[] = {{"", "objectiveStatusKnown", {}}};
    sequencing.WriteRule(rules, RuleMoment::PreCondition, AnyOf, known, "skip");
    if (!waits) return;
    const RuleCondition priorUnknown[] = {{"not", "objectiveStatusKnown", "obj-prior"}};
    sequencing.WriteRule(rules, RuleMoment::PreCondition, AnyOf, priorUnknown, "disabled");
  }

  void WriteObjectives(TzDOMNode node) {
    const TzDOMNode objectives = tree.WriteEmptyNode("imsss:objectives", node);
    const TzDOMNode primary =
        sequencing.WriteObjective(objectives, ObjectiveRank::Primary, "obj-primary",
                                  hasPreTest ? MeasureMode::Unsaid : MeasureMode::False);
    sequencing.WriteMapInfo(primary, MakeModuleObjective(index),
                            hasPreTest ? kMeasureOnlyReadMap : kWriteMap);
    if (!waits) return;
    const TzDOMNode prior =
        sequencing.WriteObjective(objectives, ObjectiveRank::Other, "obj-prior", MeasureMode::False);
    sequencing.WriteMapInfo(prior, MakeModuleObjective(index - 1), kSatisfiedOnlyReadMap);
  }

  PlexoManifestTree& tree;
  PlexoSequencing sequencing;
  const std::uint32_t index;
  const bool hasPreTest;
  const bool waits;
  const bool forced;
};

void WriteCourseSequencing(PlexoManifestWriter& manifest, bool organizationRollsUp) {
  PlexoManifestTree& tree = manifest.GetTree();
  PlexoSequencing sequencing(tree);
  const TzDOMNode wrapper = tree.WriteEmptyNode("imsss:sequencing", manifest.GetRootClusterNode());
  sequencing.WriteFreeControlMode(wrapper);
  sequencing.WriteRollupRules(wrapper, kWrapperRollup);
  const TzDOMNode organization = tree.WriteEmptyNode("imsss:sequencing", manifest.GetOrganizationNode());
  sequencing.WriteFreeControlMode(organization);
  if (organizationRollsUp) sequencing.WriteRollupRules(organization, kOrganizationRollup);
}

}  // namespace

int WriteModuleCourse(PlexoManifestWriter& manifest, PlexoCourseType courseType) {
  PlexoModuleCourseModel* course = GetModuleCourseModel();
  if (GetStringDictionary() == nullptr || course == nullptr) return 1;
  const std::vector<TzString> order = course->GetModuleOrder();
  const bool hasPreTest = courseType == PlexoCourseType::PRE_CONTENT_POST;
  const bool forced = course->GetModuleForcedSequence();

  for (std::uint32_t index = 0; index < order.size(); ++index) {
    const PlexoModuleModel module = course->GetModule(order[index]);
    const TzString identifier = "SCO-" + MakeEntityName(index, ItemKind::Module);
    const TzDOMNode item = manifest.WriteItem(identifier, module.title.IsEmpty() ? identifier : module.title,
                                              {}, true, {}, nullptr, {});
    PlexoModuleActivities activities(manifest, module, index, hasPreTest);
    if (hasPreTest) activities.WritePreTest(item);
    activities.WriteContentModule(item);
    const TzDOMNode postTest = activities.WritePostTest(item);
    if (index + 1 == order.size()) manifest.WritePresentation(postTest, false);
    ModuleSequencing(manifest.GetTree(), index, hasPreTest, forced).Write(item, module.weightage);
  }
  WriteCourseSequencing(manifest, hasPreTest || forced);
  return 0;
}
