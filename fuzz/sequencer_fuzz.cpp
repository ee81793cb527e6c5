// SPDX-License-Identifier: Apache-2.0
// A course and what learners do in it: two bytes of length and a definition, then a session, then a stored
// state that may be damaged. Whatever they are, a request ends within bounds and leaves a state that can be
// stored.
#include <algorithm>

#include "fuzz/FuzzFolder.h"
#include "sequencer/PlexoDefinitionFormat.h"
#include "sequencer/PlexoSequencer.h"
#include "sequencer/PlexoStateFormat.h"

namespace {

constexpr std::size_t kMaxSteps = 200;

PlexoTruth GetTruth(unsigned digit) {
  return digit == 0 ? PlexoTruth::Unknown() : PlexoTruth::Of(digit == 1);
}

PlexoRunTimeData MakeData(std::uint8_t how, std::uint8_t value) {
  PlexoRunTimeData data;
  if ((how & 1U) != 0) data.whole.satisfied = GetTruth(value % 3U);
  if ((how & 2U) != 0) data.whole.completed = GetTruth(value / 3U % 3U);
  if ((how & 4U) != 0) data.whole.measure = PlexoMeasure((value - 128) / 64.0);
  if ((how & 8U) != 0) data.whole.progress = PlexoMeasure(value / 255.0);
  if ((how & 16U) != 0) data.isSuspended = value % 2U == 0;
  return data;
}

void CheckAnswer(const PlexoSequencer& sequencer, const PlexoSequencingState& state,
                 const PlexoNavigationOutcome& outcome, const PlexoSequencingTrace& trace) {
  const PlexoSequencingDefinition& definition = sequencer.GetDefinition();
  if (outcome.delivered != kPlexoNone) {
    FuzzRequire(definition.Get(outcome.delivered).IsLeaf(), "content is a leaf");
    FuzzRequire(state.current == outcome.delivered && state.activities[outcome.delivered].isActive,
                "what is delivered is current and active");
  }
  FuzzRequire(!outcome.hasEnded || !state.IsSessionOpen(), "a session that ended isn't open");
  FuzzRequire(trace.GetDropped() == 0, "a request on a small course takes few steps");
  const auto stored = PlexoStateFormat::Read(definition, PlexoStateFormat::Write(definition, state));
  FuzzRequire(stored.has_value() && *stored == state, "a state survives being stored");
}

void Play(const PlexoSequencer& sequencer, PlexoSequencingState state,
          std::span<const std::uint8_t> session) {
  const PlexoIndex count = sequencer.GetDefinition().GetCount();
  for (std::size_t at = 0; at + 2 < std::min(session.size(), 3 * kMaxSteps); at += 3) {
    const std::uint8_t what = session[at];
    if (what >= 128) {
      sequencer.Record(state, MakeData(what, session[at + 1]));
      continue;
    }
    const auto target = static_cast<PlexoIndex>(session[at + 1] | session[at + 2] << 8) % (count + 1);
    const auto kind = static_cast<PlexoNavigation>(what % 13);
    PlexoSequencingTrace trace;
    const PlexoNavigationOutcome outcome = sequencer.Request(state, {kind, target}, &trace);
    CheckAnswer(sequencer, state, outcome, trace);
    static_cast<void>(sequencer.Look(state));
    if (outcome.reason.kind != PlexoReasonKind::None)
      FuzzRequire(!PlexoReasonText::Write(sequencer.GetDefinition(), state, outcome.reason).empty(),
                  "reasons have words");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::span<const std::uint8_t> input(data + 2, size - 2);
  const std::size_t length = std::min<std::size_t>(data[0] | data[1] << 8, input.size());
  const auto read = PlexoDefinitionFormat::Read(input.first(length));
  if (read.definition == nullptr || read.definition->GetCount() > 500) return 0;
  const auto again = PlexoDefinitionFormat::Read(PlexoDefinitionFormat::Write(*read.definition));
  FuzzRequire(
      again.definition != nullptr && again.definition->GetFingerprint() == read.definition->GetFingerprint(),
      "a definition survives being stored");
  const PlexoSequencer sequencer(read.definition);
  const auto session = input.subspan(length);
  Play(sequencer, sequencer.NewState(length), session);
  if (auto stored = PlexoStateFormat::Read(*read.definition, session); stored.has_value())
    Play(sequencer, *stored, session);
  return 0;
}
