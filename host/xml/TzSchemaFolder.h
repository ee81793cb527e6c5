// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/TzPath.h"

/// The schema documents in a folder, as the imports between them name them.
class TzSchemaFolder {
 public:
  explicit TzSchemaFolder(TzPath location) : folder(std::move(location)) {}

  /// The text of the document at this address, mended where the published one can't be compiled; none if the
  /// folder lacks it. Only the folder is looked at: the address stands for the longest tail of its path that
  /// names a file there ("http://www.w3.org/2001/03/xml.xsd" for "xml.xsd").
  [[nodiscard]] std::optional<std::string> Read(std::string_view address);

  /// The addresses that `Read` had nothing for, in order.
  [[nodiscard]] const std::vector<std::string>& GetMissing() const { return missing; }

 private:
  TzPath folder;
  std::vector<std::string> missing;
};
