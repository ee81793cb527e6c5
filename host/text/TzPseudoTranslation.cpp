// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzPseudoTranslation.h"

#include <string>

#include "host/text/TzStringDictionary.h"

namespace {

// A mark of the direction, and a pair around what is shown in it whatever its letters are.
constexpr std::u16string_view kStart = u"\u200F\u202E[";
constexpr std::u16string_view kEnd = u"]\u202C\u200F";

/// One line, without a line feed. Each has its own marks: a direction ends with its paragraph.
std::u16string MakeLine(std::u16string_view line) {
  const std::size_t first = line.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return std::u16string(line);
  const std::size_t end = line.find_last_not_of(u' ') + 1;
  const std::size_t more = (end - first) * 35 / 100 + 1;
  std::u16string made(line.substr(0, first));
  made += kStart;
  made += line.substr(first, end - first);
  made += u' ';
  made.append(more, u'~');
  made += kEnd;
  made += line.substr(end);
  return made;
}

TzString MakeText(const TzString& text) {
  std::u16string_view rest = text.GetUnits();
  std::u16string made;
  while (true) {
    const std::size_t feed = rest.find(u'\n');
    made += MakeLine(rest.substr(0, feed));
    if (feed == std::u16string_view::npos) return TzString(std::move(made));
    made += u'\n';
    rest.remove_prefix(feed + 1);
  }
}

}  // namespace

TzTranslation MakePseudoTranslation(const TzStringDictionary& dictionary, const TzTranslation& model) {
  TzTranslation translation;
  translation.name = MakeText("Pseudo");
  for (const auto& [key, text] : dictionary.GetDefaults()) {
    if (TzTranslation::IsWord(key)) translation.words[key].text = MakeText(text);
  }
  for (const auto& [text, word] : model.texts) translation.texts[text].text = MakeText(text);
  return translation;
}
