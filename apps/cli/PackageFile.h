// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "apps/cli/CommandFailure.h"

/// Why the package that a command is to read is no file. `expected` says what it should be: "a SCO package";
/// `unseen` is the status if the machine can't even tell.
std::optional<CommandFailure> CheckPackageFile(const std::string& path, const std::string& expected,
                                               ExitStatus unseen);
