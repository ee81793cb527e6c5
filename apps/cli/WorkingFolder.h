// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "apps/cli/CommandFailure.h"

/// The folder in which the author wants a course put together and left. Unless it is kept, all that was put
/// there goes with this object, and the folders that were made for it: after a failure the same command works
/// again.
class WorkingFolder {
 public:
  /// Empty if the author wants none.
  explicit WorkingFolder(std::string path) : name(std::move(path)) {}
  ~WorkingFolder();
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;

  /// As the author wrote it.
  [[nodiscard]] const std::string& GetName() const { return name; }
  /// Why no course can be put together there, as far as can be seen before the work starts.
  [[nodiscard]] std::optional<CommandFailure> Check() const;
  /// Lets the course's next folder for temporary files be this one. False if the current folder can't be
  /// found.
  [[nodiscard]] bool Start();
  /// The course has the folder. From here on what stands there is the course's; before it could be somebody
  /// else's.
  void Own() { isOwned = true; }
  void Keep() { isOwned = false; }

 private:
  std::string name;
  /// Absolute, without links that lead to it; empty without one, and before the start.
  std::filesystem::path folder;
  /// What of the path was there before.
  std::filesystem::path existing;
  bool isOwned = false;
};
