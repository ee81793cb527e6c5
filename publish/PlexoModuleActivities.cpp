// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoModuleActivities.h"

namespace {

using enum ChildActivitySet;
using enum RollupOperator;
using enum ConditionCombination;

constexpr RollupRule kContentRollup[] = {
    {All, Plain, RollupCondition::Completed, RollupAction::Satisfied},
    {Any, Not, RollupCondition::Completed, RollupAction::NotSatisfied},
    {All, Plain, RollupCondition::Completed, RollupAction::Completed},
    {Any, Not, RollupCondition::Completed, RollupAction::Incomplete},
};

/// Conditions on the pretest's result, as the objective "obj-test" shows it to the rest of the module.
RuleCondition TestPassed() { return {"", "satisfied", "obj-test"}; }
RuleCondition TestUnknown() { return {"not", "objectiveStatusKnown", "obj-test"}; }

TzString ContentObjective(std::size_t contentIndex) {
  return "obj-content_" + std::to_string(contentIndex + 1);
}

}  // namespace

TzString MakeModuleObjective(std::uint32_t moduleIndex) {
  return MakeIdentifier("obj-global", kNoIndex, moduleIndex, ItemKind::ModuleObjective);
}

PlexoModuleActivities::PlexoModuleActivities(PlexoManifestWriter& manifestWriter,
                                             const PlexoModuleModel& moduleModel, std::uint32_t moduleIndex,
                                             bool withPreTest)
    : manifest(manifestWriter),
      tree(manifestWriter.GetTree()),
      sequencing(manifestWriter.GetTree()),
      module(moduleModel),
      index(moduleIndex),
      hasPreTest(withPreTest) {}

TzString PlexoModuleActivities::Global(std::uint32_t contentIndex, ItemKind kind) const {
  return MakeIdentifier("obj-global", contentIndex, index, kind);
}

TzDOMNode PlexoModuleActivities::WriteMappedObjective(TzDOMNode objectives, ObjectiveRank rank,
                                                      const TzString& objectiveId, const TzString& target,
                                                      const MapFlags& flags) {
  const TzDOMNode objective = sequencing.WriteObjective(objectives, rank, objectiveId, MeasureMode::Unsaid);
  sequencing.WriteMapInfo(objective, target, flags);
  return objective;
}

// A test is titled by its place, unless the author gave it a title: its own name means nothing to a learner
// who sees it beside the module's title.
TzDOMNode PlexoModuleActivities::WriteTest(TzDOMNode moduleItem, ItemKind kind, const TzString& stagedFolder,
                                           const PlexoSCOManifest& sco) {
  const TzString title = MakeEntityName(index, ItemKind::Module) + "_" + MakeEntityName(kNoIndex, kind);
  return manifest.WriteItem(MakeIdentifier("SCO", kNoIndex, index, kind), sco.GetTitleOr(title),
                            MakeIdentifier("RES", kNoIndex, index, kind), true, moduleItem, &sco,
                            stagedFolder);
}

void PlexoModuleActivities::WriteTestResource(ItemKind kind, const TzString& stagedFolder,
                                              const PlexoSCOManifest& sco) {
  manifest.WriteResource(stagedFolder, sco, kNoIndex, index, kind);
}

void PlexoModuleActivities::WritePreTest(TzDOMNode moduleItem) {
  const TzString stagedFolder = module.key + "/Pre_Test";
  const PlexoSCOManifest& sco = module.preTest.manifest;
  const TzDOMNode item = WriteTest(moduleItem, ItemKind::PreTest, stagedFolder, sco);
  const TzDOMNode node = tree.WriteEmptyNode("imsss:sequencing", item);
  WritePreTestRules(node);
  sequencing.WriteRollupRules(node, {true, true, "0"}, {});
  const TzDOMNode objectives = tree.WriteEmptyNode("imsss:objectives", node);
  WriteMappedObjective(objectives, ObjectiveRank::Primary, "obj-primary", MakeModuleObjective(index),
                       kWriteOnlyMap);
  WriteMappedObjective(objectives, ObjectiveRank::Other, "obj-posttest", Global(kNoIndex, ItemKind::PostTest),
                       kReadMap);
  for (std::uint32_t content = 0; content < module.contents.size(); ++content) {
    WriteMappedObjective(objectives, ObjectiveRank::Other, ContentObjective(content),
                         Global(content, ItemKind::Content), kReadMap);
  }
  sequencing.WriteDeliveryControls(node);
  WriteTestResource(ItemKind::PreTest, stagedFolder, sco);
}

void PlexoModuleActivities::WritePreTestRules(TzDOMNode node) {
  const TzDOMNode rules = tree.WriteEmptyNode("imsss:sequencingRules", node);
  std::vector<RuleCondition> tooLate = {
      {"noOp", "completed", {}},
      {"noOp", "objectiveStatusKnown", "obj-posttest"},
  };
  for (std::size_t content = 0; content < module.contents.size(); ++content) {
    tooLate.push_back({"noOp", "objectiveStatusKnown", ContentObjective(content)});
  }
  sequencing.WriteRule(rules, RuleMoment::PreCondition, AnyOf, tooLate, "disabled");
  const RuleCondition passed[] = {{"noOp", "satisfied", {}}};
  sequencing.WriteRule(rules, RuleMoment::PostCondition, AllOf, passed, "exitParent");
}

void PlexoModuleActivities::WriteContentModule(TzDOMNode moduleItem) {
  const TzDOMNode wrapper =
      manifest.WriteItem("CLUSTER-" + MakeEntityName(index, ItemKind::Module) + "_content_wrapper",
                         "ContentWrapper", {}, false, moduleItem, nullptr, {});
  const TzString stagedFolder = module.key + "/Content";
  for (std::uint32_t content = 0; content < module.contents.size(); ++content) {
    WriteContentItem(wrapper, module.contents[content], content, stagedFolder);
  }
  WriteWrapperSequencing(wrapper);
}

void PlexoModuleActivities::WriteContentItem(TzDOMNode wrapper, const PlexoSCOModel& content,
                                             std::uint32_t contentIndex, const TzString& stagedFolder) {
  const TzDOMNode item = manifest.WriteItem(MakeIdentifier("SCO", contentIndex, index, ItemKind::Content),
                                            content.manifest.GetTitleOr(content.scoName),
                                            MakeIdentifier("RES", contentIndex, index, ItemKind::Content),
                                            true, wrapper, &content.manifest, stagedFolder);
  if (module.contentForcedSequence) {
    sequencing.WriteItemSequencing(item, true, contentIndex, index, ItemKind::Content);
  } else {
    const TzDOMNode node = tree.WriteEmptyNode("imsss:sequencing", item);
    // The pretest closes once a content has been started, which it sees by the content's objective.
    if (hasPreTest) {
      WriteMappedObjective(tree.WriteEmptyNode("imsss:objectives", node), ObjectiveRank::Primary,
                           "obj-primary", Global(contentIndex, ItemKind::Content), kWriteMap);
    }
    sequencing.WriteDeliveryControls(node);
  }
  manifest.WriteResource(stagedFolder, content.manifest, contentIndex, index, ItemKind::Content);
}

void PlexoModuleActivities::WriteWrapperSequencing(TzDOMNode wrapper) {
  const TzDOMNode node = tree.WriteEmptyNode("imsss:sequencing", wrapper);
  sequencing.WriteFreeControlMode(node);
  if (hasPreTest) {
    const TzDOMNode rules = tree.WriteEmptyNode("imsss:sequencingRules", node);
    const RuleCondition closed[] = {TestUnknown(), TestPassed()};
    sequencing.WriteRule(rules, RuleMoment::PreCondition, AnyOf, closed, "disabled");
    const RuleCondition passed[] = {TestPassed()};
    sequencing.WriteRule(rules, RuleMoment::PreCondition, AnyOf, passed, "skip");
  }
  sequencing.WriteRollupRules(node, {false, false, "0"}, kContentRollup);
  const TzDOMNode objectives = tree.WriteEmptyNode("imsss:objectives", node);
  WriteMappedObjective(objectives, ObjectiveRank::Primary, "obj-primary", Global(kNoIndex, ItemKind::Content),
                       kWriteMap);
  if (hasPreTest) {
    WriteMappedObjective(objectives, ObjectiveRank::Other, "obj-test", MakeModuleObjective(index), kReadMap);
  }
}

TzDOMNode PlexoModuleActivities::WritePostTest(TzDOMNode moduleItem) {
  const TzString stagedFolder = module.key + "/Post_Test";
  const PlexoSCOManifest& sco = module.postTest.manifest;
  const TzDOMNode item = WriteTest(moduleItem, ItemKind::PostTest, stagedFolder, sco);
  const TzDOMNode node = tree.WriteEmptyNode("imsss:sequencing", item);
  WritePostTestRules(node);
  // With a pretest the module's measure comes from its objective, which both tests write.
  sequencing.WriteRollupRules(node, {true, true, hasPreTest ? "0" : "1"}, {});
  const TzDOMNode objectives = tree.WriteEmptyNode("imsss:objectives", node);
  const TzDOMNode primary =
      WriteMappedObjective(objectives, ObjectiveRank::Primary, "obj-primary", MakeModuleObjective(index),
                           hasPreTest ? kWriteOnlyMap : kWriteMap);
  if (hasPreTest) sequencing.WriteMapInfo(primary, Global(kNoIndex, ItemKind::PostTest), kWriteOnlyMap);
  WriteMappedObjective(objectives, ObjectiveRank::Other, "obj-prereq", Global(kNoIndex, ItemKind::Content),
                       kReadMap);
  if (hasPreTest) {
    WriteMappedObjective(objectives, ObjectiveRank::Other, "obj-test", MakeModuleObjective(index), kReadMap);
  }
  sequencing.WriteDeliveryControls(node);
  WriteTestResource(ItemKind::PostTest, stagedFolder, sco);
  return item;
}

void PlexoModuleActivities::WritePostTestRules(TzDOMNode node) {
  const TzDOMNode rules = tree.WriteEmptyNode("imsss:sequencingRules", node);
  std::vector<RuleCondition> closed = {
      {"not", "satisfied", "obj-prereq"},
      {"not", "objectiveStatusKnown", "obj-prereq"},
  };
  if (hasPreTest) {
    const RuleCondition passed[] = {TestPassed()};
    sequencing.WriteRule(rules, RuleMoment::PreCondition, AllOf, passed, "skip");
    closed.push_back(TestPassed());
  }
  sequencing.WriteRule(rules, RuleMoment::PreCondition, AnyOf, closed, "disabled");
}
