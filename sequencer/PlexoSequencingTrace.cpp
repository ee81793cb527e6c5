// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoSequencingTrace.h"

namespace {

struct PlexoProcessName {
  std::string_view number;
  std::string_view name;
};

/// In the order of PlexoProcess.
constexpr PlexoProcessName kProcesses[] = {
    {"OP.1", "Overall Sequencing Process"},
    {"NB.2.1", "Navigation Request Process"},
    {"TB.2.1", "Sequencing Exit Action Rules Subprocess"},
    {"TB.2.2", "Sequencing Post Condition Rules Subprocess"},
    {"TB.2.3", "Termination Request Process"},
    {"RB.1.1", "Measure Rollup Process"},
    {"RB.1.1.b", "Completion Measure Rollup Process"},
    {"RB.1.2.a", "Objective Rollup Using Measure Process"},
    {"RB.1.2.b", "Objective Rollup Using Rules Process"},
    {"RB.1.3.a", "Activity Progress Rollup Using Measure Process"},
    {"RB.1.3.b", "Activity Progress Rollup Using Rules Process"},
    {"RB.1.4", "Rollup Rule Check Subprocess"},
    {"RB.1.5", "Overall Rollup Process"},
    {"SR.1", "Select Children Process"},
    {"SR.2", "Randomize Children Process"},
    {"SB.2.1", "Flow Tree Traversal Subprocess"},
    {"SB.2.2", "Flow Activity Traversal Subprocess"},
    {"SB.2.3", "Flow Subprocess"},
    {"SB.2.4", "Choice Activity Traversal Subprocess"},
    {"SB.2.5", "Start Sequencing Request Process"},
    {"SB.2.6", "Resume All Sequencing Request Process"},
    {"SB.2.7", "Continue Sequencing Request Process"},
    {"SB.2.8", "Previous Sequencing Request Process"},
    {"SB.2.9", "Choice Sequencing Request Process"},
    {"SB.2.9.1", "Choice Flow Subprocess"},
    {"SB.2.10", "Retry Sequencing Request Process"},
    {"SB.2.11", "Exit Sequencing Request Process"},
    {"SB.2.12", "Sequencing Request Process"},
    {"SB.2.13", "Jump Sequencing Request Process"},
    {"DB.1.1", "Delivery Request Process"},
    {"DB.2", "Content Delivery Environment Process"},
    {"DB.2.1", "Clear Suspended Activity Subprocess"},
    {"UP.1", "Limit Conditions Check Process"},
    {"UP.2", "Sequencing Rules Check Process"},
    {"UP.3", "Terminate Descendent Attempts Process"},
    {"UP.4", "End Attempt Process"},
    {"UP.5", "Check Activity Process"},
};
static_assert(std::size(kProcesses) == static_cast<std::size_t>(PlexoProcess::CheckActivity) + 1);

}  // namespace

std::size_t PlexoSequencingTrace::Begin(PlexoProcess process, PlexoIndex activity) {
  if (steps.size() == kMaxSteps) {
    ++dropped;
    return kMaxSteps;
  }
  steps.push_back({process, activity});
  return steps.size() - 1;
}

void PlexoSequencingTrace::End(std::size_t step, PlexoSequencingException exception, PlexoIndex rule) {
  if (step >= steps.size()) return;
  steps[step].exception = exception;
  steps[step].rule = rule;
}

void PlexoSequencingTrace::Clear() {
  steps.clear();
  dropped = 0;
}

std::string_view PlexoSequencingTrace::GetName(PlexoProcess process) {
  return kProcesses[static_cast<std::size_t>(process)].name;
}

std::string_view PlexoSequencingTrace::GetNumber(PlexoProcess process) {
  return kProcesses[static_cast<std::size_t>(process)].number;
}
