// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtText.h"

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

QString ToQtText(const TzString& text) {
  const std::u16string& units = text.GetUnits();
  return QString::fromUtf16(units.data(), static_cast<qsizetype>(units.size()));
}

QString ToShownText(const TzString& text) {
  const ITzStringDictionary* words = GetStringDictionary();
  return ToQtText(words != nullptr ? words->TranslateText(text) : text);
}

TzString FromQtText(const QString& text) { return TzString(text.toStdU16String()); }

QString ToPlainCaption(const QString& text) {
  QString caption = text;
  return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}
