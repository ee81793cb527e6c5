// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "panel/PlexoView.h"

/// The commands that a player sends to the panel by name. `PlexoView::HandleStrobeCall` tells the form of the
/// replies.
class PlexoStrobeCommands {
 public:
  /// Runs the command of the call's name; nothing happens if there is none.
  static void Run(PlexoView& view, const TzFPFunctionArgumentList& call, TzString& reply);

 private:
  using Call = TzFPFunctionArgumentList;

  struct Command {
    const char* name;
    void (*run)(PlexoView& view, const Call& call, TzString& reply);
  };

  static const Command kCommands[];

  static void CreateModuleModel(PlexoView& view, const Call& call, TzString& reply);
  static void SetModuleTitle(PlexoView& view, const Call& call, TzString& reply);
  static void SetWeightage(PlexoView& view, const Call& call, TzString& reply);
  static void SetAttempts(PlexoView& view, const Call& call, TzString& reply);
  static void SetContentForcedSequence(PlexoView& view, const Call& call, TzString& reply);
  static void SetForcedSequence(PlexoView& view, const Call& call, TzString& reply);
  static void SetCourseType(PlexoView& view, const Call& call, TzString& reply);

  static void AddPreTestSCO(PlexoView& view, const Call& call, TzString& reply);
  static void AddPostTestSCO(PlexoView& view, const Call& call, TzString& reply);
  static void AddContentSCO(PlexoView& view, const Call& call, TzString& reply);
  static void AddSCOToLinearList(PlexoView& view, const Call& call, TzString& reply);

  static void RemovePreTest(PlexoView& view, const Call& call, TzString& reply);
  static void RemovePostTest(PlexoView& view, const Call& call, TzString& reply);
  static void RemoveContentSCOs(PlexoView& view, const Call& call, TzString& reply);
  static void RemoveModule(PlexoView& view, const Call& call, TzString& reply);
  static void RemoveSCOsFromLinearList(PlexoView& view, const Call& call, TzString& reply);

  // Positions that don't exist leave the order as it is.
  static void SwapModules(PlexoView& view, const Call& call, TzString& reply);
  static void SwapContentSCOs(PlexoView& view, const Call& call, TzString& reply);
  static void SwapLinearSCOs(PlexoView& view, const Call& call, TzString& reply);

  static void ShowMessageDialog(PlexoView& view, const Call& call, TzString& reply);
  static void GetSCORMVersion(PlexoView& view, const Call& call, TzString& reply);
  static void GetCourseTitle(PlexoView& view, const Call& call, TzString& reply);
};
