// SPDX-License-Identifier: Apache-2.0
#include "host/sheets/TzDataModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/SheetPair.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kCells = R"(
sheet: cells
interface:
  - {cell: enableVersion, default: false}
  - {cell: version, default: "", unlink: 'enableVersion ? version : ""'}
  - {cell: hours, default: 0, unlink: "enableVersion ? hours : 0"}
  - {cell: ratio, default: 0.5}
  - {cell: limits, default: {min_value: 0, max_value: 99}}
logic:
  - canEdit <== enableVersion
invariants:
  - isFull <== hours == 24
output:
  - {cell: result, dictionary: [version, hours, version]}
)";

class DataModelTest : public testing::Test {
 protected:
  DataModelTest() : model(TzPropertySheet::Read(sheets.Properties(), nullptr)) {}

  void Watch(const TzString& cell) {
    model.MonitorCellValue(cell, [this, cell](const TzVariant& value) {
      told.push_back(cell.GetUTF8String() + "=" + value.GetString().GetUTF8String() +
                     (value.GetBool() ? "true" : "") +
                     (value.IsNumber() ? std::to_string(value.GetInteger()) : ""));
    });
  }

  SheetPair sheets{kCells, ""};
  TzDataModel model;
  std::vector<std::string> told;
};

}  // namespace

TEST_F(DataModelTest, AnUnlinkedCellReadsTheFallbackAndBringsBackWhatWasEntered) {
  model.SetCellValue("version", "1.0");
  EXPECT_EQ(model.GetCellValue("version"), "");
  EXPECT_FALSE(model.IsCellLinked("version"));
  model.SetCellValue("enableVersion", true);
  EXPECT_EQ(model.GetCellValue("version"), "1.0");
  model.SetCellValue("version", "2.0");
  model.SetCellValue("enableVersion", false);
  EXPECT_EQ(model.GetCellValue("version"), "");
  model.SetCellValue("enableVersion", true);
  EXPECT_EQ(model.GetCellValue("version"), "2.0");
}

TEST_F(DataModelTest, ComputedCellsFollowTheirSources) {
  EXPECT_EQ(model.GetCellValue("isFull"), false);
  model.SetCellValue("enableVersion", true);
  model.SetCellValue("hours", 24);
  EXPECT_EQ(model.GetCellValue("canEdit"), true);
  EXPECT_EQ(model.GetCellValue("isFull"), true);
  EXPECT_EQ(model.GetCellValue("result"), (TzVariant::Dictionary{{"version", ""}, {"hours", 24}}));
}

TEST_F(DataModelTest, AWatcherIsToldOnceAtTheUpdateAndOnlyOfAChange) {
  Watch("version");
  Watch("enableVersion");
  Watch("isFull");
  model.SetCellValue("enableVersion", true);
  model.SetCellValue("version", "1");
  model.SetCellValue("version", "2");
  EXPECT_THAT(told, IsEmpty());
  model.Update();
  EXPECT_THAT(told, ElementsAre("enableVersion=true", "version=2"));
  model.Update();
  model.SetCellValue("version", "3");
  model.SetCellValue("version", "2");
  model.Update();
  EXPECT_EQ(told.size(), 2U) << "the cell reads as it did";
  model.SetCellValue("enableVersion", false);
  model.Update();
  EXPECT_THAT(told, ElementsAre("enableVersion=true", "version=2", "enableVersion=", "version="));
}

TEST_F(DataModelTest, ViewsKnowBeforeTheFirstWatcherAndHearOfLinksToo) {
  model.SetViewRefresh([this](const std::vector<TzString>& cells) {
    for (const TzString& cell : cells) told.push_back("view " + cell.GetUTF8String());
  });
  Watch("enableVersion");
  Watch("hours");
  model.SetCellValue("enableVersion", true);
  model.Update();
  EXPECT_THAT(told, ElementsAre("view enableVersion", "view version", "view hours", "view canEdit",
                                "enableVersion=true"));
}

TEST_F(DataModelTest, AWatcherThatSetsCellsStartsAnotherRoundAfterItsOwn) {
  model.MonitorCellValue("enableVersion", [this](const TzVariant&) {
    model.SetCellValue("version", "from the watcher");
    model.Update();
    told.emplace_back("end of the watcher");
  });
  Watch("enableVersion");
  Watch("version");
  model.SetCellValue("enableVersion", true);
  model.Update();
  EXPECT_THAT(told, ElementsAre("end of the watcher", "enableVersion=true", "version=from the watcher"));
}

TEST_F(DataModelTest, WatchersThatNeverComeToRestAreAFault) {
  model.SetCellValue("enableVersion", true);
  model.MonitorCellValue("hours", [this](const TzVariant& value) {
    model.SetCellValue("hours", value.GetInteger() + 1);
    model.Update();
  });
  model.SetCellValue("hours", 1);
  EXPECT_THROW(model.Update(), std::logic_error);
}

TEST_F(DataModelTest, WatchersThatAreBlockedNeverHearOfTheChange) {
  bool isBlocked = true;
  model.SetMonitorBlock([&] { return isBlocked; });
  Watch("enableVersion");
  model.SetCellValue("enableVersion", true);
  model.Update();
  isBlocked = false;
  model.Update();
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(DataModelTest, ACellKeepsItsKindAndOnlyNumbersAreTakenForEachOther) {
  model.SetCellValue("enableVersion", true);
  model.SetCellValue("hours", 7.9);
  EXPECT_EQ(model.GetCellValue("hours"), 7);
  model.SetCellValue("ratio", 1);
  EXPECT_EQ(model.GetCellValue("ratio"), 1.0);
  const struct {
    const char* cell;
    TzVariant value;
  } faults[] = {
      {"hours", "7"},       {"hours", true},   {"hours", {}},    {"version", 1},
      {"enableVersion", 1}, {"canEdit", true}, {"isFull", true}, {"result", "x"},
      {"unknown", true},    {"", true},        {"limits", 5},    {"ratio", "a half"},
  };
  for (const auto& [cell, value] : faults) {
    EXPECT_THROW(model.SetCellValue(cell, value), std::logic_error) << cell;
  }
  EXPECT_THROW(static_cast<void>(model.GetCellValue("Version")), std::logic_error);
  EXPECT_THROW(model.MonitorCellValue("unknown", nullptr), std::logic_error);
}
