// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "host/kelpui/OS_ResourceManager.h"
#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/kelpui/UI_Popup.h"
#include "host/kelpui/UI_TextEdit.h"

using namespace kelpui::controls;

namespace {

template <typename Control>
using Ptr = boost::intrusive_ptr<Control>;

/// A control of each kind, what a program does to it, and what a person does.
struct ControlCase {
  const char* name;
  Ptr<UI_Control> control;
  std::function<void()> set;
  std::function<void()> enter;
};

std::vector<ControlCase> MakeControls() {
  Ptr<UI_TextEdit> text(new UI_TextEdit);
  Ptr<UI_Checkbox> box(new UI_Checkbox);
  Ptr<UI_NumberEdit> number(new UI_NumberEdit({0.0, 100.0, 0}));
  Ptr<UI_Popup> popup(new UI_Popup);
  popup->SetItems({{"one", 1}, {"two", 2}, {"three", 3}});
  return {
      {"text", text, [text] { text->SetText("set"); }, [text] { text->EnterText("typed"); }},
      {"check box", box, [box] { box->SetValue(1); }, [box] { box->EnterValue(0); }},
      {"number", number, [number] { number->SetValue(5); }, [number] { number->EnterValue(6); }},
      {"popup", popup, [popup] { popup->SetValue(1); }, [popup] { popup->EnterIndex(2); }},
  };
}

}  // namespace

TEST(UI_Control, OnlyAPersonsChangeNotifiesAndOnlyOnceAndOnlyWhereItIsEnabled) {
  for (const ControlCase& each : MakeControls()) {
    int changes = 0;
    each.control->InstallChangeNotification([&] { ++changes; });
    each.set();
    EXPECT_EQ(changes, 0) << each.name;
    each.enter();
    each.enter();
    EXPECT_EQ(changes, 1) << each.name;
    each.set();
    each.control->SetEnabled(false);
    each.enter();
    EXPECT_EQ(changes, 1) << each.name;
  }
}

TEST(UI_Control, MayBeLetGoOfByItsOwnNotification) {
  UI_NodePtr parent(new UI_Node(UI_NodeKind::Row));
  auto* button = new UI_Button("Close");
  parent->AddChild(button);
  button->InstallChangeNotification([&] { parent.reset(); });
  button->Press();
  EXPECT_EQ(parent, nullptr);
}

TEST(UI_NumberEdit, TakesTheNearestNumberThatItCanShow) {
  const struct {
    UI_NumberData data;
    const char* typed;
    bool taken;
    const char* shown;
  } cases[] = {
      {{0, 100, 0}, "50", true, "50"},        {{0, 100, 0}, " 50 % ", false, "0"},
      {{0, 100, 0}, " 50 %", true, "50"},     {{0, 100, 0}, "101", true, "100"},
      {{0, 100, 0}, "-1", true, "0"},         {{0, 100, 0}, "33.5", true, "34"},
      {{0, 100, 2}, "33.335", true, "33.34"}, {{0, 100, 0}, "", false, "0"},
      {{0, 100, 0}, "%", false, "0"},         {{0, 100, 0}, "5O", false, "0"},
      {{0, 100, 0}, "nan", false, "0"},       {{0, 100, 0}, "inf", false, "0"},
      {{0, 100, 0}, "1e400", false, "0"},     {{10, 5, 0}, "7", true, "10"},
  };
  for (const auto& each : cases) {
    const Ptr<UI_NumberEdit> edit(new UI_NumberEdit(each.data));
    edit->SetInlineUnit("%");
    EXPECT_EQ(edit->EnterText(each.typed), each.taken) << each.typed;
    EXPECT_EQ(edit->GetText(), each.shown) << each.typed;
  }
}

TEST(UI_Popup, ShowsNoItemForAValueThatNoneHas) {
  const Ptr<UI_Popup> popup(new UI_Popup);
  popup->SetItems({{"1.2", 0}, {"2004", 1}});
  popup->SetValue(1);
  EXPECT_EQ(popup->GetChosenIndex(), 1U);
  popup->SetValue(2);
  EXPECT_EQ(popup->GetChosenIndex(), std::nullopt);
  EXPECT_THROW(popup->EnterIndex(2), std::logic_error);
}

TEST(OS_ResourceManager, FindsAnImageAndItsTwinWhateverTheCase) {
  const TzResource images[] = {{"ADDSWF", "png", "addswf.png", "small"},
                               {"ADDSWF_AT_2X", "png", "addswf@2x.png", "large"},
                               {"ADDSWF", "adm", "addswf.yaml", "no image"}};
  const kelpui::utility::OS_ResourceManager manager({images});
  EXPECT_EQ(manager.GetImage("addswf").bytes, "small");
  EXPECT_EQ(manager.GetImage("AddSWF").doubleSizeBytes, "large");
  EXPECT_EQ(manager.GetImage("moveup").bytes, "");
}
