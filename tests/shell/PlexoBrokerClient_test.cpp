// SPDX-License-Identifier: Apache-2.0
#include "shell/PlexoBrokerClient.h"

#include <gtest/gtest.h>

#include "shell/PlexoUIComponent.h"
#include "support/TestSession.h"

TEST(PlexoBrokerClient, HoldsTheHostsBrokerFromStartToStop) {
  TestSession session;
  static int broker = 0;
  // Without windows, so that the panel isn't made.
  TzSession withBroker;
  TzSession::Install(withBroker);
  PlexoUIComponent component;
  component.Start();
  EXPECT_EQ(GetPlexoBrokerAddressProc(), nullptr);
  withBroker.brokerAddressProc = []() -> void* { return &broker; };
  TzSession::Install(withBroker);
  component.Start();
  EXPECT_EQ(GetPlexoBrokerAddressProc(), &broker);
  component.Stop();
  EXPECT_EQ(GetPlexoBrokerAddressProc(), nullptr);
}
