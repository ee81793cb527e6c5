// SPDX-License-Identifier: Apache-2.0
// Takes pictures of the program's screens: usage: desktop-screenshots FOLDER [LANGUAGE [PALETTE [WIDTH
// HEIGHT]]]
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

#include "DesktopDriver.h"
#include "support/ProgramRun.h"

namespace {

constexpr const char* kFlat = R"(template: multiple-scos
identifier: Fire_Safety
title: Fire safety
version: "1.0"
files: [packages/2004/intro.zip, packages/2004/doors.zip, packages/2004/extinguishers.zip]
)";

constexpr const char* kRemediation = R"(template: simple-remediation
identifier: Fire_Safety
title: Fire safety
modules:
  - {title: Alarm, weightage: 40, content: [packages/2004/intro.zip], post-test: packages/2004/doors.zip}
  - {title: Doors, weightage: 60, content: [packages/2004/doors.zip], post-test: packages/2004/intro.zip}
)";

constexpr const char* kRollup = R"(template: test-rollup
identifier: Fire_Safety
title: Fire safety
force-sequence: true
modules:
  - title: Alarm
    weightage: 40
    pretest: packages/2004/doors.zip
    content: [packages/2004/intro.zip, packages/2004/extinguishers.zip]
    post-test: packages/2004/doors.zip
  - {title: Doors, weightage: 60, pretest: packages/2004/intro.zip, content: [packages/2004/doors.zip], post-test: packages/2004/intro.zip}
)";

constexpr const char* kMissing = R"(template: multiple-scos
identifier: Fire_Safety
title: Fire safety
files: [packages/2004/intro.zip, packages/2004/ladders.zip, packages/1.2/doors.zip]
)";

class Photographer {
 public:
  Photographer(DesktopHome& home, QDir pictureFolder, const DesktopArguments& arguments, QSize size)
      : folder(std::move(pictureFolder)),
        driver(home, arguments),
        screen(driver.Program().GetSession().GetScreen()) {
    driver.Window().resize(size);
    DesktopDriver::Settle();
  }

  DesktopDriver& Driver() { return driver; }

  void Take(QWidget& widget, const QString& name) {
    DesktopDriver::Settle(100);
    widget.grab().save(folder.filePath(name + ".png"));
  }

  /// Of the next window, which the default button or else its end answers.
  void TakeNext(const QString& name, bool isAnswered) {
    driver.OnNextWindow([this, name, isAnswered](QWidget& window) {
      Take(window, name);
      for (auto* button : window.findChildren<QPushButton*>()) {
        if (!isAnswered || !button->isVisible() || !button->isDefault()) continue;
        button->click();
        return;
      }
      window.close();
    });
  }

  void Press(const char* action) {
    screen.Press(action);
    DesktopDriver::Settle();
  }

  void Open(const TzPath& file, const QString& name) {
    driver.Program().GetDesk().OpenFile(QString::fromStdString(file.GetNative()));
    Take(driver.Window(), name);
  }

  /// Leaves the course that is there without publishing it.
  void Leave(const QString& name) {
    driver.OnNextWindow([this, name](QWidget& window) {
      Take(window, name);
      DesktopDriver::Press(window, driver.Program().GetSession().GetWord("kTzMBButton_No"));
    });
    Press("new");
  }

 private:
  QDir folder;
  DesktopDriver driver;
  const CourseScreen& screen;
};

void TakeCourses(Photographer& photographer, const DesktopHome& home) {
  const TestFolder& desk = home.Folder();
  photographer.Open(desk.Write("rollup.plexo.yaml", kRollup), "rollup");
  photographer.Leave("question");
  photographer.Open(desk.Write("remediation.plexo.yaml", kRemediation), "remediation");
  photographer.Leave("question");
  photographer.TakeNext("refused", true);
  photographer.Open(desk.Write("missing.plexo.yaml", kMissing), "partly");
  photographer.TakeNext("unsaved", false);
  photographer.Open(desk.Path() / "rollup.plexo.yaml", "partly");
  photographer.Leave("question");
  photographer.Open(desk.Write("flat.plexo.yaml", kFlat), "flat");
  photographer.Driver().OnNextWindow([&](QWidget& dialog) {
    dialog.findChildren<QLineEdit*>().at(1)->setFocus();
    for (auto* field : dialog.findChildren<QLineEdit*>()) {
      if (!field->text().startsWith("/")) continue;
      field->selectAll();
      QTest::keyClicks(field, QString::fromStdString(home.Path().GetNative()));
    }
    photographer.Take(dialog, "publish");
    photographer.TakeNext("published", true);
    for (auto* button : dialog.findChildren<QPushButton*>()) {
      if (button->isVisible() && button->isDefault()) return button->click();
    }
  });
  photographer.Press("publish");
}

void TakeProgress(Photographer& photographer) {
  photographer.Driver().OnProgress([&](QWidget& window) { photographer.Take(window, "progress"); });
  QElapsedTimer time;
  for (time.start(); time.elapsed() < 700;) {
    photographer.Driver().Program().GetSession().GetProgress().Report("adding extinguishers.zip", 62, 100);
  }
  DesktopDriver::Settle(100);
}

void TakeAll(DesktopHome& home, const QDir& folder, const DesktopArguments& arguments, QSize size) {
  {
    Photographer photographer(home, folder, arguments, size);
    DesktopDriver& driver = photographer.Driver();
    photographer.Take(driver.Window(), "choice");
    photographer.TakeNext("details", false);
    photographer.Press("multiple_scos_action");
    driver.Program().GetDesk().OpenFile(QString::fromStdString(
        home.Folder()
            .Write("empty.plexo.yaml", "template: multiple-scos\nidentifier: Empty\nfiles: []\n")
            .GetNative()));
    photographer.Take(driver.Window(), "empty");
    photographer.TakeNext("error", true);
    photographer.Press("publish");
    photographer.Press("new");
    TakeCourses(photographer, home);
    TakeProgress(photographer);
    const QList<QAction*> menus = driver.Window().menuBar()->actions();
    for (qsizetype place = 0; place < menus.size(); ++place) {
      menus[place]->menu()->popup(driver.Window().mapToGlobal(QPoint()));
      photographer.Take(*menus[place]->menu(), QStringLiteral("menu-%1").arg(place + 1));
      menus[place]->menu()->close();
    }
    photographer.TakeNext("about", true);
    driver.Window().menuBar()->actions().last()->menu()->actions().first()->trigger();
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  const QStringList words = QApplication::arguments();
  if (words.size() < 2) return 2;
  QApplication::setApplicationName("Plexo");
  const QDir folder(words[1]);
  folder.mkpath(".");
  DesktopHome home;
  ProgramRun(PLEXO_SOURCE "/examples/fire-safety/build-packages", {(home.Path() / "packages").GetNative()})
      .Run();
  DesktopArguments arguments;
  arguments.language = words.value(2, "en");
  arguments.palette = words.value(3, "light");
  TakeAll(home, folder, arguments, {words.value(4, "900").toInt(), words.value(5, "660").toInt()});
  return 0;
}
