// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoAdopter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "AdoptedPackages.h"
#include "host/files/TzFile.h"
#include "support/RawZip.h"
#include "support/RecordedProblems.h"
#include "support/ScoZip.h"
#include "support/TestSession.h"

namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using enum PlexoCourseEdition;

const char* const kPage2004 =
    "<script>API_1484_11.Initialize(''); API_1484_11.SetValue('cmi.completion_status', 'completed');"
    "API_1484_11.SetValue('cmi.success_status', 'passed'); API_1484_11.Terminate('');</script>";

/// A package that a course takes as it is, for a test to change one thing of.
ScoZip Sco(PlexoCourseEdition edition) {
  ScoZip zip("intro");
  if (edition == Scorm12) zip.Scorm12();
  return zip.Item("Intro", "index.htm").File("index.htm", kPage2004);
}

/// Its archive, with other text in place of some of the manifest.
std::string Edited(ScoZip zip, const std::string& find, const std::string& replacement) {
  std::string manifest = zip.GetManifest();
  const std::size_t at = manifest.find(find);
  EXPECT_NE(at, std::string::npos) << find;
  return zip.Manifest(manifest.replace(at, find.size(), replacement)).Build();
}

TEST(PlexoAdopter, FindsNoReasonInAPackageThatACourseTakesAsItIs) {
  for (const PlexoCourseEdition edition : {Scorm12, Scorm2004}) {
    const Adoption adoption = Adopt(Sco(edition).Build());
    EXPECT_THAT(adoption.reasons, IsEmpty());
    EXPECT_THAT(adoption.findings, IsEmpty());
    EXPECT_THAT(adoption.FileNames(), ElementsAre("content/index.htm", "imsmanifest.xml"));
  }
}

TEST(PlexoAdopter, TellsTheEditionByWhatIsMostTelling) {
  const std::string other12 = "http://www.example.com/content";
  const auto manifest = [](const std::string& attributes, const std::string& metadata,
                           const std::string& type) {
    return ScoZip("intro")
        .File("index.htm", kPage2004)
        .Manifest("<manifest identifier='M' " + attributes + "><metadata>" + metadata +
                  "</metadata><organizations><organization identifier='O'><item identifier='I' "
                  "identifierref='R'><title>Intro</title></item></organization></organizations>"
                  "<resources><resource identifier='R' type='webcontent' " +
                  type + " href='index.htm'/></resources></manifest>")
        .Build();
  };
  const std::string ns12 = "xmlns='http://www.imsproject.org/xsd/imscp_rootv1p1p2' ";
  const std::string adl12 = "xmlns:adlcp='http://www.adlnet.org/xsd/adlcp_rootv1p2' ";
  const std::string ns2004 = "xmlns='http://www.imsglobal.org/xsd/imscp_v1p1' ";
  const std::string adl2004 = "xmlns:adlcp='http://www.adlnet.org/xsd/adlcp_v1p3' ";
  const auto says = [](const std::string& version) {
    return "<schemaversion>" + version + "</schemaversion>";
  };
  const struct {
    std::string archive;
    const char* version;
  } cases[] = {
      {manifest(ns2004 + adl2004 + "version='1.3'", says("1.2"), "adlcp:scormType='sco'"), "1.0"},
      {manifest(ns12 + adl12 + "version='1.0'", says("CAM 1.3"), "adlcp:scormtype='sco'"), "1.3"},
      {manifest(ns12 + adl12 + "version='1.0'", says("2004 2nd Edition"), ""), "1.3"},
      {manifest(ns2004 + adl12 + "version='1'", says("1.1.3"), "adlcp:scormType='sco'"), "1.0"},
      {manifest(ns2004 + "version='1.2'", "", ""), "1.3"},
      {manifest("version='1.3'", "", "adlcp:scormtype='sco'"), "1.0"},
      {manifest("version='1.2'", "", "adlcp:scormType='sco'"), "1.3"},
      {manifest("version='1.3'", "", ""), "1.3"},
      {manifest("version='1.2'", "", ""), "1.0"},
      {manifest("xmlns='http://www.example.com/own' version='1.2'", "", ""), "1.0"},
  };
  for (const auto& [archive, version] : cases) {
    const Adoption adoption = Adopt(archive);
    ASSERT_EQ(adoption.packages.size(), 1U);
    EXPECT_THAT(adoption.Manifest(), HasSubstr("\" version=\"" + std::string(version) + "\""));
  }
}

struct Change {
  const char* code;
  const char* find;
  const char* replacement;
  /// Stands in the adopted manifest.
  const char* result;
  PlexoCourseEdition edition = Scorm2004;
};

TEST(PlexoAdopter, MendsWhatACourseWouldRefuseOrMisread) {
  const Change changes[] = {
      {"PLX-811", "\"1.3\"", "\"1\"", "version=\"1.3\""},
      {"PLX-811", " version=\"1.0\" xmlns", " xmlns", "version=\"1.0\"", Scorm12},
      {"PLX-822", "<resources>", "<resources xml:base=\"./index.htm\">", "href=\"content/index.htm\""},
      {"PLX-823", "identifierref=\"R\"", "identifierref=\"R\" parameters=\"?a=b\"",
       "content/index.htm?a=b\""},
      {"PLX-826", "<manifest ", "<manifest a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' ",
       "version=\"1.3\""},
      {"PLX-827", "<resources>", "<resources><resource identifier='X' type='webcontent'/>",
       "href=\"content/index.htm\""},
      {"PLX-827", "identifier=\"I-intro\" ", "", "identifier=\"ITEM\""},
      {"PLX-827", "</title>",
       "</title><imsss:sequencing><imsss:objectives><imsss:primaryObjective/></imsss:objectives>"
       "</imsss:sequencing>",
       "<title>Intro</title>\n      </item>"},
      {"PLX-828", "href=\"index.htm\"", "href=\"index.htm?home=http://x/\"",
       "content/index.htm?home=http:%2F%2Fx%2F\""},
      {"PLX-832", "<file href=\"index.htm\"/>", "", "<file href=\"content/index.htm\" />"},
      {"PLX-842", "</resources>", "<resource identifier='X' type='webcontent' href='index.htm'/></resources>",
       "href=\"content/index.htm\">"},
      {"PLX-843", "</organization>", "<item identifier='X'><title>Appendix</title></item></organization>",
       "<title>Intro</title>"},
      {"PLX-848", "</title>", "</title><adlcp:masteryscore>80</adlcp:masteryscore>", "<title>Intro</title>"},
      {"PLX-824", "<file href=\"index.htm\"/>", "<file href=\"index.htm\"/><file href=\"INDEX.htm\"/>", ""},
      {"PLX-837", "</resource>", "<file href=\"gone.js\"/></resource>",
       "<file href=\"content/index.htm\" />"},
      {"PLX-838 'index.htm'", "<file href=\"index.htm\"/>", "<file href=\"./index.htm\"/>", ""},
      {"PLX-838 'index.htm'", "<file href=\"index.htm\"/>", "<file href=\"index.htm?a=1\"/>", ""},
      {"PLX-844", "</organization>", "<item identifier='X' identifierref='GONE'/></organization>", "\"RES\""},
      {"PLX-851", "</title>", "</title><metadata><adlcp:location>gone.xml</adlcp:location></metadata>", ""},
      {"PLX-852 the package: its items are those of organization 'O', and others were left out: 'P' "
       "(B)",
       "</organizations>",
       "<organization identifier='P'><title>B</title><item identifier='X' identifierref='R'><title>Intro"
       "</title></item></organization></organizations>",
       "identifier=\"I-intro\""},
      {"PLX-853 item 'I-intro'", "<title>Intro</title>", "<title> </title>", "<title>index.htm</title>"},
      {"PLX-854 item 'I-intro': 'GONE'", "identifierref=\"R\"", "identifierref=\"GONE\"",
       "<title>Intro</title>"},
  };
  for (const Change& change : changes) {
    const Adoption adoption = Adopt(Edited(Sco(change.edition), change.find, change.replacement));
    EXPECT_THAT(adoption.reasons, ElementsAre(StartsWith(change.code))) << change.replacement;
    ASSERT_EQ(adoption.packages.size(), 1U) << change.replacement;
    EXPECT_THAT(adoption.Manifest(), HasSubstr(change.result)) << change.replacement;
  }
}

TEST(PlexoAdopter, TellsWhatItLeavesOutThoughACourseWouldToo) {
  const std::string limits =
      "</title><imsss:sequencing><imsss:limitConditions attemptAbsoluteDurationLimit=\"PT1H\"/>"
      "</imsss:sequencing>";
  const std::string malformed =
      "</title><imsss:sequencing><imsss:limitConditions attemptAbsoluteDurationLimit=\"1 hour\"/>"
      "</imsss:sequencing>";
  const Change changes[] = {
      {"PLX-409", "</resource>", "<file href=\"http://www.example.com/a.js\"/></resource>", "\"RES\""},
      {"PLX-846", "</title>", "</title><imsss:sequencing><imsss:deliveryControls/></imsss:sequencing>", ""},
      {"PLX-847", "</title>", "</title><adlcp:prerequisites>A&amp;B</adlcp:prerequisites>", "", Scorm12},
      {"PLX-848 item 'I-intro': its time limit 'PT1H'", "</title>", limits.c_str(), "<title>Intro</title>"},
      {"PLX-849", "</title>", "</title><adlcp:timelimitaction>end</adlcp:timelimitaction>", "", Scorm12},
      {"PLX-849 item 'I-intro': its objective '%2.'", "</title>",
       "</title><imsss:sequencing><imsss:objectives><imsss:primaryObjective objectiveID=\"%2.\"/>"
       "</imsss:objectives></imsss:sequencing>",
       "<title>Intro</title>"},
      {"PLX-850", "scormType=\"sco\"", "scormType=\"asset\"", "adlcp:scormType=\"sco\""},
      {"PLX-829 item 'I-intro': its parameters '?&'", "identifierref=\"R\"",
       "identifierref=\"R\" parameters=\"?&amp;\"", "href=\"content/index.htm\""},
      {"PLX-849 item 'I-intro': its mastery score 'most'", "</title>",
       "</title><adlcp:masteryscore>most</adlcp:masteryscore>", "<title>Intro</title>", Scorm12},
      {"PLX-849 item 'I-intro': its mastery score '101'", "</title>",
       "</title><adlcp:masteryscore>101</adlcp:masteryscore>", "<title>Intro</title>", Scorm12},
      {"PLX-849 item 'I-intro': its time limit '30 minutes'", "</title>",
       "</title><adlcp:maxtimeallowed>30 minutes</adlcp:maxtimeallowed>", "<title>Intro</title>", Scorm12},
      {"PLX-849 item 'I-intro': its time limit '1 hour'", "</title>", malformed.c_str(),
       "<title>Intro</title>"},
      {"PLX-855 item 'I-intro': its isvisible", "identifierref=\"R\"",
       "identifierref=\"R\" isvisible=\"false\"", ""},
      {"PLX-855 item 'I-intro': its presentation", "</title>",
       "</title><adlnav:presentation><adlnav:navigationInterface/></adlnav:presentation>", ""},
      {"PLX-855 item 'I-intro': its metadata", "</title>", "</title><metadata><lom/></metadata>", ""},
      {"PLX-855 manifest 'M-intro': its metadata", "<organizations",
       "<metadata><lom/></metadata><organizations", ""},
  };
  for (const Change& change : changes) {
    const Adoption adoption = Adopt(Edited(Sco(change.edition), change.find, change.replacement));
    EXPECT_THAT(adoption.findings, Contains(StartsWith(change.code))) << change.replacement;
    EXPECT_THAT(adoption.reasons, IsEmpty()) << change.replacement;
    ASSERT_EQ(adoption.packages.size(), 1U) << change.replacement;
    EXPECT_THAT(adoption.Manifest(), HasSubstr(change.result)) << change.replacement;
  }
}

TEST(PlexoAdopter, RefusesWithTheReason) {
  RawZip twoManifests;
  twoManifests.entries = {{.name = "a/imsmanifest.xml"}, {.name = "b/imsmanifest.xml"}};
  const auto with = [](const std::string& file) {
    return Sco(Scorm2004).WithoutManifest().File(file, "x").Build();
  };
  const struct {
    std::string archive;
    const char* message;
  } cases[] = {
      {"no archive", "PLX-001"},
      {with("index2.htm"), "PLX-002"},
      {RawZip{.entries = {{.name = "../up"}, {.name = "imsmanifest.xml"}}}.Build(), "PLX-005"},
      {RawZip{.entries = {{.name = "imsmanifest.xml", .content = "<manifest/>", .crc = 1}}}.Build(),
       "PLX-008"},
      {Sco(Scorm2004).Manifest("<manifest>").Build(), "PLX-102"},
      {Sco(Scorm2004).Manifest("<course/>").Build(), "PLX-201"},
      {with("course.crs"), "PLX-801 the package: is an AICC package, not SCORM"},
      {with("cmi5.xml"), "PLX-801 the package: is a cmi5 package, not SCORM"},
      {with("sub/tincan.xml"), "PLX-801 the package: is an xAPI package, not SCORM"},
      {Edited(Sco(Scorm2004), "<organizations",
              "<metadata><schema>IMS Common Cartridge</schema></metadata><organizations"),
       "PLX-801 the package: is a Common Cartridge, not SCORM"},
      {Edited(Sco(Scorm2004), "http://www.imsglobal.org/xsd/imscp_v1p1",
              "http://www.imsglobal.org/xsd/imsccv1p1/imscp_v1p1"),
       "PLX-801 the package: is a Common Cartridge, not SCORM"},
      {ScoZip("a")
           .Manifest("<manifest><metadata><schema>QTIv2.1 Package</schema></metadata></manifest>")
           .Build(),
       "PLX-801 the package: is a QTI package, not SCORM"},
      {ScoZip("a").Manifest("<manifest><metadata><schema>Other</schema></metadata></manifest>").Build(),
       "PLX-801 the package: is a package of the schema 'Other', not SCORM"},
      {twoManifests.Build(),
       "PLX-802 the package: holds 2 manifests, and none at its top: 'a/imsmanifest.xml'"},
      {Sco(Scorm2004).Manifest("<manifest version='1'/>").Build(), "PLX-803"},
      {Edited(Sco(Scorm2004), "href=\"index.htm\"", "href=\"http://www.example.com/\""), "PLX-804"},
      {Edited(Sco(Scorm2004), "href=\"index.htm\"", "href=\"../index.htm\""), "PLX-804"},
      {Edited(Sco(Scorm2004), "href=\"index.htm\"", "href=\"imsmanifest.xml\""), "PLX-804"},
  };
  for (const auto& [archive, message] : cases) {
    const Adoption adoption = Adopt(archive);
    EXPECT_EQ(adoption.result.code, kTzBadContent) << message;
    EXPECT_THAT(adoption.findings, Contains(StartsWith(message)));
    EXPECT_THAT(adoption.items, IsEmpty()) << message;
  }
}

TEST(PlexoAdopter, TakesAPackageWhoseManifestLiesDeeper) {
  const Adoption alone = Adopt(Sco(Scorm2004).InFolder("course/v1").Build());
  EXPECT_THAT(alone.reasons, ElementsAre(StartsWith("PLX-831")));
  EXPECT_THAT(alone.FileNames(), ElementsAre("content/index.htm", "imsmanifest.xml"));

  RawZip zip;
  zip.entries = {{.name = "course/imsmanifest.xml", .content = Sco(Scorm2004).GetManifest()},
                 {.name = "course/index.htm", .content = kPage2004},
                 {.name = "shared/a.js", .content = "a"}};
  const Adoption beside = Adopt(zip.Build());
  EXPECT_THAT(beside.FileNames(),
              ElementsAre("content/course/index.htm", "content/shared/a.js", "imsmanifest.xml"));
  EXPECT_THAT(beside.Manifest(), HasSubstr("href=\"content/course/index.htm\">"));
}

TEST(PlexoAdopter, LeavesOutWhatIsNoContentAndKeepsWhatOnlyLooksLikeIt) {
  ScoZip zip = Sco(Scorm2004);
  const char* const left[] = {"imscp_v1p1.xsd",       "XMLSchema.dtd",    "lomStrict.xsd",
                              "common/dataTypes.xsd", "vocab/strict.xsd", "__MACOSX/._a"};
  const char* const kept[] = {"common/player.js",    "data/imscp_v1p1.xsd", "invoice.xsd",
                              "sub/imsmanifest.xml", "content/x.js",        "launch/x.js",
                              "metadata.xml",        "lomdata.xsd",         "unique/mine.xsd"};
  for (const char* name : left) zip.File(name, name);
  for (const char* name : kept) zip.File(name, name);
  // None of them is listed.
  zip.File("img/Thumbs.db", "x").File("a/.DS_Store", "x").Manifest(Sco(Scorm2004).GetManifest());
  const Adoption adoption = Adopt(zip.Build());
  std::vector<std::string> expected = {"content/index.htm", "imsmanifest.xml"};
  for (const char* name : kept) expected.push_back(std::string("content/") + name);
  EXPECT_THAT(adoption.FileNames(), ::testing::UnorderedElementsAreArray(expected));
  for (const char* name : kept) EXPECT_EQ(adoption.packages[0].at("content/" + std::string(name)), name);
  EXPECT_THAT(adoption.findings,
              Contains("PLX-835 '__MACOSX/._a' and 1 more: left behind by macOS, and left out"));
  EXPECT_THAT(adoption.findings, Contains("PLX-835 'img/Thumbs.db': left behind by Windows, and left out"));
  EXPECT_THAT(adoption.findings, Contains(StartsWith("PLX-836 'imscp_v1p1.xsd' and 4 more:")));
  EXPECT_THAT(adoption.reasons, ElementsAre(StartsWith("PLX-832"), StartsWith("PLX-833 'common/'"),
                                            StartsWith("PLX-833 'unique/'")));

  const Adoption of12 = Adopt(Sco(Scorm12).File("common/dataTypes.xsd", "x").Build());
  EXPECT_EQ(of12.packages[0].count("content/common/dataTypes.xsd"), 1U) << "such a folder is SCORM 2004's";
}

TEST(PlexoAdopter, KeepsSchemaDocumentsThatAResourceLists) {
  const Adoption adoption = Adopt(Sco(Scorm2004)
                                      .File("lom.xsd", "lom")
                                      .File("common/strict.htm", "x")
                                      .File("vocab/loose.xsd", "v")
                                      .Build());
  EXPECT_EQ(adoption.packages[0].at("content/lom.xsd"), "lom");
  EXPECT_EQ(adoption.packages[0].at("content/vocab/loose.xsd"), "v");
  EXPECT_THAT(adoption.findings, Not(Contains(StartsWith("PLX-836"))));
}

TEST(PlexoAdopter, LosesNothingThatLiesWhereAnAdoptionPutsItsOwn) {
  const std::string named = "<metadata><adlcp:location>metadata.xml</adlcp:location></metadata>";
  const auto zip = [] {
    return ScoZip("intro").Item("Intro", "content/index.htm").File("content/index.htm", kPage2004);
  };
  const Adoption ofAnother =
      Adopt(Edited(zip().File("metadata.xml", "m"), "<resources>",
                   "<resources><resource identifier='A' type='webcontent'>" + named + "</resource>"));
  EXPECT_EQ(ofAnother.packages[0].at("content/metadata.xml"), "m");
  const Adoption ofTwo = Adopt(
      Edited(zip().File("metadata.xml", "m").File("content/r.xml", "r"), "</title>",
             "</title>" + named + "<metadata><adlcp:location>content/r.xml</adlcp:location></metadata>"));
  EXPECT_EQ(ofTwo.packages[0].at("content/metadata.xml"), "m");

  PlexoAdoptRequest request;
  request.edition = Scorm12;
  const Adoption behindPage = Adopt(Sco(Scorm2004).Build(), request);
  RawZip grown;
  for (const auto& [name, content] : behindPage.packages.at(0))
    grown.entries.push_back({.name = name, .content = content});
  grown.entries.push_back({.name = "launch/mine.js", .content = "mine"});
  const Adoption again = Adopt(grown.Build(), request);
  EXPECT_EQ(again.packages[0].at("content/launch/mine.js"), "mine");
  EXPECT_EQ(again.packages[0].at("content/content/index.htm"), kPage2004);
}

TEST(PlexoAdopter, ReadsAManifestWhoseNamesAreAllOfTheADLNamespace) {
  const Adoption adoption = Adopt(
      ScoZip("intro")
          .File("index.htm", kPage2004)
          .Manifest(
              "<manifest xmlns='http://www.adlnet.org/xsd/adlcp_rootv1p2' identifier='M' version='1.2'>"
              "<organizations><organization identifier='O'><item identifier='I' identifierref='R'>"
              "<title>Intro</title><masteryscore>80</masteryscore></item></organization></organizations>"
              "<resources><resource identifier='R' scormtype='sco' href='index.htm'/></resources></manifest>")
          .Build());
  EXPECT_THAT(adoption.Manifest(), AllOf(HasSubstr("<title>Intro<"), HasSubstr("<adlcp:masteryscore>80<")));
}

TEST(PlexoAdopter, FindsTheFilesThatAddressesMean) {
  const struct {
    const char* href;
    const char* file;
    const char* written;
  } cases[] = {
      {"my%20page.htm", "my page.htm", "content/my%20page.htm"},
      {"my page.htm", "my page.htm", "content/my%20page.htm"},
      {"100%25.htm", "100%.htm", "content/100%25.htm"},
      {"a%20b.htm", "a%20b.htm", "content/a%2520b.htm"},
      {"./sub\\..\\a.htm?x=1#y", "a.htm", "content/a.htm?x=1#y"},
      {"/a.htm", "a.htm", "content/a.htm"},
      {"A.HTM", "a.htm", "content/a.htm"},
      {" a.htm ", "a.htm", "content/a.htm"},
      {"%FCben.htm", "üben.htm", "content/üben.htm"},
  };
  for (const auto& [href, file, written] : cases) {
    constexpr unsigned kUtf8Names = 0x800;
    RawZip zip;
    zip.entries = {{.name = "imsmanifest.xml", .content = ScoZip("intro").Item("Intro", href).GetManifest()},
                   {.name = file, .content = kPage2004, .flags = kUtf8Names},
                   {.name = "b.htm"}};
    const Adoption adoption = Adopt(zip.Build());
    ASSERT_EQ(adoption.packages.size(), 1U) << href;
    EXPECT_THAT(adoption.Manifest(), HasSubstr("href=\"" + std::string(written) + "\">")) << href;
    EXPECT_EQ(adoption.packages[0].count("content/" + std::string(file)), 1U) << href;
  }
}

TEST(PlexoAdopter, KeepsWhatTheItemSays) {
  const Adoption one = Adopt(Edited(Sco(Scorm12), "</title>",
                                    "</title><metadata><adlcp:location>m/sco.xml</adlcp:location></metadata>"
                                    "<adlcp:maxtimeallowed>00:30:00</adlcp:maxtimeallowed>"
                                    "<adlcp:timelimitaction>exit,message</adlcp:timelimitaction>"
                                    "<adlcp:datafromlms>a &lt; b</adlcp:datafromlms>"
                                    "<adlcp:masteryscore>75</adlcp:masteryscore>"));
  for (const char* text : {"<adlcp:maxtimeallowed>00:30:00<", "<adlcp:timelimitaction>exit,message<",
                           "<adlcp:datafromlms>a &lt; b<", "<adlcp:masteryscore>75<",
                           "identifier=\"M-intro\"", "identifier=\"I-intro\"", "<title>Intro<"}) {
    EXPECT_THAT(one.Manifest(), HasSubstr(text));
  }
  const Adoption two =
      Adopt(Edited(Sco(Scorm2004).File("m/sco.xml", "<lom/>"), "</title>",
                   "</title><metadata><adlcp:location>m/sco.xml</adlcp:location></metadata>"
                   "<adlcp:dataFromLMS>a</adlcp:dataFromLMS><imsss:sequencing><imsss:objectives>"
                   "<imsss:primaryObjective objectiveID=\"obj\"/></imsss:objectives></imsss:sequencing>"));
  EXPECT_THAT(two.Manifest(), AllOf(HasSubstr("<adlcp:dataFromLMS>a<"), HasSubstr("objectiveID=\"obj\""),
                                    HasSubstr("<adlcp:location>metadata.xml<")));
  EXPECT_EQ(two.packages[0].at("metadata.xml"), "<lom/>");
  EXPECT_EQ(two.packages[0].at("content/m/sco.xml"), "<lom/>");
}

TEST(PlexoAdopter, PutsTheOtherEditionBehindALaunchPage) {
  PlexoAdoptRequest request;
  request.edition = Scorm2004;
  const Adoption adoption = Adopt(
      Edited(Sco(Scorm12), "</title>",
             "</title><adlcp:masteryscore>75</adlcp:masteryscore><adlcp:datafromlms>x</adlcp:datafromlms>"),
      request);
  EXPECT_THAT(adoption.reasons,
              ElementsAre("PLX-861 item 'I-intro': content of SCORM 1.2, launched in SCORM 2004 "
                          "through a page that translates"));
  EXPECT_THAT(adoption.Manifest(),
              AllOf(HasSubstr("version=\"1.3\""), HasSubstr("href=\"launch/launch.html\">"),
                    HasSubstr("<file href=\"launch/settings.js\" />"), Not(HasSubstr("masteryscore"))));
  EXPECT_THAT(
      adoption.packages[0].at("launch/settings.js"),
      AllOf(HasSubstr("\"content\": \"../content/index.htm\""), HasSubstr("\"contentEdition\": \"1.2\""),
            HasSubstr("\"courseEdition\": \"2004\""), HasSubstr("\"masteryScore\": \"75\""),
            HasSubstr("\"dataFromLms\": \"x\""), Not(HasSubstr("completionPasses"))));
  EXPECT_EQ(adoption.packages[0].at("launch/launch.html"),
            ReadFile(TzPath(PLEXO_SOURCE "/templates/Launch/launch.html")));

  request.edition = Scorm12;
  const Adoption back = Adopt(adoption.archives[0], request);
  EXPECT_EQ(back.packages[0].count("launch/launch.html"), 0U)
      << "the content needs no page in its own edition";
  EXPECT_THAT(back.Manifest(), HasSubstr("href=\"content/index.htm\">"));
  EXPECT_THAT(back.Manifest(), HasSubstr("<adlcp:masteryscore>75<"));
}

TEST(PlexoAdopter, HandsWhatTheOtherEditionLacksToTheLaunchPage) {
  PlexoAdoptRequest request;
  request.edition = Scorm12;
  const Adoption adoption = Adopt(
      Edited(
          Sco(Scorm2004), "</title>",
          "</title><adlcp:completionThreshold>0.5</adlcp:completionThreshold><imsss:sequencing>"
          "<imsss:limitConditions attemptAbsoluteDurationLimit=\"PT1H30M\"/><imsss:objectives>"
          "<imsss:primaryObjective objectiveID=\"obj\" "
          "satisfiedByMeasure=\"true\"><imsss:minNormalizedMeasure>"
          "0.7</imsss:minNormalizedMeasure></imsss:primaryObjective><imsss:objective objectiveID=\"other\"/>"
          "</imsss:objectives></imsss:sequencing>"),
      request);
  EXPECT_THAT(
      adoption.packages.at(0).at("launch/settings.js"),
      AllOf(HasSubstr("\"completionThreshold\": \"0.5\""), HasSubstr("\"maxTimeAllowed\": \"PT1H30M\""),
            HasSubstr("\"scaledPassingScore\": \"0.7\""), HasSubstr("\"primaryObjective\": \"obj\""),
            HasSubstr("\"objectives\": \"other\"")));
  EXPECT_THAT(adoption.Manifest(), AllOf(Not(HasSubstr("PT1H30M")), Not(HasSubstr("imsss"))));
  EXPECT_THAT(adoption.findings, Not(Contains(StartsWith("PLX-848"))));

  request.edition = Scorm2004;
  const Adoption back = Adopt(adoption.archives[0], request);
  EXPECT_THAT(back.Manifest(), HasSubstr("objectiveID=\"obj\""));
  EXPECT_THAT(back.packages[0].at("launch/settings.js"), HasSubstr("\"objectives\": \"other\""));
}

TEST(PlexoAdopter, PresetsTheObjectivesThatACourseHasNoPlaceFor) {
  const auto declaring = [](const std::string& others) {
    return Edited(Sco(Scorm2004), "</title>",
                  "</title><imsss:sequencing><imsss:objectives><imsss:primaryObjective "
                  "objectiveID=\"main\"/>" +
                      others + "</imsss:objectives></imsss:sequencing>");
  };
  EXPECT_THAT(Adopt(declaring("")).reasons, IsEmpty()) << "the course has a primary objective itself";

  const Adoption adoption =
      Adopt(declaring("<imsss:objective objectiveID=\"first\"/><imsss:objective objectiveID=\"no id\"/>"
                      "<imsss:objective objectiveID=\"urn:x:second\"/>"));
  EXPECT_THAT(adoption.reasons,
              ElementsAre("PLX-868 item 'I-intro': a course has no place for its objectives 'first' and 1 "
                          "more, so a launch page lists them"));
  EXPECT_THAT(adoption.findings, AllOf(Contains(StartsWith("PLX-849 item 'I-intro': its objective 'no id'")),
                                       Not(Contains(StartsWith("PLX-846")))));
  EXPECT_THAT(adoption.Manifest(),
              AllOf(HasSubstr("href=\"launch/launch.html\">"), HasSubstr("objectiveID=\"main\"")));
  EXPECT_THAT(adoption.packages[0].at("launch/settings.js"),
              AllOf(HasSubstr("\"primaryObjective\": \"main\""),
                    HasSubstr("\"objectives\": \"first urn:x:second\"")));
  EXPECT_THAT(Adopt(adoption.archives[0]).reasons, IsEmpty()) << "the page is there";
}

TEST(PlexoAdopter, TellsWhatNeverPassesAndLetsCompletionPassOnlyIfItIsAskedTo) {
  const char* const completes =
      "<script>API.LMSInitialize(''); API.LMSSetValue('cmi.core.lesson_status', 'completed');</script>";
  const auto page12 = [&](const std::string& script) {
    return ScoZip("intro").Scorm12().Item("Intro", "index.htm").File("index.htm", script).Build();
  };
  PlexoAdoptRequest request;
  request.edition = Scorm2004;
  EXPECT_THAT(Adopt(page12(completes), request).findings, Contains(StartsWith("PLX-863")));
  EXPECT_THAT(Adopt(page12(completes)).findings, Not(Contains(StartsWith("PLX-863"))))
      << "nothing waits in 1.2";
  EXPECT_THAT(Adopt(page12(std::string(completes) + "<script>status = 'passed'</script>"), request).findings,
              Not(Contains(StartsWith("PLX-863"))));

  for (const char* silent : {"<p>", "<script>API.LMSInitialize('')</script>"}) {
    EXPECT_THAT(Adopt(page12(silent), request).findings,
                AllOf(Contains(StartsWith("PLX-864 item 'I-intro'")), Not(Contains(StartsWith("PLX-863")))));
    EXPECT_THAT(Adopt(page12(silent)).findings, Not(Contains(StartsWith("PLX-864"))));
  }

  request.scripts = PlexoAdoptRequest::Scripts::Skip;
  EXPECT_THAT(Adopt(page12(completes), request).findings, Not(Contains(StartsWith("PLX-863"))));

  request.completion = PlexoAdoptRequest::Completion::Passes;
  const Adoption asked = Adopt(page12(completes), request);
  EXPECT_THAT(asked.findings, AllOf(Contains(StartsWith("PLX-862")), Not(Contains(StartsWith("PLX-863")))));
  EXPECT_THAT(asked.packages[0].at("launch/settings.js"), HasSubstr("\"completionPasses\": true"));
  EXPECT_THAT(Adopt(asked.archives[0], request).reasons, IsEmpty());

  request.edition.reset();
  const Adoption own = Adopt(Sco(Scorm2004).Build(), request);
  EXPECT_THAT(own.Manifest(), HasSubstr("href=\"launch/launch.html\">")) << "a page of the same edition";
}

TEST(PlexoAdopter, TrustsNoSettingsThatAPackageBrings) {
  const std::string settings =
      "var plexoLaunch = {\"content\": \"CONTENT\", \"contentEdition\": \"1.2\", \"courseEdition\": "
      "\"2004\"};";
  for (const char* content : {"../../x.htm", "http://www.example.com/", "gone.htm", "../imsmanifest.xml"}) {
    std::string script = settings;
    script.replace(script.find("CONTENT"), 7, content);
    const Adoption adoption = Adopt(ScoZip("intro")
                                        .Item("Intro", "launch/launch.html")
                                        .File("launch/launch.html", kPage2004)
                                        .File("launch/settings.js", script)
                                        .Build());
    ASSERT_EQ(adoption.packages.size(), 1U);
    EXPECT_THAT(adoption.Manifest(), HasSubstr("href=\"content/launch/launch.html\">")) << content;
  }
}

TEST(PlexoAdopter, SaysWhatTheMachineSaid) {
  const RecordedProblems problems;
  const TestFolder folder;
  PlexoAdoptRequest request;
  request.package = folder.Path() / "absent.zip";
  PlexoAdopter absent(request, folder.Path());
  const PlexoAdoptResult result = absent.Examine();
  EXPECT_EQ(result.code, kTzMachineFailure);
  EXPECT_FALSE(result.failure.empty());

  request.package = folder.Write("a.zip", Sco(Scorm12).Build());
  request.edition = Scorm2004;
  PlexoAdopter pageless(request, folder.Path() / "no-launch-page");
  ASSERT_EQ(pageless.Examine().code, kTzSuccess);
  EXPECT_NE(pageless.Write({folder.Path() / "out.zip"}).code, kTzSuccess);
  EXPECT_FALSE(TzFile(folder.Path() / "out.zip").Exists());
  EXPECT_THROW(static_cast<void>(pageless.Write({})), std::logic_error);
}

}  // namespace
