// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "host/text/TzString.h"

/// The file of the library's resources that a sheet asks for by its name ("moveup.png"); empty if there is
/// none. All sheets of the library share it as their loader.
std::string_view LoadSheetResource(const TzString& resourceName);
