// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CourseSources.h"

#include <algorithm>
#include <utility>

#include "apps/author/PlacedFiles.h"
#include "apps/course/SafeFileName.h"
#include "host/files/TzFileUtil.h"
#include "host/kelpui/UI_DrawContext.h"

using kelpui::controls::UI_Color;
using kelpui::controls::UI_DrawContext;

namespace {

constexpr CoursePlace kPlaces[] = {CoursePlace::PreTest, CoursePlace::Content, CoursePlace::PostTest};

class DrawnText : public UI_DrawContext {
 public:
  void DrawLine(const TzString& text, const TzRect& /*area*/, UI_Color /*color*/) override {
    content += text;
  }

  TzString content;
};

/// What the tree draws in the row.
TzString ReadDrawn(const CourseScreen::Tree& tree, CourseScreen::Row& row) {
  DrawnText drawn;
  tree.DrawRow(row, drawn);
  return drawn.content;
}

CourseSources::RowPtr GetLastRow(const CourseScreen::Tree& tree) {
  return tree.GetRow(static_cast<std::int64_t>(tree.CountRows()) - 1);
}

/// A module has a header and a row of names for each place, in this order; the pretest may be missing.
std::optional<std::size_t> GetHeaderIndex(const CourseScreen::Row& module, CoursePlace place) {
  constexpr std::size_t kRowsWithoutPreTest = 4;
  constexpr std::size_t kRowsOfPlace = 2;
  const std::size_t first = module.CountChildRows() > kRowsWithoutPreTest ? 0 : 1;
  const auto number = static_cast<std::size_t>(place);
  if (number < first) return std::nullopt;
  return (number - first) * kRowsOfPlace;
}

/// Whether the row has the control among those in its cell.
bool Holds(CourseScreen::Row& row, const kelpui::controls::UI_Node& control) {
  return row.HasCellViews() && row.GetCellView(0).get() == control.GetParent();
}

TzString GetFolderName(const TzPath& file) { return SafeFileName::Make(TzFileUtil::GetBaseFileName(file)); }

}  // namespace

CourseSources::RowPtr CourseSources::GetHeader(const Row& module, CoursePlace place) {
  const auto index = GetHeaderIndex(module, place);
  return index ? module.GetChildRow(*index) : nullptr;
}

CourseSources::RowPtr CourseSources::GetNames(const Row& module, CoursePlace place) {
  const auto index = GetHeaderIndex(module, place);
  return index ? module.GetChildRow(*index + 1) : nullptr;
}

void CourseSources::Forget() {
  chosen.clear();
  rows.clear();
  rowsByName.clear();
  modules.clear();
  standIns.clear();
}

TzPath CourseSources::FindOwnFolder(const TzPath& folder) const {
  for (const auto& [standIn, file] : standIns) {
    if (standIn.GetParentTzPath() == folder) return file.GetParentTzPath();
  }
  return folder;
}

std::optional<TzPath> CourseSources::FindHolder(const TzString& name,
                                                const kelpui::controls::UI_Node* addButton) const {
  const auto named = rowsByName.find(name);
  if (named != rowsByName.end() && named->second->GetTree() != nullptr) return GetFile(named->second);
  const Tree* tree = screen->GetTree();
  const bool hasModules = screen->GetTemplate() != CourseTemplate::MultipleScos;
  if (tree == nullptr || addButton == nullptr || !hasModules) return std::nullopt;
  // Backwards, for the last module is the one that is mostly being filled.
  for (std::size_t index = tree->CountRows(); index > 0; --index) {
    const RowPtr row = tree->GetRow(static_cast<std::int64_t>(index - 1));
    for (const CoursePlace place : kPlaces) {
      const RowPtr header = GetHeader(*row, place);
      if (header == nullptr || !Holds(*header, *addButton)) continue;
      const auto module = modules.find(row);
      if (module == modules.end()) return std::nullopt;
      const auto& added = module->second.added[static_cast<std::size_t>(place)];
      const auto found = added.find(name);
      return found != added.end() ? std::optional(found->second) : std::nullopt;
    }
  }
  return std::nullopt;
}

void CourseSources::NameFiles(Placed& placed) const {
  for (auto& file : placed) {
    const auto found = file ? standIns.find(*file) : standIns.end();
    if (found != standIns.end()) file = found->second;
  }
}

void CourseSources::Settle() {
  const Tree* tree = screen->GetTree();
  if (chosen.empty() || tree == nullptr) return;
  if (screen->GetTemplate() == CourseTemplate::MultipleScos) {
    const bool hasNewRows = tree->CountRows() > 0 && !rows.contains(GetLastRow(*tree));
    if (hasNewRows) SettleList();
    return;
  }
  bool isChanged = false;
  for (std::size_t index = 0; index < tree->CountRows(); ++index) {
    const RowPtr module = tree->GetRow(static_cast<std::int64_t>(index));
    for (const CoursePlace place : kPlaces) {
      const RowPtr names = GetNames(*module, place);
      if (names == nullptr) continue;
      const TzString shown = ReadDrawn(*tree, *names);
      Module& known = modules[module];
      if (shown == known.names[static_cast<std::size_t>(place)]) continue;
      Take(known, place, shown);
      isChanged = true;
    }
  }
  if (isChanged) chosen.clear();
}

CourseSources::Placed CourseSources::SettleList() {
  const std::vector<TzPath> files = std::exchange(chosen, {});
  const Tree* tree = screen->GetTree();
  if (tree == nullptr) return {};
  // Rows are added at the end.
  std::vector<RowPtr> added;
  std::vector<TzString> names;
  for (std::size_t index = tree->CountRows(); index > 0; --index) {
    const RowPtr row = tree->GetRow(static_cast<std::int64_t>(index - 1));
    if (rows.contains(row)) break;
    added.push_back(row);
    names.push_back(ReadDrawn(*tree, *row));
  }
  std::ranges::reverse(added);
  std::ranges::reverse(names);
  Placed placed = FindPlacedFiles(files, names);
  placed.resize(added.size());
  NameFiles(placed);
  for (std::size_t index = 0; index < added.size(); ++index) {
    rows[added[index]] = placed[index];
    if (placed[index]) rowsByName[GetFolderName(*placed[index])] = added[index];
  }
  return placed;
}

CourseSources::Placed CourseSources::SettleModule(const RowPtr& module, CoursePlace place) {
  const RowPtr names = GetNames(*module, place);
  const Tree* tree = module->GetTree();
  Placed placed;
  if (names != nullptr && tree != nullptr) {
    Module& known = modules[module];
    const TzString shown = ReadDrawn(*tree, *names);
    if (shown != known.names[static_cast<std::size_t>(place)]) placed = Take(known, place, shown);
  }
  chosen.clear();
  return placed;
}

// A slot whose name has gone is empty: its file was there already, which takes the slot's file out of the
// course and nothing in.
CourseSources::Placed CourseSources::Take(Module& module, CoursePlace place, const TzString& shown) {
  module.names[static_cast<std::size_t>(place)] = shown;
  Placed placed = FindPlacedFiles(chosen, shown);
  NameFiles(placed);
  for (const auto& file : placed) {
    if (file) module.added[static_cast<std::size_t>(place)].emplace(GetFolderName(*file), *file);
  }
  if (place == CoursePlace::Content) {
    for (const auto& file : placed) {
      if (file) module.files.content.push_back(*file);
    }
    return placed;
  }
  auto& slot = place == CoursePlace::PreTest ? module.files.preTest : module.files.postTest;
  slot = placed.empty() ? std::nullopt : placed.front();
  return placed;
}

std::optional<TzPath> CourseSources::GetFile(const RowPtr& row) const {
  const auto found = rows.find(row);
  return found != rows.end() ? found->second : std::nullopt;
}

CourseSources::ModuleFiles CourseSources::GetModuleFiles(const RowPtr& module) const {
  const auto found = modules.find(module);
  return found != modules.end() ? found->second.files : ModuleFiles();
}
