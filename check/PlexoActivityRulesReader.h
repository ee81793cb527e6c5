// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoSequencingValues.h"
#include "sequencer/PlexoSequencingDefinition.h"

/// Reads one imsss:sequencing, with what the 4th Edition adds to it, into the rules of an activity.
///
/// A part that the activity's own element has counts as a whole; the others are those of the element in the
/// sequencing collection that it refers to (SCORM 2004 CAM, sequencing collection).
class PlexoActivityRulesReader {
 public:
  /// The activity's own element and the shared one; either may be null.
  PlexoActivityRulesReader(const PlexoManifestElement* ownElement, const PlexoManifestElement* sharedElement,
                           PlexoReadingNotes& list)
      : own(ownElement), shared(sharedElement), notes(list), values(list) {}

  void Read(PlexoActivityRules& rules);

 private:
  [[nodiscard]] const PlexoManifestElement* FindPart(PlexoVocabulary vocabulary, std::string_view name) const;
  void ReadControls(PlexoActivityRules& rules);
  void ReadSequencingRules(PlexoActivityRules& rules);
  template <std::size_t count>
  void ReadSequencingRule(const PlexoManifestElement& element,
                          const PlexoWord<PlexoRuleAction> (&actions)[count], PlexoActivityRules& rules);
  [[nodiscard]] bool ReadConditions(const PlexoManifestElement& list, PlexoSequencingRule& rule);
  void ReadRollup(PlexoActivityRules& rules);
  void ReadRollupRule(const PlexoManifestElement& element, PlexoActivityRules& rules);
  [[nodiscard]] bool ReadRollupConditions(const PlexoManifestElement& list, PlexoRollupRule& rule);
  void ReadObjectives(PlexoActivityRules& rules);
  void ReadObjective(const PlexoManifestElement& element, PlexoActivityRules& rules);
  void ReadAuxiliaryMaps(PlexoActivityRules& rules);
  void ReadMap(const PlexoManifestElement& element, std::span<const PlexoWord<PlexoSharedValue>> shareable,
               PlexoObjectiveDefinition& objective);
  void ReadRandomization(PlexoActivityRules& rules);
  void ReadDelivery(PlexoActivityRules& rules);

  const PlexoManifestElement* own;
  const PlexoManifestElement* shared;
  PlexoReadingNotes& notes;
  PlexoSequencingValues values;
};
