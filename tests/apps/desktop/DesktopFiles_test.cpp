// SPDX-License-Identifier: Apache-2.0
// Course files, the journal, and what is remembered between runs.
#include <QAction>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include "DesktopTest.h"
#include "support/ProgramRun.h"

using DesktopFilesTest = DesktopTest;

namespace {

constexpr const char* kOther = "template: multiple-scos\nidentifier: X\nfiles: [b.zip]\n";

/// Long enough for the journal.
constexpr int kASecondAndMore = 1300;

DesktopArguments Open(const TzPath& course) {
  DesktopArguments arguments;
  arguments.course = ToQtPath(course);
  return arguments;
}

}  // namespace

TEST_F(DesktopFilesTest, ACourseOfTheCommandLineIsOpenedAndWhatIsRefusedIsListed) {
  const TzPath course = home.Folder().Write(
      "fire.plexo.yaml",
      "template: multiple-scos\nidentifier: Fire\ntitle: Fire\nfiles: [b.zip, lost.zip, a.zip]\n");
  QStringList texts;
  DesktopDriver driver(home, Open(course), {[&](QWidget& window) {
                         texts = DesktopDriver::ReadTexts(window);
                         DesktopDriver::Press(window, "OK");
                       }});
  EXPECT_TRUE(texts.join("\n").contains("lost.zip: doesn't exist")) << texts.join("\n").toStdString();
  EXPECT_EQ(driver.Rows(), (QStringList{"b", "a"}));
  EXPECT_EQ(driver.Window().windowTitle(), "fire.plexo.yaml[*]");
  EXPECT_TRUE(driver.Window().isWindowModified()) << "the file says more than the panel holds";
}

TEST_F(DesktopFilesTest, AFileThatIsNoCourseLeavesThePanelAsItIs) {
  const TzPath wrong = home.Folder().Write("wrong.yaml", "template: spiral\nfiles: 3\n");
  QStringList texts;
  DesktopDriver driver(home, Open(wrong), {[&](QWidget& window) {
                         texts = DesktopDriver::ReadTexts(window);
                         DesktopDriver::Press(window, "OK");
                       }});
  EXPECT_TRUE(texts.join("\n").contains("1:11: ")) << texts.join("\n").toStdString();
  EXPECT_FALSE(driver.Program().GetSession().GetScreen().GetTemplate());
  EXPECT_EQ(driver.Window().windowTitle(), "");
}

TEST_F(DesktopFilesTest, AMarkSaysThatThereIsSomethingToSave) {
  DesktopDriver driver(home);
  driver.Begin("Multiple SCOs");
  DesktopDriver::Settle(kASecondAndMore);
  EXPECT_EQ(driver.Window().windowTitle(), "Unsaved course[*]");
  EXPECT_FALSE(driver.Window().isWindowModified()) << "nothing was added yet";
  driver.ChooseInNextWindow({File("a"), File("b")});
  driver.Press("+ File");
  DesktopDriver::Settle(kASecondAndMore);
  EXPECT_TRUE(driver.Window().isWindowModified());
  driver.ChooseInNextWindow({home.Path() / "one"});
  driver.Key(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(QFile::exists(ToQtPath(home.Path() / "one.plexo.yaml")));
  EXPECT_FALSE(driver.Window().isWindowModified());
  driver.Select(0);
  driver.Key(Qt::Key_Delete);
  DesktopDriver::Settle(kASecondAndMore);
  EXPECT_TRUE(driver.Window().isWindowModified());
  driver.PressInNextWindow("No");
  driver.Press("New");
  EXPECT_EQ(driver.Window().windowTitle(), "");
}

TEST_F(DesktopFilesTest, WorkThatWasLeftIsOfferedAtTheNextStartButNotWhileItsProgramRuns) {
  {
    DesktopDriver driver(home);
    BeginFlat(driver, {File("a"), File("b")});
    DesktopDriver::Settle(kASecondAndMore);
    // No window comes: nobody expects one.
    const DesktopDriver second(home);
  }
  for (const char* answer : {"Restore", "Discard"}) {
    DesktopDriver driver(home, {}, {[&](QWidget& window) { DesktopDriver::Press(window, answer); }});
    const bool isRestored = answer == std::string("Restore");
    EXPECT_EQ(driver.Rows(), isRestored ? (QStringList{"a", "b"}) : QStringList()) << answer;
    EXPECT_EQ(driver.Window().isWindowModified(), isRestored);
  }
  const DesktopDriver driver(home);
}

TEST_F(DesktopFilesTest, WorkThatWasGivenUpUnsavedIsOfferedUntilThereIsOther) {
  const TzPath other = home.Folder().Write("x.plexo.yaml", kOther);
  {
    DesktopDriver driver(home);
    BeginFlat(driver, {File("a")});
    DesktopDriver::Settle(kASecondAndMore);
    driver.PressInNextWindow("No");
    driver.Press("New");
    DesktopDriver::Settle(kASecondAndMore);
    driver.Window().close();
  }
  {
    DesktopDriver driver(home, Open(other),
                         {[](QWidget& window) { DesktopDriver::Press(window, "Cancel"); }});
    driver.Select(0);
    DesktopDriver::Settle(kASecondAndMore);
    EXPECT_EQ(driver.Rows(), QStringList{"b"});
  }
  {
    DesktopDriver driver(home, {}, {[](QWidget& window) { DesktopDriver::Press(window, "Restore"); }});
    EXPECT_EQ(driver.Rows(), QStringList{"a"});
    driver.ChooseInNextWindow({home.Path() / "kept"});
    driver.Key(Qt::Key_S, Qt::ControlModifier);
    DesktopDriver::Settle(kASecondAndMore);
  }
  const DesktopDriver driver(home);
}

TEST_F(DesktopFilesTest, WhoStaysWithTheCourseKeepsItHoweverAnotherIsOpened) {
  const TzPath other = home.Folder().Write("x.plexo.yaml", kOther);
  DesktopSettings(ToQtPath(home.Path() / "settings.ini")).AddRecentCourse(ToQtPath(other));
  DesktopDriver driver(home);
  BeginFlat(driver, {File("a")});
  const std::function<void()> ways[] = {
      [&] {
        driver.ChooseInNextWindow({other});
        driver.PressInNextWindow("Cancel");
        driver.Key(Qt::Key_O, Qt::ControlModifier);
      },
      [&] {
        driver.PressInNextWindow("Cancel");
        DesktopDriver::Drop(driver.Window(), {20, 20}, {other});
      },
      [&] {
        driver.OnNextWindow([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); });
        for (auto* action : driver.Window().findChildren<QAction*>()) {
          if (action->menu() != nullptr) emit action->menu()->aboutToShow();
        }
        for (auto* action : driver.Window().findChildren<QAction*>()) {
          if (action->toolTip() == ToQtPath(other)) action->trigger();
        }
      },
      [&] {
        // Whoever doesn't say where to save it hasn't saved it.
        driver.PressInNextWindow("Save");
        driver.OnNextWindow([](QWidget& chooser) { chooser.close(); });
        DesktopDriver::Drop(driver.Window(), {20, 20}, {other});
      },
  };
  for (const auto& open : ways) {
    open();
    EXPECT_EQ(driver.Rows(), QStringList{"a"});
    EXPECT_EQ(driver.Window().windowTitle(), "Unsaved course[*]");
    EXPECT_TRUE(driver.Window().isWindowModified());
  }
  EXPECT_EQ(driver.Boxes(), std::vector<std::string>(4, "Save this course before another one is opened?"));
}

TEST_F(DesktopFilesTest, ACourseThatWasSavedOrGivenUpForAnotherIsNotOfferedAgain) {
  const TzPath other = home.Folder().Write("x.plexo.yaml", kOther);
  for (const char* answer : {"Save", "Don't Save"}) {
    DesktopDriver driver(home);
    BeginFlat(driver, {File("a")});
    DesktopDriver::Settle(kASecondAndMore);
    driver.PressInNextWindow(answer);
    const bool isSaved = answer == std::string("Save");
    if (isSaved) driver.ChooseInNextWindow({home.Path() / "kept"});
    DesktopDriver::Drop(driver.Window(), {20, 20}, {other});
    EXPECT_EQ(driver.Rows(), QStringList{"b"});
    DesktopDriver::Settle(kASecondAndMore);
  }
  DesktopDriver driver(home, Open(home.Path() / "kept.plexo.yaml"));
  EXPECT_EQ(driver.Rows(), QStringList{"a"});
}

TEST_F(DesktopFilesTest, ACourseIsOpenedAsItWasSavedJustNowAndOneThatIsSavedNeedsNoQuestion) {
  const TzPath other = home.Folder().Write("x.plexo.yaml", kOther);
  DesktopDriver driver(home, Open(other));
  driver.ChooseInNextWindow({File("c")});
  driver.Press("+ File");
  driver.PressInNextWindow("Save");
  for (const char* occasion : {"asked", "not asked"}) {
    DesktopDriver::Drop(driver.Window(), {20, 20}, {other});
    EXPECT_EQ(driver.Rows(), (QStringList{"b", "c"})) << occasion;
    EXPECT_FALSE(driver.Window().isWindowModified()) << occasion;
  }
}

TEST_F(DesktopFilesTest, FoldersAndCoursesAreRemembered) {
  home.Folder().Write("courses/x.plexo.yaml", "template: multiple-scos\nidentifier: X\nfiles: [../a.zip]\n");
  {
    DesktopDriver driver(home);
    BeginFlat(driver, {File("a")});
    driver.Publish(home.Path(), "first");
    driver.Window().resize(1000, 700);
    driver.Window().close();
  }
  DesktopDriver driver(home, Open(home.Path() / "courses/x.plexo.yaml"),
                       {[](QWidget& window) { DesktopDriver::Press(window, "Discard"); }});
  EXPECT_EQ(driver.Window().size(), QSize(1000, 700));
  driver.OnNextWindow([&](QWidget& window) {
    EXPECT_EQ(static_cast<QFileDialog&>(window).directory().path(), ToQtPath(home.Path()));
    window.close();
  });
  driver.Press("+ File");
  driver.OnNextWindow([&](QWidget& window) {
    DesktopDriver::Settle();
    QStringList fields;
    for (const auto* each : window.findChildren<QLineEdit*>()) fields << each->text();
    EXPECT_TRUE(fields.contains(ToQtPath(home.Path()))) << fields.join(" ").toStdString();
    DesktopDriver::Press(window, "Close");
  });
  driver.Key(Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(DesktopSettings(ToQtPath(home.Path() / "settings.ini")).GetRecentCourses(),
            QStringList{ToQtPath(home.Path() / "courses/x.plexo.yaml")});
}

TEST_F(DesktopFilesTest, TheCommandLineIsAnsweredWithoutAWindow) {
  const struct {
    std::vector<std::string> words;
    int status;
    const char* said;
  } cases[] = {
      {{"--version"}, 0, "plexo-desktop "},
      {{"--help"}, 0, "usage: plexo-desktop"},
      {{"--palette", "pink"}, 2, "'pink' is no palette"},
      {{"--colour"}, 2, "colour"},
      {{"a.plexo.yaml", "b.plexo.yaml"}, 2, "more than one course file"},
  };
  for (const auto& [words, status, said] : cases) {
    const ProgramResult result =
        ProgramRun(PLEXO_BIN "/plexo-desktop", words).With("QT_QPA_PLATFORM", "offscreen").Run();
    EXPECT_EQ(result.status, status) << said;
    EXPECT_NE((result.out + result.err).find(said), std::string::npos) << result.out << result.err;
  }
}

TEST_F(DesktopFilesTest, AMissingComponentIsTold) {
  DesktopPlaces places = home.MakePlaces();
  places.component = home.Path() / "nowhere/libplexo.so";
  DesktopProgram program(places, {});
  std::string told;
  QTimer::singleShot(50, [&] {
    QWidget* box = QApplication::activeModalWidget();
    ASSERT_NE(box, nullptr);
    told = box->property("text").toString().toStdString();
    box->close();
  });
  EXPECT_FALSE(program.Start());
  EXPECT_NE(told.find("its component can't be loaded"), std::string::npos) << told;
  EXPECT_NE(told.find("nowhere/libplexo.so"), std::string::npos) << told;
}
