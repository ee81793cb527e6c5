// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "apps/desktop/DesktopWords.h"
#include "host/files/TzFileUtil.h"
#include "host/session/TzErrorCode.h"
#include "host/sheets/TzLayoutSheet.h"
#include "host/sheets/TzPropertySheet.h"
#include "host/text/TzTranslationFile.h"
#include "panel/PlexoStrings.h"
#include "resources/PlexoResources.h"
#include "support/TestSession.h"

namespace {

/// The root's name is for programs.
void CollectNames(const TzLayoutNode& view, std::set<TzString>& names) {
  for (const TzLayoutNode& child : view.children) {
    if (child.name.cell.IsEmpty()) names.insert(child.name.text);
    CollectNames(child, names);
  }
}

/// What a person reads in the sheets' letters or in those of the module rows, without a key. Numbers, colons
/// and the like need no translation.
std::set<TzString> FixedTexts() {
  std::set<TzString> texts = {"Weightage:", "Content", "PreTest", "Post-test", "Force Content Sequence"};
  for (const int number : {111, 113, 115, 117, 121}) {
    const TzResourceInfo sheets = GetPlexoResources();
    const auto cells = TzPropertySheet::Read(*GetFileResource(sheets, number, "adm"), nullptr);
    const auto layout = TzLayoutSheet::Read(*GetFileResource(sheets, number + 1, "eve"), cells, nullptr);
    CollectNames(layout.root, texts);
  }
  std::erase_if(texts, [](const TzString& text) {
    const std::string letters = text.GetUTF8String();
    // Without a dictionary, a localized text reads as its key.
    return letters.starts_with("kPlexo") ||
           letters.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
  });
  return texts;
}

/// What code does with a text besides showing it: fill "%s", put it before or after another, break lines.
std::string ShapeOf(const TzString& text) {
  const std::string letters = text.GetUTF8String();
  const auto count = [&](std::string_view part) {
    int found = 0;
    for (std::size_t at = letters.find(part); at != std::string::npos; at = letters.find(part, at + 1))
      ++found;
    return std::to_string(found);
  };
  const std::size_t first = std::min(letters.find_first_not_of(' '), letters.size());
  const std::size_t last = letters.find_last_not_of(' ') + 1;
  return std::to_string(first) + " blanks before and " + std::to_string(letters.size() - last) + " behind, " +
         count("%s") + " %s, " + count("\n") + " line feeds";
}

class Faults {
 public:
  Faults(std::string translationFile, const TzTranslation& translated, const TzStringDictionary& dictionary)
      : file(std::move(translationFile)), translation(translated), words(dictionary) {}

  std::vector<std::string> Find() {
    for (const auto& [key, text] : words.GetDefaults()) {
      if (TzTranslation::IsWord(key) && !translation.words.contains(key))
        Add(0, key, "isn't translated: \"" + text.GetUTF8String() + "\"");
    }
    for (const auto& [key, word] : translation.words) CheckWord(key, word);
    std::set<TzString> fixed = FixedTexts();
    for (const auto& [key, text] : words.GetDefaults()) {
      if (TzTranslation::IsWord(key)) fixed.erase(text);
    }
    for (const TzString& text : fixed) {
      if (!translation.texts.contains(text)) Add(0, text, "isn't translated");
    }
    for (const auto& [text, word] : translation.texts) {
      if (!fixed.contains(text)) Add(word.line, text, "is no text without a key");
    }
    return std::move(faults);
  }

 private:
  void CheckWord(const TzString& key, const TzTranslation::Word& word) {
    const auto english = words.GetDefaults().find(key);
    if (english == words.GetDefaults().end()) {
      Add(word.line, key, "is a key that nothing uses");
      return;
    }
    const std::string expected = ShapeOf(english->second);
    if (ShapeOf(word.text) != expected) Add(word.line, key, ShapeOf(word.text) + "; expected " + expected);
    // Who draws a caption can't know whether it has been translated already.
    if (words.TranslateText(word.text) != word.text) Add(word.line, key, "is English for another word");
  }

  void Add(int line, const TzString& subject, const std::string& what) {
    faults.push_back(file + ":" + std::to_string(line) + ": '" + subject.GetUTF8String() + "' " + what);
  }

  std::string file;
  const TzTranslation& translation;
  const TzStringDictionary& words;
  std::vector<std::string> faults;
};

std::string Lines(const std::vector<std::string>& faults) {
  std::string text;
  for (const std::string& fault : faults) text += fault + "\n";
  return text;
}

class TranslationsTest : public testing::Test {
 protected:
  TranslationsTest() {
    RegisterDefaultStrings();
    RegisterDesktopWords(session.dictionary);
  }
  TestSession session;
};

}  // namespace

TEST_F(TranslationsTest, SayEverythingInTheFormOfTheEnglish) {
  std::vector<TzPath> files;
  const TzPath folder = TzPath::FromNative(PLEXO_SOURCE "/resources/translations");
  ASSERT_EQ(TzFileUtil::GetFileNamesInFolderAtPath(folder, files, true, true), kTzSuccess);
  EXPECT_GE(files.size(), 4U);
  for (const TzPath& file : files) {
    const auto translation = TzTranslationFile::Read(file);
    ASSERT_TRUE(translation) << session.problems.front().GetText();
    session.dictionary.SetTranslation(*translation);
    EXPECT_EQ(Lines(Faults(file.GetFileName().GetUTF8String(), *translation, session.dictionary).Find()), "");
  }
}

TEST_F(TranslationsTest, FaultsAreFoundWithTheirLines) {
  TzTranslation translation;
  session.dictionary.SetTranslation(translation);
  const auto all = Faults("x.yaml", translation, session.dictionary).Find();
  for (const auto& [key, text] : session.dictionary.GetDefaults()) {
    if (TzTranslation::IsWord(key)) translation.words[key] = {text, 1};
  }
  const TzString fixed[] = {"+ File", "+ Module", "New", "Pre-test or Post-test rollup"};
  EXPECT_EQ(all.size(), translation.words.size() + std::size(fixed));
  for (const TzString& text : fixed) translation.texts[text] = {text, 1};
  EXPECT_EQ(Lines(Faults("x.yaml", translation, session.dictionary).Find()), "");

  translation.words.erase("kTzOk");
  translation.words["kTzMBButton_No"] = {"Retry", 7};
  translation.words["kTzMBButton_Retry"] = {"Wiederholen", 8};
  translation.words["kPlexoManifestDialogHours"] = {"hours", 9};
  translation.words["kGone"] = {"weg", 10};
  translation.texts["+ Files"] = {"+ Dateien", 11};
  session.dictionary.SetTranslation(translation);
  EXPECT_EQ(
      Lines(Faults("x.yaml", translation, session.dictionary).Find()),
      "x.yaml:0: 'kTzOk' isn't translated: \"OK\"\n"
      "x.yaml:10: 'kGone' is a key that nothing uses\n"
      "x.yaml:9: 'kPlexoManifestDialogHours' 0 blanks before and 0 behind, 0 %s, 0 line feeds; expected 1 "
      "blanks before and 0 behind, 0 %s, 0 line feeds\n"
      "x.yaml:7: 'kTzMBButton_No' is English for another word\n"
      "x.yaml:11: '+ Files' is no text without a key\n");
}
