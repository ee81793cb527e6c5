// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

/// A sheet that can't be loaded: "file:line: what is wrong". Sheets are part of a program, so a broken one is
/// a fault of the program.
class TzSheetError : public std::logic_error {
 public:
  TzSheetError(std::string_view file, int line, std::string_view what)
      : std::logic_error(std::string(file) + ":" + std::to_string(line) + ": " + std::string(what)) {}
};
