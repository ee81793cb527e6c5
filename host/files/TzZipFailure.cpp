// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipFailure.h"

#include <system_error>

#include "host/session/TzProblem.h"

TzZipFailure TzZipFailure::BadContent(std::string_view entry, std::string_view message) {
  return {kTzBadContent, std::string(entry), std::string(message), 0};
}

TzZipFailure TzZipFailure::System(int errorNumber, std::string_view entry, std::string_view action) {
  return {kTzMachineFailure, std::string(entry), std::string(action), errorNumber};
}

std::string TzZipFailure::GetReason() const {
  return errorNumber == 0 ? message : message + ": " + std::generic_category().message(errorNumber);
}

TzErrorCodeEnum TzZipFailure::Report(const TzPath& archive) const {
  if (code == kTzSuccess || code == kTzCancelled) return code;
  std::string subject = (source.IsEmpty() ? archive : source).GetFileName().GetUTF8String();
  if (!entry.empty()) subject += ": " + entry;
  return errorNumber != 0 ? TzReportSystemProblem(errorNumber, subject, message)
                          : TzReportProblem(code, subject, message);
}
