// SPDX-License-Identifier: Apache-2.0
#include "resources/PlexoResources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>

#include "host/headless/TzHeadlessDriver.h"
#include "host/sheets/TzLayoutSheet.h"
#include "host/sheets/TzPropertySheet.h"
#include "host/sheets/TzSheet.h"
#include "panel/PlexoStrings.h"
#include "support/Golden.h"
#include "support/TestSession.h"

namespace {

/// A pair of sheets, loaded with the component's own words: a binding, key or attribute that doesn't exist
/// throws.
class LoadedSheets {
 public:
  LoadedSheets(int propertySheet, int layoutSheet)
      : cells(TzPropertySheet::Read(Get(propertySheet, "adm"), GetStringDictionary())),
        layout(TzLayoutSheet::Read(Get(layoutSheet, "eve"), cells, GetStringDictionary())) {
    Collect(layout.root);
  }

  TzPropertySheet cells;
  TzLayoutSheet layout;
  std::set<std::string> actions;
  std::set<std::string> bound;

 private:
  static const TzResource& Get(int number, const char* type) {
    const TzResource* resource = GetFileResource(GetPlexoResources(), number, type);
    if (resource == nullptr) throw std::runtime_error("no sheet " + std::to_string(number));
    return *resource;
  }

  void Collect(const TzLayoutNode& view) {
    for (const TzString& cell : {view.bind, view.name.cell, view.items, view.minMaxFilter}) {
      if (!cell.IsEmpty()) bound.insert(cell.GetUTF8String());
    }
    if (!view.action.IsEmpty()) actions.insert(view.action.GetUTF8String());
    for (const TzLayoutNode& child : view.children) Collect(child);
  }
};

class ResourcesTest : public testing::Test {
 protected:
  ResourcesTest() { RegisterDefaultStrings(); }
  TestSession session;
};

std::string CellsWithoutViews(const LoadedSheets& sheets) {
  std::string names;
  for (const TzPropertyCell& cell : sheets.cells.cells) {
    if (!sheets.bound.contains(cell.name.GetUTF8String())) names += cell.name.GetUTF8String() + " ";
  }
  return names;
}

}  // namespace

TEST_F(ResourcesTest, EverySheetLoadsWithTheActionsThatItsHandlerKnows) {
  const struct {
    int number;
    std::set<std::string> actions;
    const char* cellsWithoutViews;
  } cases[] = {
      {111,
       {"new", "publish"},
       "disablePublishButton disableNewManifestButton DisablePublishButtonInvariant "
       "DisableNewManifestButtonInvariant "},
      {113, {"ok", "cancel"}, "result "},
      {115, {"ok", "cancel", "browse"}, "result "},
      {117, {"ok", "cancel"}, "result "},
      {121,
       {"multiple_scos_action", "simple_remediation", "test_rollup", "add_file", "add_module", "move_up",
        "move_down", "delete"},
       "enable_delete enable_move_up enable_move_down "},
  };
  std::size_t sheetCount = 0;
  for (const auto& [number, actions, cellsWithoutViews] : cases) {
    const LoadedSheets sheets(number, number + 1);
    EXPECT_EQ(sheets.actions, actions) << number;
    EXPECT_EQ(CellsWithoutViews(sheets), cellsWithoutViews) << number;
    sheetCount += 2;
  }
  const auto isSheet = [](const TzResource& each) { return each.type == "adm" || each.type == "eve"; };
  EXPECT_EQ(std::ranges::count_if(GetPlexoResources().resources, isSheet),
            static_cast<std::ptrdiff_t>(sheetCount))
      << "a sheet that this test doesn't load";
}

TEST_F(ResourcesTest, AResourceIsFoundByItsNumberAndTypeAndKeepsItsFileName) {
  const TzResource* sheet = GetFileResource(GetPlexoResources(), "121", "ADM");
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(sheet->file, "121-plexo_ui_dialog.property.yaml");
  EXPECT_EQ(std::string(sheet->bytes),
            ReadFile(TzPath::FromNative(PLEXO_SOURCE "/resources/sheets/121-plexo_ui_dialog.property.yaml")));
  EXPECT_EQ(GetFileResource(GetPlexoResources(), 121, "eve"), nullptr);
  EXPECT_EQ(GetFileResource(GetPlexoResources(), 12, "adm"), nullptr);
}

namespace {

struct PictureSize {
  unsigned width = 0;
  unsigned height = 0;
  bool operator==(const PictureSize&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const PictureSize& size) {
  return stream << size.width << "x" << size.height;
}

/// As the header of the PNG says; nothing if there is no such picture.
PictureSize SizeOf(const std::string& name) {
  const TzResource* picture = GetFileResource(GetPlexoResources(), name, "png");
  if (picture == nullptr || !picture->bytes.starts_with("\x89PNG\r\n\x1a\n")) return {};
  const auto number = [&](std::size_t at) {
    unsigned value = 0;
    for (const char byte : picture->bytes.substr(at, 4))
      value = value << 8U | static_cast<unsigned char>(byte);
    return value;
  };
  return {number(16), number(20)};
}

}  // namespace

TEST(PlexoResources, PicturesHaveTheirSizesAndIconsATwinOfDoubleSize) {
  const struct {
    const char* name;
    PictureSize size;
    bool hasTwin;
  } cases[] = {
      {"NEWPROJECT", {22, 18}, true},
      {"PUBLISHPROJECT", {18, 18}, true},
      {"ADDSWF", {16, 16}, true},
      {"DELETESWF", {16, 16}, true},
      {"MOVEUP", {16, 16}, true},
      {"MOVEDOWN", {16, 16}, true},
      {"ITEMVISIBLE", {16, 16}, true},
      {"MOVIEVISIBLE", {14, 13}, true},
      {"MOVIEINVISIBLE", {14, 13}, true},
      {"IMAGE_TEMPLATE1", {184, 229}, false},
      {"IMAGE_TEMPLATE2", {184, 229}, false},
      {"IMAGE_TEMPLATE3", {184, 229}, false},
      {"101", {16, 16}, true},
  };
  std::ptrdiff_t pictureCount = 0;
  for (const auto& [name, size, hasTwin] : cases) {
    const PictureSize twin = hasTwin ? PictureSize{2 * size.width, 2 * size.height} : PictureSize{};
    EXPECT_EQ(SizeOf(name), size) << name;
    EXPECT_EQ(SizeOf(std::string(name) + "_AT_2X"), twin) << name;
    pictureCount += hasTwin ? 2 : 1;
  }
  const auto isPicture = [](const TzResource& each) { return each.type == "png"; };
  EXPECT_EQ(std::ranges::count_if(GetPlexoResources().resources, isPicture), pictureCount);
}

// Each state of a sheet is a paragraph, headed by the cells that were switched to come to it.
TEST(PlexoResourcesGolden, SheetsShowTheirViewsInEveryState) {
  const struct {
    int number;
    const char* name;
    std::vector<std::vector<const char*>> states;
  } cases[] = {
      {111, "app_bar", {{}, {"disablePublishButton", "disableNewManifestButton"}}},
      {113,
       "PlexoCourseManifestDialog",
       {{},
        {"showOnlySCORM2004", "isWindows"},
        {"enableCourseVersion", "enableCourseDuration", "enableCourseSubject"}}},
      {115, "PlexoPublishDialog", {{}, {"isWindows"}}},
      {117,
       "PlexoSCOManifestDialog",
       {{},
        {"isWindows"},
        {"enableSCOMasteryScore", "enableSCODuration", "enableSCOTimeLimitAction", "enableSCOLaunchData"}}},
      {121,
       "plexo_ui_dialog",
       {{},
        {"default_view", "course_type_linear", "enable_delete"},
        {"default_view", "course_type_content_post", "enable_move_up"},
        {"default_view", "course_type_pre_content_post", "enable_move_down"}}},
  };
  for (const auto& [number, name, states] : cases) {
    std::string text;
    for (const auto& switched : states) {
      TestSession session;
      RegisterDefaultStrings();
      TzSheet sheet(nullptr, GetPlexoResources(), nullptr, number, number + 1);
      sheet.CreateDlgCanvasOnView(nullptr);
      text += text.empty() ? "#" : "\n#";
      for (const char* cell : switched) {
        sheet.SetCellValue(cell, !sheet.GetBool(cell), true);
        text += std::string(" ") + cell;
      }
      text += "\n" + TzHeadlessDriver(session.ui).See();
    }
    ExpectGolden(PLEXO_SOURCE "/tests/resources/golden", std::string(name) + ".txt", text);
  }
}
