// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoLinearCourseWriter.h"

#include "core/PlexoLinearCourseModel.h"
#include "host/session/TzSession.h"
#include "publish/PlexoSequencing.h"

namespace {

using enum ChildActivitySet;
using enum RollupOperator;

constexpr RollupRule kCourseRollup[] = {
    {Any, Not, RollupCondition::ObjectiveStatusKnown, RollupAction::Incomplete},
    {All, Plain, RollupCondition::Satisfied, RollupAction::Satisfied},
    {Any, Not, RollupCondition::Satisfied, RollupAction::NotSatisfied},
    {All, Plain, RollupCondition::Completed, RollupAction::Completed},
    {Any, Not, RollupCondition::Completed, RollupAction::Incomplete},
};

constexpr ControlMode kFree{.forwardOnly = false, .choice = true};
constexpr ControlMode kForced{.forwardOnly = true, .choice = false};

/// Carries the course's status from the wrapper item up to the organization.
constexpr const char* kCourseObjective = "course_level_assessment";

void WriteRootObjective(PlexoManifestTree& tree, TzDOMNode clusterSequencing, const TzString& objectiveId,
                        const MapFlags& flags) {
  PlexoSequencing sequencing(tree);
  const TzDOMNode objectives = tree.WriteEmptyNode("imsss:objectives", clusterSequencing);
  const TzDOMNode primary =
      sequencing.WriteObjective(objectives, ObjectiveRank::Primary, objectiveId, MeasureMode::Unsaid);
  sequencing.WriteMapInfo(primary, kCourseObjective, flags);
}

void WriteLinearRootSequencing(PlexoManifestWriter& manifest, bool forced) {
  PlexoManifestTree& tree = manifest.GetTree();
  PlexoSequencing sequencing(tree);

  // The wrapper stays free also in a forced course: there the items' own rules keep the order.
  const TzDOMNode wrapper = tree.WriteEmptyNode("imsss:sequencing", manifest.GetRootClusterNode());
  sequencing.WriteControlMode(wrapper, kFree);
  sequencing.WriteRollupRules(wrapper, kCourseRollup);
  if (forced) WriteRootObjective(tree, wrapper, kCourseObjective, kWriteMap);

  const TzDOMNode organization = tree.WriteEmptyNode("imsss:sequencing", manifest.GetOrganizationNode());
  sequencing.WriteControlMode(organization, forced ? kForced : kFree);
  if (forced) WriteRootObjective(tree, organization, "Organization_Objective", kReadMap);
}

}  // namespace

int WriteLinearCourse(PlexoManifestWriter& manifest) {
  const PlexoLinearCourseModel* course = GetLinearCourseModel();
  if (GetStringDictionary() == nullptr || course == nullptr) return 1;
  const bool forced = course->GetForcedSequence();
  const std::vector<PlexoSCOModel> scos = course->GetSCOs();
  const TzString stagedFolder = "Linear";
  PlexoSequencing sequencing(manifest.GetTree());

  for (std::uint32_t index = 0; index < scos.size(); ++index) {
    const PlexoSCOManifest& sco = scos[index].manifest;
    const TzDOMNode item = manifest.WriteItem(
        MakeIdentifier("SCO", index, kNoIndex, ItemKind::Item), sco.GetTitleOr(sco.title),
        MakeIdentifier("RES", index, kNoIndex, ItemKind::Item), true, {}, &sco, stagedFolder);
    if (manifest.IsScorm2004()) {
      sequencing.WriteItemSequencing(item, forced, index, kNoIndex, ItemKind::Item);
      if (index + 1 == scos.size()) manifest.WritePresentation(item, forced);
    } else {
      manifest.WriteScorm12ItemData(item);
    }
    manifest.WriteResource(stagedFolder, sco, index, kNoIndex, ItemKind::Item);
  }
  if (manifest.IsScorm2004()) WriteLinearRootSequencing(manifest, forced);
  return 0;
}
