// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// The place in a course that a file goes to.
enum class PlexoSCOKind : std::uint32_t { PRE_TEST = 0, POST_TEST = 1, CONTENT = 2, LINEAR = 3 };
