// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "host/text/TzVariant.h"

/// A call that a player makes to its host: a function's name and arguments.
class TzFPFunctionArgumentList {
 public:
  TzFPFunctionArgumentList(TzString functionName, std::vector<TzVariant> functionArguments)
      : name(std::move(functionName)), arguments(std::move(functionArguments)) {}

  [[nodiscard]] const TzString& GetFunctionName() const { return name; }
  /// From 0; an empty variant past the last.
  [[nodiscard]] TzVariant GetNthArgument(std::size_t index) const {
    return index < arguments.size() ? arguments[index] : TzVariant();
  }

 private:
  TzString name;
  std::vector<TzVariant> arguments;
};
