// SPDX-License-Identifier: Apache-2.0
#include "DesktopDriver.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressDialog>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <filesystem>

#include "host/qt/TzQtText.h"

namespace {

QString WithoutMnemonic(QString text) { return text.remove(QLatin1Char('&')); }

bool IsCalled(const QWidget& widget, const QString& name) {
  return WithoutMnemonic(widget.property("text").toString()) == name || widget.accessibleName() == name ||
         widget.toolTip() == name;
}

/// Those that are shown, from the top.
template <typename Widget>
std::vector<Widget*> FindShown(const QWidget& root, const QString& name) {
  std::vector<Widget*> found;
  for (Widget* each : root.findChildren<Widget*>()) {
    if (each->isVisible() && IsCalled(*each, name)) found.push_back(each);
  }
  std::ranges::stable_sort(found, {}, [](Widget* each) { return each->mapToGlobal(QPoint()).y(); });
  return found;
}

QModelIndexList ListBelow(const QAbstractItemModel& model,
                          const QModelIndex& parent) {  // NOLINT(misc-no-recursion)
  QModelIndexList list;
  for (int row = 0; row < model.rowCount(parent); ++row) {
    list << model.index(row, 0, parent);
    list << ListBelow(model, list.last());
  }
  return list;
}

}  // namespace

QString ToQtPath(const TzPath& path) { return QString::fromStdString(path.GetNative()); }

DesktopHome::DesktopHome() {
  qputenv("HOME", folder.Path().GetNative().c_str());
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

DesktopPlaces DesktopHome::MakePlaces() {
  const TzPath library = folder.Write("component" + std::to_string(++copies) + "/libplexo.so", "");
  std::filesystem::copy_file(PLEXO_BIN "/libplexo.so", library.GetNative(),
                             std::filesystem::copy_options::overwrite_existing);
  return {.component = library,
          .translations = TzPath(PLEXO_BIN "/translations"),
          .settingsFile = ToQtPath(folder.Path() / "settings.ini"),
          .journals = folder.Path() / "journals"};
}

DesktopDriver::DesktopDriver(DesktopHome& home, const DesktopArguments& arguments,
                             std::deque<Person> personsAtStart)
    : program(std::make_unique<DesktopProgram>(home.MakePlaces(), arguments)),
      persons(std::move(personsAtStart)) {
  Watch();
  EXPECT_TRUE(program->Start());
  program->Welcome();
  Settle();
}

DesktopDriver::~DesktopDriver() {
  EXPECT_TRUE(IsFinished()) << "a window that was expected didn't come";
  program.reset();
}

void DesktopDriver::Settle(int milliseconds) { QTest::qWait(milliseconds); }

void DesktopDriver::OnNextWindow(Person person) { persons.push_back(std::move(person)); }

void DesktopDriver::OnProgress(Person person) { progressPersons.push_back(std::move(person)); }

void DesktopDriver::PressInNextWindow(const QString& caption) {
  OnNextWindow([caption](QWidget& window) { Press(window, caption); });
}

void DesktopDriver::ChooseInNextWindow(const std::vector<TzPath>& files) {
  OnNextWindow([files](QWidget& window) {
    auto* chooser = qobject_cast<QFileDialog*>(&window);
    ASSERT_NE(chooser, nullptr) << window.windowTitle().toStdString();
    QStringList names;
    for (const TzPath& file : files) names << QLatin1Char('"') + ToQtPath(file) + QLatin1Char('"');
    chooser->findChild<QLineEdit*>()->setText(names.join(QLatin1Char(' ')));
    static_cast<QDialog*>(chooser)->accept();
  });
}

// A chain of timers, not one: the person's act may take events itself.
void DesktopDriver::Watch() {
  constexpr int kInterval = 10;
  QTimer::singleShot(kInterval, &connections, [this] {
    Watch();
    QWidget* window = QApplication::activeModalWidget();
    if (window != nullptr && window->isVisible() && !dealtWith.contains(window)) Deal(*window);
  });
}

void DesktopDriver::Deal(QWidget& window) {
  std::deque<Person>& queue = qobject_cast<QProgressDialog*>(&window) != nullptr ? progressPersons : persons;
  if (const auto* box = qobject_cast<QMessageBox*>(&window)) {
    // What was dealt with may come again at the same address.
    boxes.push_back(box->text().toStdString());
  }
  dealtWith.removeAll(nullptr);
  dealtWith << &window;
  if (!queue.empty()) {
    const Person person = std::move(queue.front());
    queue.pop_front();
    person(window);
    CloseLater(window);
    return;
  }
  if (qobject_cast<QProgressDialog*>(&window) != nullptr) return;
  auto* box = qobject_cast<QMessageBox*>(&window);
  ADD_FAILURE() << "nobody expected this window: " << window.windowTitle().toStdString() << ": "
                << (box != nullptr ? box->text().toStdString() : "");
  // Some boxes want an answer.
  if (box != nullptr) return box->done(0);
  window.close();
}

// A test fails rather than waiting for ever.
void DesktopDriver::CloseLater(QWidget& window) {
  constexpr int kPatience = 15'000;
  QTimer::singleShot(kPatience, &window, [&window] {
    if (!window.isVisible()) return;
    ADD_FAILURE() << "a window is still open: " << window.windowTitle().toStdString();
    if (auto* box = qobject_cast<QMessageBox*>(&window)) return box->done(0);
    window.close();
  });
}

void DesktopDriver::Press(QWidget& root, const QString& caption, std::size_t index) {
  const auto buttons = FindShown<QAbstractButton>(root, caption);
  ASSERT_LT(index, buttons.size()) << "no button '" << caption.toStdString() << "'";
  ASSERT_TRUE(buttons[index]->isEnabled()) << caption.toStdString();
  QTest::mouseClick(buttons[index], Qt::LeftButton);
}

void DesktopDriver::Press(const QString& caption, std::size_t index) {
  Press(Window(), caption, index);
  Settle();
}

void DesktopDriver::Type(QWidget& root, const QString& label, const QString& text, std::size_t index) {
  const auto fields = FindShown<QWidget>(root, label);
  std::vector<QWidget*> typed;
  std::ranges::copy_if(fields, std::back_inserter(typed), [](QWidget* each) {
    return each->inherits("QLineEdit") || each->inherits("QAbstractSpinBox") ||
           each->inherits("QPlainTextEdit");
  });
  ASSERT_LT(index, typed.size()) << "no field '" << label.toStdString() << "'";
  QWidget* field = typed[index];
  QTest::mouseClick(field, Qt::LeftButton, Qt::NoModifier, QPoint(8, field->height() / 2));
  QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(field, text);
}

void DesktopDriver::TypeNumber(const QString& number, std::size_t index) {
  std::vector<QAbstractSpinBox*> fields;
  for (auto* each : Window().findChildren<QAbstractSpinBox*>()) {
    if (each->isVisible()) fields.push_back(each);
  }
  std::ranges::stable_sort(fields, {}, [](QWidget* each) { return each->mapToGlobal(QPoint()).y(); });
  ASSERT_LT(index, fields.size());
  QTest::mouseClick(fields[index], Qt::LeftButton, Qt::NoModifier, QPoint(8, fields[index]->height() / 2));
  QTest::keyClick(fields[index], Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(fields[index], number);
}

void DesktopDriver::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  // Where there is no window manager, nobody gives the window back its focus after a dialog.
  if (QApplication::activeWindow() == nullptr) QApplication::setActiveWindow(&Window());
  QWidget* focused = QApplication::focusWidget();
  QTest::keyClick(focused != nullptr ? focused : &Window(), key, modifiers);
  Settle();
}

bool DesktopDriver::Drop(QWidget& widget, const QPoint& place, const std::vector<TzPath>& files) {
  QList<QUrl> urls;
  for (const TzPath& file : files) urls << QUrl::fromLocalFile(ToQtPath(file));
  QMimeData data;
  data.setUrls(urls);
  QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &enter);
  QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &move);
  if (!move.isAccepted()) {
    QDragLeaveEvent leave;
    QApplication::sendEvent(&widget, &leave);
    return false;
  }
  QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &drop);
  Settle();
  return drop.isAccepted();
}

QTreeView* DesktopDriver::List() {
  for (auto* view : Window().findChildren<QTreeView*>()) {
    if (view->isVisible()) return view;
  }
  return nullptr;
}

QStringList DesktopDriver::Rows() {
  Settle();
  QStringList texts;
  const QTreeView* list = List();
  if (list == nullptr) return texts;
  for (const QModelIndex& index : ListBelow(*list->model(), {})) texts << index.data().toString();
  return texts;
}

void DesktopDriver::Select(int row) {
  const QModelIndex index = ListBelow(*List()->model(), {}).value(row);
  QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, List()->visualRect(index).center());
  Settle();
}

QStringList DesktopDriver::ReadTexts(const QWidget& window) {
  QStringList texts;
  for (const auto* each : window.findChildren<QWidget*>()) {
    const bool isField = each->inherits("QLineEdit") || each->inherits("QPlainTextEdit");
    if (!each->isVisible() || isField) continue;
    for (const char* property : {"text", "title", "toolTip", "accessibleName"}) {
      texts << each->property(property).toString();
    }
    const auto* items = qobject_cast<const QAbstractItemView*>(each);
    if (items == nullptr || items->model() == nullptr) continue;
    for (const QModelIndex& index : ListBelow(*items->model(), {})) texts << index.data().toString();
  }
  texts.removeAll(QString());
  return texts;
}

void DesktopDriver::Begin(const QString& templateName, const QString& identifier) {
  OnNextWindow([identifier](QWidget& dialog) {
    Type(dialog, "Identifier:", identifier);
    Press(dialog, "OK");
  });
  Press(templateName);
}

TzPath DesktopDriver::Publish(const TzPath& folder, const QString& name) {
  OnNextWindow([&](QWidget& dialog) {
    Type(dialog, "Project Title", name);
    Type(dialog, "Publish Folder", ToQtPath(folder));
    PressInNextWindow("OK");
    Press(dialog, "Publish");
  });
  Key(Qt::Key_P, Qt::ControlModifier);
  return folder / (FromQtText(name) + ".zip");
}
