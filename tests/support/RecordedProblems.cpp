// SPDX-License-Identifier: Apache-2.0
#include "support/RecordedProblems.h"

#include <thread>

RecordedProblems::RecordedProblems() : previous(TzSession::Current()) {
  TzSession session;
  session.problems = this;
  session.progress = this;
  TzSession::Install(session);
}

RecordedProblems::~RecordedProblems() { TzSession::Install(previous); }

bool RecordedProblems::Report(std::string_view activity, std::uint64_t done, std::uint64_t total) {
  steps.push_back({std::string(activity), done, total});
  std::this_thread::sleep_for(reportTime);
  return steps.size() != stopAt;
}

std::vector<std::string> RecordedProblems::Texts() const {
  std::vector<std::string> texts;
  for (const TzProblem& problem : problems) texts.push_back(problem.GetText());
  return texts;
}
