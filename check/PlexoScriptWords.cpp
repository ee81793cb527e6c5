// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoScriptWords.h"

#include <array>
#include <string_view>

namespace {

constexpr std::size_t kMostWordBytes = 256;

struct Entry {
  std::string_view text;
  std::uint32_t words;
};

/// Functions, values and settings, by the last part of a word ("api.LMSInitialize").
constexpr std::array kFunctions = {
    Entry{"LMSInitialize", PlexoScriptWords::Initialize12},
    Entry{"LMSFinish", PlexoScriptWords::Finish12},
    Entry{"Initialize", PlexoScriptWords::Initialize2004},
    Entry{"API_1484_11", PlexoScriptWords::Initialize2004 | PlexoScriptWords::Api2004},
    Entry{"Terminate", PlexoScriptWords::Terminate2004},
    Entry{"passed", PlexoScriptWords::Passed},
    Entry{"plexoLaunch", PlexoScriptWords::Translated},
    Entry{"completionPasses", PlexoScriptWords::CompletionPasses},
    Entry{"masteryScore", PlexoScriptWords::MasteryScore},
    Entry{"PlexoVisit", PlexoScriptWords::Wrapping},
};

/// Names of the data model. A name that ends in a point is continued by the script.
constexpr std::array kNames = {
    Entry{"cmi.completion_status", PlexoScriptWords::Completion},
    Entry{"cmi.success_status", PlexoScriptWords::Success},
    Entry{"cmi.score.scaled", PlexoScriptWords::ScaledScore},
    Entry{"cmi.core.lesson_status", PlexoScriptWords::LessonStatus},
    Entry{"cmi.core.score.raw", PlexoScriptWords::RawScore12},
    Entry{"cmi.suspend_data", PlexoScriptWords::SuspendData},
    Entry{"cmi.", PlexoScriptWords::Assembled},
    Entry{"cmi.core.", PlexoScriptWords::Assembled | PlexoScriptWords::LessonStatus},
    Entry{"cmi.core.score.", PlexoScriptWords::RawScore12},
    Entry{"cmi.score.", PlexoScriptWords::ScaledScore},
    // Content that keeps statuses of objectives may set the one that its item maps.
    Entry{"cmi.objectives.", PlexoScriptWords::Success},
};

template <typename Table>
std::uint32_t Look(const Table& table, std::string_view text) {
  for (const Entry& entry : table) {
    if (entry.text == text) return entry.words;
  }
  return 0;
}

bool IsPartOfWord(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '_' || character == '.' || character == '$';
}

}  // namespace

void PlexoScriptScan::Feed(std::span<const std::byte> piece) {
  for (const std::byte byte : piece) {
    const auto character = static_cast<char>(byte);
    // Every second byte of a text in UTF-16.
    if (character == 0) continue;
    if (!IsPartOfWord(character)) {
      if (!current.empty()) EndWord(character);
      statements.TakeOther(character);
      before = character;
    } else if (current.size() < kMostWordBytes) {
      current += character;
    } else {
      isTooLong = true;
    }
  }
}

PlexoScriptWords PlexoScriptScan::Finish() {
  EndWord(0);
  if (statements.CompletesAlone()) {
    words.Add(PlexoScriptWords::CompletesAlone);
  } else if (statements.StatesSuccess()) {
    words.Add(PlexoScriptWords::SuccessStated);
  }
  return words;
}

void PlexoScriptScan::EndWord(char after) {
  const std::string_view word = current;
  statements.TakeWord(isTooLong ? std::string_view() : word);
  if (!isTooLong) {
    if (word == "LMS" && before == after && (before == '"' || before == '\'')) {
      words.Add(PlexoScriptWords::Assembled12);
    } else if (word.starts_with("cmi.")) {
      words.Add(Look(kNames, word));
    } else {
      words.Add(Look(kFunctions, word.substr(word.rfind('.') + 1)));
    }
  }
  current.clear();
  isTooLong = false;
}
