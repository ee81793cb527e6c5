// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

#include "apps/desktop/DesktopProblems.h"
#include "apps/desktop/DesktopSettings.h"
#include "host/qt/TzQtUserInterface.h"

/// The drawn user interface with what a desktop adds to it: boxes tell the reason of a failure, the one after
/// publishing leads to the package, and none complains of what the author cancelled; choosers start where the
/// person was last, if the place that the component names doesn't exist; files can be handed to a chooser
/// that isn't shown then.
class DesktopUserInterface : public TzQtUserInterface {
 public:
  /// Files that were handed to a chooser.
  struct Handed {
    /// The chooser was opened.
    bool isAsked = false;
    /// Not of a kind that it offers.
    std::vector<TzPath> refused;
  };

  DesktopUserInterface(TzQtWindows& windowSystem, DesktopSettings& programSettings,
                       DesktopProblems& problemList);

  /// The next file chooser is answered with these.
  void HandToChooser(std::vector<TzPath> files);
  /// What became of them; those that nobody asked for are taken back.
  Handed TakeHanded();

  int ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) override;
  std::vector<TzPath> ChooseFiles(const TzFileChooserRequest& request) override;
  TzString ChooseFolder(const TzFolderChooserRequest& request) override;
  TzCanvasPtr CreateCanvas(const TzCanvasSpec& spec) override;
  void DialogClosed(TzCanvas& dialog, int result) override;

 private:
  int ShowPublished(const TzMessageBoxOptions& options);
  /// The cells of the publish dialog that is open; null without one.
  [[nodiscard]] TzDataModel* FindPublishCells() const;
  /// Offers the folder of the last package where the one in the dialog doesn't exist.
  void PreparePublishDialog();
  std::vector<TzPath> TakeHandedFor(const TzFileChooserRequest& request);

  DesktopSettings& settings;
  DesktopProblems& problems;
  std::vector<TzCanvasPtr> dialogs;
  std::optional<std::vector<TzPath>> waiting;
  Handed handed;
  QObject connections;
};
