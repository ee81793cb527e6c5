// SPDX-License-Identifier: Apache-2.0
#include "FaultyPackages.h"

#include "support/CheckedPackage.h"

namespace {

using enum PlexoFindingId;

CheckedPackage New() { return CheckedPackage::Scorm2004(); }
CheckedPackage Old() { return CheckedPackage::Scorm12(); }

std::string Objectives(const std::string& content) {
  return "<imsss:objectives>" + content + "</imsss:objectives>";
}

std::string Primary(const std::string& maps) {
  return "<imsss:primaryObjective objectiveID=\"own\">" + maps + "</imsss:primaryObjective>";
}

std::string Writes(const std::string& global) {
  return "<imsss:mapInfo targetObjectiveID=\"" + global +
         "\" readSatisfiedStatus=\"false\" readNormalizedMeasure=\"false\" writeSatisfiedStatus=\"true\"/>";
}

std::string Reads(const std::string& global) {
  return "<imsss:objective objectiveID=\"other\"><imsss:mapInfo targetObjectiveID=\"" + global +
         "\"/></imsss:objective>";
}

/// A rule that keeps an item closed until its objective "other" has a status.
const std::string kGate =
    "<imsss:sequencingRules><imsss:preConditionRule><imsss:ruleConditions><imsss:ruleCondition "
    "referencedObjective=\"other\" operator=\"not\" "
    "condition=\"objectiveStatusKnown\"/></imsss:ruleConditions>"
    "<imsss:ruleAction action=\"disabled\"/></imsss:preConditionRule></imsss:sequencingRules>";
const std::string kByContent =
    "<imsss:deliveryControls completionSetByContent=\"true\" objectiveSetByContent=\"true\"/>";
const std::string kFlow = "<imsss:sequencing><imsss:controlMode flow=\"true\"/></imsss:sequencing>";

/// Two rules that keep an item closed until its objective "other" is satisfied.
const std::string kGateAndPass =
    std::string(kGate).insert(kGate.rfind("</"),
                              R"(<imsss:preConditionRule><imsss:ruleConditions conditionCombination="any">
    <imsss:ruleCondition referencedObjective="other" operator="not" condition="satisfied"/>
    <imsss:ruleCondition referencedObjective="other" operator="not" condition="objectiveStatusKnown"/>
    </imsss:ruleConditions><imsss:ruleAction action="disabled"/></imsss:preConditionRule>)");

/// The second item waits for the first, whose page names these elements of the data model.
CheckedPackage Waiting(const std::string& names, const std::string& gate = kGate) {
  return New()
      .Sequence("first", Objectives(Primary(Writes("g"))) + kByContent)
      .Sequence("second", gate + Objectives(Primary("") + Reads("g")))
      .File("a/index.htm", CheckedPackage::Page2004(names));
}

std::string Weight(const std::string& weight) {
  return "<imsss:rollupRules objectiveMeasureWeight=\"" + weight + "\"/>";
}

/// The second item waits for the first, a cluster with this rollup and one content.
std::string WaitingForCluster(const std::string& rollup, const std::string& names,
                              const std::string& gate = kGate) {
  const std::string child =
      R"(<item identifier="CHILD" identifierref="RES-A"><title>Child</title><imsss:sequencing>)" +
      kByContent + "</imsss:sequencing></item>";
  return New()
      .Replace(R"(<item identifier="FIRST" identifierref="RES-A">)", R"(<item identifier="FIRST">)")
      .At("first", child + R"(<imsss:sequencing><imsss:controlMode flow="true"/>)" + rollup +
                       Objectives(Primary(Writes("g"))) + "</imsss:sequencing>")
      .Sequence("second", gate + Objectives(Primary("") + Reads("g")))
      .File("a/index.htm", CheckedPackage::Page2004(names))
      .Build();
}

const std::string kCompletionSatisfies =
    R"(<imsss:rollupRules><imsss:rollupRule><imsss:rollupConditions><imsss:rollupCondition
    condition="completed"/></imsss:rollupConditions><imsss:rollupAction action="satisfied"/>
    </imsss:rollupRule></imsss:rollupRules>)";

const std::string kIncompletenessFails =
    R"(<imsss:rollupRules><imsss:rollupRule childActivitySet="any"><imsss:rollupConditions>
    <imsss:rollupCondition operator="not" condition="completed"/></imsss:rollupConditions>
    <imsss:rollupAction action="notSatisfied"/></imsss:rollupRule><imsss:rollupRule><imsss:rollupConditions>
    <imsss:rollupCondition condition="completed"/></imsss:rollupConditions>
    <imsss:rollupAction action="satisfied"/></imsss:rollupRule></imsss:rollupRules>)";

/// A rule that closes the item itself when it was done.
std::string ClosedBy(const std::string& condition) {
  return R"(<imsss:sequencingRules><imsss:preConditionRule><imsss:ruleConditions conditionCombination="any">)" +
         condition +
         R"(</imsss:ruleConditions><imsss:ruleAction action="disabled"/></imsss:preConditionRule>
         </imsss:sequencingRules>)";
}

/// The second item is content of SCORM 1.2 with this script, behind a launch page with these settings; the
/// first waits for its success.
CheckedPackage Launched(const std::string& script, const std::string& settings) {
  return New()
      .Sequence("first", kGateAndPass + Objectives(Primary("") + Reads("g")))
      .Sequence("second", Objectives(Primary(Writes("g"))) + kByContent)
      .Replace(R"("sco" href="b/index.htm")", R"("sco" href="b/launch/launch.html")")
      .Replace(R"(<file href="b/index.htm"/>)", R"(<file href="b/launch/launch.html"/>)")
      .Listed("b/launch/settings.js",
              "var plexoLaunch = {\n  \"content\": \"../content/a.htm?x=1\",\n  \"contentEdition\": \"1.2\"" +
                  settings + "\n};\n")
      // It can say everything.
      .File("b/launch/launch.html", CheckedPackage::Page2004("cmi.completion_status cmi.success_status"))
      .Remove("b/index.htm")
      .File("b/content/a.htm", "<script src='js/a.js'></script>")
      .At("resources", R"(<resource identifier="RES-C" type="webcontent" adlcp:scormType="asset">
      <file href="b/content/a.htm"/><file href="b/content/js/a.js"/></resource>)")
      .File("b/content/js/a.js", script);
}
const std::string kOldVisit = "API.LMSInitialize(''); API.LMSFinish('');";

/// The second item waits for two tests in the first.
CheckedPackage WaitingForTests(const std::string& gate) {
  const auto test = [](const std::string& identifier) {
    return "<item identifier=\"" + identifier +
           "\" identifierref=\"RES-A\"><title>T</title><imsss:sequencing>" +
           Objectives(Primary(Writes("g"))) + "</imsss:sequencing></item>";
  };
  return New()
      .Replace(R"(<item identifier="FIRST" identifierref="RES-A">)", R"(<item identifier="FIRST">)")
      .At("first", test("PRE") + test("POST") + kFlow)
      .Sequence("second", gate + Objectives(Primary("") + Reads("g")));
}

const std::string kSco = R"("RES-B" type="webcontent" adlcp:scormType="sco")";
const std::string kAsset = R"("RES-B" type="webcontent" adlcp:scormType="asset")";

}  // namespace

std::vector<FaultyPackage> FaultySequencing() {
  const std::string kFlowOn = "<imsss:controlMode flow=\"true\"/>";
  const std::string kUnread =
      R"(<imsss:objective objectiveID="other"><imsss:mapInfo targetObjectiveID="g" readSatisfiedStatus="false"
      readNormalizedMeasure="false"/></imsss:objective>)";
  return {
      {ObjectiveUnknown, "'other'", New().Sequence("second", kGate).Build()},
      {GlobalNeverWritten, "'g'", New().Sequence("second", Objectives(Primary("") + Reads("g"))).Build()},
      {ContentNeverReached,
       "'other'",
       New().Sequence("second", kGate + Objectives(Primary("") + Reads("g"))).Build(),
       {GlobalNeverWritten}},
      {ContentNeverReached, "'other'",
       New().Sequence("second", kGate + Objectives(Primary(Writes("g")) + Reads("g"))).Build()},
      {ContentNeverReached, "'other'",
       New()
           .Sequence("first", Objectives(Primary(Writes("g"))))
           .Sequence("second", kGate + Objectives(Primary("") + kUnread))
           .Build()},
      {StartLaunchesNothing, "'Course'", New().Replace(kFlowOn, "").Build()},
      {ContentNeverReached, "'First' and 'Second'",
       New().Replace(kFlowOn, R"(<imsss:controlMode choice="false"/>)").Build()},
      {WeightsDontSum, "0.75",
       New().Sequence("first", Weight("0.5")).Sequence("second", Weight("0.25")).Build()},
      {WeightMalformed, "'5e-1'", New().Sequence("second", Weight("5e-1")).Build()},
      {WeightMalformed, "''", New().Sequence("second", Weight("")).Build()},
      {WeightMalformed, "'2'", New().Sequence("second", Weight("2")).Build()},
      {ContentNeverReached, "'First' is disabled",
       New()
           .Sequence("first", ClosedBy(R"(<imsss:ruleCondition operator="not" condition="attempted"/>)"))
           .Build()},
      {SequencingOrder, "'rollupRules'", New().Sequence("second", kByContent + Weight("1")).Build()},
  };
}

std::vector<FaultyPackage> SilentContents() {
  const std::string kApi12 = "<script>API.LMSInitialize(''); API.LMSFinish('')</script>";
  return {
      {ContentNeverReached, "'First' reports completion and no success",
       Waiting("cmi.completion_status").Build()},
      {ContentNeverReached, "'First' reports completion and no success",
       Waiting("cmi.completion_status cmi.score.scaled")
           .File("b/index.htm",
                 CheckedPackage::Page2004("cmi.completion_status cmi.success_status cmi.score.scaled"))
           .Build()},
      {ContentNeverReached, "'First' reports neither", Waiting("").Build()},
      {ContentNeverReached, "'Child' reports completion and no success",
       WaitingForCluster("", "cmi.completion_status")},
      {ContentNeverReached, "'Child' reports neither", WaitingForCluster(kCompletionSatisfies, "")},
      {ContentNeverReached, "'Child' reports success and no completion",
       WaitingForCluster(kCompletionSatisfies, "cmi.success_status")},
      {CourseNeverCompleted, "'First' reports success and no completion",
       Waiting("cmi.success_status", kGateAndPass).Build()},
      {CourseNeverPassed, "'Second' reports completion",
       New()
           .Sequence("second", kByContent)
           .File("b/index.htm", CheckedPackage::Page2004("cmi.completion_status"))
           .Build()},
      {CourseNeverCompleted, "'Second' reports neither",
       New().Sequence("second", kByContent).File("b/index.htm", CheckedPackage::Page2004("")).Build()},
      {FailingOpens, "'SECOND'", Waiting("cmi.completion_status cmi.success_status 'failed'").Build()},
      {FailingOpens, "likewise 1 more",
       Waiting("cmi.completion_status cmi.success_status 'failed'")
           .At("items",
               R"(<item identifier="THIRD" identifierref="RES-A"><title>Third</title><imsss:sequencing>)" +
                   kGate + Objectives(Primary("") + Reads("g")) + "</imsss:sequencing></item>")
           .Build()},
      {ResultTakenBack, "'CHILD'",
       WaitingForCluster(kIncompletenessFails, "cmi.completion_status 'incomplete' cmi.success_status",
                         kGateAndPass)},
      {ScoreDiluted, "1 of its 2",
       New()
           .File("b/index.htm",
                 CheckedPackage::Page2004("cmi.completion_status cmi.success_status cmi.score.scaled"))
           .Build()},
      {ContentNeverReached, "'Second' reports completion and no success", Launched(kOldVisit, "").Build()},
      // The launch page lets it pass.
      {StartLaunchesNothing, "'Course'", Launched(kOldVisit, R"(, "completionPasses": true)").Build()},
      {StartLaunchesNothing, "'Course'",
       Launched(kOldVisit + "'cmi.core.score.raw'", R"(, "masteryScore": "70")")
           .File("a/index.htm",
                 CheckedPackage::Page2004("cmi.completion_status cmi.success_status cmi.score.scaled"))
           .Build()},
      {FailedPretestOpens, "'PRE'", WaitingForTests(kGate).Build()},
      {OtherEditionApi, "LMSInitialize", New().File("b/index.htm", kApi12).Build()},
      {OtherEditionApi, "LMSInitialize",
       New().File("b/index.htm", "<!-- Initialize the page -->" + kApi12).Build()},
      {OtherEditionApi, "SCORM 1.2", Old().File("b/index.htm", CheckedPackage::Page2004("")).Build()},
      {NoApi, "Initialize", New().File("b/index.htm", "<p>Hello</p>").Build()},
      {NoApi, "LMSInitialize", Old().File("b/index.htm", "<script>menu.Initialize()</script>").Build()},
      {SessionNotEnded, "Terminate",
       New().File("b/index.htm", "<script>api.Initialize('')</script>").Build()},
      {AssetUsesApi, "'SECOND'", New().Replace(kSco, kAsset).Build()},
      {EndsCourse, "'logout'",
       New().File("b/index.htm", CheckedPackage::Page2004("api.SetValue(\"cmi.exit\", \"logout\")")).Build()},
      {EndsCourse, "'exitAll'",
       New()
           .File("b/index.htm", CheckedPackage::Page2004("api.SetValue('adl.nav.request','exitAll')"))
           .Build()},
      {EndsCourse, "'logout'",
       Old()
           .File("b/index.htm",
                 "<script>API.LMSInitialize(''); API.LMSSetValue('cmi.core.exit', 'logout'); "
                 "API.LMSFinish('')</script>")
           .Build()},
      {BookmarkLost, "'SECOND'",
       New().File("b/index.htm", CheckedPackage::Page2004("cmi.location 'suspend'")).Build()},
  };
}

std::vector<std::string> GoodPackages() {
  return {
      New().Build(),
      Old().Build(),
      WaitingForCluster(kCompletionSatisfies, "cmi.completion_status"),
      WaitingForTests(kGateAndPass).Build(),
      // The same identifiers with blanks around them.
      New()
          .Replace("\"COURSE\"", "\" COURSE\"")
          .Replace("identifierref=\"RES-A\"", "identifierref=\" RES-A \"")
          .Replace("identifier=\"RES-B\"", "identifier=\"RES-B\t\"")
          .Replace("default=\"ORG\"", "default=\"ORG \"")
          .Build(),
      // Reopened content of others takes nothing back.
      WaitingForCluster(kIncompletenessFails, "cmi.completion_status cmi.success_status", kGateAndPass),
      // Content that can't fail opens what waits for it by passing only.
      Waiting("cmi.completion_status cmi.success_status").Build(),
      // Only what counts lowers a score.
      New()
          .Sequence("first", Weight("0"))
          .File("b/index.htm",
                CheckedPackage::Page2004("cmi.completion_status cmi.success_status cmi.score.scaled"))
          .Build(),
      // Names alone send nothing, and what a course of one item ends was all there was.
      New().File("b/index.htm", CheckedPackage::Page2004("'logout' cmi.exit, x, 'logout'")).Build(),
      New()
          .Cut("<item identifier=\"FIRST\"", "</item>")
          .Replace(R"("sco" href="a/index.htm")", R"("asset" href="a/index.htm")")
          .File("b/index.htm", CheckedPackage::Page2004("cmi.exit 'logout'"))
          .Build(),
      // Names of the API that are put together may be of either edition.
      Old().File("b/index.htm", "api['LMS' + 'Initialize']('')").Build(),
      New().Replace(kSco, kAsset).File("b/index.htm", "<script>menu.Initialize()</script>").Build(),
      New()
          .Replace("<resources>", R"(<resources xml:base="top/contents.xml">)")
          .Replace(R"("sco" href="b/index.htm")", R"("sco" xml:base="b/" href="index.htm")")
          .Replace(R"(<file href="b/index.htm"/>)", R"(<file href="index.htm"/>)")
          .Rename("a/index.htm", "top/a/index.htm")
          .Rename("b/index.htm", "top/b/index.htm")
          .Build(),
      New()
          .File("b/index.htm", "")
          .At("file", R"(<dependency identifierref="RES-C"/>)")
          .At("resources", R"(<resource identifier="RES-D" type="webcontent" adlcp:scormType="asset">
          <file href="c/api.js"/></resource><resource identifier="RES-C" type="webcontent"
          adlcp:scormType="asset"><dependency identifierref="RES-D"/></resource>)")
          .File("c/api.js", CheckedPackage::Page2004("cmi.completion_status"))
          .Build(),
  };
}
