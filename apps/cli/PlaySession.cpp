// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PlaySession.h"

#include <cmath>
#include <filesystem>
#include <utility>

#include "apps/cli/LearnerFile.h"
#include "apps/cli/PlayScript.h"
#include "apps/cli/PlayViews.h"
#include "apps/cli/PlayWords.h"
#include "sequencer/PlexoStateFormat.h"
#include "sequencer/PlexoTrackingView.h"

namespace {

using Json = PlayWords::Json;

PlayAnswer Compare(const std::string& expected, const std::string& found, bool holds) {
  PlayAnswer answer;
  answer.holds = holds;
  answer.fields = {{"holds", holds}, {"expected", expected}, {"found", found}};
  if (!holds) answer.text.push_back("expected: " + expected + "; found: " + found);
  return answer;
}

}  // namespace

PlaySession::PlaySession(const PlexoSequencingReading& course, std::uint64_t seed, std::string fileFolder)
    : reading(course),
      sequencer(course.definition),
      state(sequencer.NewState(seed)),
      folder(std::move(fileFolder)) {}

PlayAnswer PlaySession::Run(const PlayLine& line) {
  const PlayViews views(sequencer, state);
  switch (line.kind) {
    case PlayLine::Kind::Request:
      return Ask(line.request);
    case PlayLine::Kind::Report:
      return Report(line.data);
    case PlayLine::Kind::ExpectDelivery:
      return ExpectDelivery(line);
    case PlayLine::Kind::ExpectStatus:
      return ExpectStatus(line);
    case PlayLine::Kind::ExpectMeasure:
      return ExpectMeasure(line);
    case PlayLine::Kind::ExpectProspect:
      return ExpectProspect(line);
    case PlayLine::Kind::Contents:
      return views.ShowContents();
    case PlayLine::Kind::Tree:
      return views.ShowTree();
    case PlayLine::Kind::Globals:
      return views.ShowGlobals();
    case PlayLine::Kind::Why:
      return views.Explain(line.request);
    case PlayLine::Kind::Save:
      return Save(line.file);
    case PlayLine::Kind::Load:
      return Load(line.file);
    case PlayLine::Kind::Help:
      return {PlayScript::GetHelp(), {{"help", PlayScript::GetHelp()}}, true, {}};
    case PlayLine::Kind::Empty:
    case PlayLine::Kind::Quit:
      break;
  }
  return {};
}

PlayAnswer PlaySession::Ask(const PlexoNavigationRequest& request) {
  const PlexoSequencingDefinition& definition = sequencer.GetDefinition();
  last = sequencer.Request(state, request);
  const std::string reason = PlayWords::WriteReason(definition, state, last->reason, last->exception);
  PlayAnswer answer;
  if (last->redirectedBy != kPlexoNone) {
    answer.text.push_back("a postcondition rule of " + PlayWords::Name(definition, last->redirectedBy) +
                          " asks for " + std::string(PlayWords::Write(last->sequencing)));
  }
  if (last->delivered != kPlexoNone) {
    answer.text.push_back("delivers " + PlayWords::Name(definition, last->delivered));
  } else {
    answer.text.push_back((last->hasEnded ? "the session ends" : "delivers nothing") +
                          (reason.empty() ? reason : ": " + reason));
  }
  answer.fields = {{"delivered", PlayWords::Identify(definition, last->delivered)},
                   {"ended", last->hasEnded},
                   {"code", PlexoExceptionText::GetCode(last->exception)},
                   {"reason", PlexoReasonText::Write(definition, state, last->reason)},
                   {"by", PlayWords::Identify(definition, last->reason.activity)},
                   {"processed", PlayWords::Write(last->sequencing)},
                   {"redirectedBy", PlayWords::Identify(definition, last->redirectedBy)}};
  return answer;
}

PlayAnswer PlaySession::Report(const PlexoRunTimeData& data) {
  const std::string obstacle = FindObstacle(data);
  const bool isRecorded = obstacle.empty() && sequencer.Record(state, data);
  PlayAnswer answer;
  if (!obstacle.empty()) answer.text.push_back("not recorded: " + obstacle);
  answer.fields = {{"recorded", isRecorded}, {"reason", obstacle}};
  return answer;
}

std::string PlaySession::FindObstacle(const PlexoRunTimeData& data) const {
  const PlexoSequencingDefinition& definition = sequencer.GetDefinition();
  if (state.current == kPlexoNone || !state.activities[state.current].isActive)
    return "no content is running";
  const std::string name = PlayWords::Name(definition, state.current);
  if (reading.sources[state.current].kind == PlexoContentKind::Asset)
    return name + " is an asset, which reports nothing";
  if (reading.sources[state.current].kind == PlexoContentKind::None) return name + " has no content";
  if (!data.isSuspended.has_value() && !definition.GetRules(state.current).delivery.tracked)
    return name + " isn't tracked";
  for (const PlexoObjectiveData& objective : data.objectives) {
    if (definition.FindObjective(state.current, objective.identifier) == kPlexoNone)
      return name + " declares no objective '" + objective.identifier + "'";
  }
  return {};
}

PlayAnswer PlaySession::ExpectDelivery(const PlayLine& line) const {
  const PlexoSequencingDefinition& definition = sequencer.GetDefinition();
  const auto name = [&definition](PlexoIndex activity) { return definition.GetRules(activity).identifier; };
  std::string expected = "none";
  if (line.delivery == PlayLine::Delivery::End) expected = "end";
  if (line.delivery == PlayLine::Delivery::Content) expected = name(line.activity);
  if (!last.has_value()) return Compare(expected, "nothing was requested yet", false);
  std::string found = last->hasEnded ? "end" : "none";
  if (last->delivered != kPlexoNone) found = name(last->delivered);
  const bool holds = line.delivery == PlayLine::Delivery::Content
                         ? last->delivered == line.activity
                         : last->delivered == kPlexoNone && found == expected;
  const std::string reason = PlayWords::WriteReason(definition, state, last->reason, last->exception);
  if (!holds && !reason.empty()) found += ": " + reason;
  return Compare(expected, found, holds);
}

PlayAnswer PlaySession::ExpectStatus(const PlayLine& line) const {
  const PlexoTrackingView tracking(sequencer.GetDefinition(), state);
  PlexoTruth found;
  switch (line.status) {
    case PlayLine::Status::Completed:
      found = tracking.GetCompleted(line.activity);
      break;
    case PlayLine::Status::Satisfied:
      found = tracking.GetSatisfied(line.activity);
      break;
    case PlayLine::Status::Attempted:
      found = PlexoTruth::Of(tracking.IsAttempted(line.activity));
      break;
  }
  return Compare(PlayWords::Write(line.truth), PlayWords::Write(found), found == line.truth);
}

PlayAnswer PlaySession::ExpectMeasure(const PlayLine& line) const {
  // What a script writes as 0.6667 is two thirds.
  constexpr double kTolerance = 0.00005;
  const PlexoMeasure found = PlexoTrackingView(sequencer.GetDefinition(), state).GetMeasure(line.activity);
  const bool holds = found.IsKnown() && line.measure.IsKnown()
                         ? std::fabs(found.GetValue() - line.measure.GetValue()) <= kTolerance
                         : found.IsKnown() == line.measure.IsKnown();
  return Compare(PlayWords::Write(line.measure), PlayWords::Write(found), holds);
}

PlayAnswer PlaySession::ExpectProspect(const PlayLine& line) const {
  const PlexoOutlook outlook = sequencer.Look(state);
  const PlexoProspect& prospect = PlayViews::Get(outlook, line.request);
  const bool isOpen = PlayWords::IsOpen(prospect);
  const std::string reason =
      PlayWords::WriteReason(sequencer.GetDefinition(), outlook.seen, prospect.reason, prospect.exception);
  std::string found = isOpen ? "can" : "cannot";
  if (isOpen != line.isOpen && !reason.empty()) found += ": " + reason;
  return Compare(line.isOpen ? "can" : "cannot", found, isOpen == line.isOpen);
}

std::string PlaySession::Resolve(const std::string& file) const {
  return folder.empty() ? file : (std::filesystem::path(folder) / file).string();
}

PlayAnswer PlaySession::Save(const std::string& file) const {
  const std::string path = Resolve(file);
  PlayAnswer answer;
  answer.fields = {{"file", path}};
  answer.failure = LearnerFile::Write(path, PlexoStateFormat::Write(sequencer.GetDefinition(), state));
  return answer;
}

PlayAnswer PlaySession::Load(const std::string& file) {
  const std::string path = Resolve(file);
  PlayAnswer answer;
  answer.fields = {{"file", path}};
  std::vector<std::uint8_t> bytes;
  answer.failure = LearnerFile::Read(path, bytes);
  if (answer.failure.has_value()) return answer;
  auto loaded = PlexoStateFormat::Read(sequencer.GetDefinition(), bytes);
  if (loaded.has_value()) {
    state = std::move(*loaded);
    last.reset();
  } else {
    answer.failure =
        CommandFailure{ExitStatus::Refused, path, "is damaged, or was saved in another course", {}};
  }
  return answer;
}
