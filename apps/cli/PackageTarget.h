// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/cli/CommandFailure.h"
#include "host/files/TzPath.h"

/// Where a package goes. A link to a file stands for that file.
class PackageTarget {
 public:
  enum class Existing { Keep, Replace };

  /// As the user wrote it.
  std::string name;
  /// Absolute; empty if the current folder can't be found.
  TzPath folder;
  TzString fileName;

  explicit PackageTarget(const std::string& path);

  /// Why no package can be written there, as far as can be seen before the work starts.
  [[nodiscard]] std::optional<CommandFailure> Check(Existing existing) const;
  /// True if the package would take the place of this file.
  [[nodiscard]] bool IsSameFileAs(const TzPath& file) const;

 private:
  [[nodiscard]] CommandFailure Fail(ExitStatus status, const std::string& message) const;
  [[nodiscard]] std::optional<CommandFailure> CheckName() const;
  [[nodiscard]] std::optional<CommandFailure> CheckFolder() const;
  [[nodiscard]] std::optional<CommandFailure> CheckExisting(Existing existing) const;

  bool isNameText = true;
};
