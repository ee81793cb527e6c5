// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_Node.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/kelpui/UI_NodeManager.h"
#include "support/TestSession.h"

using namespace kelpui::controls;
using testing::ElementsAre;

namespace {

UI_NodePtr MakeNode(const char* identifier = "") {
  UI_NodePtr node(new UI_Node(UI_NodeKind::Row));
  node->SetIdentifier(identifier);
  return node;
}

}  // namespace

TEST(UI_Node, FindsANodeByItsIdentifierAtAnyDepth) {
  const UI_NodePtr root = MakeNode("root");
  const UI_NodePtr middle = MakeNode();
  const UI_NodePtr wanted = MakeNode("linear_course_view");
  root->AddChild(middle);
  middle->AddChild(wanted);
  EXPECT_EQ(root->FindChildRecursive("linear_course_view"), wanted);
  EXPECT_EQ(root->FindChildRecursive("root"), nullptr);
  middle->RemoveChild(*wanted);
  EXPECT_EQ(root->FindChildRecursive("linear_course_view"), nullptr);
  EXPECT_THROW(root->AddChild(middle), std::logic_error);
}

TEST(UI_Node, IsShownOnlyIfEverythingAboveItIs) {
  const UI_NodePtr root = MakeNode();
  const UI_NodePtr child = MakeNode();
  root->AddChild(child);
  EXPECT_TRUE(child->IsShown());
  root->SetVisible(false);
  EXPECT_FALSE(child->IsShown());
  EXPECT_TRUE(child->IsVisible());
}

TEST(UI_Node, TellsEachOwnerOnceOfANewSizeAndNotOfANewPlace) {
  const UI_NodePtr node = MakeNode();
  std::vector<std::string> told;
  const int owners[2] = {};
  node->InstallSizeChangedNotification(&owners[0], [&](UI_Node&) { told.emplace_back("replaced"); });
  node->InstallSizeChangedNotification(&owners[0], [&](UI_Node&) { told.emplace_back("first"); });
  node->InstallSizeChangedNotification(&owners[1], [&](UI_Node&) { told.emplace_back("second"); });
  node->SetFrame({0, 0, 10, 10});
  node->SetFrame({5, 5, 15, 15});
  EXPECT_THAT(told, ElementsAre("first", "second"));
}

TEST(UI_Node, ATimerWithoutDelayFiresAfterTheEventUntilItIsRemoved) {
  TestSession session;
  const UI_NodePtr node = MakeNode();
  const std::uint32_t timer = UI_NodeManager::Get().GetUniqueTimerID();
  EXPECT_NE(timer, UI_NodeManager::Get().GetUniqueTimerID());
  std::vector<std::uint32_t> fired;
  const int owners[3] = {};
  node->InstallTimerNotification(&owners[0], [](UI_Node&, std::uint32_t) { return false; });
  node->InstallTimerNotification(&owners[1], [&](UI_Node& from, std::uint32_t id) {
    fired.push_back(id);
    if (fired.size() == 2) from.UI_RemoveTimer(id);
    return true;
  });
  node->InstallTimerNotification(&owners[2], [&](UI_Node&, std::uint32_t) {
    ADD_FAILURE() << "asked although the timer was another's";
    return true;
  });
  node->UI_InstallTimer(0.0, timer);
  EXPECT_THAT(fired, ElementsAre());
  session.ui.RunTimers();
  EXPECT_THAT(fired, ElementsAre(timer, timer));
  session.ui.RunTimers();
  EXPECT_EQ(fired.size(), 2U);
}

TEST(UI_Node, TakesItsTimersWithIt) {
  TestSession session;
  UI_NodePtr node = MakeNode();
  node->InstallTimerNotification(nullptr, [](UI_Node&, std::uint32_t) {
    ADD_FAILURE() << "fired";
    return true;
  });
  node->UI_InstallTimer(0.0, 1);
  node->UI_InstallTimer(0.0, 2);
  node.reset();
  session.ui.RunTimers();
}
