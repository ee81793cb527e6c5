// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "host/files/TzPath.h"
#include "host/session/TzErrorCode.h"

/// Why an archive couldn't be read or written. Workers hand it to the calling thread, which alone may talk to
/// the session. True if there is a failure at all.
struct TzZipFailure {
  TzErrorCodeEnum code = kTzSuccess;
  /// The entry that it is about; empty for the archive as a whole.
  std::string entry;
  /// What is wrong; with an error number, what was tried.
  std::string message;
  int errorNumber = 0;
  /// The archive that it is about, if that isn't the one at work.
  TzPath source = {};

  explicit operator bool() const { return code != kTzSuccess; }

  static TzZipFailure BadContent(std::string_view entry, std::string_view message);
  /// Of a system call that has just failed with this errno value.
  static TzZipFailure System(int errorNumber, std::string_view entry, std::string_view action);
  static TzZipFailure Cancelled() { return {kTzCancelled, {}, {}, 0}; }

  /// What is wrong, with the system's words if it has any.
  [[nodiscard]] std::string GetReason() const;
  /// Reports the failure, if it is one and not a stop that was asked for, and returns its code. The archive
  /// is the one at work.
  TzErrorCodeEnum Report(const TzPath& archive) const;
};
