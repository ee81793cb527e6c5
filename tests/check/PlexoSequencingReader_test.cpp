// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoSequencingReader.h"

#include <gmock/gmock.h>

#include "support/TestSession.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class PlexoSequencingReaderTest : public ::testing::Test {
 protected:
  /// Reads a manifest with these organizations, and elements behind the resources.
  const PlexoSequencingReading& Read(const std::string& organizations, const std::string& rest = {},
                                     const std::string& version = "2004 4th Edition",
                                     const std::string& organization = {}) {
    const std::string manifest =
        R"(<manifest xmlns="http://www.imsglobal.org/xsd/imscp_v1p1" identifier="M"
            xmlns:imsss="http://www.imsglobal.org/xsd/imsss" xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3"
            xmlns:adlseq="http://www.adlnet.org/xsd/adlseq_v1p3" xmlns:adlnav="http://www.adlnet.org/xsd/adlnav_v1p3">
            <metadata><schema>ADL SCORM</schema><schemaversion>)" +
        version + "</schemaversion></metadata>" + organizations + R"(<resources>
            <resource identifier="sco" adlcp:scormType="sco" href="a.htm"/>
            <resource identifier="asset" adlcp:scormType="asset" href="a.htm"/>
            <resource identifier="odd" adlcp:scormType="thing" href="a.htm"/></resources>)" +
        rest + "</manifest>";
    const TzPath file = folder.Path() / "imsmanifest.xml";
    WriteFile(file, manifest);
    package = std::make_unique<PlexoCheckedPackage>();
    package->manifest.Read(file);
    package->Index();
    reading = PlexoSequencingReader::Read(*package, organization);
    return reading;
  }
  /// Reads a course of one item, which has these elements, and returns its rules.
  const PlexoActivityRules& ReadItem(const std::string& content,
                                     const std::string& version = "2004 4th Edition",
                                     const std::string& rest = {}) {
    Read("<organizations><organization identifier='O'><item identifier='I' identifierref='sco'>" + content +
             "</item></organization></organizations>",
         rest, version);
    return reading.definition->GetRules(1);
  }
  [[nodiscard]] std::vector<std::string> GetNotes() const {
    std::vector<std::string> texts;
    for (const PlexoReadingNote& note : reading.notes.Get()) texts.push_back(note.text);
    return texts;
  }

  TestFolder folder;
  std::unique_ptr<PlexoCheckedPackage> package;
  PlexoSequencingReading reading;
};

TEST_F(PlexoSequencingReaderTest, ReadsEveryPartOfAnActivity) {
  PlexoActivityRules expected;
  expected.identifier = "I";
  expected.title = "Doors & exits";
  expected.hiddenControls = kPlexoHidesContinue | kPlexoHidesSuspendAll;
  expected.controls = {false, false, true, true, false, false};
  expected.constrainChoice = expected.preventActivation = true;
  expected.rules = {
      {PlexoRuleAction::StopForwardTraversal,
       PlexoCombination::Any,
       {{PlexoCondition::ObjectiveMeasureLessThan, true, -0.5, "o", 1},
        {PlexoCondition::Always, false, 0, "", 0}}},
      {PlexoRuleAction::Exit, PlexoCombination::All, {{PlexoCondition::Completed, false, 0, "", 0}}},
      {PlexoRuleAction::RetryAll,
       PlexoCombination::All,
       {{PlexoCondition::AttemptLimitExceeded, true, 0, "", 0}}}};
  expected.attemptLimit = 3;
  expected.rollupRules = {{PlexoChildSet::AtLeastPercent,
                           0,
                           0.25,
                           PlexoCombination::All,
                           {{PlexoCondition::Attempted, true}},
                           PlexoRollupAction::NotSatisfied},
                          {PlexoChildSet::AtLeastCount,
                           2,
                           0,
                           PlexoCombination::Any,
                           {{PlexoCondition::Completed, false}},
                           PlexoRollupAction::Incomplete}};
  expected.rollup = {false,
                     false,
                     0.75,
                     PlexoRequirement::IfAttempted,
                     PlexoRequirement::IfNotSkipped,
                     PlexoRequirement::IfNotSuspended,
                     PlexoRequirement::Always,
                     false};
  expected.completion = {true, 0.5, 0.125};
  expected.objectives = {{"p", true, 0.6, {}},
                         {"o", false, 1, {{"g", 0b01, 0b10, 0}, {"g", 0b1100000, 0b0011100, 0}}}};
  expected.randomization = {PlexoTiming::Once, 2, PlexoTiming::OnEachNewAttempt, true};
  expected.delivery = {false, true, true};
  const PlexoActivityRules& read = ReadItem(R"(<title>Doors &amp; exits</title>
    <adlcp:completionThreshold completedByMeasure="true" minProgressMeasure="0.5" progressWeight="0.125"/>
    <adlnav:presentation><adlnav:navigationInterface><adlnav:hideLMSUI>continue</adlnav:hideLMSUI>
      <adlnav:hideLMSUI>suspendAll</adlnav:hideLMSUI></adlnav:navigationInterface></adlnav:presentation>
    <imsss:sequencing>
      <imsss:controlMode choice="false" choiceExit="0" flow="true" forwardOnly="1"
        useCurrentAttemptObjectiveInfo="false" useCurrentAttemptProgressInfo="false"/>
      <imsss:sequencingRules>
        <imsss:preConditionRule><imsss:ruleConditions conditionCombination="any">
          <imsss:ruleCondition condition="objectiveMeasureLessThan" operator="not" measureThreshold="-0.5"
            referencedObjective="o"/><imsss:ruleCondition condition="always"/></imsss:ruleConditions>
          <imsss:ruleAction action="stopForwardTraversal"/></imsss:preConditionRule>
        <imsss:exitConditionRule><imsss:ruleConditions><imsss:ruleCondition condition="completed"/>
          </imsss:ruleConditions><imsss:ruleAction action="exit"/></imsss:exitConditionRule>
        <imsss:postConditionRule><imsss:ruleConditions>
          <imsss:ruleCondition condition="attemptLimitExceeded" operator="not"/></imsss:ruleConditions>
          <imsss:ruleAction action="retryAll"/></imsss:postConditionRule>
      </imsss:sequencingRules>
      <imsss:limitConditions attemptLimit="3"/>
      <imsss:rollupRules rollupObjectiveSatisfied="false" rollupProgressCompletion="false"
        objectiveMeasureWeight="0.75">
        <imsss:rollupRule childActivitySet="atLeastPercent" minimumPercent="0.25">
          <imsss:rollupConditions conditionCombination="all">
            <imsss:rollupCondition condition="attempted" operator="not"/></imsss:rollupConditions>
          <imsss:rollupAction action="notSatisfied"/></imsss:rollupRule>
        <imsss:rollupRule childActivitySet="atLeastCount" minimumCount="2"><imsss:rollupConditions>
          <imsss:rollupCondition condition="completed"/></imsss:rollupConditions>
          <imsss:rollupAction action="incomplete"/></imsss:rollupRule>
      </imsss:rollupRules>
      <imsss:objectives>
        <imsss:objective objectiveID="o"><imsss:mapInfo targetObjectiveID="g" readNormalizedMeasure="false"
          writeNormalizedMeasure="true"/></imsss:objective>
        <imsss:primaryObjective objectiveID="p" satisfiedByMeasure="true">
          <imsss:minNormalizedMeasure> 0.6 </imsss:minNormalizedMeasure></imsss:primaryObjective>
      </imsss:objectives>
      <imsss:randomizationControls selectionTiming="once" selectCount="2" randomizationTiming="onEachNewAttempt"
        reorderChildren="true"/>
      <imsss:deliveryControls tracked="false" completionSetByContent="true" objectiveSetByContent="true"/>
      <adlseq:constrainedChoiceConsiderations constrainChoice="true" preventActivation="true"/>
      <adlseq:rollupConsiderations requiredForSatisfied="ifAttempted" requiredForNotSatisfied="ifNotSkipped"
        requiredForCompleted="ifNotSuspended" measureSatisfactionIfActive="false"/>
      <adlseq:objectives><adlseq:objective objectiveID="o"><adlseq:mapInfo targetObjectiveID="g"
        readRawScore="false" readMinScore="false" readMaxScore="false" writeRawScore="true" writeMinScore="true"
        writeMaxScore="true"/></adlseq:objective></adlseq:objectives>
    </imsss:sequencing>)");
  EXPECT_EQ(read.controls, expected.controls);
  EXPECT_EQ(read.rules, expected.rules);
  EXPECT_EQ(read.rollupRules, expected.rollupRules);
  EXPECT_EQ(read.rollup, expected.rollup);
  EXPECT_EQ(read.completion, expected.completion);
  EXPECT_EQ(read.objectives, expected.objectives);
  EXPECT_EQ(read.randomization, expected.randomization);
  EXPECT_TRUE(read == expected) << "a part that isn't compared above differs";
  EXPECT_THAT(GetNotes(), IsEmpty());
}

TEST_F(PlexoSequencingReaderTest, KeepsTheStandardsDefaults) {
  Read(
      R"(<organizations><organization identifier="O"><item identifier="I" identifierref="asset" isvisible="false"/>
       </organization></organizations>)");
  PlexoActivityRules expected;
  expected.identifier = "I";
  expected.isVisible = false;
  expected.objectives.resize(1);
  EXPECT_TRUE(reading.definition->GetRules(1) == expected);
  EXPECT_TRUE(reading.definition->AreGlobalsForSystem());
  EXPECT_FALSE(reading.hasSequencing);
  EXPECT_EQ(reading.sources[1].kind, PlexoContentKind::Asset);
  EXPECT_THAT(GetNotes(), IsEmpty());
}

TEST_F(PlexoSequencingReaderTest, TakesFromTheCollectionWhatTheActivityLacks) {
  const std::string collection = R"(<imsss:sequencingCollection>
    <imsss:sequencing ID="s"><imsss:controlMode flow="true" forwardOnly="true"/>
      <imsss:limitConditions attemptLimit="1"/></imsss:sequencing></imsss:sequencingCollection>)";
  const PlexoActivityRules& rules =
      ReadItem(R"(<imsss:sequencing IDRef="s"><imsss:controlMode flow="true"/></imsss:sequencing>)",
               "CAM 1.3", collection);
  EXPECT_TRUE(rules.controls.flow);
  EXPECT_FALSE(rules.controls.forwardOnly) << "a part of its own counts as a whole";
  EXPECT_EQ(rules.attemptLimit, 1U);
  EXPECT_THAT(GetNotes(), IsEmpty());
  ReadItem(R"(<imsss:sequencing IDRef="t"/>)", "CAM 1.3", collection);
  EXPECT_THAT(GetNotes(), ElementsAre(HasSubstr("has no 't'")));
}

TEST_F(PlexoSequencingReaderTest, ReadsCompletionThresholdsAsTheEditionHasThem) {
  const struct {
    const char* version;
    const char* element;
    PlexoCompletionThreshold expected;
    std::size_t notes;
  } cases[] = {
      {"2004 3rd Edition", "<adlcp:completionThreshold>0.7</adlcp:completionThreshold>", {true, 0.7, 1}, 0},
      {"2004 3rd Edition", "<adlcp:completionThreshold>7</adlcp:completionThreshold>", {true, 1, 1}, 1},
      {"2004 3rd Edition", "<adlcp:completionThreshold minProgressMeasure='0.7'/>", {false, 1, 1}, 1},
      {"2004 4th Edition", "<adlcp:completionThreshold minProgressMeasure='0.7'/>", {false, 0.7, 1}, 0},
      {"2004 4th Edition", "<adlcp:completionThreshold>0.7</adlcp:completionThreshold>", {false, 1, 1}, 1},
  };
  for (const auto& [version, element, expected, notes] : cases) {
    EXPECT_EQ(ReadItem(element, version).completion, expected) << version << element;
    EXPECT_EQ(GetNotes().size(), notes) << version << element;
  }
}

TEST_F(PlexoSequencingReaderTest, ReplacesWhatIsNotAllowedAndSaysSo) {
  const auto inRule = [](const std::string& condition) {
    return "<imsss:sequencingRules><imsss:preConditionRule><imsss:ruleConditions><imsss:ruleCondition " +
           condition +
           "/></imsss:ruleConditions><imsss:ruleAction "
           "action='skip'/></imsss:preConditionRule></imsss:sequencingRules>";
  };
  const auto inMap = [](const std::string& map) {
    return "<imsss:objectives><imsss:primaryObjective>" + map +
           "</imsss:primaryObjective></imsss:objectives>";
  };
  const struct {
    std::string content;
    const char* note;
  } cases[] = {
      {inRule("condition='objectiveMeasureGreaterThan' measureThreshold='80'"),
       "'80' isn't from -1 to 1; 1 is used"},
      {inRule("condition='always' measureThreshold='nan'"), "'nan' isn't a number; 0 is used"},
      {inRule("condition='always' measureThreshold='1e999'"), "isn't a number"},
      {inRule("condition='always' operator='nope'"), "'nope' isn't one of the values allowed"},
      {inRule("condition='sometimes'"), "'preConditionRule' is incomplete or not understood; it is left out"},
      {inRule(""), "'preConditionRule' is incomplete or not understood; it is left out"},
      {"<imsss:sequencingRules><imsss:exitConditionRule><imsss:ruleConditions/><imsss:ruleAction "
       "action='skip'/>"
       "</imsss:exitConditionRule></imsss:sequencingRules>",
       "'exitConditionRule' is incomplete or not understood"},
      {"<imsss:rollupRules><imsss:rollupRule/></imsss:rollupRules>", "the 'rollupRule' is incomplete"},
      {"<imsss:controlMode flow='TRUE'/>", "'flow' of 'controlMode': 'TRUE' isn't one of the values allowed"},
      {"<imsss:limitConditions attemptLimit='-1'/>", "'-1' isn't a whole number"},
      {"<imsss:limitConditions attemptLimit='4294967295'/>", "isn't a whole number that can be counted to"},
      {"<imsss:randomizationControls selectionTiming='often'/>", "'often' isn't one of the values allowed"},
      {"<imsss:rollupRules objectiveMeasureWeight='-1'/>", "'-1' isn't from 0 to 1000000; 0 is used"},
      {"<imsss:objectives><imsss:objective/></imsss:objectives>", "no 'objectiveID'; it is left out"},
      {inMap("<imsss:mapInfo/>"), "no 'targetObjectiveID'; it is left out"},
      {inMap("<imsss:minNormalizedMeasure/>"), "'minNormalizedMeasure': '' isn't a number; 1 is used"},
      {"<adlseq:objectives><adlseq:objective objectiveID='x'/></adlseq:objectives>",
       "declares no objective 'x'"},
  };
  for (const auto& [content, note] : cases) {
    ReadItem("<imsss:sequencing>" + content + "</imsss:sequencing>");
    EXPECT_THAT(GetNotes(), ::testing::Contains(HasSubstr(note))) << content;
    EXPECT_NE(reading.definition, nullptr) << content;
  }
}

TEST_F(PlexoSequencingReaderTest, SaysWhatItCanNotLaunchOrName) {
  Read(R"(<organizations default="none"><organization identifier="O">
       <item identifier="I" identifierref="odd"/><item identifier="I" identifierref="gone"/><item/>
       </organization><organization identifier="P"/></organizations>)");
  EXPECT_THAT(GetNotes(), ElementsAre(HasSubstr("no organization 'none'; the first one is played"),
                                      HasSubstr("neither 'sco' nor 'asset'"),
                                      HasSubstr("'I' was given before"), HasSubstr("launches nothing"),
                                      HasSubstr("no identifier"), HasSubstr("launches nothing")));
  EXPECT_EQ(reading.sources[1].kind, PlexoContentKind::Sco);
  EXPECT_EQ(reading.sources[2].kind, PlexoContentKind::None);
}

TEST_F(PlexoSequencingReaderTest, ChoosesTheOrganization) {
  const std::string two = R"(<organizations default="B"><organization identifier="A"/>
    <organization identifier="B" adlseq:objectivesGlobalToSystem="false"/></organizations>)";
  EXPECT_EQ(Read(two).definition->GetRules(0).identifier, "B");
  EXPECT_FALSE(reading.definition->AreGlobalsForSystem());
  EXPECT_EQ(Read(two, {}, "CAM 1.3", "A").definition->GetRules(0).identifier, "A");
  EXPECT_EQ(Read(two, {}, "CAM 1.3", "C").failure, "there is no organization 'C'; it has 'A', 'B'");
  EXPECT_THAT(Read("<organizations/>").failure, HasSubstr("nothing to play"));
}

TEST_F(PlexoSequencingReaderTest, RefusesWhatNoSequencerPlays) {
  const std::string one = "<organizations><organization identifier='A'/></organizations>";
  EXPECT_THAT(Read(one, {}, "1.2").failure,
              HasSubstr("SCORM 1.2, which leaves the order of its items to the LMS"));
  EXPECT_EQ(reading.definition, nullptr);
  const std::string longName(70'000, 'x');
  EXPECT_EQ(Read("<organizations><organization identifier='A'>\n<item identifier='" + longName +
                 "'/></organization></organizations>")
                .failure,
            "an identifier or title is too long");
  EXPECT_GT(reading.failureLine, 0);
}

TEST_F(PlexoSequencingReaderTest, CountsNotesBeyondThoseItKeeps) {
  std::string items;
  for (int at = 0; at < 300; ++at) items += "<item identifier='" + std::to_string(at) + "'/>";
  Read("<organizations><organization identifier='O'>" + items + "</organization></organizations>");
  EXPECT_EQ(reading.notes.Get().size(), PlexoReadingNotes::kMost);
  EXPECT_EQ(reading.notes.GetDropped(), 200U);
}

}  // namespace
