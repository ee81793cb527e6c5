// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "host/session/ITzUserInterface.h"

/// Stands in for the person: while it is in force nothing is shown, and it is asked instead.
class AuthorScript {
 public:
  virtual ~AuthorScript() = default;
  virtual int AnswerBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) = 0;
  virtual std::vector<TzPath> AnswerChooser(const TzFileChooserRequest& request) = 0;
  /// A chosen file isn't added, for another one, or the same one before, has its name in the place.
  virtual void NoteTaken(const TzPath& file, const TzPath& holder) = 0;
  /// The dialog is up. It is cancelled if it still is afterwards.
  virtual void RunDialog(TzCanvas& dialog) = 0;
};
