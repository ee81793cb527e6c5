// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string>

#include "host/files/TzResource.h"

/// The texts of a property sheet, number 1, and a layout sheet, number 2, as resources.
class SheetPair {
 public:
  SheetPair(std::string properties, std::string layout)
      : propertyText(std::move(properties)),
        layoutText(std::move(layout)),
        resources{TzResource{"1", "adm", "cells.yaml", propertyText},
                  TzResource{"2", "eve", "views.yaml", layoutText}} {}
  SheetPair(const SheetPair&) = delete;
  SheetPair& operator=(const SheetPair&) = delete;

  [[nodiscard]] TzResourceInfo Info() const { return {resources}; }
  [[nodiscard]] const TzResource& Properties() const { return resources[0]; }
  [[nodiscard]] const TzResource& Layout() const { return resources[1]; }

 private:
  std::string propertyText;
  std::string layoutText;
  std::array<TzResource, 2> resources;
};
