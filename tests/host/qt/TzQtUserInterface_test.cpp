// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtUserInterface.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "QtSession.h"
#include "host/kelpui/UI_SubView.h"
#include "host/qt/TzQtProgress.h"
#include "support/TestSession.h"

using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeManager;
using kelpui::controls::UI_NodePtr;
using kelpui::controls::UI_SubView;

namespace {

void PressButton(QWidget& window, const QString& name) {
  auto* button = FindShown<QPushButton>(window, name);
  ASSERT_NE(button, nullptr) << name.toStdString();
  button->click();
}

}  // namespace

TEST(TzQtUserInterfaceTest, BoxesAnswerWithTheirButtonAndWhenClosedChangeNothing) {
  QtSession session;
  session.words.RegisterDefault("kTzMBButton_No", "Nein");
  session.windows.ShowWindow(session.mainWindow);
  const struct {
    int (*show)(const TzMessageBoxOptions&);
    const char* pressed;
    int answer;
  } cases[] = {
      {TzShowOkOnlyMessageBox, "OK", kTzButtonOk},
      {TzShowOkOnlyMessageBox, nullptr, kTzButtonOk},
      {TzShowYesNoMessageBox, "Yes", kTzButtonYes},
      {TzShowYesNoMessageBox, "Nein", kTzButtonNo},
      {TzShowYesNoMessageBox, nullptr, kTzButtonNo},
      {TzShowYesNoCancelMessageBox, "Nein", kTzButtonNo},
      {TzShowYesNoCancelMessageBox, "Cancel", kTzButtonCancel},
      {TzShowYesNoCancelMessageBox, nullptr, kTzButtonCancel},
  };
  for (const auto& [show, pressed, answer] : cases) {
    OnNextWindow([button = pressed](QWidget& window) {
      EXPECT_EQ(static_cast<QMessageBox&>(window).text(), "<b>50 % & more</b>") << "a text isn't markup";
      EXPECT_EQ(static_cast<QMessageBox&>(window).textFormat(), Qt::PlainText);
      if (button != nullptr) {
        PressButton(window, button);
      } else {
        QTest::keyClick(&window, Qt::Key_Escape);
      }
    });
    EXPECT_EQ(show({"Title", "<b>50 % & more</b>", session.mainWindow}), answer)
        << (pressed ? pressed : "closed");
  }
}

TEST(TzQtUserInterfaceTest, ChoosersOfferTheFiltersAndGiveThePaths) {
  QtSession session;
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  const TestFolder folder;
  folder.Write("intro.zip", "x");
  folder.Write("DOORS.ZIP", "x");
  TzFileChooserRequest request{.title = "Choose",
                               .startFolder = folder.Path(),
                               .filters = {{"SCO packages", {"zip", "pdf"}}},
                               .multiple = true};
  OnNextWindow([](QWidget& window) {
    auto& chooser = static_cast<QFileDialog&>(window);
    EXPECT_EQ(chooser.nameFilters(), QStringList{"SCO packages (*.zip *.ZIP *.pdf *.PDF)"});
    chooser.findChild<QLineEdit*>()->setText("\"intro.zip\" \"DOORS.ZIP\"");
    static_cast<QDialog&>(chooser).accept();
  });
  EXPECT_EQ(session.ui.ChooseFiles(request).size(), 2);
  OnNextWindow([](QWidget& window) { window.close(); });
  EXPECT_TRUE(session.ui.ChooseFiles(request).empty());

  OnNextWindow([](QWidget& window) { static_cast<QDialog&>(window).accept(); });
  EXPECT_EQ(session.ui.ChooseFolder({.title = "Choose", .startFolder = folder.Path().GetString()}),
            folder.Path().GetString());
  OnNextWindow([](QWidget& window) { window.close(); });
  EXPECT_TRUE(
      session.ui.ChooseFolder({.title = "Choose", .startFolder = folder.Path().GetString()}).IsEmpty());
}

TEST(TzQtUserInterfaceTest, TimersFireBetweenEventsUntilTheyAreRemoved) {
  QtSession session;
  const UI_NodePtr node(new UI_SubView);
  int fired = 0;
  node->InstallTimerNotification(&fired, [&](UI_Node& timed, std::uint32_t timer) {
    if (++fired == 3) timed.UI_RemoveTimer(timer);
    return true;
  });
  node->UI_InstallTimer(0.0, UI_NodeManager::Get().GetUniqueTimerID());
  EXPECT_EQ(fired, 0);
  QTest::qWait(50);
  EXPECT_EQ(fired, 3);
}

namespace {

/// Works for so long, as an operation that reports, and returns whether it was let go on.
bool Work(TzQtProgress& progress, int milliseconds) {
  QElapsedTimer time;
  time.start();
  while (time.elapsed() < milliseconds) {
    if (!progress.Report("adding intro.zip", 1, 4)) return false;
    QTest::qSleep(5);
  }
  return true;
}

}  // namespace

TEST(TzQtProgressTest, ADialogComesAfterAWhileAndCancelStopsTheOperation) {
  QtSession session;
  session.windows.ShowWindow(session.mainWindow);
  TzQtProgress progress(session.ui);
  EXPECT_TRUE(Work(progress, 20));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "what is quick shows nothing";
  QApplication::processEvents();

  // A timer of the component's must not fire in the middle of its own operation.
  const UI_NodePtr node(new UI_SubView);
  bool isWorking = true;
  bool hasEntered = false;
  node->InstallTimerNotification(&progress, [&](UI_Node& timed, std::uint32_t timer) {
    hasEntered = hasEntered || isWorking;
    timed.UI_RemoveTimer(timer);
    return true;
  });
  node->UI_InstallTimer(0.0, UI_NodeManager::Get().GetUniqueTimerID());
  QTimer::singleShot(400, qApp, [] {
    QWidget* window = QApplication::activeModalWidget();
    ASSERT_NE(window, nullptr);
    EXPECT_NE(FindShown<QLabel>(*window, "Adding intro.zip"), nullptr);
    PressButton(*window, "Cancel");
  });
  EXPECT_FALSE(Work(progress, 5'000));
  EXPECT_FALSE(progress.Report("adding doors.zip", 0, 1)) << "the next of several is stopped too";
  isWorking = false;
  EXPECT_FALSE(hasEntered);
  QTest::qWait(20);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_TRUE(progress.Report("publishing", 0, 1)) << "control was back with the person";
}
