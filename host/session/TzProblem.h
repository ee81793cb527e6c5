// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "host/session/TzErrorCode.h"

/// Why a host operation failed, for people: the component's boxes say what happened, a problem says why.
struct TzProblem {
  TzErrorCodeEnum code = kTzFailure;
  /// What it is about: a path, or an archive and an entry.
  std::string subject;
  /// What is wrong, in lower case without a full stop.
  std::string message;

  /// "subject: message"
  [[nodiscard]] std::string GetText() const { return subject + ": " + message; }
};

/// Takes the problems of the running session.
class ITzProblemSink {
 public:
  virtual ~ITzProblemSink() = default;
  virtual void Report(const TzProblem& problem) = 0;
};

/// Hands the problem to the session's sink, if it has one, and returns its code, so that a failing operation
/// can say why and return in one statement.
TzErrorCodeEnum TzReportProblem(TzErrorCodeEnum code, std::string_view subject, std::string_view message);

/// The same for a system call that has just failed with this errno value: `action` says what was tried
/// ("can't write"), the system's own words follow.
TzErrorCodeEnum TzReportSystemProblem(int errorNumber, std::string_view subject, std::string_view action);
