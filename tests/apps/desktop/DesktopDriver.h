// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QStringList>
#include <QTreeView>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apps/desktop/DesktopProgram.h"
#include "support/TestSession.h"

/// Where the program's runs keep their settings and journals: one person's machine.
class DesktopHome {
 public:
  DesktopHome();

  [[nodiscard]] const TzPath& Path() const { return folder.Path(); }
  [[nodiscard]] const TestFolder& Folder() const { return folder; }
  /// With a component that nobody has used: a copy of the library is another one.
  DesktopPlaces MakePlaces();

 private:
  TestFolder folder;
  int copies = 0;
};

QString ToQtPath(const TzPath& path);

/// A running program and the person in front of it, who has a mouse and a keyboard and knows things by what
/// is written on them.
class DesktopDriver {
 public:
  using Person = std::function<void(QWidget& window)>;

  /// The persons deal with the windows that come at the start.
  explicit DesktopDriver(DesktopHome& home, const DesktopArguments& arguments = {},
                         std::deque<Person> personsAtStart = {});
  ~DesktopDriver();
  DesktopDriver(const DesktopDriver&) = delete;
  DesktopDriver& operator=(const DesktopDriver&) = delete;

  DesktopProgram& Program() { return *program; }
  DesktopWindow& Window() { return program->GetWindow(); }

  /// What the person does in the next windows that hold up the program, one each in this order; windows that
  /// come while another one is dealt with count too.
  void OnNextWindow(Person person);
  /// The same for the progress dialog.
  void OnProgress(Person person);
  /// Presses the button of this caption in the next window, whatever it says.
  void PressInNextWindow(const QString& caption);
  /// Chooses files in the next window, a file chooser.
  void ChooseInNextWindow(const std::vector<TzPath>& files);
  [[nodiscard]] bool IsFinished() const { return persons.empty() && progressPersons.empty(); }
  /// Texts of the message boxes that came.
  [[nodiscard]] const std::vector<std::string>& Boxes() const { return boxes; }

  /// Clicks the shown button of this caption, or tooltip; of several, the one at this index from the top.
  static void Press(QWidget& root, const QString& caption, std::size_t index = 0);
  void Press(const QString& caption, std::size_t index = 0);
  /// Clicks into the field of this label and replaces its text.
  static void Type(QWidget& root, const QString& label, const QString& text, std::size_t index = 0);
  /// The same with the number field at this index from the top.
  void TypeNumber(const QString& number, std::size_t index);
  /// A key combination, to whatever has the focus.
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Drags files onto the place in the widget and drops them. False if they weren't taken while dragged.
  static bool Drop(QWidget& widget, const QPoint& place, const std::vector<TzPath>& files);

  /// Chooses the template and confirms the details.
  void Begin(const QString& templateName, const QString& identifier = "My Course 1");
  /// The rows of the list on the screen, with those below rows behind them.
  [[nodiscard]] QStringList Rows();
  /// Clicks the row of the list at this index.
  void Select(int row);
  /// The list on the screen; null without one.
  [[nodiscard]] QTreeView* List();
  /// All that a window says, but what stands in fields.
  static QStringList ReadTexts(const QWidget& window);

  /// Publishes as NAME.zip into the folder and returns the package.
  TzPath Publish(const TzPath& folder, const QString& name);
  /// Lets the program have its events until nothing more comes.
  static void Settle(int milliseconds = 30);

 private:
  void Watch();
  void Deal(QWidget& window);
  static void CloseLater(QWidget& window);

  std::unique_ptr<DesktopProgram> program;
  std::deque<Person> persons;
  std::deque<Person> progressPersons;
  QList<QPointer<QWidget>> dealtWith;
  std::vector<std::string> boxes;
  QObject connections;
};
