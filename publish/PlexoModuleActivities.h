// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/PlexoModuleModel.h"
#include "publish/PlexoManifestWriter.h"
#include "publish/PlexoSequencing.h"

/// The global objective of a module as a whole, which its tests write.
TzString MakeModuleObjective(std::uint32_t moduleIndex);

/// Writes what stands below one module's item, each with its sequencing and resource.
class PlexoModuleActivities {
 public:
  PlexoModuleActivities(PlexoManifestWriter& manifestWriter, const PlexoModuleModel& moduleModel,
                        std::uint32_t moduleIndex, bool withPreTest);

  /// Can be taken until the content or the post-test has been started; passing it leaves the module.
  void WritePreTest(TzDOMNode moduleItem);
  /// The contents in a hidden wrapper item, whose completion serves as its satisfaction. With a pretest they
  /// open when it has a result, and are skipped when that is a pass.
  void WriteContentModule(TzDOMNode moduleItem);
  /// Opens when the content is done; with a pretest, it is skipped when that was passed. Returns the item.
  TzDOMNode WritePostTest(TzDOMNode moduleItem);

 private:
  TzDOMNode WriteTest(TzDOMNode moduleItem, ItemKind kind, const TzString& stagedFolder,
                      const PlexoSCOManifest& sco);
  void WriteTestResource(ItemKind kind, const TzString& stagedFolder, const PlexoSCOManifest& sco);
  void WriteContentItem(TzDOMNode wrapper, const PlexoSCOModel& content, std::uint32_t contentIndex,
                        const TzString& stagedFolder);
  void WriteWrapperSequencing(TzDOMNode wrapper);
  void WritePreTestRules(TzDOMNode node);
  void WritePostTestRules(TzDOMNode node);
  /// An objective with one map, at the standard's default measure.
  TzDOMNode WriteMappedObjective(TzDOMNode objectives, ObjectiveRank rank, const TzString& objectiveId,
                                 const TzString& target, const MapFlags& flags);
  [[nodiscard]] TzString Global(std::uint32_t contentIndex, ItemKind kind) const;

  PlexoManifestWriter& manifest;
  PlexoManifestTree& tree;
  PlexoSequencing sequencing;
  const PlexoModuleModel& module;
  const std::uint32_t index;
  const bool hasPreTest;
};
