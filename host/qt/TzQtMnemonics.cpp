// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtMnemonics.h"

#include <algorithm>

#include "host/qt/TzQtText.h"

namespace {

/// Behind it lie the scripts that are typed through an input method.
constexpr char16_t kFirstUntypable = 0x2E80;

bool CanBeTyped(QChar letter) { return letter.isLetterOrNumber() && letter.unicode() < kFirstUntypable; }

bool StartsWord(const QString& caption, qsizetype place) {
  return place == 0 || !caption[place - 1].isLetterOrNumber();
}

/// The places of the letters, the best first.
std::vector<qsizetype> RankPlaces(const QString& caption) {
  std::vector<qsizetype> places;
  for (qsizetype place = 0; place < caption.size(); ++place) {
    if (CanBeTyped(caption[place])) places.push_back(place);
  }
  std::stable_partition(places.begin(), places.end(),
                        [&](qsizetype place) { return StartsWord(caption, place); });
  return places;
}

}  // namespace

std::vector<qsizetype> ChooseTzMnemonics(const std::vector<QString>& captions, const QSet<QChar>& taken) {
  QSet<QChar> used = taken;
  std::vector<qsizetype> chosen;
  for (const QString& caption : captions) {
    const std::vector<qsizetype> places = RankPlaces(caption);
    const auto free = std::ranges::find_if(
        places, [&](qsizetype place) { return !used.contains(caption[place].toCaseFolded()); });
    chosen.push_back(free != places.end() ? *free : -1);
    if (free != places.end()) used.insert(caption[*free].toCaseFolded());
  }
  return chosen;
}

QChar GetTzMnemonic(const QString& marked) {
  for (qsizetype place = 0; place + 1 < marked.size(); ++place) {
    if (marked[place] != QLatin1Char('&')) continue;
    if (marked[place + 1] != QLatin1Char('&')) return marked[place + 1].toCaseFolded();
    ++place;
  }
  return {};
}

QString MarkTzMnemonic(const QString& caption, qsizetype place) {
  if (place < 0) return ToPlainCaption(caption);
  return ToPlainCaption(caption.left(place)) + QLatin1Char('&') + ToPlainCaption(caption.mid(place));
}
