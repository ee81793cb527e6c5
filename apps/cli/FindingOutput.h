// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "check/PlexoFinding.h"

/// The findings as a JSON list: id, severity, title, place, text and way out of each.
nlohmann::ordered_json DescribeFindings(const std::vector<PlexoFinding>& findings);
