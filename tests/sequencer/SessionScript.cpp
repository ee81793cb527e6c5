// SPDX-License-Identifier: Apache-2.0
#include "sequencer/SessionScript.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "sequencer/PlexoStateFormat.h"
#include "sequencer/PlexoTrackingView.h"

namespace {

const std::map<std::string, PlexoNavigation>& GetRequests() {
  static const std::map<std::string, PlexoNavigation> kRequests = {
      {"start", PlexoNavigation::Start},
      {"resumeall", PlexoNavigation::ResumeAll},
      {"continue", PlexoNavigation::Continue},
      {"previous", PlexoNavigation::Previous},
      {"forward", PlexoNavigation::Forward},
      {"backward", PlexoNavigation::Backward},
      {"choice", PlexoNavigation::Choice},
      {"jump", PlexoNavigation::Jump},
      {"exit", PlexoNavigation::Exit},
      {"exitall", PlexoNavigation::ExitAll},
      {"abandon", PlexoNavigation::Abandon},
      {"abandonall", PlexoNavigation::AbandonAll},
      {"suspendall", PlexoNavigation::SuspendAll}};
  return kRequests;
}

PlexoTruth ReadTruth(const std::string& word) {
  if (word == "unknown") return PlexoTruth::Unknown();
  return PlexoTruth::Of(word == "true" || word == "passed" || word == "completed");
}

PlexoMeasure ReadMeasure(const std::string& word) {
  return word == "unknown" ? PlexoMeasure() : PlexoMeasure(std::stod(word));
}

std::string Show(PlexoTruth truth) {
  return !truth.IsKnown() ? "unknown" : truth.IsTrue() ? "true" : "false";
}
std::string Show(bool flag) { return flag ? "true" : "false"; }
std::string Show(PlexoMeasure measure) {
  std::ostringstream text;
  if (!measure.IsKnown()) return "unknown";
  text << measure.GetValue();
  return text.str();
}

/// What an outlook should say of a request: what the request itself does, with the redirect out of the way.
PlexoProspect AskForReal(const PlexoSequencer& sequencer, PlexoSequencingState state,
                         const PlexoNavigationRequest& request) {
  const PlexoNavigationOutcome outcome = sequencer.Request(state, request);
  return {outcome.exception, outcome.reason, outcome.delivered};
}

}  // namespace

SessionScript::SessionScript(std::shared_ptr<const PlexoSequencingDefinition> course, Witness toldOfActions)
    : sequencer(std::move(course)), witness(std::move(toldOfActions)), state(sequencer.NewState(1)) {}

void SessionScript::Run(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    SCOPED_TRACE(line);
    RunLine(line);
    CheckOutlook(sequencer, state);
    const auto& definition = sequencer.GetDefinition();
    const auto stored = PlexoStateFormat::Read(definition, PlexoStateFormat::Write(definition, state));
    ASSERT_TRUE(stored.has_value());
    EXPECT_EQ(*stored, state);
    EXPECT_EQ(stored->GetHash(), state.GetHash());
  }
}

void SessionScript::RunLine(const std::string& line) {
  std::istringstream words(line);
  std::string word;
  words >> word;
  if (const auto request = GetRequests().find(word); request != GetRequests().end())
    Ask(request->second, words);
  else if (word == "=")
    Expect(words);
  else if (word == "can" || word == "cannot")
    ExpectProspect(word == "can", words);
  else if (word == "redirect") {
    static const std::map<std::string, PlexoSequencingRequest> kRedirects = {
        {"none", PlexoSequencingRequest::None},
        {"retry", PlexoSequencingRequest::Retry},
        {"continue", PlexoSequencingRequest::Continue},
        {"exit", PlexoSequencingRequest::Exit}};
    words >> word;
    EXPECT_EQ(sequencer.Look(state).redirect, kRedirects.at(word));
  } else if (word == "rollup") {
    sequencer.RollUp(state);
    if (witness) witness({"rollup", {}, {}, {}}, state);
  } else {
    EXPECT_TRUE(Report(word, words)) << "unknown line";
  }
}

void SessionScript::Ask(PlexoNavigation kind, std::istringstream& words) {
  PlexoNavigationRequest request{kind};
  std::string word;
  if (kind == PlexoNavigation::Choice || kind == PlexoNavigation::Jump) {
    words >> word;
    request.target = sequencer.GetDefinition().Find(word);
  }
  const PlexoNavigationOutcome outcome = sequencer.Request(state, request);
  if (witness) witness({"request", request, {}, outcome}, state);
  std::string found = "none";
  if (outcome.hasEnded) {
    found = "end";
  } else if (outcome.delivered != kPlexoNone) {
    found = GetName(outcome.delivered);
  } else if (outcome.exception != PlexoSequencingException::None) {
    found = PlexoExceptionText::GetCode(outcome.exception);
  }
  words >> word >> word;
  EXPECT_EQ(found, word);
  CheckReason(outcome.reason, words);
}

bool SessionScript::Report(const std::string& word, std::istringstream& words) {
  PlexoRunTimeData data;
  std::string value;
  words >> value;
  if (word == "status") {
    data.whole.completed = ReadTruth(value);
  } else if (word == "success") {
    data.whole.satisfied = ReadTruth(value);
  } else if (word == "score") {
    data.whole.measure = ReadMeasure(value);
  } else if (word == "progress") {
    data.whole.progress = ReadMeasure(value);
  } else if (word == "raw") {
    data.whole.rawScore = ReadMeasure(value);
  } else if (word == "min") {
    data.whole.minScore = ReadMeasure(value);
  } else if (word == "max") {
    data.whole.maxScore = ReadMeasure(value);
  } else if (word == "suspend") {
    data.isSuspended = value != "no";
  } else if (word == "objective") {
    PlexoObjectiveData& objective = data.objectives.emplace_back();
    objective.identifier = value;
    std::string measure;
    words >> value;
    if (value != "-") objective.satisfied = ReadTruth(value);
    if (words >> measure) objective.measure = ReadMeasure(measure);
  } else {
    return false;
  }
  sequencer.Record(state, data);
  if (witness) witness({"record", {}, data, {}}, state);
  return true;
}

void SessionScript::Expect(std::istringstream& words) {
  const PlexoSequencingDefinition& definition = sequencer.GetDefinition();
  const PlexoTrackingView tracking(definition, state);
  std::string subject;
  std::string what;
  std::string expected;
  words >> subject >> what;
  std::getline(words >> std::ws, expected);
  if (subject == "current") {
    EXPECT_EQ(GetName(state.current), what);
  } else if (subject == "global") {
    const PlexoObjectiveState& global = state.globals.at(definition.FindGlobal(what));
    std::istringstream rest(expected);
    rest >> what >> expected;
    EXPECT_EQ(what == "satisfied"   ? Show(global.satisfied)
              : what == "completed" ? Show(global.completed)
              : what == "raw"       ? Show(global.rawScore)
              : what == "progress"  ? Show(global.progress)
                                    : Show(global.measure),
              expected);
  } else if (what == "order") {
    std::string order;
    for (const PlexoIndex child : tracking.GetAvailableChildren(Find(subject)))
      order += (order.empty() ? "" : " ") + GetName(child);
    EXPECT_EQ(order, expected);
  } else {
    const std::size_t dot = subject.find('.');
    const PlexoIndex at = Find(subject.substr(0, dot));
    const PlexoIndex objective =
        dot == std::string::npos ? 0 : definition.FindObjective(at, subject.substr(dot + 1));
    const std::map<std::string, std::string> known = {
        {"satisfied", Show(tracking.GetSatisfied(at, objective))},
        {"measure", Show(tracking.GetMeasure(at, objective))},
        {"completed", Show(tracking.GetCompleted(at, objective))},
        {"progress", Show(tracking.GetProgress(at, objective))},
        {"raw", Show(tracking.GetRawScore(at, objective))},
        {"min", Show(tracking.GetMinScore(at, objective))},
        {"max", Show(tracking.GetMaxScore(at, objective))},
        {"attempts", std::to_string(state.activities[at].attemptCount)},
        {"active", Show(state.activities[at].isActive)},
        {"suspended", Show(state.activities[at].isSuspended)}};
    EXPECT_EQ(known.at(what), expected);
  }
}

void SessionScript::ExpectProspect(bool isOpen, std::istringstream& words) {
  const PlexoOutlook outlook = sequencer.Look(state);
  std::string word;
  words >> word;
  const PlexoProspect& prospect = word == "continue"   ? outlook.onContinue
                                  : word == "previous" ? outlook.onPrevious
                                                       : outlook.choices.at(Find(word));
  EXPECT_EQ(prospect.IsOpen(), isOpen);
  if (words >> word) {
    EXPECT_EQ(PlexoExceptionText::GetCode(prospect.exception), word);
  }
  CheckReason(prospect.reason, words);
}

/// "by ID", or nothing. A reason that isn't spelled out isn't looked at.
void SessionScript::CheckReason(const PlexoSequencingReason& reason, std::istringstream& words) const {
  std::string word;
  if (!(words >> word) || word != "by") return;
  words >> word;
  EXPECT_EQ(GetName(reason.activity), word);
  if (std::getline(words >> std::ws, word) && !word.empty()) {
    EXPECT_EQ(PlexoReasonText::Write(sequencer.GetDefinition(), state, reason), word);
  }
}

void SessionScript::CheckOutlook(const PlexoSequencer& sequencer, const PlexoSequencingState& state) {
  const PlexoOutlook outlook = sequencer.Look(state);
  if (outlook.redirect != PlexoSequencingRequest::None) return;
  const auto check = [&](const PlexoProspect& prospect, const PlexoNavigationRequest& request) {
    const PlexoProspect real = AskForReal(sequencer, state, request);
    const auto id =
        request.target != kPlexoNone ? sequencer.GetDefinition().GetRules(request.target).identifier : "";
    EXPECT_EQ(prospect.delivers, real.delivers) << "outlook of " << static_cast<int>(request.kind) << id;
    EXPECT_EQ(PlexoExceptionText::GetCode(prospect.exception), PlexoExceptionText::GetCode(real.exception))
        << id;
    EXPECT_EQ(prospect.reason, real.reason)
        << id << static_cast<int>(prospect.reason.kind) << ", " << static_cast<int>(real.reason.kind);
  };
  check(outlook.onContinue, {PlexoNavigation::Continue});
  check(outlook.onPrevious, {PlexoNavigation::Previous});
  for (PlexoIndex target = 0; target < outlook.choices.size(); ++target)
    check(outlook.choices[target], {PlexoNavigation::Choice, target});
}

std::string SessionScript::GetName(PlexoIndex activity) const {
  return activity != kPlexoNone ? sequencer.GetDefinition().GetRules(activity).identifier : "nobody";
}

PlexoIndex SessionScript::Find(const std::string& identifier) const {
  const PlexoIndex found = sequencer.GetDefinition().Find(identifier);
  if (found == kPlexoNone) ADD_FAILURE() << "no activity " << identifier;
  return found == kPlexoNone ? 0 : found;
}
