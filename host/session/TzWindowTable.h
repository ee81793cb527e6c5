// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>

#include "host/session/TzWindowMessage.h"

/// A window as a model: its place, its procedure and its properties.
struct TzWindowModel {
  TzWindowSpec spec;
  /// On the screen, or in the parent.
  TzRect frame;
  TzRect updateArea;
  TzWindowHandle parent = nullptr;
  bool isVisible = false;
  TzWindowProc procedure = nullptr;
  std::map<TzString, void*> properties;
};

/// All windows of a session, as every user interface keeps them: it draws them, and reports here what the
/// person does to them, which becomes the messages of their procedures. A handle that isn't one of a window
/// does nothing.
class TzWindowTable {
 public:
  /// `x` and `y` of the spec are taken as 0 where the system may choose.
  TzWindowHandle Create(const TzWindowSpec& spec);
  /// Null if there is no such window.
  [[nodiscard]] TzWindowModel* Find(TzWindowHandle window) const;

  TzMessageResult SendMessage(TzWindowHandle window, unsigned message, TzWParam wparam, TzLParam lparam);
  TzMessageResult CallDefaultProc(TzWindowHandle window, unsigned message);

  /// The person gives the window another size: at least what its procedure wants, then drawn anew. The
  /// procedure gets the three messages of this.
  void Resize(TzWindowHandle window, int width, int height);
  void Move(TzWindowHandle window, int x, int y);
  /// The window has been drawn.
  void Validate(TzWindowHandle window);
  /// The person asks for the window's end. True if the window has gone.
  bool Close(TzWindowHandle window);
  /// Sends the last message and forgets the window.
  void Destroy(TzWindowHandle window);

 private:
  void ChangePosition(TzWindowHandle window, unsigned unchanged);

  std::map<TzWindowHandle, std::unique_ptr<TzWindowModel>> windows;
};
