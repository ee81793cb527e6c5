// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/PlexoCheckedPackage.h"

/// What an activity's objective shares with a global one.
struct PlexoObjectiveMap {
  const PlexoManifestElement* element = nullptr;
  std::string global;
  bool reads = false;
  bool writes = false;
};

struct PlexoObjective {
  /// May be empty for the primary objective.
  std::string identifier;
  bool isPrimary = false;
  bool isSatisfiedByMeasure = false;
  std::vector<PlexoObjectiveMap> maps;
};

/// A precondition that keeps an activity closed until an objective has a status.
struct PlexoGate {
  /// As an index of the activity's objectives.
  std::size_t objective = 0;
  /// True if a failure doesn't open it, for this rule or another one.
  bool needsSuccess = false;
  /// True if success closes it, so that it is there for those who fail.
  bool isForFailure = false;
};

/// An organization or item, as a sequencer sees it.
struct PlexoActivity {
  const PlexoManifestElement* element = nullptr;
  std::string identifier;
  const PlexoActivity* parent = nullptr;
  std::vector<const PlexoActivity*> children;
  /// In document order of the whole course.
  std::size_t position = 0;
  /// Null for a cluster, or where the reference leads nowhere.
  const PlexoResource* resource = nullptr;

  /// Its own sequencing, and that of the collection that it refers to; each may be null.
  const PlexoManifestElement* sequencing = nullptr;
  const PlexoManifestElement* sharedSequencing = nullptr;
  /// The primary objective comes first; there always is one.
  std::vector<PlexoObjective> objectives;
  /// The index of each objective by its identifier.
  std::unordered_map<std::string_view, std::size_t> objectivesByName;
  /// One an objective.
  std::vector<PlexoGate> gates;

  [[nodiscard]] bool IsCluster() const { return !children.empty(); }
  /// A part of its sequencing: its own, else the shared one; null without either.
  [[nodiscard]] const PlexoManifestElement* FindPart(std::string_view name) const;
  /// An attribute of a part of its sequencing, true for "true" and "1".
  [[nodiscard]] bool IsOn(std::string_view part, std::string_view attribute, bool otherwise) const;
  /// What its score counts in that of its parent: from 0 to 1; none if that isn't a plain number.
  [[nodiscard]] std::optional<double> GetWeight() const;
  /// The index of an objective; the number of objectives if there is none.
  [[nodiscard]] std::size_t FindObjective(std::string_view name) const;
  /// True for the activity itself and for what lies in it.
  [[nodiscard]] bool Holds(const PlexoActivity& other) const;
  [[nodiscard]] const char* GetKind() const { return parent == nullptr ? "organization" : "item"; }
};

/// The activities of all organizations, with what their sequencing says (IMS Simple Sequencing 1.0; SCORM
/// 2004 Sequencing and Navigation).
class PlexoActivityTree {
 public:
  explicit PlexoActivityTree(const PlexoCheckedPackage& checked);
  PlexoActivityTree(const PlexoActivityTree&) = delete;
  PlexoActivityTree& operator=(const PlexoActivityTree&) = delete;

  /// In document order, parents first.
  [[nodiscard]] const std::deque<PlexoActivity>& GetActivities() const { return activities; }
  /// The activities that write a global objective, in document order, each once; empty for one that nothing
  /// writes.
  [[nodiscard]] const std::vector<const PlexoActivity*>& GetWriters(const std::string& global) const;
  /// The writers of what a gate waits for that come before the gated activity; all others where none does.
  [[nodiscard]] std::vector<const PlexoActivity*> GetOpeners(const PlexoActivity& gated,
                                                             const std::string& global) const;

 private:
  void AddActivity(const PlexoManifestElement& element, PlexoActivity* parent);
  void ReadObjectives(PlexoActivity& activity);
  void NoteWriters(const PlexoActivity& activity);

  const PlexoCheckedPackage& package;
  std::deque<PlexoActivity> activities;
  std::unordered_map<std::string_view, const PlexoManifestElement*> sharedSequencing;
  std::unordered_map<std::string, std::vector<const PlexoActivity*>> writers;
};
