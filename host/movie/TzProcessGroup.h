// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/files/TzFileDescriptor.h"

/// A program and everything that it starts, as one group of processes that is held to limits.
///
/// Guarantees: the group has no input and its output goes nowhere. It ends with this object, and as well if
/// this process is killed. The system refuses a process of the group memory over the limit; what all of them
/// take together is for the owner to ask after with `FindExcess`.
class TzProcessGroup {
 public:
  struct Limits {
    /// Of memory that is a process's own, for each of them and for all together.
    std::uint64_t bytes;
    std::size_t processes;
  };

  explicit TzProcessGroup(const Limits& groupLimits) : limits(groupLimits) {}
  ~TzProcessGroup() { End(); }
  TzProcessGroup(const TzProcessGroup&) = delete;
  TzProcessGroup& operator=(const TzProcessGroup&) = delete;

  /// Starts the program: its path and its arguments, and the variables that it gets. 0, or the system's error
  /// number. Ends what was started before.
  [[nodiscard]] int Start(const std::vector<std::string>& command, std::vector<std::string> environment);
  /// False once the program ended by itself.
  [[nodiscard]] bool IsRunning() const;
  /// Which limit the group is over, in words ("more than 1536 MB of memory"); empty if it is over none.
  [[nodiscard]] std::string FindExcess() const;
  void End();

 private:
  Limits limits;
  pid_t process = -1;
  /// The group ends itself when this closes.
  TzFileDescriptor lifeline;
};
