// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "core/PlexoSCOModel.h"

/// The SCOs of a flat course, in the author's order. Getters copy; a change goes through a setter.
class PlexoLinearCourseModel {
 public:
  void AddSCO(const PlexoSCOModel& sco) { scos.push_back(sco); }
  [[nodiscard]] std::vector<PlexoSCOModel> GetSCOs() const { return scos; }
  [[nodiscard]] std::size_t CountSCOs() const { return scos.size(); }
  /// An empty record for an index out of range.
  [[nodiscard]] PlexoSCOModel GetSCO(int index) const;
  /// Without copying the record; empty for an index out of range.
  [[nodiscard]] TzString GetSCOFolder(int index) const;
  /// Exchanges two entries; nothing happens if an index is out of range.
  void SwapSCOs(int first, int second);
  /// Removes the entries at these indices, which ascend and count from before the removal, in one pass. An
  /// index out of range is skipped. Of a list that doesn't ascend, step i removes what then stands at its
  /// index less i.
  void RemoveSCOs(const std::vector<int>& indices);
  /// Empties the list and clears the forced sequence.
  void Clear();

  /// Learners must take the SCOs in order.
  [[nodiscard]] bool GetForcedSequence() const { return forcedSequence; }
  void SetForcedSequence(bool forced) { forcedSequence = forced; }

 private:
  [[nodiscard]] bool Holds(int index) const;

  std::vector<PlexoSCOModel> scos;
  bool forcedSequence = false;
};

/// The process's flat course, made on first use and never destroyed. UI thread only.
PlexoLinearCourseModel* GetLinearCourseModel();
