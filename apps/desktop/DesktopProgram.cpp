// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopProgram.h"

#include <QAbstractEventDispatcher>
#include <QGuiApplication>
#include <QPushButton>

#include "host/qt/TzQtPalette.h"
#include "host/qt/TzQtText.h"

DesktopProgram::DesktopProgram(const DesktopPlaces& programPlaces, const DesktopArguments& programArguments)
    : places(programPlaces),
      arguments(programArguments),
      settings(places.settingsFile),
      session(window, settings),
      language(places.translations),
      desk(window, session, settings),
      hints(window, session) {
  TzApplyPalette(ReadTzPalette(arguments.palette.isEmpty() ? settings.GetPalette() : arguments.palette));
}

DesktopProgram::~DesktopProgram() {
  menus.reset();
  keeper.reset();
  drops.reset();
  if (component != nullptr) component->Stop();
}

bool DesktopProgram::Start() {
  const ComponentLibrary library = ComponentLibrary::Load(places.component);
  component = library.component;
  SpeakLanguage();
  if (component == nullptr) {
    QMessageBox::critical(nullptr, QStringLiteral("Plexo"),
                          session.GetWord("kDesktopNoComponent") + QStringLiteral("\n\n") +
                              QString::fromStdString(library.problem));
    return false;
  }
  component->Start();
  component->RegisterStrings();

  menus = std::make_unique<DesktopMenus>(window, session, settings, MakeCommands());
  menus->MakeLanguages(language.List());
  menus->MarkMnemonics();
  keeper = std::make_unique<CourseKeeper>(desk, session, places.journals);
  drops =
      std::make_unique<CourseDrops>(window, session, [this](const QString& file) { desk.OpenFile(file); });
  // The panel tells nobody that its buttons changed: it is looked at between events.
  const QAbstractEventDispatcher* events = QAbstractEventDispatcher::instance();
  QObject::connect(events, &QAbstractEventDispatcher::awake, &connections, [this] { Follow(); });
  QObject::connect(events, &QAbstractEventDispatcher::aboutToBlock, &connections, [this] { Follow(); });
  window.TakeLeastSize();
  window.SetClosing([this] { Closing(); });
  window.restoreGeometry(settings.GetGeometry());
  window.ShowTitle({}, false);
  Follow();
  window.show();
  return true;
}

void DesktopProgram::Welcome() {
  if (keeper->OfferRestore(window) || arguments.course.isEmpty()) return;
  desk.OpenFile(arguments.course);
}

// The pseudo-language is made of words that have to be there first.
void DesktopProgram::SpeakLanguage() {
  const QString identifier = arguments.language.isEmpty() ? settings.GetLanguage() : arguments.language;
  if (component != nullptr && DesktopLanguage::IsPseudo(identifier)) component->RegisterStrings();
  language.Speak(identifier, session.GetDictionary());
}

DesktopMenus::Commands DesktopProgram::MakeCommands() {
  return {.openCourse = [this] { desk.Open(); },
          .saveCourse = [this] { desk.Save(); },
          .saveCourseAs = [this] { desk.SaveAs(); },
          .openRecentCourse = [this](const QString& file) { desk.OpenFile(file); },
          .showAbout = [this] { ShowAbout(); },
          .choosePalette = [this](const QString& word) { ChoosePalette(word); },
          .chooseLanguage = [this](const QString& identifier) { ChooseLanguage(identifier); }};
}

void DesktopProgram::ChoosePalette(const QString& word) {
  settings.SetPalette(word);
  TzApplyPalette(ReadTzPalette(word));
}

// The sheets have taken their words when they were read.
void DesktopProgram::ChooseLanguage(const QString& identifier) {
  if (identifier == settings.GetLanguage()) return;
  settings.SetLanguage(identifier);
  ShowBox(QMessageBox::Information, session.GetWord("kDesktopLanguage"),
          session.GetWord("kDesktopLanguageAtNextStart"), {});
}

void DesktopProgram::ShowAbout() {
  ShowBox(QMessageBox::NoIcon, session.GetWord("kDesktopAbout"), QStringLiteral("Plexo " PLEXO_VERSION),
          session.GetWord("kDesktopSummary") + QStringLiteral("\n\nApache License 2.0"));
}

void DesktopProgram::ShowBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                             const QString& more) {
  QMessageBox box(icon, title, text, QMessageBox::Ok, &window);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(more);
  box.button(QMessageBox::Ok)->setText(session.GetWord("kTzOk"));
  box.exec();
}

void DesktopProgram::Follow() {
  menus->Refresh();
  hints.Refresh();
  if (session.IsBusy()) return;
  session.GetProblems().Forget();
  if (desk.GetFile() && !session.GetScreen().GetTemplate()) desk.NoteEnd();
}

void DesktopProgram::Closing() {
  settings.SetGeometry(window.saveGeometry());
  keeper->Note();
}
