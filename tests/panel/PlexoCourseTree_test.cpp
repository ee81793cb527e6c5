// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoCourseTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "panel/PlexoLinearCourseView.h"
#include "panel/PlexoPreContentPostCourseView.h"

using kelpui::controls::UI_MultiColumnTree;
using kelpui::controls::UI_MultiColumnTreeRow;
using kelpui::controls::UI_RowPtr;
using testing::ElementsAre;
using testing::StrictMock;

namespace {

class LinearHandler : public IPlexoLinearCourseHandler {
 public:
  MOCK_METHOD(void, OnLinearSCOsSwapped, (std::int32_t from, std::int32_t to), (override));
  MOCK_METHOD(void, OnLinearSCOsRemoved, (const std::vector<int>& indices), (override));
  void OnLinearSelectionChanged() override {}
};

/// Hears of modules and their removal; the rest of the interface has its place in the panel's tests.
class ModuleHandler : public IPlexoPreContentPostCourseHandler {
 public:
  void OnModuleAdded(const TzString& key, const TzString& title) override {
    added.push_back(key + "=" + title);
  }
  void OnAddPreTest(const TzString&) override {}
  void OnAddPostTest(const TzString&) override {}
  void OnAddContent(const TzString&) override {}
  void OnModuleRemoved(const TzString& key) override { removed.push_back(key); }
  void OnReserved1(const TzString&, const TzString&) override {}
  void OnReserved2(const TzString&, const TzString&) override {}
  void OnReserved3(const TzString&, const TzString&) override {}
  void OnModuleTitleChanged(const TzString&, const TzString&) override {}
  void OnWeightageChanged(const TzString&, double) override {}
  void OnContentForcedSequenceChanged(const TzString&, bool) override {}
  void OnModulesSwapped(std::int32_t, std::int32_t) override {}
  void OnSelectionChanged() override {}

  std::vector<TzString> added;
  std::vector<TzString> removed;
};

void Select(UI_MultiColumnTree& tree, const std::vector<int>& indices) {
  std::vector<UI_RowPtr> rows;
  for (const int index : indices) rows.push_back(tree.GetRow(index));
  tree.SelectRows(rows);
}

}  // namespace

TEST(PlexoLinearCourseView, OnlyASingleRowMovesAndNotOutOfTheList) {
  const struct {
    std::vector<int> selected;
    bool up;
    std::vector<std::pair<int, int>> moves;
  } cases[] = {
      {{}, true, {}},        {{0, 1}, true, {}},    {{0, 1, 2}, false, {}},
      {{0}, true, {}},       {{2}, false, {}},      {{0}, false, {{0, 1}}},
      {{1}, true, {{1, 0}}}, {{2}, true, {{2, 1}}}, {{1}, false, {{1, 2}}},
  };
  for (const auto& [selected, up, moves] : cases) {
    StrictMock<LinearHandler> handler;
    const boost::intrusive_ptr<PlexoLinearCourseView> view(new PlexoLinearCourseView(&handler));
    for (const char* name : {"a", "b", "c"}) view->AddRow(name);
    Select(*view, selected);
    std::vector<UI_RowPtr> expected = {view->GetRow(0), view->GetRow(1), view->GetRow(2)};
    for (const auto& [from, to] : moves) {
      EXPECT_CALL(handler, OnLinearSCOsSwapped(from, to));
      std::swap(expected[static_cast<std::size_t>(from)], expected[static_cast<std::size_t>(to)]);
    }
    view->MoveSelection(up);
    for (int index = 0; index < 3; ++index) {
      EXPECT_EQ(view->GetRow(index), expected[static_cast<std::size_t>(index)]);
    }
  }
}

TEST(PlexoLinearCourseView, TellsWhatGoesWhileItIsStillThere) {
  StrictMock<LinearHandler> handler;
  const boost::intrusive_ptr<PlexoLinearCourseView> view(new PlexoLinearCourseView(&handler));
  EXPECT_FALSE(view->IsRowDraggingAllowed());
  for (const char* name : {"a", "b", "c", "d"}) view->AddRow(name);
  EXPECT_CALL(handler, OnLinearSCOsRemoved(testing::IsEmpty()));
  view->RemoveSelection();
  EXPECT_EQ(view->CountRows(), 4U);
  Select(*view, {3, 0});
  EXPECT_CALL(handler, OnLinearSCOsRemoved(ElementsAre(0, 3))).WillOnce([&] {
    EXPECT_EQ(view->CountRows(), 4U);
  });
  view->RemoveSelection();
  EXPECT_EQ(view->CountRows(), 2U);
}

TEST(PlexoPreContentPostCourseView, RowsGetTheirControlsWhenTheyAreFirstSeen) {
  ModuleHandler handler;
  const boost::intrusive_ptr<PlexoPreContentPostCourseView> view(
      new PlexoPreContentPostCourseView(&handler, true));
  for (int number = 1; number <= 50; ++number)
    view->AddModuleRow(TzString::FromNumber(std::uint64_t(number)));
  EXPECT_FALSE(view->GetRow(0)->HasCellViews());
  view->SetFrame({0.0, 0.0, 400.0, 100.0});
  EXPECT_TRUE(view->GetRow(0)->HasCellViews());
  EXPECT_TRUE(view->GetRow(0)->GetChildRow(0)->HasCellViews());
  EXPECT_FALSE(view->GetRow(0)->GetChildRow(1)->HasCellViews()) << "names are drawn";
  EXPECT_FALSE(view->GetRow(49)->HasCellViews());
  const auto controls = view->GetRow(0)->GetCellView(0)->GetChildren();
  view->ScrollTo(view->GetShownIndex(*view->GetRow(49)));
  view->ScrollTo(0);
  EXPECT_TRUE(view->GetRow(49)->HasCellViews());
  EXPECT_EQ(view->GetRow(0)->GetCellView(0)->GetChildren(), controls) << "made once";
}

TEST(PlexoPreContentPostCourseView, ControlsStandAtTheirFixedPlacesAtAnyWidth) {
  ModuleHandler handler;
  const boost::intrusive_ptr<PlexoPreContentPostCourseView> view(
      new PlexoPreContentPostCourseView(&handler, true));
  view->AddModuleRow("1");
  for (const double width : {300.0, 640.0}) {
    view->SetFrame({0.0, 0.0, width, 400.0});
    const double height = UI_MultiColumnTree::GetDefaultRowHeight();
    const struct {
      UI_RowPtr row;
      std::vector<TzRect> frames;
    } cases[] = {
        {view->GetRow(0),
         {{0, 0, 100, height}, {width - 120, 0, width - 20, height}, {width - 60, 0, width - 10, height}}},
        {view->GetRow(0)->GetChildRow(0), {{0, 0, 100, height}, {width - 31, 0, width - 15, 16}}},
        {view->GetRow(0)->GetChildRow(2),
         {{0, 0, 100, height}, {width / 2, 2, width / 2 + 145, height + 2}, {width - 31, 0, width - 15, 16}}},
        {view->GetRow(0)->GetChildRow(4), {{0, 0, 100, height}, {width - 31, 0, width - 15, 16}}},
    };
    for (const auto& [row, frames] : cases) {
      const auto& controls = row->GetCellView(0)->GetChildren();
      ASSERT_EQ(controls.size(), frames.size());
      for (std::size_t index = 0; index < frames.size(); ++index) {
        const TzRect& frame = controls[index]->GetFrame();
        EXPECT_THAT(
            (std::vector{frame.left, frame.top, frame.right, frame.bottom}),
            ElementsAre(frames[index].left, frames[index].top, frames[index].right, frames[index].bottom));
      }
    }
  }
}

TEST(PlexoPreContentPostCourseView, OnlyModulesAreSelectedAndRemovedEachByItsKey) {
  ModuleHandler handler;
  const boost::intrusive_ptr<PlexoPreContentPostCourseView> view(
      new PlexoPreContentPostCourseView(&handler, false));
  for (const char* key : {"7", "8", "9"}) view->AddModuleRow(key);
  EXPECT_EQ(handler.added.size(), 3U);
  view->SelectRows({view->GetRow(2), view->GetRow(0)->GetChildRow(1), view->GetRow(0)});
  EXPECT_THAT(view->GetSelectedIndices(), ElementsAre(0, 2));
  view->RemoveSelection();
  EXPECT_THAT(handler.removed, ElementsAre("7", "9"));
  EXPECT_EQ(view->CountRows(), 1U);
}
