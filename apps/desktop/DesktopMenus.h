// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <functional>
#include <map>

#include "apps/desktop/DesktopLanguage.h"
#include "apps/desktop/DesktopSession.h"
#include "apps/desktop/DesktopSettings.h"

class QAction;
class QMenu;

/// The menus of the program's window, with their keys.
///
/// What the panel has a button for presses that button, and can be chosen when the button can be pressed. A
/// key that the focused text field has a use for is the field's: Delete deletes a letter there, not a row.
class DesktopMenus {
 public:
  /// What the rest of the program does.
  struct Commands {
    std::function<void()> openCourse;
    std::function<void()> saveCourse;
    std::function<void()> saveCourseAs;
    std::function<void(const QString& file)> openRecentCourse;
    std::function<void()> showAbout;
    /// "light", "dark"; empty for the system's.
    std::function<void(const QString& word)> choosePalette;
    /// "de"; empty for the system's.
    std::function<void(const QString& identifier)> chooseLanguage;
  };

  DesktopMenus(DesktopWindow& programWindow, const DesktopSession& programSession,
               const DesktopSettings& programSettings, Commands programCommands);
  DesktopMenus(const DesktopMenus&) = delete;
  DesktopMenus& operator=(const DesktopMenus&) = delete;

  void MakeLanguages(const std::vector<DesktopLanguage::Choice>& languages);
  /// To be called when all menus are made: gives every entry a letter of its own.
  void MarkMnemonics() const;

  /// Enables what can be chosen now. Cheap; to be called whenever something may have changed.
  void Refresh() const;

 private:
  struct Entry;
  struct Choice;

  QMenu* MakeMenu(const char* key);
  QAction* AddEntry(QMenu& menu, const Entry& entry);
  void AddAll(QMenu& menu, const std::vector<Entry>& entries);
  void MakeFileMenu();
  void MakeEditMenu();
  void MakeViewMenu();
  void MakeHelpMenu();
  void FillRecent() const;
  /// One of the choices is the one in force.
  static void AddChoices(QMenu& menu, const std::vector<Choice>& choices, const QString& inForce,
                         const std::function<void(const QString& word)>& choose);

  DesktopWindow& window;
  const DesktopSession& session;
  const DesktopSettings& settings;
  Commands commands;
  /// Those that press a button of the panel, by its action.
  std::map<QAction*, TzString> pressing;
  /// Those that need a course.
  QList<QAction*> ofCourses;
  QMenu* recent = nullptr;
  QMenu* languageMenu = nullptr;
};
