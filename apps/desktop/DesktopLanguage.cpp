// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopLanguage.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <memory>

#include "host/qt/TzQtText.h"
#include "host/text/TzPseudoTranslation.h"
#include "host/text/TzStringDictionary.h"
#include "host/text/TzTranslationFile.h"
#include "host/text/TzTranslationFolder.h"

namespace {

/// What Qt says by itself: in its file choosers and in the menus of text fields.
void SpeakInQt(const QLocale& locale) {
  auto words = std::make_unique<QTranslator>();
  const QString place = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (!words->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"), place)) return;
  words->setParent(QCoreApplication::instance());
  QCoreApplication::installTranslator(words.release());
}

}  // namespace

bool DesktopLanguage::IsPseudo(const QString& identifier) { return identifier == QLatin1String("xx-pseudo"); }

std::vector<DesktopLanguage::Choice> DesktopLanguage::List() const {
  std::vector<Choice> choices{{QStringLiteral("en"), QStringLiteral("English")}};
  for (const TzTranslationFolder::Language& each : TzTranslationFolder(folder).List()) {
    choices.push_back({ToQtText(each.identifier), ToQtText(each.name)});
  }
  return choices;
}

void DesktopLanguage::Speak(const QString& identifier, TzStringDictionary& dictionary) const {
  if (IsPseudo(identifier)) {
    SpeakPseudo(dictionary);
    return;
  }
  const TzString locale =
      identifier.isEmpty() ? TzTranslationFolder::GetSystemLocale() : FromQtText(identifier);
  const TzPath file = TzTranslationFolder(folder).Find(locale);
  if (file.IsEmpty() || !dictionary.LoadTranslations(file)) return;
  const QLocale spoken(ToQtText(locale));
  QGuiApplication::setLayoutDirection(spoken.textDirection());
  SpeakInQt(spoken);
}

void DesktopLanguage::SpeakPseudo(TzStringDictionary& dictionary) const {
  TzTranslation model;
  const std::vector<TzTranslationFolder::Language> languages = TzTranslationFolder(folder).List();
  if (!languages.empty()) {
    const TzPath file = folder / (languages.front().identifier + ".yaml");
    model = TzTranslationFile::Read(file).value_or(model);
  }
  dictionary.SetTranslation(MakePseudoTranslation(dictionary, model));
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
}
