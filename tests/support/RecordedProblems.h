// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "host/session/ITzProgressSink.h"
#include "host/session/TzProblem.h"
#include "host/session/TzSession.h"

/// A session that does nothing but listen, for the length of a test: it keeps what host operations report.
class RecordedProblems : public ITzProblemSink, public ITzProgressSink {
 public:
  struct Step {
    std::string activity;
    std::uint64_t done = 0;
    std::uint64_t total = 0;
  };

  RecordedProblems();
  ~RecordedProblems() override;
  RecordedProblems(const RecordedProblems&) = delete;
  RecordedProblems& operator=(const RecordedProblems&) = delete;

  void Report(const TzProblem& problem) override { problems.push_back(problem); }
  bool Report(std::string_view activity, std::uint64_t done, std::uint64_t total) override;

  /// Each problem as a line, "subject: message".
  [[nodiscard]] std::vector<std::string> Texts() const;

  std::vector<TzProblem> problems;
  std::vector<Step> steps;
  /// The progress report, counted from 1, that asks to stop; 0 for none.
  std::size_t stopAt = 0;
  /// How long each report keeps the calling thread.
  std::chrono::milliseconds reportTime{0};

 private:
  TzSession previous;
};
