// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoStateFormat.h"

#include <cstddef>

#include "sequencer/PlexoByteReader.h"
#include "sequencer/PlexoByteWriter.h"

// The form, in the terms of PlexoByteWriter: "PXS" and the version, the lower half of the definition's
// fingerprint, the current and the suspended activity (one more than the index, 0 for none); then the lists
// of activities, objectives and global objectives. A list holds only the entries that differ from a fresh
// one, each behind one more than the number of fresh ones before it, and ends with 0. A course with
// randomization has the random generator and the available children of its clusters at the end.
namespace {

constexpr PlexoMeasure PlexoObjectiveState::*kMeasures[] = {
    &PlexoObjectiveState::measure, &PlexoObjectiveState::rawScore, &PlexoObjectiveState::minScore,
    &PlexoObjectiveState::maxScore, &PlexoObjectiveState::progress};

std::uint8_t GetDigit(PlexoTruth truth) {
  if (!truth.IsKnown()) return 0;
  return truth.IsTrue() ? 2 : 1;
}

PlexoTruth GetTruth(unsigned digit) {
  return digit == 0 ? PlexoTruth::Unknown() : PlexoTruth::Of(digit == 2);
}

void Write(PlexoByteWriter& writer, const PlexoActivityState& activity) {
  writer.Byte(static_cast<std::uint8_t>(
      (activity.isProgressKnown ? 1 : 0) | (activity.isActive ? 2 : 0) | (activity.isSuspended ? 4 : 0) |
      (activity.areObjectivesStale ? 8 : 0) | (activity.isProgressStale ? 16 : 0)));
  writer.Whole(activity.attemptCount);
}

void Read(PlexoByteReader& reader, PlexoActivityState& activity) {
  const std::uint64_t bits = reader.Whole(31);
  activity.isProgressKnown = (bits & 1U) != 0;
  activity.isActive = (bits & 2U) != 0;
  activity.isSuspended = (bits & 4U) != 0;
  activity.areObjectivesStale = (bits & 8U) != 0;
  activity.isProgressStale = (bits & 16U) != 0;
  activity.attemptCount = static_cast<std::uint32_t>(reader.Whole(UINT32_MAX));
}

/// One number holds both statuses, as digits to the base of 3, and the bits of the measures that follow.
void Write(PlexoByteWriter& writer, const PlexoObjectiveState& objective) {
  unsigned fields = 0;
  for (std::size_t at = 0; at < std::size(kMeasures); ++at) {
    if ((objective.*kMeasures[at]).IsKnown()) fields |= 1U << at;
  }
  writer.Whole(GetDigit(objective.satisfied) + 3U * GetDigit(objective.completed) + 9U * fields);
  writer.Byte(objective.shared);
  for (const auto member : kMeasures) {
    if ((objective.*member).IsKnown()) writer.Real((objective.*member).GetValue());
  }
}

void Read(PlexoByteReader& reader, PlexoObjectiveState& objective) {
  const auto number = static_cast<unsigned>(reader.Whole(9 * 32 - 1));
  objective.satisfied = GetTruth(number % 3);
  objective.completed = GetTruth(number / 3 % 3);
  objective.shared = static_cast<std::uint8_t>(reader.Whole((1U << kPlexoSharedValues) - 1));
  for (std::size_t at = 0; at < std::size(kMeasures); ++at) {
    if ((number / 9 >> at & 1U) != 0) objective.*kMeasures[at] = PlexoMeasure(reader.Real());
  }
}

template <typename Entry>
void WriteSparse(PlexoByteWriter& writer, const std::vector<Entry>& entries) {
  std::size_t skipped = 0;
  for (const Entry& entry : entries) {
    if (entry == Entry()) {
      ++skipped;
      continue;
    }
    writer.Whole(skipped + 1);
    Write(writer, entry);
    skipped = 0;
  }
  writer.Whole(0);
}

template <typename Entry>
void ReadSparse(PlexoByteReader& reader, std::vector<Entry>& entries) {
  for (std::uint64_t at = 0;; ++at) {
    const std::uint64_t skipped = reader.Whole(entries.size() + 1);
    if (skipped == 0) return;
    at += skipped - 1;
    if (at >= entries.size()) return reader.Fail();
    Read(reader, entries[at]);
  }
}

void WriteAvailable(PlexoByteWriter& writer, const PlexoSequencingDefinition& definition,
                    const PlexoSequencingState& state) {
  for (PlexoIndex cluster = 0; cluster < definition.GetCount(); ++cluster) {
    const PlexoActivityNode& node = definition.Get(cluster);
    if (node.rules.randomization == PlexoRandomization()) continue;
    for (std::uint32_t slot = node.firstChildSlot; slot < node.firstChildSlot + node.childCount; ++slot) {
      const PlexoIndex child = state.availableChildren[slot];
      writer.Whole(child == kPlexoNone ? 0 : definition.Get(child).slot - node.firstChildSlot + 1);
    }
  }
}

/// Each child at most once, and none behind a missing one.
void ReadAvailable(PlexoByteReader& reader, const PlexoSequencingDefinition& definition,
                   PlexoSequencingState& state) {
  for (PlexoIndex cluster = 0; cluster < definition.GetCount(); ++cluster) {
    const PlexoActivityNode& node = definition.Get(cluster);
    if (node.rules.randomization == PlexoRandomization()) continue;
    const auto children = definition.GetChildren(cluster);
    for (const PlexoIndex child : children) state.slots[child] = kPlexoNone;
    bool isEnd = false;
    for (std::uint32_t slot = node.firstChildSlot; slot < node.firstChildSlot + node.childCount; ++slot) {
      const std::uint64_t number = reader.Whole(node.childCount);
      if (reader.HasFailed()) return;
      if (number == 0) {
        isEnd = true;
        state.availableChildren[slot] = kPlexoNone;
        continue;
      }
      const PlexoIndex child = children[number - 1];
      if (isEnd || state.slots[child] != kPlexoNone) return reader.Fail();
      state.availableChildren[slot] = child;
      state.slots[child] = slot;
    }
  }
}

PlexoIndex ReadActivity(PlexoByteReader& reader, const PlexoSequencingDefinition& definition) {
  return static_cast<PlexoIndex>(reader.Whole(definition.GetCount()) - 1);
}

}  // namespace

std::vector<std::uint8_t> PlexoStateFormat::Write(const PlexoSequencingDefinition& definition,
                                                  const PlexoSequencingState& state) {
  PlexoByteWriter writer;
  for (const char letter : {'P', 'X', 'S'}) writer.Byte(static_cast<std::uint8_t>(letter));
  writer.Byte(kVersion);
  for (unsigned shift = 0; shift < 32; shift += 8)
    writer.Byte(static_cast<std::uint8_t>(definition.GetFingerprint() >> shift));
  writer.Whole(static_cast<PlexoIndex>(state.current + 1));
  writer.Whole(static_cast<PlexoIndex>(state.suspended + 1));
  WriteSparse(writer, state.activities);
  WriteSparse(writer, state.objectives);
  WriteSparse(writer, state.globals);
  if (definition.HasRandomization()) {
    writer.Fixed(state.random);
    WriteAvailable(writer, definition, state);
  }
  return writer.Take();
}

std::optional<PlexoSequencingState> PlexoStateFormat::Read(const PlexoSequencingDefinition& definition,
                                                           std::span<const std::uint8_t> bytes) {
  PlexoByteReader reader(bytes);
  for (const char letter : {'P', 'X', 'S'}) {
    if (reader.Byte() != static_cast<std::uint8_t>(letter)) reader.Fail();
  }
  if (reader.Byte() != kVersion) reader.Fail();
  for (unsigned shift = 0; shift < 32; shift += 8) {
    if (reader.Byte() != static_cast<std::uint8_t>(definition.GetFingerprint() >> shift)) reader.Fail();
  }
  if (reader.HasFailed()) return std::nullopt;
  PlexoSequencingState state(definition);
  state.current = ReadActivity(reader, definition);
  state.suspended = ReadActivity(reader, definition);
  ReadSparse(reader, state.activities);
  ReadSparse(reader, state.objectives);
  ReadSparse(reader, state.globals);
  if (definition.HasRandomization()) {
    state.random = reader.Fixed();
    ReadAvailable(reader, definition, state);
  }
  if (reader.HasFailed() || !reader.IsAtEnd()) return std::nullopt;
  return state;
}
