// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/cli/CommandFailure.h"

/// What one line of a script came to.
struct PlayAnswer {
  /// For people, a line each.
  std::vector<std::string> text;
  /// The same for programs.
  nlohmann::ordered_json fields;
  /// False for an expectation that wasn't met.
  bool holds = true;
  /// Why the script can't go on.
  std::optional<CommandFailure> failure;
};
