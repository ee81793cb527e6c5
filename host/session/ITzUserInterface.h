// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/session/TzFileChooser.h"
#include "host/session/TzMessageBox.h"

/// Shows things to the author and takes answers. Drawn by a desktop program, scripted on the command line and
/// in tests.
class ITzUserInterface {
 public:
  virtual ~ITzUserInterface() = default;
  /// Blocks until answered; the answer is a `TzMessageBoxButton` that the kind offers.
  virtual int ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) = 0;
  /// Empty when cancelled.
  virtual std::vector<TzPath> ChooseFiles(const TzFileChooserRequest& request) = 0;
};
