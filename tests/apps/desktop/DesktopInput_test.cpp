// SPDX-License-Identifier: Apache-2.0
// Keys, menus, dragged files, Cancel, and the words.
#include <QAction>
#include <QDesktopServices>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>
#include <thread>

#include "DesktopTest.h"
#include "host/session/ITzProgressSink.h"

using DesktopInputTest = DesktopTest;

namespace {

QAction* FindAction(const QWidget& window, const QString& caption) {
  for (auto* action : window.findChildren<QAction*>()) {
    if (action->text().remove(QLatin1Char('&')) == caption) return action;
  }
  return nullptr;
}

/// Stands for a machine on which everything takes its time.
class SlowProgress : public ITzProgressSink {
 public:
  SlowProgress(ITzProgressSink& shownProgress, std::chrono::milliseconds pauseAtReports)
      : shown(shownProgress), pause(pauseAtReports), previous(TzSession::Current()) {
    TzSession session = previous;
    session.progress = this;
    TzSession::Install(session);
  }
  ~SlowProgress() override { TzSession::Install(previous); }
  SlowProgress(const SlowProgress&) = delete;
  SlowProgress& operator=(const SlowProgress&) = delete;

  bool Report(std::string_view activity, std::uint64_t done, std::uint64_t total) override {
    std::this_thread::sleep_for(pause);
    return shown.Report(activity, done, total);
  }

 private:
  ITzProgressSink& shown;
  std::chrono::milliseconds pause;
  TzSession previous;
};

/// Takes the place of what shows folders.
class FolderOpener : public QObject {
  Q_OBJECT

 public:
  FolderOpener() { QDesktopServices::setUrlHandler("file", this, "Open"); }
  ~FolderOpener() override { QDesktopServices::unsetUrlHandler("file"); }
  QUrl opened;

 public slots:
  void Open(const QUrl& url) { opened = url; }
};

}  // namespace

TEST_F(DesktopInputTest, MenusAreEnabledAsThePanelsButtonsAre) {
  DesktopDriver driver(home);
  const auto isEnabled = [&](const char* caption) {
    DesktopDriver::Settle();
    const QAction* action = FindAction(driver.Window(), caption);
    EXPECT_NE(action, nullptr) << caption;
    return action != nullptr && action->isEnabled();
  };
  for (const char* caption :
       {"New course", "Save course", "Publish...", "Add file...", "Add module", "Delete"}) {
    EXPECT_FALSE(isEnabled(caption)) << caption;
  }
  EXPECT_TRUE(isEnabled("Open course..."));
  BeginFlat(driver, {File("a"), File("b")});
  for (const char* caption : {"New course", "Save course", "Publish...", "Add file...", "Delete"}) {
    EXPECT_TRUE(isEnabled(caption)) << caption;
  }
  EXPECT_FALSE(isEnabled("Add module"));
  EXPECT_FALSE(isEnabled("Move up"));
  driver.Select(1);
  EXPECT_TRUE(isEnabled("Move up"));
  EXPECT_FALSE(isEnabled("Move down"));
}

TEST_F(DesktopInputTest, DeleteInATextFieldDeletesNoRow) {
  DesktopDriver driver(home);
  BeginFlat(driver, {File("a"), File("b")});
  driver.Select(0);
  auto* title = driver.Window().findChild<QLineEdit*>();
  QTest::mouseClick(title, Qt::LeftButton);
  QTest::keyClick(title, Qt::Key_Home);
  const QString before = title->text();
  driver.Key(Qt::Key_Delete);
  EXPECT_EQ(title->text(), before.mid(1));
  EXPECT_EQ(driver.Rows().size(), 2);
}

TEST_F(DesktopInputTest, FilesDroppedOnAFlatListAreAdded) {
  DesktopDriver driver(home);
  driver.Begin("Multiple SCOs");
  QWidget& window = driver.Window();
  const QPoint middle = window.rect().center();
  EXPECT_TRUE(DesktopDriver::Drop(window, middle, {File("a"), File("b")}));
  EXPECT_EQ(driver.Rows(), (QStringList{"a", "b"}));
  driver.PressInNextWindow("OK");
  EXPECT_TRUE(DesktopDriver::Drop(*driver.List()->viewport(), {20, 60},
                                  {home.Folder().Write("notes.txt", "x"), File("c")}));
  EXPECT_EQ(driver.Rows(), (QStringList{"a", "b", "c"}));
  EXPECT_EQ(driver.Boxes(), std::vector<std::string>{"Invalid SCORM package!\n\nnotes.txt"});
  auto* title = window.findChild<QLineEdit*>();
  const QString before = title->text();
  EXPECT_FALSE(DesktopDriver::Drop(*title, {5, 5}, {File("d")}));
  EXPECT_EQ(title->text(), before);
  EXPECT_EQ(driver.Rows().size(), 3);
}

TEST_F(DesktopInputTest, FilesDroppedOnTheRowsOfAModuleGoWhereTheyAreDropped) {
  DesktopDriver driver(home);
  driver.Begin("Pre-test or Post-test rollup");
  const struct {
    int row;
    std::vector<TzPath> files;
    bool isTaken;
    QString names;
  } cases[] = {
      {0, {File("a")}, false, ""}, {1, {File("a"), File("b")}, false, ""},
      {1, {File("a")}, true, "a"}, {4, {File("b"), File("c")}, true, "b,c"},
      {5, {File("d")}, true, "d"},
  };
  for (const auto& [row, files, isTaken, names] : cases) {
    QWidget& viewport = *driver.List()->viewport();
    const int height = driver.List()->visualRect(driver.List()->model()->index(0, 0)).height();
    EXPECT_EQ(DesktopDriver::Drop(viewport, {60, row * height + height / 2}, files), isTaken) << row;
    if (!isTaken) continue;
    EXPECT_EQ(driver.Rows().value(row % 2 == 0 ? row : row + 1), names) << row;
  }
}

TEST_F(DesktopInputTest, CancelLeavesNothingBehind) {
  DesktopDriver driver(home);
  BeginFlat(driver, {File("a")});
  const SlowProgress slow(driver.Program().GetSession().GetProgress(), std::chrono::milliseconds(100));
  const auto cancel = [](QWidget& window) { DesktopDriver::Press(window, "Cancel"); };
  ScoZip("large").Item("Large", "index.htm").File("index.htm", MakeNoise(24 << 20, 1)).Save(home.Path());
  driver.OnProgress(cancel);
  driver.ChooseInNextWindow({File("large")});
  driver.Press("+ File");
  DesktopDriver::Settle(200);
  EXPECT_EQ(driver.Rows(), QStringList{"a"});

  driver.ChooseInNextWindow({File("large")});
  driver.OnProgress([](QWidget& /*window*/) {});
  driver.Press("+ File");
  DesktopDriver::Settle(200);
  EXPECT_EQ(driver.Rows(), (QStringList{"a", "large"})) << "nothing of the first try stands in the way";

  driver.OnProgress(cancel);
  driver.OnNextWindow([&](QWidget& dialog) {
    DesktopDriver::Type(dialog, "Publish Folder", ToQtPath(home.Path()));
    DesktopDriver::Press(dialog, "Publish");
  });
  driver.Key(Qt::Key_P, Qt::ControlModifier);
  DesktopDriver::Settle(200);
  EXPECT_FALSE(QFile::exists(ToQtPath(home.Path() / "My_Course_1.zip")));
}

TEST_F(DesktopInputTest, TheProgressOfManyFilesIsOneDialog) {
  DesktopDriver driver(home);
  driver.Begin("Multiple SCOs");
  std::vector<TzPath> files;
  for (int number = 0; number < 60; ++number) {
    const std::string name = "sco" + std::to_string(number);
    files.push_back(ScoZip(name).Item(name, "index.htm").File("index.htm", name).Save(home.Path()));
  }
  const SlowProgress slow(driver.Program().GetSession().GetProgress(), std::chrono::milliseconds(10));
  driver.OnProgress([](QWidget& /*window*/) {});
  driver.ChooseInNextWindow(files);
  driver.Press("+ File");
  EXPECT_EQ(driver.Rows().size(), 60);
}

TEST_F(DesktopInputTest, ThePublishedPackageCanBeShownInItsFolder) {
  const FolderOpener opener;
  DesktopDriver driver(home);
  BeginFlat(driver, {File("a")});
  driver.OnNextWindow([&](QWidget& dialog) {
    DesktopDriver::Type(dialog, "Publish Folder", ToQtPath(home.Path()));
    driver.PressInNextWindow("Show in folder");
    DesktopDriver::Press(dialog, "Publish");
  });
  driver.Key(Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(opener.opened.toLocalFile(), ToQtPath(home.Path()));
}

TEST_F(DesktopInputTest, ARefusalTellsTheReason) {
  DesktopDriver driver(home);
  const TzPath broken = home.Folder().Write("broken.zip", "no archive");
  driver.Begin("Multiple SCOs");
  driver.OnNextWindow([](QWidget& box) {
    EXPECT_EQ(static_cast<QMessageBox&>(box).icon(), QMessageBox::Critical);
    DesktopDriver::Press(box, "OK");
  });
  EXPECT_TRUE(DesktopDriver::Drop(driver.Window(), driver.Window().rect().center(), {broken}));
  ASSERT_EQ(driver.Boxes().size(), 1);
  EXPECT_NE(driver.Boxes().front().find("broken.zip"), std::string::npos) << driver.Boxes().front();
}

TEST_F(DesktopInputTest, EveryWordIsTranslated) {
  DesktopArguments arguments;
  arguments.language = "xx-pseudo";
  DesktopDriver driver(home, arguments);
  QStringList texts = DesktopDriver::ReadTexts(driver.Window());
  for (const auto* action : driver.Window().findChildren<QAction*>()) texts << action->text();
  const auto& screen = driver.Program().GetSession().GetScreen();
  driver.OnNextWindow([&](QWidget& dialog) {
    texts << DesktopDriver::ReadTexts(dialog);
    dialog.close();
  });
  screen.Press("test_rollup");
  DesktopDriver::Settle();
  const QStringList languages{"English", "Deutsch", "Español", "Français"};
  for (QString text : texts) {
    text.remove('&');
    const bool isWord = text.contains(QRegularExpression("[A-Za-z]")) && !languages.contains(text);
    EXPECT_TRUE(!isWord || text.contains('[')) << text.toStdString();
  }
}

#include "DesktopInput_test.moc"
