// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "host/files/TzPath.h"

/// A movie that was built for the tests, by its name without extension.
TzPath TestMovie(const std::string& name);

/// Lets the installed movie player stand in the install tree beside the test program too.
void LinkInstalledPlayer();
