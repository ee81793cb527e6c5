// SPDX-License-Identifier: Apache-2.0
// Prints what the native sequencer does in all cases and in random walks, one JSON object a line: a course,
// then what is asked of it, with the answer, a hash of the outlook, and the state after. sequencer.test.mjs
// repeats it.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "sequencer/CourseText.h"
#include "sequencer/PlexoDefinitionFormat.h"
#include "sequencer/PlexoStateFormat.h"
#include "sequencer/RandomCourse.h"
#include "sequencer/SessionCases.h"
#include "sequencer/SessionScript.h"

namespace {

std::string WriteHex(const std::vector<std::uint8_t>& bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += "0123456789abcdef"[byte >> 4];
    text += "0123456789abcdef"[byte & 15];
  }
  return text;
}

class NumberHash {
 public:
  void Add(std::uint32_t number) { hash = (hash ^ number) * 0x01000193U; }
  void Add(const PlexoProspect& prospect) {
    Add(prospect.delivers);
    Add(static_cast<std::uint32_t>(prospect.exception));
    Add(static_cast<std::uint32_t>(prospect.reason.kind));
    Add(prospect.reason.activity);
    Add(prospect.reason.rule);
  }
  std::uint32_t hash = 0x811c9dc5;
};

std::uint32_t HashOutlook(const PlexoOutlook& outlook) {
  NumberHash hash;
  hash.Add(outlook.current);
  hash.Add(static_cast<std::uint32_t>(outlook.redirect));
  hash.Add(outlook.onContinue);
  hash.Add(outlook.onPrevious);
  for (const PlexoProspect& prospect : outlook.choices) hash.Add(prospect);
  return hash.hash;
}

void PrintObjective(const PlexoObjectiveData& data) {
  std::printf("{\"identifier\":\"%s\"", data.identifier.c_str());
  const auto truth = [](const char* name, const std::optional<PlexoTruth>& value) {
    if (!value.has_value()) return;
    std::printf(",\"%s\":%s", name, !value->IsKnown() ? "null" : value->IsTrue() ? "true" : "false");
  };
  const auto measure = [](const char* name, const std::optional<PlexoMeasure>& value) {
    if (!value.has_value()) return;
    if (value->IsKnown())
      std::printf(",\"%s\":%.17g", name, value->GetValue());
    else
      std::printf(",\"%s\":null", name);
  };
  truth("satisfied", data.satisfied);
  truth("completed", data.completed);
  measure("measure", data.measure);
  measure("rawScore", data.rawScore);
  measure("minScore", data.minScore);
  measure("maxScore", data.maxScore);
  measure("progress", data.progress);
  std::printf("}");
}

void PrintAction(const SessionScript::Action& action) {
  const PlexoNavigationOutcome& outcome = action.outcome;
  std::printf("{\"do\":\"%s\"", action.name.c_str());
  if (action.name == "request") {
    std::printf(",\"kind\":%u,\"target\":%u,\"outcome\":[%u,%u,%u,%u,%u,%u,%u,%u]",
                static_cast<unsigned>(action.request.kind), action.request.target, outcome.delivered,
                outcome.hasEnded ? 1U : 0U, static_cast<unsigned>(outcome.exception),
                static_cast<unsigned>(outcome.reason.kind), outcome.reason.activity, outcome.reason.rule,
                static_cast<unsigned>(outcome.sequencing), outcome.redirectedBy);
  } else if (action.name == "record") {
    std::printf(",\"data\":{\"whole\":");
    PrintObjective(action.data.whole);
    std::printf(",\"objectives\":[");
    for (std::size_t at = 0; at < action.data.objectives.size(); ++at) {
      std::printf(at > 0 ? "," : "");
      PrintObjective(action.data.objectives[at]);
    }
    std::printf("]");
    if (action.data.isSuspended.has_value())
      std::printf(",\"isSuspended\":%s", *action.data.isSuspended ? "true" : "false");
    std::printf("}");
  }
}

void PrintCourse(const PlexoSequencer& sequencer, const PlexoSequencingState& first) {
  const auto& definition = sequencer.GetDefinition();
  std::printf("{\"do\":\"course\",\"definition\":\"%s\",\"state\":\"%s\"}\n",
              WriteHex(PlexoDefinitionFormat::Write(definition)).c_str(),
              WriteHex(PlexoStateFormat::Write(definition, first)).c_str());
}

void PrintStep(const PlexoSequencer& sequencer, const SessionScript::Action& action,
               const PlexoSequencingState& state) {
  PrintAction(action);
  std::printf(",\"look\":%u,\"state\":\"%s\"}\n", HashOutlook(sequencer.Look(state)),
              WriteHex(PlexoStateFormat::Write(sequencer.GetDefinition(), state)).c_str());
}

void WalkAtRandom(std::uint32_t seed) {
  RandomCourse random(seed);
  const PlexoSequencer sequencer(random.MakeDefinition());
  PlexoSequencingState state = sequencer.NewState(1);
  PrintCourse(sequencer, state);
  for (int step = 0; step < 40; ++step) {
    SessionScript::Action action;
    if (random.OneIn(3)) {
      action.name = "record";
      action.data = random.MakeData();
      sequencer.Record(state, action.data);
    } else {
      action.name = "request";
      action.request = random.MakeRequest(sequencer.GetDefinition(), state);
      action.outcome = sequencer.Request(state, action.request);
    }
    PrintStep(sequencer, action, state);
  }
}

}  // namespace

int main(int count, char** arguments) {
  for (const SessionCase& one : SessionCase::ReadAll()) {
    const auto course = CourseText::Parse(one.course);
    const PlexoSequencer sequencer(course);
    PrintCourse(sequencer, sequencer.NewState(1));
    SessionScript(course, [&sequencer](const auto& action, const auto& state) {
      PrintStep(sequencer, action, state);
    }).Run(one.session);
  }
  const int walks = count > 1 ? std::atoi(arguments[1]) : 200;
  for (int seed = 0; seed < walks; ++seed) WalkAtRandom(static_cast<std::uint32_t>(seed));
  return 0;
}
