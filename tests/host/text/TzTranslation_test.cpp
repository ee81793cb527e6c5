// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/text/TzPseudoTranslation.h"
#include "host/text/TzStringDictionary.h"
#include "host/text/TzTranslationFile.h"
#include "host/text/TzTranslationFolder.h"
#include "support/TestSession.h"

namespace {

class TranslationTest : public testing::Test {
 protected:
  /// The problem for which the text is refused; empty if it is taken.
  std::string FaultOf(std::string_view text) {
    session.problems.clear();
    const bool isTaken = TzTranslationFile::ReadText("xx.yaml", text).has_value();
    EXPECT_EQ(session.problems.size(), isTaken ? 0U : 1U) << text;
    return isTaken ? "" : session.problems.front().GetText();
  }

  TestSession session;
  TestFolder folder;
};

/// Puts the variables back when the test ends.
class EnvironmentKeeper {
 public:
  explicit EnvironmentKeeper(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
      const char* value = std::getenv(name.c_str());
      before[name] = value != nullptr ? std::optional<std::string>(value) : std::nullopt;
    }
  }
  ~EnvironmentKeeper() {
    for (const auto& [name, value] : before) Set(name, value);
  }
  EnvironmentKeeper(const EnvironmentKeeper&) = delete;
  EnvironmentKeeper& operator=(const EnvironmentKeeper&) = delete;

  /// Sets these of the variables, and the others not.
  void Set(const std::map<std::string, std::string>& values) const {
    for (const auto& [name, value] : before) {
      const auto found = values.find(name);
      Set(name, found != values.end() ? std::optional<std::string>(found->second) : std::nullopt);
    }
  }

 private:
  static void Set(const std::string& name, const std::optional<std::string>& value) {
    if (value) setenv(name.c_str(), value->c_str(), 1);
    if (!value) unsetenv(name.c_str());
  }

  std::map<std::string, std::optional<std::string>> before;
};

}  // namespace

TEST_F(TranslationTest, AFileIsRefusedWithItsLineAndTheReason) {
  const struct {
    std::string text;
    const char* fault;
  } cases[] = {
      {"name: X\n", ""},
      {"name: X\nwords:\n", ""},
      {"name: X\nwords: {kA: '', kB: b}\ndesktop: {kC: c}\ntexts: {kA: a, kSubDirPre: d}\n", ""},
      {"", "xx.yaml:1: 'name', the language's own name, is missing"},
      {"words: {kA: a}\n", "xx.yaml:1: 'name', the language's own name, is missing"},
      {"word\n", "xx.yaml:1: isn't a translation: it has no keys"},
      {"- a\n", "xx.yaml:1: a list can't stand here"},
      {"name: X\nname: Y\n", "xx.yaml:2: 'name' stands here twice"},
      {"name: {a: b}\n", "xx.yaml:1: a map can't stand here"},
      {"name: X\nword: a\n",
       "xx.yaml:2: there is no key 'word' here; expected name, words, desktop or texts"},
      {"name: X\nwords: a\n", "xx.yaml:2: 'words' has to hold keys and their texts"},
      {"name: X\nwords:\n  kA: a\n  kA: b\n", "xx.yaml:4: 'kA' stands here twice"},
      {"name: X\nwords:\n  kA: a\ndesktop:\n  kA: b\n", "xx.yaml:5: 'kA' stands here twice"},
      {"name: X\nwords:\n  kA: {b: c}\n", "xx.yaml:3: a map can't stand here"},
      {"name: X\nwords:\n  kA: [a]\n", "xx.yaml:3: a list can't stand here"},
      {"name: X\nwords:\n  ? {a: b}\n  : c\n", "xx.yaml:3: a map can't stand here"},
      {"name: X\nwords:\n  '': a\n", "xx.yaml:3: a key is missing"},
      {"name: X\nwords:\n  kSubDirPre: Vortest\n",
       "xx.yaml:3: 'kSubDirPre' is a fixed name; it can't be translated"},
      {"name: &n X\nwords: {kA: *n}\n", "xx.yaml:2: an alias; a translation says everything where it stands"},
      {"name: X\n---\nname: Y\n", "xx.yaml:2: a second document starts here"},
      {"name: X\nwords:\n  kA: \"a", "xx.yaml:3: illegal EOF in scalar"},
      {std::string(100000, '[') + "\n", "xx.yaml:1: a list can't stand here"},
      {std::string(100000, '{') + "\n", "xx.yaml:1: a map can't stand here"},
  };
  for (const auto& [text, fault] : cases) EXPECT_EQ(FaultOf(text), fault) << text.substr(0, 80);
}

TEST_F(TranslationTest, ALanguageTakesThePlaceOfTheOneBeforeAndABrokenOneLeavesIt) {
  TzStringDictionary words;
  words.RegisterDefault("kYes", "Yes");
  words.RegisterDefault("kNo", "No");
  words.RegisterTranslation("kNo", "Non");
  const TzPath german =
      folder.Write("de.yaml", "name: Deutsch\nwords: {kYes: Ja}\ntexts: {+ File: + Datei}\n");
  ASSERT_TRUE(words.LoadTranslations(german));
  EXPECT_EQ(words.GetString("kYes"), "Ja");
  EXPECT_EQ(words.GetString("kNo"), "No");

  EXPECT_FALSE(words.LoadTranslations(folder.Write("fr.yaml", "name: Français\nwords: {kYes: [Oui]}\n")));
  EXPECT_FALSE(words.LoadTranslations(folder.Write("large.yaml", std::string(2U << 20U, '#'))));
  EXPECT_FALSE(words.LoadTranslations(folder.Path() / "it.yaml"));
  ASSERT_EQ(session.problems.size(), 3U);
  EXPECT_EQ(session.problems[0].GetText(), "fr.yaml:2: a list can't stand here");
  EXPECT_EQ(session.problems[1].message, "is larger than 1 MiB");
  EXPECT_EQ(session.problems[2].message, "can't be opened");
  EXPECT_EQ(words.TranslateText("+ File"), "+ Datei");
}

TEST_F(TranslationTest, AFixedTextIsTranslatedAsItselfElseAsTheKeyThatSaysTheSame) {
  TzStringDictionary words;
  words.RegisterDefault("kFolder", "Content");
  words.RegisterDefault("kHeader", "Content");
  words.RegisterDefault("kChanged", "Content");
  words.RegisterDefault("kChanged", "Other");
  TzTranslation translation;
  translation.words["kHeader"].text = "Inhalt";
  translation.words["kChanged"].text = "Anderes";
  translation.texts["+ File"].text = "+ Datei";
  words.SetTranslation(translation);
  EXPECT_EQ(words.TranslateText("Content"), "Inhalt");
  EXPECT_EQ(words.TranslateText("Other"), "Anderes");
  EXPECT_EQ(words.TranslateText("+ File"), "+ Datei");
  EXPECT_EQ(words.TranslateText("Contents"), "Contents");
  translation.texts["Content"].text = "Stoff";
  words.SetTranslation(translation);
  EXPECT_EQ(words.TranslateText("Content"), "Stoff");
}

TEST_F(TranslationTest, AFolderOffersItsLanguagesAndFindsThatOfALocale) {
  folder.Write("de.yaml", "name: Deutsch\n");
  folder.Write("pt.yaml", "name: Português\n");
  folder.Write("pt_BR.yaml", "name: Português (Brasil)\n");
  folder.Write("broken.yaml", "name: [\n");
  folder.Write("notes.txt", "name: none\n");
  const TzTranslationFolder translations(folder.Path());
  std::string listed;
  for (const auto& [identifier, name] : translations.List()) {
    listed += identifier.GetUTF8String() + "=" + name.GetUTF8String() + " ";
  }
  EXPECT_EQ(listed, "de=Deutsch pt=Português pt_BR=Português (Brasil) ");
  EXPECT_TRUE(TzTranslationFolder(folder.Path() / "none").List().empty());

  const struct {
    const char* locale;
    const char* file;
  } cases[] = {
      {"de", "de.yaml"},
      {"de_DE.UTF-8", "de.yaml"},
      {"DE-at", "de.yaml"},
      {"de@euro", "de.yaml"},
      {"pt_PT", "pt.yaml"},
      {"pt-BR.UTF-8", "pt_BR.yaml"},
      {"pt_BR_x", "pt_BR.yaml"},
      {"en_US.UTF-8", ""},
      {"C", ""},
      {"C.UTF-8", ""},
      {"POSIX", ""},
      {"", ""},
      {"../de", ""},
      {"/de", ""},
      {"_de", ""},
      {"notes.txt", ""},
      {"d\xC3\xA9", ""},
  };
  for (const auto& [locale, file] : cases) {
    EXPECT_EQ(translations.Find(locale).GetFileName(), file) << locale;
  }
}

TEST_F(TranslationTest, TheSystemsLocaleIsTheFirstThatIsSet) {
  const struct {
    std::map<std::string, std::string> variables;
    const char* locale;
  } cases[] = {
      {{{"LC_ALL", "fr_FR"}, {"LC_MESSAGES", "de_DE"}, {"LANG", "es_ES"}}, "fr_FR"},
      {{{"LC_ALL", ""}, {"LC_MESSAGES", "de_DE"}, {"LANG", "es_ES"}}, "de_DE"},
      {{{"LANG", "es_ES"}}, "es_ES"},
      {{}, ""},
  };
  const EnvironmentKeeper keeper({"LC_ALL", "LC_MESSAGES", "LANG"});
  for (const auto& [variables, locale] : cases) {
    keeper.Set(variables);
    EXPECT_EQ(TzTranslationFolder::GetSystemLocale(), locale);
  }
}

TEST_F(TranslationTest, ThePseudoLanguageIsMarkedLongerAndKeepsTheFormOfTheText) {
  TzStringDictionary words;
  words.RegisterDefault("kHours", " hours");
  words.RegisterDefault("kLines", "One %s.\n\nTwo ");
  words.RegisterDefault("kSubDirPre", "Pre_Test");
  TzTranslation model;
  model.texts["+"].text = "und";
  const TzTranslation translation = MakePseudoTranslation(words, model);
  EXPECT_EQ(translation.words.size(), 2U);
  const TzString start(std::u16string(u"\u200F\u202E["));
  const TzString end(std::u16string(u"]\u202C\u200F"));
  EXPECT_EQ(translation.words.at("kHours").text, " " + start + "hours ~~" + end);
  EXPECT_EQ(translation.words.at("kLines").text,
            start + "One %s. ~~~" + end + "\n\n" + start + "Two ~~" + end + " ");
  EXPECT_EQ(translation.texts.at("+").text, start + "+ ~" + end);
}
