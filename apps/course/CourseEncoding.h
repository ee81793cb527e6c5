// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// The text of a course file as UTF-8 without a byte-order mark. YAML 1.2, 5.2: the file is UTF-8, UTF-16 or
/// UTF-32, told by its mark, or without one by the zero bytes of its first character. UTF-8 stays as it is,
/// well formed or not; what is malformed in the others becomes U+FFFD.
std::string DecodeCourseText(std::string bytes);
