// SPDX-License-Identifier: Apache-2.0
#include "host/text/TzTranslationFile.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <set>
#include <span>
#include <sstream>

#include "host/files/TzStreamUtil.h"
#include "host/session/TzProblem.h"

namespace {

/// A complete file has about a hundredth of it.
constexpr std::size_t kLargestFile = std::size_t{1} << 20U;

struct Fault {
  int line;
  std::string what;
};

/// Takes the words as the parser comes to them. The form has two levels, so nothing is nested and there is
/// no tree.
class TranslationBuilder : public YAML::EventHandler {
 public:
  TzTranslation translation;

  // A character that can't start a value makes a document that is empty and doesn't move on.
  void OnDocumentStart(const YAML::Mark& mark) override {
    if (hasDocument) Refuse(mark, "a second document starts here");
    hasDocument = true;
  }
  void OnDocumentEnd() override {}
  void OnNull(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override { Take(mark, ""); }
  void OnAlias(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override {
    Refuse(mark, "an alias; a translation says everything where it stands");
  }
  void OnScalar(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                const std::string& value) override {
    Take(mark, value);
  }
  void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                       YAML::EmitterStyle::value /*style*/) override {
    Refuse(mark, "a list can't stand here");
  }
  void OnSequenceEnd() override {}
  void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  YAML::EmitterStyle::value /*style*/) override {
    const bool isSection = level == Level::Top && IsSection(key);
    if (level != Level::None && !isSection) Refuse(mark, "a map can't stand here");
    level = isSection ? Level::Section : Level::Top;
    if (isSection) section = key;
    key.clear();
  }
  void OnMapEnd() override {
    key.clear();
    if (level == Level::Section) level = Level::Top;
  }

 private:
  enum class Level { None, Top, Section };

  [[noreturn]] static void Refuse(const YAML::Mark& mark, const std::string& what) {
    throw Fault{mark.line + 1, what};
  }

  static bool IsSection(std::string_view name) {
    return name == "words" || name == "desktop" || name == "texts";
  }

  void Take(const YAML::Mark& mark, const std::string& value) {
    if (level == Level::None) Refuse(mark, "isn't a translation: it has no keys");
    if (key.empty()) {
      StartKey(mark, value);
      return;
    }
    if (level == Level::Section) {
      TakeWord(mark, value);
    } else if (IsSection(key) && !value.empty()) {
      Refuse(mark, "'" + key + "' has to hold keys and their texts");
    } else if (key == "name") {
      translation.name = value;
    }
    key.clear();
  }

  void StartKey(const YAML::Mark& mark, const std::string& value) {
    if (value.empty()) Refuse(mark, "a key is missing");
    if (level == Level::Top && value != "name" && !IsSection(value))
      Refuse(mark, "there is no key '" + value + "' here; expected name, words, desktop or texts");
    if (level == Level::Section && section != "texts" && !TzTranslation::IsWord(value))
      Refuse(mark, "'" + value + "' is a fixed name; it can't be translated");
    // All keys of words are one family, whatever section they stand in.
    const std::string family = level == Level::Top ? "top" : section == "texts" ? "texts" : "words";
    if (!taken.insert(family + " " + value).second) Refuse(mark, "'" + value + "' stands here twice");
    key = value;
  }

  void TakeWord(const YAML::Mark& mark, const std::string& value) {
    if (value.empty()) return;
    auto& words = section == "texts" ? translation.texts : translation.words;
    words[key] = {value, mark.line + 1};
  }

  bool hasDocument = false;
  Level level = Level::None;
  std::string section;
  /// The key whose value comes next; empty if a key comes next.
  std::string key;
  std::set<std::string> taken;
};

/// Nothing, with a problem reported, if the file can't be read or is too large.
std::optional<std::string> ReadBounded(const TzPath& file) {
  const auto stream = TzStreamUtil::CreateFileStreamRead(TzFile(file));
  if (stream == nullptr) {
    TzReportProblem(kTzFailure, file.GetNative(), "can't be opened");
    return std::nullopt;
  }
  std::string text(kLargestFile + 1, '\0');
  std::size_t size = 0;
  while (size < text.size()) {
    const std::ptrdiff_t count = stream->Read(std::as_writable_bytes(std::span(text).subspan(size)));
    if (count < 0) {
      TzReportProblem(kTzMachineFailure, file.GetNative(), "can't be read");
      return std::nullopt;
    }
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
  }
  if (size > kLargestFile) {
    TzReportProblem(kTzFailure, file.GetNative(), "is larger than 1 MiB");
    return std::nullopt;
  }
  text.resize(size);
  return text;
}

TzTranslation Parse(std::string_view text) {
  std::istringstream stream{std::string(text)};
  TranslationBuilder builder;
  try {
    YAML::Parser parser(stream);
    while (parser.HandleNextDocument(builder)) {
    }
  } catch (const YAML::Exception& exception) {
    throw Fault{std::max(exception.mark.line, 0) + 1, exception.msg};
  }
  if (builder.translation.name.IsEmpty()) throw Fault{1, "'name', the language's own name, is missing"};
  return std::move(builder.translation);
}

}  // namespace

std::optional<TzTranslation> TzTranslationFile::Read(const TzPath& file) {
  const std::optional<std::string> text = ReadBounded(file);
  if (!text) return std::nullopt;
  return ReadText(file.GetFileName().GetUTF8String(), *text);
}

std::optional<TzTranslation> TzTranslationFile::ReadText(const std::string& fileName, std::string_view text) {
  try {
    return Parse(text);
  } catch (const Fault& fault) {
    TzReportProblem(kTzFailure, fileName + ":" + std::to_string(fault.line), fault.what);
    return std::nullopt;
  }
}
