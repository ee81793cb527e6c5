// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "check/PlexoFindingList.h"

/// Collects what the steps of an adoption find. A reason is a finding for which a course would refuse the
/// package as it stands, or damage it. What is found twice is kept once.
class PlexoAdoptFindings {
 public:
  void Add(PlexoFindingId id, const std::vector<std::string>& words) {
    if (found.emplace(id, words).second) list.Add(id, words);
  }
  void AddReason(PlexoFindingId id, const std::vector<std::string>& words) {
    if (foundReasons.emplace(id, words).second) reasons.Add(id, words);
    Add(id, words);
  }

  /// A list of names in few words: "'index.htm' and 3 more".
  static std::string DescribeNames(const std::string& first, std::size_t count) {
    return "'" + first + "'" + (count > 1 ? " and " + std::to_string(count - 1) + " more" : "");
  }

  /// For checks that the checker shares.
  [[nodiscard]] PlexoFindingList& GetList() { return list; }
  [[nodiscard]] PlexoFindingList& GetReasons() { return reasons; }

 private:
  PlexoFindingList list;
  PlexoFindingList reasons;
  std::set<std::pair<PlexoFindingId, std::vector<std::string>>> found;
  std::set<std::pair<PlexoFindingId, std::vector<std::string>>> foundReasons;
};
