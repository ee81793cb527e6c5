// SPDX-License-Identifier: Apache-2.0
#include "sequencer/PlexoDefinitionBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "sequencer/CourseText.h"
#include "sequencer/PlexoDefinitionFormat.h"
#include "sequencer/RandomCourse.h"

namespace {

PlexoActivityRules With(const std::function<void(PlexoActivityRules&)>& change) {
  PlexoActivityRules rules;
  change(rules);
  return rules;
}

}  // namespace

TEST(PlexoDefinitionBuilder, RefusesWhatAnEngineCouldNotPlay) {
  using Builder = PlexoDefinitionBuilder;
  using Fault = PlexoDefinitionFault;
  const auto openDeep = [](Builder& builder, std::uint32_t depth) {
    for (std::uint32_t at = 0; at <= depth; ++at) builder.Open({});
    for (std::uint32_t at = 0; at <= depth; ++at) builder.Close();
  };
  const auto weigh = [](double weight) {
    return [weight](Builder& builder) {
      builder.Open(With([weight](auto& rules) { rules.rollup.objectiveMeasureWeight = weight; }));
      builder.Close();
    };
  };
  const struct {
    std::string_view what;
    std::function<void(Builder&)> build;
    Fault fault;
  } cases[] = {
      {"one activity", [&](Builder& b) { openDeep(b, 0); }, Fault::None},
      {"as deep as may be", [&](Builder& b) { openDeep(b, PlexoSequencingDefinition::kMaxDepth); },
       Fault::None},
      {"weight at the bound", weigh(1'000'000), Fault::None},
      {"nothing", [](Builder&) {}, Fault::NoActivity},
      {"two roots",
       [&](Builder& b) {
         openDeep(b, 0);
         openDeep(b, 0);
       },
       Fault::SecondRoot},
      {"not closed", [](Builder& b) { b.Open({}); }, Fault::ActivityNotClosed},
      {"closed twice",
       [&](Builder& b) {
         openDeep(b, 0);
         b.Close();
       },
       Fault::NothingToClose},
      {"too deep", [&](Builder& b) { openDeep(b, PlexoSequencingDefinition::kMaxDepth + 1); },
       Fault::TooDeep},
      {"negative weight", weigh(-0.1), Fault::NumberOutOfRange},
      {"weight beyond the bound", weigh(1'000'000.5), Fault::NumberOutOfRange},
      {"no number", weigh(std::nan("")), Fault::NotANumber},
      {"endless number", weigh(HUGE_VAL), Fault::NotANumber},
      {"percentage",
       [](Builder& b) { b.Open(With([](auto& r) { r.rollupRules.emplace_back().minimumPercent = 1.1; })); },
       Fault::NumberOutOfRange},
      {"threshold",
       [](Builder& b) {
         b.Open(
             With([](auto& r) { r.rules.emplace_back().conditions.emplace_back().measureThreshold = -1.1; }));
       },
       Fault::NumberOutOfRange},
      {"long title", [](Builder& b) { b.Open(With([](auto& r) { r.title.assign(65'536, 'x'); })); },
       Fault::TooLongText},
      {"too many parts",
       [](Builder& b) {
         b.Open(With([](auto& r) { r.objectives.resize(PlexoSequencingDefinition::kMaxParts); }));
       },
       Fault::TooManyParts},
  };
  for (const auto& [what, build, fault] : cases) {
    Builder builder(PlexoSequencingEdition::Third);
    build(builder);
    EXPECT_EQ(builder.Build() != nullptr, fault == Fault::None) << what;
    EXPECT_EQ(builder.GetFault(), fault) << what;
    EXPECT_EQ(Builder::GetText(builder.GetFault()).empty(), fault == Fault::None) << what;
  }
}

TEST(PlexoDefinitionBuilder, FindsActivitiesObjectivesAndGlobalsByName) {
  const auto course = CourseText::Parse(
      {"root", "  b", "    | objective o1 read s g2", "    | objective o1 read s g1", "  a",
       "    | disabled if satisfied of o1, satisfied of o9", "    | objective o1 write s g1", "  b"});
  EXPECT_EQ(course->Find("b"), 1U);
  EXPECT_EQ(course->Find("a"), 2U);
  EXPECT_EQ(course->Find("c"), kPlexoNone);
  EXPECT_EQ(course->FindObjective(1, "o1"), 1U);
  const auto& conditions = course->GetRules(2).rules.front().conditions;
  EXPECT_EQ(conditions[0].objective, 1U);
  EXPECT_EQ(conditions[1].objective, kPlexoNone);
  EXPECT_EQ(course->GetGlobals().size(), 2U);
  EXPECT_EQ(course->FindGlobal("g1"), course->GetRules(2).objectives[1].maps.front().global);
  EXPECT_EQ(course->FindGlobal("g3"), kPlexoNone);
}

TEST(PlexoDefinitionFormat, GivesBackWhatItWroteAndRefusesDamage) {
  for (std::uint32_t seed = 0; seed < 8; ++seed) {
    const auto course = RandomCourse(seed).MakeDefinition();
    const auto bytes = PlexoDefinitionFormat::Write(*course);
    const auto read = PlexoDefinitionFormat::Read(bytes).definition;
    ASSERT_NE(read, nullptr);
    ASSERT_EQ(read->GetCount(), course->GetCount());
    EXPECT_EQ(read->GetFingerprint(), course->GetFingerprint());
    for (PlexoIndex at = 0; at < course->GetCount(); ++at) {
      EXPECT_EQ(read->GetRules(at), course->GetRules(at));
      EXPECT_EQ(read->Get(at).parent, course->Get(at).parent);
    }
    for (std::size_t length = 0; length < bytes.size(); ++length)
      EXPECT_EQ(PlexoDefinitionFormat::Read(std::span(bytes).first(length)).definition, nullptr) << length;
    auto longer = bytes;
    longer.push_back(0);
    EXPECT_EQ(PlexoDefinitionFormat::Read(longer).definition, nullptr);
    auto newer = bytes;
    ++newer[3];
    EXPECT_EQ(PlexoDefinitionFormat::Read(newer).definition, nullptr);
  }
}
