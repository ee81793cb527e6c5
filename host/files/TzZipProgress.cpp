// SPDX-License-Identifier: Apache-2.0
#include "host/files/TzZipProgress.h"

#include <algorithm>

#include "host/session/ITzProgressSink.h"
#include "host/session/TzSession.h"

TzZipProgress::TzZipProgress(std::string text, std::uint64_t totalBytes)
    : activity(std::move(text)), total(std::max<std::uint64_t>(totalBytes, 1)) {}

bool TzZipProgress::Report() {
  reported = std::chrono::steady_clock::now();
  ITzProgressSink* sink = GetProgressSink();
  if (sink != nullptr && !IsStopped() && !sink->Report(activity, std::min(done.load(), total), total)) {
    stopped = true;
  }
  return !IsStopped();
}

bool TzZipProgress::ReportIfDue() {
  return std::chrono::steady_clock::now() - reported < kInterval ? !IsStopped() : Report();
}
