// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageBox>
#include <QString>
#include <memory>

#include "apps/desktop/ComponentLibrary.h"
#include "apps/desktop/CourseDesk.h"
#include "apps/desktop/CourseDrops.h"
#include "apps/desktop/CourseHints.h"
#include "apps/desktop/CourseKeeper.h"
#include "apps/desktop/DesktopArguments.h"
#include "apps/desktop/DesktopMenus.h"
#include "apps/desktop/DesktopPlaces.h"
#include "apps/desktop/DesktopSession.h"

/// The panel as a program: a window with menus around the component, and what an author expects beside it.
/// Needs a `QApplication`. One at a time; a component that has ended can't be started again.
class DesktopProgram {
 public:
  DesktopProgram(const DesktopPlaces& programPlaces, const DesktopArguments& programArguments);
  /// Ends the component, if it was started.
  ~DesktopProgram();
  DesktopProgram(const DesktopProgram&) = delete;
  DesktopProgram& operator=(const DesktopProgram&) = delete;

  /// Starts the component and shows the window. False, after a box that tells why, if there is no component.
  [[nodiscard]] bool Start();
  /// What waits for the author at the start: work that was left, the course file of the command line. To be
  /// called once the window shows.
  void Welcome();

  [[nodiscard]] DesktopWindow& GetWindow() { return window; }
  [[nodiscard]] DesktopSession& GetSession() { return session; }
  [[nodiscard]] CourseDesk& GetDesk() { return desk; }

 private:
  DesktopMenus::Commands MakeCommands();
  void SpeakLanguage();
  void ChooseLanguage(const QString& identifier);
  void ChoosePalette(const QString& word);
  void ShowAbout();
  void ShowBox(QMessageBox::Icon icon, const QString& title, const QString& text, const QString& more);
  /// Brings what the program shows around the panel up to the panel's state.
  void Follow();
  void Closing();

  DesktopPlaces places;
  DesktopArguments arguments;
  DesktopSettings settings;
  DesktopWindow window;
  DesktopSession session;
  DesktopLanguage language;
  CourseDesk desk;
  CourseHints hints;
  ITzComponent* component = nullptr;
  std::unique_ptr<DesktopMenus> menus;
  std::unique_ptr<CourseKeeper> keeper;
  std::unique_ptr<CourseDrops> drops;
  QObject connections;
};
