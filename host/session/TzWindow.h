// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/text/TzString.h"

/// A native window; null where there is none.
using TzWindowHandle = void*;

/// The loaded library that a resource or window class belongs to.
using TzModuleHandle = const void*;

/// Lengths and positions as the UI framework counts them.
using TzReal = double;

struct TzRect {
  TzReal left = 0.0;
  TzReal top = 0.0;
  TzReal right = 0.0;
  TzReal bottom = 0.0;
};

/// How a top-level window is made. `x` is left to the system where it is `kTzDefaultPosition`.
struct TzWindowSpec {
  TzString className;
  TzString title;
  unsigned style = 0;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  TzModuleHandle module = nullptr;
};

inline constexpr int kTzDefaultPosition = static_cast<int>(0x80000000U);
/// An overlapped window with title bar, menu, border and its size buttons.
inline constexpr unsigned kTzOverlappedWindow = 0xCF0000;

/// What the host's framework is told of a component at its start.
struct TzAppContainterCreatorInfo {
  /// Numbered resource of the component's icon.
  int iconResource = 0;
  void (*createAppBar)() = nullptr;
  void (*releaseAppBar)() = nullptr;
  TzWindowHandle mainWindow = nullptr;
  TzModuleHandle module = nullptr;
};
