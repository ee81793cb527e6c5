// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzDataModel.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace {

/// Watchers that answer each other come to rest in a few rounds, or never.
constexpr int kMostRounds = 1000;

/// Runs at the end of a scope, however that is left.
template <typename Act>
class AtExit {
 public:
  explicit AtExit(Act atExit) : act(std::move(atExit)) {}
  ~AtExit() { act(); }
  AtExit(const AtExit&) = delete;
  AtExit& operator=(const AtExit&) = delete;

 private:
  Act act;
};

}  // namespace

TzDataModel::TzDataModel(TzPropertySheet propertySheet) : sheet(std::move(propertySheet)) {
  for (const TzPropertyCell& definition : sheet.cells) {
    indices[definition.name] = cells.size();
    cells.push_back(
        {.entered = definition.initial, .published = {}, .publishedLinked = true, .watchers = {}});
  }
  PublishChanges();
}

std::size_t TzDataModel::IndexOf(const TzString& cell) const {
  const auto found = indices.find(cell);
  if (found != indices.end()) return found->second;
  throw std::logic_error("sheet '" + sheet.name.GetUTF8String() + "': there is no cell '" +
                         cell.GetUTF8String() + "'");
}

// Follows relations by recursion, which ends since a cell refers only to those above it.
TzVariant TzDataModel::Compute(const TzPropertyCell& definition, const Cell& cell) const {
  if (definition.derivation) {
    TzVariant source = GetCellValue(definition.derivation->source);
    const auto& equals = definition.derivation->equals;
    return equals ? TzVariant(source == *equals) : source;
  }
  if (!definition.members.empty()) {
    TzVariant::Dictionary dictionary;
    for (const TzString& member : definition.members) dictionary[member] = GetCellValue(member);
    return dictionary;
  }
  return IsLinked(definition) ? cell.entered : definition.unlink->fallback;
}

bool TzDataModel::IsLinked(const TzPropertyCell& definition) const {
  return !definition.unlink || GetCellValue(definition.unlink->switchCell).GetBool();
}

TzVariant TzDataModel::GetCellValue(const TzString& cell) const {
  const std::size_t index = IndexOf(cell);
  return Compute(sheet.cells[index], cells[index]);
}

bool TzDataModel::IsCellLinked(const TzString& cell) const { return IsLinked(sheet.cells[IndexOf(cell)]); }

void TzDataModel::SetCellValue(const TzString& cell, const TzVariant& value) {
  const std::size_t index = IndexOf(cell);
  const TzVariant::Kind kind = sheet.cells[index].initial.GetKind();
  const std::string subject = "cell '" + cell.GetUTF8String() + "'";
  if (sheet.cells[index].IsComputed()) throw std::logic_error(subject + ": it follows from others");
  if (value.GetKind() == kind) {
    cells[index].entered = value;
  } else if (value.IsNumber() && kind == TzVariant::Kind::Integer) {
    cells[index].entered = value.GetInteger();
  } else if (value.IsNumber() && kind == TzVariant::Kind::Double) {
    cells[index].entered = value.GetDouble();
  } else {
    throw std::logic_error(subject + ": it takes " + GetKindWords(kind) + ", not " +
                           GetKindWords(value.GetKind()));
  }
}

void TzDataModel::MonitorCellValue(const TzString& cell, Watcher watcher) {
  cells[IndexOf(cell)].watchers.push_back(std::move(watcher));
}

std::vector<TzDataModel::Change> TzDataModel::PublishChanges() {
  std::vector<Change> changed;
  for (std::size_t index = 0; index < cells.size(); ++index) {
    Cell& cell = cells[index];
    TzVariant value = Compute(sheet.cells[index], cell);
    const bool isLinked = IsLinked(sheet.cells[index]);
    const bool readsOtherwise = !(cell.published == value);
    if (!readsOtherwise && cell.publishedLinked == isLinked) continue;
    cell.published = std::move(value);
    cell.publishedLinked = isLinked;
    changed.push_back({index, readsOtherwise});
  }
  return changed;
}

void TzDataModel::Update() {
  updateAsked = true;
  if (isUpdating) return;
  isUpdating = true;
  const AtExit ended([this] { isUpdating = false; });
  for (int round = 0; updateAsked; ++round) {
    updateAsked = false;
    if (round == kMostRounds) {
      throw std::logic_error("sheet '" + sheet.name.GetUTF8String() + "': its watchers never come to rest");
    }
    RunRound(PublishChanges());
  }
}

void TzDataModel::RunRound(const std::vector<Change>& changed) {
  if (changed.empty()) return;
  if (refreshViews) {
    std::vector<TzString> names;
    names.reserve(changed.size());
    for (const Change& change : changed) names.push_back(sheet.cells[change.cell].name);
    const ViewRefresh refresh = refreshViews;
    refresh(names);
  }
  if (monitorsBlocked && monitorsBlocked()) return;
  for (const auto& [index, readsOtherwise] : changed) {
    if (!readsOtherwise) continue;
    const std::vector<Watcher> watchers = cells[index].watchers;
    const TzVariant value = cells[index].published;
    for (const Watcher& watcher : watchers) watcher(value);
  }
}
