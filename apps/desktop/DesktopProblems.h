// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <vector>

#include "host/session/TzProblem.h"

/// Keeps why operations of the host failed, until a box that tells of the failure shows it.
class DesktopProblems : public ITzProblemSink {
 public:
  void Report(const TzProblem& problem) override { problems.push_back(problem); }

  /// Those since they were taken or forgotten last, a line each; empty without any.
  [[nodiscard]] QString Take();
  /// The author stopped what failed, and needn't be told.
  [[nodiscard]] bool IsCancelled() const;
  /// What no box told is none of the next one's.
  void Forget() { problems.clear(); }

 private:
  std::vector<TzProblem> problems;
};
