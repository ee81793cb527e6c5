// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// The next number of the process: 1 at first, one more at each call, never reset. Modules take their keys
/// from it, so a key isn't used twice however often modules come and go.
std::uint32_t GetNextTreeId();
