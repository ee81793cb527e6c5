// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/session/TzWindowMessage.h"

/// Stands between the main window and its procedure: keeps the panel at the window's size, gives the window
/// its smallest size, and lets it close only if the project may be closed. Everything else goes on to the
/// procedure that was there before.
///
/// Guarantee: no exception leaves the window's procedure; a message that caused one is answered with 0.
class TzWin32MessageTarget {
 public:
  /// Takes the window over, until this object goes. With `deleteWithWindow` it deletes itself at the window's
  /// last message.
  TzWin32MessageTarget(TzWindowHandle targetWindow, bool deleteWithWindow);
  /// Puts the earlier procedure back, unless somebody has put another in this one's place since.
  virtual ~TzWin32MessageTarget();
  TzWin32MessageTarget(const TzWin32MessageTarget&) = delete;
  TzWin32MessageTarget& operator=(const TzWin32MessageTarget&) = delete;

  virtual TzMessageResult HandleMessage(TzWindowHandle messageWindow, unsigned message, TzWParam wparam,
                                        TzLParam lparam);

 private:
  /// One procedure of all windows, which finds its target by a property of the window.
  static TzMessageResult SharedProc(TzWindowHandle window, unsigned message, TzWParam wparam,
                                    TzLParam lparam);

  TzWindowProc previousProc = nullptr;
  TzWindowHandle window;
  bool autoDelete;
};
