// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/session/TzWindow.h"
#include "host/text/TzString.h"

/// Values that a message box answers with: the single bits of its buttons.
enum TzMessageBoxButton : int {
  kTzButtonOk = 1,
  kTzButtonYes = 16,
  kTzButtonNo = 64,
  kTzButtonCancel = 2048,
};

/// Which buttons a box offers. Cancel, where there is one, is also what closing the box means.
enum class TzMessageBoxKind { Ok, YesNo, YesNoCancel };

/// What a message box says.
class TzMessageBoxOptions {
 public:
  TzMessageBoxOptions(TzString boxTitle, TzString boxText, TzWindowHandle boxOwner = nullptr);

  /// False if title and text have been looked up already; true (the start) if they are dictionary keys.
  void SetToUseDictionary(bool use) { useDictionary = use; }

  [[nodiscard]] TzString GetTitle() const { return Resolve(title); }
  [[nodiscard]] TzString GetText() const { return Resolve(text); }
  [[nodiscard]] TzWindowHandle GetOwner() const { return owner; }

 private:
  [[nodiscard]] TzString Resolve(const TzString& word) const;

  TzString title;
  TzString text;
  TzWindowHandle owner;
  bool useDictionary = true;
};

/// Show a box and wait for its answer. Without a user interface nothing shows, and the answer is the one that
/// changes nothing: OK, No, Cancel.
int TzShowOkOnlyMessageBox(const TzMessageBoxOptions& options);
int TzShowYesNoMessageBox(const TzMessageBoxOptions& options);
int TzShowYesNoCancelMessageBox(const TzMessageBoxOptions& options);
