// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  // Nothing is drawn on the screen of whoever runs the tests; another platform can be asked for.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
