// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "host/session/TzWindow.h"

using TzWParam = std::uintptr_t;
using TzLParam = std::intptr_t;
using TzMessageResult = std::intptr_t;
using TzWindowProc = TzMessageResult (*)(TzWindowHandle window, unsigned message, TzWParam wparam,
                                         TzLParam lparam);

/// Messages that a window's procedure gets.
enum TzWindowMessage : unsigned {
  kTzMessageSize = 0x05,
  kTzMessageClose = 0x10,
  kTzMessageSetCursor = 0x20,
  /// lparam: a `TzMinMaxInfo` to be filled.
  kTzMessageGetMinMaxInfo = 0x24,
  /// lparam: a `TzWindowPos`.
  kTzMessageWindowPosChanged = 0x47,
  /// The last message of a window.
  kTzMessageNcDestroy = 0x82,
  /// The first of those that are registered by name.
  kTzMessageFirstRegistered = 0xC000,
};

/// Flags of `TzWindowPos`.
inline constexpr unsigned kTzPosNoSize = 1;
inline constexpr unsigned kTzPosNoMove = 2;

struct TzWindowPos {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  /// What didn't change.
  unsigned flags = 0;
};

struct TzMinMaxInfo {
  int minTrackWidth = 0;
  int minTrackHeight = 0;
};
