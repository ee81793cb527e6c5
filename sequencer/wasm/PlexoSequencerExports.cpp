// SPDX-License-Identifier: Apache-2.0
// The sequencer for a page: what sequencer.wasm exports, for sequencer.mjs to wrap. Courses and states are
// pointers, which the page closes. Structured answers are left in the course as 32-bit numbers ("none" is all
// ones), texts as UTF-8; both are valid until the next call with that course, and plexo_answer_size tells
// their size in bytes.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sequencer/PlexoDefinitionFormat.h"
#include "sequencer/PlexoSequencer.h"
#include "sequencer/PlexoStateFormat.h"
#include "sequencer/PlexoTrackingView.h"

#define PLEXO_EXPORT(name) extern "C" __attribute__((export_name(#name))) auto name

namespace {

struct PlexoOpenCourse {
  explicit PlexoOpenCourse(std::shared_ptr<const PlexoSequencingDefinition> definition)
      : sequencer(std::move(definition)) {}
  PlexoSequencer sequencer;
  PlexoRunTimeData data;
  std::vector<std::uint32_t> numbers;
  std::vector<std::uint8_t> bytes;
  std::uint32_t answerSize = 0;

  const void* AnswerNumbers() {
    answerSize = static_cast<std::uint32_t>(numbers.size() * sizeof(std::uint32_t));
    return numbers.data();
  }
  const void* AnswerBytes(std::vector<std::uint8_t> answer) {
    bytes = std::move(answer);
    answerSize = static_cast<std::uint32_t>(bytes.size());
    return bytes.data();
  }
  const void* AnswerText(std::string_view text) { return AnswerBytes({text.begin(), text.end()}); }
  void Add(const PlexoSequencingReason& reason) {
    numbers.insert(numbers.end(), {static_cast<std::uint32_t>(reason.kind), reason.activity, reason.rule});
  }
  void Add(const PlexoProspect& prospect) {
    numbers.insert(numbers.end(), {prospect.delivers, static_cast<std::uint32_t>(prospect.exception)});
    Add(prospect.reason);
  }
};

/// 0 unknown, 1 false, 2 true.
std::uint32_t GetDigit(PlexoTruth truth) {
  if (!truth.IsKnown()) return 0;
  return truth.IsTrue() ? 2 : 1;
}

/// The content as a whole until the page begins an objective.
PlexoObjectiveData& GetReported(PlexoOpenCourse& course) {
  return course.data.objectives.empty() ? course.data.whole : course.data.objectives.back();
}

}  // namespace

PLEXO_EXPORT(plexo_allocate)(std::uint32_t size)->void* { return std::malloc(size); }
PLEXO_EXPORT(plexo_release)(void* memory)->void { std::free(memory); }

PLEXO_EXPORT(plexo_open_course)(const std::uint8_t* bytes, std::uint32_t size)->PlexoOpenCourse* {
  auto read = PlexoDefinitionFormat::Read({bytes, size});
  return read.definition != nullptr ? new PlexoOpenCourse(std::move(read.definition)) : nullptr;
}
PLEXO_EXPORT(plexo_close_course)(const PlexoOpenCourse* course)->void { delete course; }
PLEXO_EXPORT(plexo_answer_size)(const PlexoOpenCourse& course)->std::uint32_t { return course.answerSize; }

PLEXO_EXPORT(plexo_count)(const PlexoOpenCourse& course)->std::uint32_t {
  return course.sequencer.GetDefinition().GetCount();
}
PLEXO_EXPORT(plexo_find)(const PlexoOpenCourse& course, const char* name, std::uint32_t size)->std::uint32_t {
  return course.sequencer.GetDefinition().Find({name, size});
}
PLEXO_EXPORT(plexo_identifier)(PlexoOpenCourse& course, std::uint32_t activity)->const void* {
  return course.AnswerText(course.sequencer.GetDefinition().GetRules(activity).identifier);
}
PLEXO_EXPORT(plexo_title)(PlexoOpenCourse& course, std::uint32_t activity)->const void* {
  return course.AnswerText(course.sequencer.GetDefinition().GetRules(activity).title);
}
/// Parent, whether it is a leaf, whether it is visible, hidden controls (the bits of PlexoHiddenControl).
PLEXO_EXPORT(plexo_activity)(PlexoOpenCourse& course, std::uint32_t activity)->const void* {
  const PlexoActivityNode& node = course.sequencer.GetDefinition().Get(activity);
  course.numbers = {node.parent, node.IsLeaf() ? 1U : 0U, node.rules.isVisible ? 1U : 0U,
                    node.rules.hiddenControls};
  return course.AnswerNumbers();
}

PLEXO_EXPORT(plexo_new_state)
(const PlexoOpenCourse& course, std::uint32_t seedLow, std::uint32_t seedHigh)->PlexoSequencingState* {
  return new PlexoSequencingState(course.sequencer.NewState(std::uint64_t{seedHigh} << 32 | seedLow));
}
PLEXO_EXPORT(plexo_copy_state)(const PlexoSequencingState& state)->PlexoSequencingState* {
  return new PlexoSequencingState(state);
}
PLEXO_EXPORT(plexo_close_state)(const PlexoSequencingState* state)->void { delete state; }
PLEXO_EXPORT(plexo_save)(PlexoOpenCourse& course, const PlexoSequencingState& state)->const void* {
  return course.AnswerBytes(PlexoStateFormat::Write(course.sequencer.GetDefinition(), state));
}
/// Null if the bytes aren't a state of this course.
PLEXO_EXPORT(plexo_restore)
(const PlexoOpenCourse& course, const std::uint8_t* bytes, std::uint32_t size)->PlexoSequencingState* {
  auto state = PlexoStateFormat::Read(course.sequencer.GetDefinition(), {bytes, size});
  return state.has_value() ? new PlexoSequencingState(std::move(*state)) : nullptr;
}

/// Delivered activity, whether the session has ended, exception, reason (kind, activity, rule), the
/// sequencing request processed, the activity that redirected it.
PLEXO_EXPORT(plexo_request)
(PlexoOpenCourse& course, PlexoSequencingState& state, std::uint32_t kind, std::uint32_t target)
    ->const void* {
  PlexoNavigationOutcome outcome;
  if (kind <= static_cast<std::uint32_t>(PlexoNavigation::SuspendAll))
    outcome = course.sequencer.Request(state, {static_cast<PlexoNavigation>(kind), target});
  course.numbers = {outcome.delivered, outcome.hasEnded ? 1U : 0U,
                    static_cast<std::uint32_t>(outcome.exception)};
  course.Add(outcome.reason);
  course.numbers.push_back(static_cast<std::uint32_t>(outcome.sequencing));
  course.numbers.push_back(outcome.redirectedBy);
  return course.AnswerNumbers();
}

/// The current activity, the redirect, then prospects (delivered activity, exception, reason): of Continue,
/// of Previous, of a choice of each activity.
PLEXO_EXPORT(plexo_look)(PlexoOpenCourse& course, const PlexoSequencingState& state)->const void* {
  const PlexoOutlook outlook = course.sequencer.Look(state);
  course.numbers = {outlook.current, static_cast<std::uint32_t>(outlook.redirect)};
  course.Add(outlook.onContinue);
  course.Add(outlook.onPrevious);
  for (const PlexoProspect& prospect : outlook.choices) course.Add(prospect);
  return course.AnswerNumbers();
}

/// A reason in words. They tell the values of the state given; the reasons of plexo_look hold after the end
/// of the current attempt, to which the values may differ.
PLEXO_EXPORT(plexo_reason)
(PlexoOpenCourse& course, const PlexoSequencingState& state, std::uint32_t kind, std::uint32_t activity,
 std::uint32_t rule)
    ->const void* {
  return course.AnswerText(PlexoReasonText::Write(course.sequencer.GetDefinition(), state,
                                                  {static_cast<PlexoReasonKind>(kind), activity, rule}));
}
PLEXO_EXPORT(plexo_exception)(PlexoOpenCourse& course, std::uint32_t exception)->const void* {
  return course.AnswerText(PlexoExceptionText::GetCode(static_cast<PlexoSequencingException>(exception)));
}

/// What plexo_record will report: begun with plexo_report, then set value by value; plexo_report_objective
/// turns to an objective of the content.
PLEXO_EXPORT(plexo_report)(PlexoOpenCourse& course)->void { course.data = {}; }
PLEXO_EXPORT(plexo_report_objective)(PlexoOpenCourse& course, const char* name, std::uint32_t size)->void {
  course.data.objectives.emplace_back().identifier.assign(name, size);
}
PLEXO_EXPORT(plexo_report_truth)
(PlexoOpenCourse& course, std::uint32_t isCompletion, std::uint32_t digit)->void {
  const PlexoTruth truth = digit == 0 ? PlexoTruth::Unknown() : PlexoTruth::Of(digit == 2);
  (isCompletion != 0 ? GetReported(course).completed : GetReported(course).satisfied) = truth;
}
/// Normalized measure, raw, least and greatest score, progress: 0 to 4. What isn't a number is unknown.
PLEXO_EXPORT(plexo_report_measure)(PlexoOpenCourse& course, std::uint32_t which, double number)->void {
  using Member = std::optional<PlexoMeasure> PlexoObjectiveData::*;
  constexpr Member kMembers[] = {&PlexoObjectiveData::measure, &PlexoObjectiveData::rawScore,
                                 &PlexoObjectiveData::minScore, &PlexoObjectiveData::maxScore,
                                 &PlexoObjectiveData::progress};
  if (which < std::size(kMembers)) GetReported(course).*kMembers[which] = PlexoMeasure(number);
}
PLEXO_EXPORT(plexo_report_suspended)(PlexoOpenCourse& course, std::uint32_t isSuspended)->void {
  course.data.isSuspended = isSuspended != 0;
}
PLEXO_EXPORT(plexo_record)(const PlexoOpenCourse& course, PlexoSequencingState& state)->std::uint32_t {
  return course.sequencer.Record(state, course.data) ? 1 : 0;
}
PLEXO_EXPORT(plexo_roll_up)(const PlexoOpenCourse& course, PlexoSequencingState& state)->void {
  course.sequencer.RollUp(state);
}

/// Satisfied and completed (0 unknown, 1 false, 2 true), attempt count, whether it is active, whether it is
/// suspended.
PLEXO_EXPORT(plexo_status)
(PlexoOpenCourse& course, const PlexoSequencingState& state, std::uint32_t activity, std::uint32_t objective)
    ->const void* {
  const PlexoTrackingView tracking(course.sequencer.GetDefinition(), state);
  const PlexoActivityState& at = state.activities[activity];
  course.numbers = {GetDigit(tracking.GetSatisfied(activity, objective)),
                    GetDigit(tracking.GetCompleted(activity, objective)), at.attemptCount,
                    at.isActive ? 1U : 0U, at.isSuspended ? 1U : 0U};
  return course.AnswerNumbers();
}
/// As plexo_report_measure counts them; not a number if unknown.
PLEXO_EXPORT(plexo_measure)
(const PlexoOpenCourse& course, const PlexoSequencingState& state, std::uint32_t activity,
 std::uint32_t objective, std::uint32_t which)
    ->double {
  const PlexoTrackingView tracking(course.sequencer.GetDefinition(), state);
  using Get = PlexoMeasure (PlexoTrackingView::*)(PlexoIndex, PlexoIndex) const;
  constexpr Get kGetters[] = {&PlexoTrackingView::GetMeasure, &PlexoTrackingView::GetRawScore,
                              &PlexoTrackingView::GetMinScore, &PlexoTrackingView::GetMaxScore,
                              &PlexoTrackingView::GetProgress};
  return which < std::size(kGetters) ? (tracking.*kGetters[which])(activity, objective).GetValue()
                                     : PlexoMeasure().GetValue();
}
/// The available children of a cluster in their order.
PLEXO_EXPORT(plexo_children)
(PlexoOpenCourse& course, const PlexoSequencingState& state, std::uint32_t cluster)->const void* {
  const auto children =
      PlexoTrackingView(course.sequencer.GetDefinition(), state).GetAvailableChildren(cluster);
  course.numbers.assign(children.begin(), children.end());
  return course.AnswerNumbers();
}
