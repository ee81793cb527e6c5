// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopWindows.h"

void DesktopWindows::SetParent(TzWindowHandle window, TzWindowHandle parent) {
  TzQtWindows::SetParent(window, parent);
  const bool isContent = parent == GetContainerWindow() && FindWidget(window) == GetMainWidget();
  if (isContent && GetMainWidget() != nullptr) container.SetContent(GetMainWidget());
}
