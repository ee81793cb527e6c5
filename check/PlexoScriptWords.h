// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

/// The words of the SCORM run-time API and data model that content's scripts hold. A set of bits.
class PlexoScriptWords {
 public:
  enum Word : std::uint32_t {
    Initialize12 = 1U << 0U,
    Finish12 = 1U << 1U,
    Initialize2004 = 1U << 2U,
    Terminate2004 = 1U << 3U,
    Completion = 1U << 4U,
    Success = 1U << 5U,
    ScaledScore = 1U << 6U,
    LessonStatus = 1U << 7U,
    SuspendData = 1U << 8U,
    /// Names of the data model are put together while the script runs, so that any may be meant.
    Assembled = 1U << 9U,
    /// The status of SCORM 1.2 that is both complete and successful.
    Passed = 1U << 10U,
    RawScore12 = 1U << 11U,
    /// The settings of a launch page of ours, which translates between the content and an LMS of the other
    /// edition; and what they say.
    Translated = 1U << 12U,
    CompletionPasses = 1U << 13U,
    MasteryScore = 1U << 14U,
    /// The script behind our pages around movies and documents.
    Wrapping = 1U << 15U,
    /// The name by which content finds the API of SCORM 2004: unlike "Initialize", no word of a comment.
    Api2004 = 1U << 16U,
    /// Names of the SCORM 1.2 API are put together while the script runs.
    Assembled12 = 1U << 17U,
    /// More of what the settings of a launch page say.
    Content12 = 1U << 18U,
    PassingScore = 1U << 19U,
    Location = 1U << 20U,
    /// How the visit ends, in SCORM 2004; and the word for one that goes on later.
    Exit = 1U << 21U,
    Suspend = 1U << 22U,
    /// The status that takes back an earlier completion.
    Incomplete = 1U << 23U,
    /// The script sends the request that ends the whole course.
    SendsLogout = 1U << 24U,
    SendsExitAll = 1U << 25U,
    /// The status of those who didn't pass.
    Failed = 1U << 26U,
  };
  /// What counts in the settings of a launch page only.
  static constexpr std::uint32_t kOfLaunchSettings =
      Translated | CompletionPasses | MasteryScore | Content12 | PassingScore;

  [[nodiscard]] bool Has(Word word) const { return (bits & word) != 0; }
  void Add(std::uint32_t words) { bits |= words; }
  /// False if all of them were there already.
  bool Add(PlexoScriptWords other) {
    const std::uint32_t before = std::exchange(bits, bits | other.bits);
    return bits != before;
  }

  void Remove(std::uint32_t words) { bits &= ~words; }

  /// Content reports its completion, or its success, to an LMS of SCORM 2004.
  [[nodiscard]] bool ReportsCompletion() const {
    return Has(Completion) || Has(Assembled) || (Has(Translated) && (Has(LessonStatus) || IsFinished12()));
  }
  [[nodiscard]] bool ReportsSuccess() const {
    if (Has(Success) || Has(Assembled)) return true;
    if (!Has(Translated)) return false;
    return IsJudgedByScore() || (Has(LessonStatus) && Has(Passed)) ||
           (Has(CompletionPasses) && ReportsCompletion());
  }
  /// Content reports to an LMS of SCORM 2004 that the learner failed.
  [[nodiscard]] bool ReportsFailure() const {
    const bool saysSo = Has(Failed) && (Has(Success) || (Has(Translated) && Has(LessonStatus)));
    return saysSo || Has(Assembled) || IsJudgedByScore();
  }
  /// Content reports a score to an LMS of SCORM 2004.
  [[nodiscard]] bool ReportsScore() const { return Has(ScaledScore) || (Has(Translated) && Has(RawScore12)); }

 private:
  /// A launch page compares the content's score with what it takes to pass.
  [[nodiscard]] bool IsJudgedByScore() const {
    if (!Has(Translated)) return false;
    return (Has(MasteryScore) && Has(RawScore12) && ReportsCompletion()) ||
           (Has(PassingScore) && Has(ScaledScore));
  }
  /// SCORM 1.2 content that sets no status is completed when it calls LMSFinish (SCORM 1.2 RTE 3.4.4).
  [[nodiscard]] bool IsFinished12() const { return Has(Content12) && (Has(Finish12) || Has(Assembled12)); }

  std::uint32_t bits = 0;
};

/// Finds the words in a text that comes in pieces, in memory that doesn't grow with it.
class PlexoScriptScan {
 public:
  void Feed(std::span<const std::byte> piece);
  /// Ends the text, and returns what was in it.
  [[nodiscard]] PlexoScriptWords Finish();

 private:
  void Keep(std::string_view part);
  /// `after` is the character behind the word.
  void EndWord(std::string_view word, char after);

  PlexoScriptWords words;
  /// What the next word would be sent as.
  enum class Sent { Nothing, Exit, Navigation } sent = Sent::Nothing;
  /// What was kept of the word so far.
  std::string current;
  /// The character in front of the word.
  char before = 0;
  /// None of the words that are looked for is as long.
  bool isTooLong = false;
};
