// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoLaunchSettings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <utility>

#include "host/text/TzString.h"

namespace {

constexpr std::string_view kVariable = "plexoLaunch";

struct DataKey {
  std::string_view key;
  std::string PlexoLaunchData::*value;
};
constexpr std::array kDataKeys = {
    DataKey{"masteryScore", &PlexoLaunchData::masteryScore},
    DataKey{"maxTimeAllowed", &PlexoLaunchData::maxTimeAllowed},
    DataKey{"timeLimitAction", &PlexoLaunchData::timeLimitAction},
    DataKey{"dataFromLms", &PlexoLaunchData::dataFromLms},
    DataKey{"scaledPassingScore", &PlexoLaunchData::scaledPassingScore},
    DataKey{"completionThreshold", &PlexoLaunchData::completionThreshold},
    DataKey{"primaryObjective", &PlexoLaunchData::primaryObjective},
    DataKey{"objectives", &PlexoLaunchData::objectives},
};

void AppendUnit(char16_t unit, std::string& text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  text += "\\u";
  for (unsigned shift = 16; shift > 0;) {
    shift -= 4;
    text += kDigits[(static_cast<unsigned>(unit) >> shift) & 0xFU];
  }
}

/// As a JSON string. Beyond what JSON asks for, what would end a script within a page, or a line of an old
/// script, is written as an escape.
std::string Quote(std::string_view text) {
  std::string quoted = "\"";
  std::u16string plain;
  const auto flush = [&] { quoted += TzString(std::exchange(plain, {})).GetUTF8String(); };
  const TzString units(text);
  for (const char16_t unit : units.GetUnits()) {
    if (unit == u'"' || unit == u'\\') {
      plain += u'\\';
      plain += unit;
    } else if (unit < 0x20 || unit == u'<' || unit == 0x2028 || unit == 0x2029) {
      flush();
      AppendUnit(unit, quoted);
    } else {
      plain += unit;
    }
  }
  flush();
  return quoted + '"';
}

/// Reads one JSON object of strings, true and false.
class ObjectReading {
 public:
  explicit ObjectReading(std::string_view script) : rest(script) {}

  /// By key; true and false under their names. None if the script isn't a declaration of the variable.
  std::optional<std::map<std::string, std::string>> Read() {
    std::map<std::string, std::string> values;
    if (!Take("var") || !Take(kVariable) || !Take("=") || !Take("{")) return std::nullopt;
    while (!Take("}")) {
      if (!values.empty() && !Take(",")) return std::nullopt;
      std::string key;
      std::string value;
      if (!TakeString(key) || !Take(":") || !TakeValue(value)) return std::nullopt;
      if (!values.emplace(std::move(key), std::move(value)).second) return std::nullopt;
    }
    static_cast<void>(Take(";"));
    SkipBlanks();
    return rest.empty() ? std::optional(std::move(values)) : std::nullopt;
  }

 private:
  void SkipBlanks() { rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size())); }

  bool Take(std::string_view token) {
    SkipBlanks();
    if (!rest.starts_with(token)) return false;
    rest.remove_prefix(token.size());
    return true;
  }

  bool TakeValue(std::string& value) {
    for (const char* word : {"true", "false"}) {
      if (!Take(word)) continue;
      value = word;
      return true;
    }
    return TakeString(value);
  }

  bool TakeString(std::string& text) {
    if (!Take("\"")) return false;
    std::u16string escaped;
    while (!rest.empty() && rest.front() != '"') {
      if (rest.front() == '\\') {
        if (!TakeEscape(escaped)) return false;
        continue;
      }
      text += TzString(std::exchange(escaped, {})).GetUTF8String();
      text += rest.front();
      rest.remove_prefix(1);
    }
    text += TzString(escaped).GetUTF8String();
    return Take("\"");
  }

  /// Units of a surrogate pair come as two escapes, so that they are gathered before they become text.
  bool TakeEscape(std::u16string& units) {
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    if (rest.size() < 2) return false;
    const char letter = rest[1];
    rest.remove_prefix(2);
    if (letter != 'u') {
      const std::size_t index = kLetters.find(letter);
      if (index == std::string_view::npos) return false;
      units += static_cast<char16_t>(kMeanings[index]);
      return true;
    }
    constexpr std::size_t kDigits = 4;
    constexpr int kHexadecimal = 16;
    unsigned unit = 0;
    const std::string_view digits = rest.substr(0, kDigits);
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), unit, kHexadecimal);
    if (error != std::errc() || end != digits.data() + kDigits) return false;
    rest.remove_prefix(kDigits);
    units += static_cast<char16_t>(unit);
    return true;
  }

  std::string_view rest;
};

std::optional<PlexoCourseEdition> ReadEdition(std::string_view name) {
  for (const PlexoCourseEdition edition : {PlexoCourseEdition::Scorm12, PlexoCourseEdition::Scorm2004}) {
    if (GetScormVersion(edition) == name) return edition;
  }
  return std::nullopt;
}

}  // namespace

PlexoLaunchSettings PlexoLaunchSettings::Of(const PlexoAdoptedSCO& sco) {
  return {"../" + sco.launch, sco.contentEdition, sco.courseEdition,
          sco.title,          sco.data,           sco.completionPasses};
}

std::string PlexoLaunchSettings::Write() const {
  std::string text = "var " + std::string(kVariable) + " = {";
  const auto add = [&](std::string_view key, const std::string& value) {
    text += text.ends_with('{') ? "\n  " : ",\n  ";
    text += Quote(key) + ": " + value;
  };
  add("content", Quote(content));
  add("contentEdition", Quote(GetScormVersion(contentEdition)));
  add("courseEdition", Quote(GetScormVersion(courseEdition)));
  add("title", Quote(title));
  for (const auto& [key, value] : kDataKeys) {
    if (!(data.*value).empty()) add(key, Quote(data.*value));
  }
  if (completionPasses) add("completionPasses", "true");
  return text + "\n};\n";
}

std::optional<PlexoLaunchSettings> PlexoLaunchSettings::Read(std::string_view script) {
  auto values = ObjectReading(script).Read();
  if (!values) return std::nullopt;
  const auto contentEdition = ReadEdition((*values)["contentEdition"]);
  const auto courseEdition = ReadEdition((*values)["courseEdition"]);
  if (!contentEdition || !courseEdition) return std::nullopt;
  PlexoLaunchSettings settings;
  settings.content = (*values)["content"];
  settings.contentEdition = *contentEdition;
  settings.courseEdition = *courseEdition;
  settings.title = (*values)["title"];
  for (const auto& [key, value] : kDataKeys) settings.data.*value = (*values)[std::string(key)];
  settings.completionPasses = (*values)["completionPasses"] == "true";
  return settings;
}
