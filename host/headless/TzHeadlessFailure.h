// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

/// The script of a headless session doesn't fit what was shown: a box, chooser or dialog that it doesn't
/// expect, or a view that isn't there to be used.
class TzHeadlessFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
