// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/desktop/DesktopWindow.h"
#include "host/qt/TzQtWindows.h"

/// The windows of the program: the component's main window becomes the content of the program's when it is
/// given the container for its parent.
class DesktopWindows : public TzQtWindows {
 public:
  explicit DesktopWindows(DesktopWindow& programWindow) : container(programWindow) {}

  void SetParent(TzWindowHandle window, TzWindowHandle parent) override;

 private:
  DesktopWindow& container;
};
