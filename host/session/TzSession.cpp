// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzSession.h"

#include <system_error>

#include "host/session/TzProblem.h"

namespace {

TzSession& Installed() {
  static TzSession session;
  return session;
}

}  // namespace

const TzSession& TzSession::Current() { return Installed(); }

TzSession TzSession::Install(const TzSession& session) {
  const TzSession previous = Installed();
  Installed() = session;
  return previous;
}

ITzStringDictionary* GetStringDictionary() { return Installed().dictionary; }
ITzUserInterface* GetUserInterface() { return Installed().userInterface; }
ITzWindowSystem* GetWindowSystem() { return Installed().windows; }
ITzProgressSink* GetProgressSink() { return Installed().progress; }

void* GetTzBrokerAddressProc() {
  const auto proc = Installed().brokerAddressProc;
  return proc != nullptr ? proc() : nullptr;
}

TzErrorCodeEnum TzReportProblem(TzErrorCodeEnum code, std::string_view subject, std::string_view message) {
  if (ITzProblemSink* sink = Installed().problems; sink != nullptr) {
    sink->Report({code, std::string(subject), std::string(message)});
  }
  return code;
}

TzErrorCodeEnum TzReportSystemProblem(int errorNumber, std::string_view subject, std::string_view action) {
  const std::string reason = std::generic_category().message(errorNumber);
  return TzReportProblem(kTzMachineFailure, subject, std::string(action) + ": " + reason);
}
