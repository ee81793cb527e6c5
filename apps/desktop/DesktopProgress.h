// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/desktop/DesktopProblems.h"
#include "host/qt/TzQtProgress.h"
#include "host/session/ITzProgressSink.h"

/// Shows progress in the author's language. The host names its activities in English, for terminals.
class DesktopProgress : public ITzProgressSink {
 public:
  /// That the author cancelled goes to the problems.
  DesktopProgress(TzQtUserInterface& userInterface, DesktopProblems& problemList)
      : shown(userInterface), problems(problemList) {}

  bool Report(std::string_view activity, std::uint64_t done, std::uint64_t total) override;

  /// A report lets events through: what hears of one meanwhile is in the middle of an operation.
  [[nodiscard]] bool IsReporting() const { return isReporting; }

 private:
  TzQtProgress shown;
  DesktopProblems& problems;
  bool isReporting = false;
};
