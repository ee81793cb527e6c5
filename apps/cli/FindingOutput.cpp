// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/FindingOutput.h"

#include <nlohmann/json.hpp>

#include "check/PlexoFindingTable.h"

nlohmann::ordered_json DescribeFindings(const std::vector<PlexoFinding>& findings) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const PlexoFinding& finding : findings) {
    const PlexoFindingKind& kind = PlexoFindingTable::GetKind(finding.id);
    list.push_back({{"id", kind.code},
                    {"severity", PlexoFindingTable::GetName(kind.severity)},
                    {"title", kind.title},
                    {"file", finding.place.file},
                    {"line", finding.place.line},
                    {"element", finding.place.element},
                    {"text", PlexoFindingTable::GetText(finding)},
                    {"wayOut", PlexoFindingTable::GetWayOut(finding)}});
    if (!finding.witness.empty()) list.back()["witness"] = finding.witness;
  }
  return list;
}
