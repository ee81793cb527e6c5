// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

/// The PDF library couldn't do what was asked of it: the document is damaged, or the machine failed. The text
/// says what is wrong. Every operation of `host/pdf` may throw it, and nothing else.
class TzPdfFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
