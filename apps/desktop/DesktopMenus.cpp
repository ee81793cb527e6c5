// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopMenus.h"

#include <QAction>
#include <QActionGroup>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <ranges>
#include <utility>

#include "apps/desktop/PanelGlance.h"
#include "host/qt/TzQtMnemonics.h"

/// An entry that does something.
struct DesktopMenus::Entry {
  const char* key;
  const char* keys = nullptr;
  /// Of the panel's button that it presses; null if it has a command.
  const char* button = nullptr;
  std::function<void()> command = {};
  bool needsCourse = false;
};

/// An entry of a menu of which one is in force.
struct DesktopMenus::Choice {
  QString word;
  QString caption;
};

namespace {

void MarkActions(const QList<QAction*>& actions) {
  std::vector<QString> captions;
  for (const QAction* action : actions) captions.push_back(action->text());
  const std::vector<qsizetype> places = ChooseTzMnemonics(captions);
  for (std::size_t index = 0; index < captions.size(); ++index) {
    actions[static_cast<qsizetype>(index)]->setText(MarkTzMnemonic(captions[index], places[index]));
  }
}

}  // namespace

DesktopMenus::DesktopMenus(DesktopWindow& programWindow, const DesktopSession& programSession,
                           const DesktopSettings& programSettings, Commands programCommands)
    : window(programWindow),
      session(programSession),
      settings(programSettings),
      commands(std::move(programCommands)) {
  MakeFileMenu();
  MakeEditMenu();
  MakeViewMenu();
  MakeHelpMenu();
}

QMenu* DesktopMenus::MakeMenu(const char* key) { return window.menuBar()->addMenu(session.GetWord(key)); }

QAction* DesktopMenus::AddEntry(QMenu& menu, const Entry& entry) {
  QAction* action = menu.addAction(session.GetWord(entry.key));
  if (entry.keys != nullptr) action->setShortcut(QKeySequence(QLatin1String(entry.keys)));
  if (entry.needsCourse) ofCourses << action;
  if (entry.button == nullptr) {
    QObject::connect(action, &QAction::triggered, &window, entry.command);
    return action;
  }
  const TzString button = entry.button;
  pressing.emplace(action, button);
  QObject::connect(action, &QAction::triggered, &window,
                   [this, button] { session.GetScreen().Press(button); });
  return action;
}

void DesktopMenus::AddAll(QMenu& menu, const std::vector<Entry>& entries) {
  for (const Entry& entry : entries) AddEntry(menu, entry);
}

void DesktopMenus::MakeFileMenu() {
  QMenu& menu = *MakeMenu("kDesktopFileMenu");
  AddAll(menu, {{.key = "kDesktopNewCourse", .keys = "Ctrl+N", .button = "new"},
                {.key = "kDesktopOpenCourse", .keys = "Ctrl+O", .command = commands.openCourse}});
  recent = menu.addMenu(session.GetWord("kDesktopRecentCourses"));
  QObject::connect(recent, &QMenu::aboutToShow, &window, [this] { FillRecent(); });
  menu.addSeparator();
  AddAll(
      menu,
      {{.key = "kDesktopSaveCourse", .keys = "Ctrl+S", .command = commands.saveCourse, .needsCourse = true},
       {.key = "kDesktopSaveCourseAs",
        .keys = "Ctrl+Shift+S",
        .command = commands.saveCourseAs,
        .needsCourse = true}});
  menu.addSeparator();
  AddEntry(menu, {.key = "kDesktopPublish", .keys = "Ctrl+P", .button = "publish"});
  menu.addSeparator();
  AddEntry(menu, {.key = "kDesktopQuit", .keys = "Ctrl+Q", .command = [this] { window.close(); }});
}

void DesktopMenus::MakeEditMenu() {
  QMenu& menu = *MakeMenu("kDesktopEditMenu");
  AddAll(menu, {{.key = "kDesktopAddFile", .keys = "Ctrl+I", .button = "add_file"},
                {.key = "kDesktopAddModule", .keys = "Ctrl+M", .button = "add_module"}});
  menu.addSeparator();
  AddAll(menu, {{.key = "kDesktopMoveUp", .keys = "Alt+Up", .button = "move_up"},
                {.key = "kDesktopMoveDown", .keys = "Alt+Down", .button = "move_down"},
                {.key = "kDesktopDelete", .keys = "Del", .button = "delete"}});
}

void DesktopMenus::MakeViewMenu() {
  QMenu& menu = *MakeMenu("kDesktopViewMenu");
  AddChoices(*menu.addMenu(session.GetWord("kDesktopAppearance")),
             {{{}, session.GetWord("kDesktopSystem")},
              {QStringLiteral("light"), session.GetWord("kDesktopLight")},
              {QStringLiteral("dark"), session.GetWord("kDesktopDark")}},
             settings.GetPalette(), commands.choosePalette);
  languageMenu = menu.addMenu(session.GetWord("kDesktopLanguage"));
}

void DesktopMenus::MakeLanguages(const std::vector<DesktopLanguage::Choice>& languages) {
  std::vector<Choice> choices{{{}, session.GetWord("kDesktopSystem")}};
  for (const auto& [identifier, name] : languages) choices.push_back({identifier, name});
  AddChoices(*languageMenu, choices, settings.GetLanguage(), commands.chooseLanguage);
}

void DesktopMenus::MakeHelpMenu() {
  AddEntry(*MakeMenu("kDesktopHelpMenu"), {.key = "kDesktopAbout", .command = commands.showAbout});
}

void DesktopMenus::AddChoices(QMenu& menu, const std::vector<Choice>& choices, const QString& inForce,
                              const std::function<void(const QString& word)>& choose) {
  auto* group = new QActionGroup(&menu);
  for (const auto& [word, caption] : choices) {
    QAction* action = menu.addAction(caption);
    action->setCheckable(true);
    action->setChecked(word == inForce);
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, &menu, [choose, chosen = word] { choose(chosen); });
  }
}

void DesktopMenus::FillRecent() const {
  recent->clear();
  const QStringList files = settings.GetRecentCourses();
  for (const QString& file : files) {
    QAction* action = recent->addAction(QFileInfo(file).fileName());
    action->setToolTip(file);
    QObject::connect(action, &QAction::triggered, &window, [this, file] { commands.openRecentCourse(file); });
  }
  recent->setToolTipsVisible(true);
  MarkActions(recent->actions());
}

void DesktopMenus::MarkMnemonics() const {
  MarkActions(window.menuBar()->actions());
  const QList<QMenu*> menus = window.menuBar()->findChildren<QMenu*>();
  for (const QMenu* menu : menus) MarkActions(menu->actions());
}

void DesktopMenus::Refresh() const {
  const CourseScreen& screen = session.GetScreen();
  for (const auto& [action, button] : pressing) action->setEnabled(CanPress(screen, button));
  const bool hasCourse = screen.GetTemplate().has_value();
  for (QAction* action : ofCourses) action->setEnabled(hasCourse);
  recent->menuAction()->setEnabled(!settings.GetRecentCourses().isEmpty());
}
