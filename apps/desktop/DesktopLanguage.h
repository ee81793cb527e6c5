// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <vector>

#include "host/files/TzPath.h"

class TzStringDictionary;

/// The languages of the program: those of a folder, English, and "xx-pseudo", which shows what a user
/// interface does to languages.
class DesktopLanguage {
 public:
  struct Choice {
    /// "de"
    QString identifier;
    /// In the language itself.
    QString name;
  };

  explicit DesktopLanguage(TzPath translationFolder) : folder(std::move(translationFolder)) {}

  /// English in front, then those of the folder.
  [[nodiscard]] std::vector<Choice> List() const;

  /// Has the dictionary speak the language, and Qt's own dialogs where Qt knows it, in its direction of
  /// reading. An empty identifier is the system's language; one that nobody knows is English. The
  /// pseudo-language is made of the defaults that the dictionary has.
  void Speak(const QString& identifier, TzStringDictionary& dictionary) const;

  [[nodiscard]] static bool IsPseudo(const QString& identifier);

 private:
  void SpeakPseudo(TzStringDictionary& dictionary) const;

  TzPath folder;
};
