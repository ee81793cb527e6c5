// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoCoursePlay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "apps/cli/PlayScript.h"
#include "apps/cli/PlaySession.h"
#include "sequencer/CourseText.h"

namespace {

using enum PlexoPlayedKind;

constexpr PlexoContentAbility kCompletes = {.passes = false, .fails = false, .scores = false};
constexpr PlexoContentAbility kScoresNothing = {.scores = false};
constexpr PlexoContentAbility kSilent = PlexoContentAbility::Silent();

PlexoPlayedCourse Make(const std::vector<std::string>& lines,
                       const std::map<std::string, PlexoContentAbility>& abilities) {
  const auto definition = CourseText::Parse(lines);
  PlexoPlayedCourse course{PlexoSequencer(definition), {}};
  course.abilities.resize(definition->GetCount());
  for (const auto& [name, ability] : abilities) course.abilities[definition->Find(name)] = ability;
  return course;
}

/// The line of a script that isn't understood or doesn't hold, as `plexo play` runs it; empty if all hold.
std::string FindBrokenLine(const std::shared_ptr<const PlexoSequencingDefinition>& definition,
                           const std::string& script) {
  PlexoSequencingReading reading;
  reading.definition = definition;
  reading.sources.resize(definition->GetCount(), {nullptr, nullptr, PlexoContentKind::Sco});
  PlaySession session(reading, 0, {});
  const PlayScript language(*definition);
  std::istringstream lines(script);
  int number = 0;
  bool hasExpectation = false;
  for (std::string line; std::getline(lines, line);) {
    PlayMistake mistake;
    const auto parsed = language.Parse(line, ++number, mistake);
    if (!parsed) return line + ": " + mistake.message;
    hasExpectation = hasExpectation || line.starts_with("expect");
    const PlayAnswer answer = session.Run(*parsed);
    if (answer.failure || !answer.holds) return line;
  }
  return hasExpectation ? "" : "nothing is expected";
}

struct Played {
  const char* name;
  std::vector<std::string> lines;
  std::map<std::string, PlexoContentAbility> abilities;
  /// What is found, and in which activity.
  std::vector<std::pair<PlexoPlayedKind, std::string>> found;
  /// The requests of the first witness.
  int requests;
};

const std::vector<std::string> kGated = {
    "root flow",
    "  a bycontent",
    "    | primary write s g",
    "  b bycontent",
    "    | disabled if any not satisfied of o, not objectiveStatusKnown of o",
    "    | objective o read s g",
};

std::vector<std::string> GateWith(const std::string& root, const std::string& first) {
  std::vector<std::string> lines = kGated;
  lines[0] = root;
  lines[1] = first;
  return lines;
}

const Played kCourses[] = {
    {"all is well", {"root flow", "  a bycontent", "  b bycontent"}, {}, {}, 0},
    {"content that can't tell opens a gate", kGated, {}, {}, 0},
    {"completion alone doesn't open a gate", kGated, {{"a", kCompletes}}, {{NeverReached, "b"}}, 1},
    {"nobody can choose or continue", {"root nochoice", "  a"}, {}, {{NeverReached, "a"}}, 0},
    {"silent content that the LMS leaves alone",
     {"root flow", "  a bycontent"},
     {{"a", kSilent}},
     {{NeverCompleted, "root"}},
     2},
    {"silent content that the LMS completes", {"root flow", "  a"}, {{"a", kSilent}}, {}, 0},
    {"completion without success",
     {"root flow", "  a bycontent"},
     {{"a", kCompletes}},
     {{NeverPassed, "root"}},
     2},
    {"one attempt only",
     GateWith("root flow nochoice", "  a bycontent limit=1"),
     {},
     {{Lost, "a"}, {FailureSticks, "a"}},
     3},
    {"no way back", GateWith("root flow nochoice", "  a bycontent"), {}, {{LostInSession, "a"}}, 1},
    {"attempts used up in a course that lets choose",
     GateWith("root flow", "  a bycontent limit=2"),
     {},
     {{Lost, "a"}},
     4},
    {"a test to be passed at once", {"root flow", "  a bycontent limit=1"}, {}, {{FailureSticks, "a"}}, 2},
    {"a pretest that waits for a score that isn't reported",
     {"root flow", "  p", "    | primary byMeasure=0.6 write s g", "  c", "    | skip if satisfied of o",
      "    | objective o read s g"},
     {{"p", kScoresNothing}},
     {{PretestInVain, "p"}, {NeverPassed, "root"}},
     2},
    {"a pretest that spares its content",
     {"root flow", "  p", "    | primary write s g", "  c", "    | skip if satisfied of o",
      "    | objective o read s g"},
     {},
     {},
     0},
    {"one item is enough",
     {"root flow", "  | rollup any completed => completed", "  a", "  b"},
     {},
     {{CompletedUnseen, "b"}},
     2},
    {"a cluster without flow in the way",
     {"root flow", "  a", "  m", "    b", "  c"},
     {},
     {{ContinueStops, "a"}},
     1},
    {"the contents list only", {"root", "  a", "  b"}, {}, {{StartLaunchesNothing, "root"}}, 1},
    {"done is closed",
     {"root flow", "  a", "    | disabled if attempted", "  b"},
     {},
     {{RestartLaunchesNothing, "a"}, {FailureSticks, "a"}},
     3},
    {"what was suspended is closed",
     {"root flow", "  a", "  b", "    | disabled if completed", "  c"},
     {},
     {{SuspensionLoses, "b"}},
     6},
    {"another choice of children may reach them",
     {"root flow select=1 selectTiming=once", "  a", "  b"},
     {},
     {},
     0},
};

int CountRequests(const PlexoWitness& witness) { return static_cast<int>(witness.GetSteps().size()); }

TEST(PlexoCoursePlay, FindsWhatLearnersMeetAndProvesItInAScript) {
  for (const auto& [name, lines, abilities, expected, requests] : kCourses) {
    SCOPED_TRACE(name);
    const PlexoPlayedCourse course = Make(lines, abilities);
    const PlexoPlayResult result = PlexoCoursePlay::Run(course);
    std::vector<std::pair<PlexoPlayedKind, std::string>> found;
    for (const PlexoPlayedFinding& finding : result.findings) {
      found.emplace_back(finding.kind, course.GetDefinition().GetRules(finding.activities[0]).identifier);
      const std::string script = finding.witness.WriteScript(course, "shown");
      EXPECT_EQ(FindBrokenLine(CourseText::Parse(lines), script), "") << script;
    }
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected));
    if (!result.findings.empty()) {
      EXPECT_EQ(CountRequests(result.findings[0].witness), requests)
          << result.findings[0].witness.WriteScript(course, "shown");
    }
    EXPECT_TRUE(result.areAllStatesSeen);
  }
}

TEST(PlexoCoursePlay, BlamesTheContentWhoseSilenceClosesSomething) {
  const PlexoPlayedCourse silent = Make(kGated, {{"a", kCompletes}});
  EXPECT_EQ(PlexoCoursePlay::Run(silent).findings.at(0).silent, 1U);
  // Nothing that content reports opens this one.
  std::vector<std::string> lines = kGated;
  lines[2] = "    | primary";
  const PlexoPlayResult result = PlexoCoursePlay::Run(Make(lines, {{"a", kCompletes}}));
  EXPECT_EQ(result.findings.at(0).silent, kPlexoNone);
  EXPECT_EQ(result.findings.at(0).reason,
            "'b' is disabled: not satisfied of 'o' is unknown, or not objectiveStatusKnown of 'o' is true");
}

TEST(PlexoCoursePlay, WitnessesFailInAMendedCourse) {
  const PlexoPlayedCourse faulty = Make(kGated, {{"a", kCompletes}});
  const std::string script = PlexoCoursePlay::Run(faulty).findings.at(0).witness.WriteScript(faulty, "");
  std::vector<std::string> mended = kGated;
  mended.erase(mended.begin() + 4);
  EXPECT_NE(FindBrokenLine(CourseText::Parse(mended), script), "");
}

TEST(PlexoCoursePlay, SaysWhereItStopped) {
  std::vector<std::string> lines = {"root flow"};
  for (int number = 0; number < 40; ++number) lines.push_back("  a" + std::to_string(number));
  const PlexoPlayResult result = PlexoCoursePlay::Run(Make(lines, {}));
  EXPECT_FALSE(result.areAllStatesSeen);
  EXPECT_GT(result.states, 100U);
  EXPECT_TRUE(result.findings.empty());
}

}  // namespace
