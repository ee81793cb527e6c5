// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>
#include <QString>
#include <vector>

/// Chooses for each caption of a window the letter that a person presses with Alt to get there: its place in
/// the caption, or -1 where no letter is left. No two get the same letter, and none gets one that is taken.
/// The first letters of words are taken before others, and captions in front have the first choice. Letters
/// that no keyboard types by themselves (Han, Hangul ...) aren't chosen.
std::vector<qsizetype> ChooseTzMnemonics(const std::vector<QString>& captions, const QSet<QChar>& taken = {});

/// The letter that is marked in a caption of Qt's, in the case in which letters are compared; null if none
/// is.
QChar GetTzMnemonic(const QString& marked);

/// The caption as Qt wants it, with the letter at this place marked; -1 marks none.
QString MarkTzMnemonic(const QString& caption, qsizetype place);
