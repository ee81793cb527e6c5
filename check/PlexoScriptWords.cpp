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
    Entry{"scaledPassingScore", PlexoScriptWords::PassingScore},
    Entry{"suspend", PlexoScriptWords::Suspend},
    Entry{"incomplete", PlexoScriptWords::Incomplete},
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
    Entry{"cmi.location", PlexoScriptWords::Location},
    Entry{"cmi.exit", PlexoScriptWords::Exit},
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

/// Which bytes are part of a word.
constexpr std::array<bool, 256> MakeWordBytes() {
  std::array<bool, 256> bytes = {};
  for (std::size_t byte = 'a'; byte <= 'z'; ++byte) bytes.at(byte) = true;
  for (std::size_t byte = 'A'; byte <= 'Z'; ++byte) bytes.at(byte) = true;
  for (std::size_t byte = '0'; byte <= '9'; ++byte) bytes.at(byte) = true;
  for (const char byte : {'_', '.', '$'}) bytes.at(static_cast<std::size_t>(byte)) = true;
  return bytes;
}
constexpr std::array<bool, 256> kWordBytes = MakeWordBytes();

bool IsPartOfWord(char character) { return kWordBytes[static_cast<unsigned char>(character)]; }

}  // namespace

void PlexoScriptScan::Feed(std::span<const std::byte> piece) {
  const std::string_view text(reinterpret_cast<const char*>(piece.data()), piece.size());
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = start;
    while (end < text.size() && IsPartOfWord(text[end])) ++end;
    const std::string_view run = text.substr(start, end - start);
    start = end + 1;
    // A word goes on in the next piece, and behind every second byte of a text in UTF-16.
    if (end == text.size() || text[end] == 0) {
      Keep(run);
    } else if (current.empty() && !isTooLong) {
      if (!run.empty()) EndWord(run, text[end]);
      before = text[end];
    } else {
      Keep(run);
      EndWord(current, text[end]);
      before = text[end];
    }
  }
}

void PlexoScriptScan::Keep(std::string_view part) {
  if (current.size() + part.size() > kMostWordBytes) isTooLong = true;
  if (!isTooLong) current += part;
}

PlexoScriptWords PlexoScriptScan::Finish() {
  EndWord(current, 0);
  return words;
}

void PlexoScriptScan::EndWord(std::string_view word, char after) {
  if (!isTooLong && word.size() <= kMostWordBytes) {
    if (sent == Sent::Exit && word == "logout") words.Add(PlexoScriptWords::SendsLogout);
    if (sent == Sent::Navigation && word == "exitAll") words.Add(PlexoScriptWords::SendsExitAll);
    sent = Sent::Nothing;
    if (word == "cmi.exit" || word == "cmi.core.exit") sent = Sent::Exit;
    if (word == "adl.nav.request") sent = Sent::Navigation;
    const bool isQuoted = before == after && (before == '"' || before == '\'');
    if (isQuoted && word == "LMS") {
      words.Add(PlexoScriptWords::Assembled12);
    } else if (isQuoted && word == "failed") {
      words.Add(PlexoScriptWords::Failed);
    } else if (word.starts_with("cmi.")) {
      words.Add(Look(kNames, word));
    } else {
      words.Add(Look(kFunctions, word.substr(word.rfind('.') + 1)));
    }
  }
  current.clear();
  isTooLong = false;
}
