// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoXMLParser.h"

#include <gtest/gtest.h>

#include "support/TestSession.h"

namespace {

struct Reading {
  PlexoSCOManifest manifest;
  bool failed = false;
  PlexoParseFailure code = PlexoParseFailure::NONE;
};

Reading Read(const std::string& xml, const char* courseVersion) {
  const TestFolder folder;
  PlexoXMLParser parser(courseVersion);
  parser.setSource(TzFile(folder.Write("imsmanifest.xml", xml)));
  parser.parse();
  Reading reading;
  parser.CopyManifestTo(reading.manifest);
  reading.failed = parser.HasFailed();
  reading.code = parser.GetFailureCode();
  return reading;
}

/// A 2004 manifest around the inside of its organization, and its resources.
std::string Manifest2004(const std::string& organization, const std::string& resources = "") {
  return "<manifest version='1.3'><organizations><organization>" + organization +
         "</organization></organizations><resources>" + resources + "</resources></manifest>";
}

}  // namespace

TEST(PlexoXMLParser, ReadsAScoOf2004) {
  const Reading reading = Read(R"(<?xml version="1.0"?>
<manifest identifier="M" version="1.3" xmlns="http://www.imsglobal.org/xsd/imscp_v1p1">
  <organizations default="O"><organization identifier="O"><title>Package</title>
    <item identifier="ITEM" identifierref="R"><title>Doors &amp; exits</title>
      <adlcp:timeLimitAction>exit,message</adlcp:timeLimitAction>
      <adlcp:dataFromLMS>x=1</adlcp:dataFromLMS>
      <imsss:sequencing><imsss:objectives><imsss:primaryObjective objectiveID="OBJ"/></imsss:objectives>
      </imsss:sequencing>
    </item></organization></organizations>
  <resources><resource identifier="R" href="index.htm"><file href="index.htm"/><file href="a/b.png"/></resource>
  </resources></manifest>)",
                               "2004");
  PlexoSCOManifest expected;
  expected.scormVersion = "2004";
  expected.identifier = "ITEM";
  expected.title = "Doors & exits";
  expected.href = "index.htm";
  expected.objectiveId = "OBJ";
  expected.masteryScore = "";
  expected.maxTimeAllowed = "";
  expected.timeLimitAction = "exit,message";
  expected.hasTimeLimitAction = true;
  expected.dataFromLMS = "x=1";
  expected.hasDataFromLMS = true;
  expected.files = {"index.htm", "a/b.png"};
  EXPECT_FALSE(reading.failed);
  EXPECT_EQ(reading.manifest, expected);
}

TEST(PlexoXMLParser, CollapsesAPackageIntoOneScoWithTheLastOfEachValue) {
  const Reading reading = Read(
      Manifest2004("<title>a</title><item identifier='i1'><title>b</title><item identifier='i2'/></item>"
                   "<item identifier='i3'><metadata><title>in metadata</title></metadata></item>",
                   "<resource href='1.htm'><file href='x'/></resource><resource href='2.htm'><file href='y'/>"
                   "<dependency/></resource>"),
      "2004");
  EXPECT_FALSE(reading.failed);
  EXPECT_EQ(reading.manifest.identifier, "i3");
  EXPECT_EQ(reading.manifest.title, "in metadata");
  EXPECT_EQ(reading.manifest.href, "2.htm");
  EXPECT_EQ(reading.manifest.files, (std::vector<TzString>{"x", "y"}));
  // Organizations inside have ended it for the text behind them.
  EXPECT_EQ(Read(Manifest2004("<title>a<organizations/>b</title>"), "2004").manifest.title, "a");
}

TEST(PlexoXMLParser, TheVersionOfTheManifestMustFitTheCourse) {
  const struct {
    const char* attribute;
    const char* course;
    const char* version;
    bool failed;
  } cases[] = {
      {"version='1.3'", "2004", "2004", false},
      {"version='1.0'", "1.2", "1.2", false},
      {"version='1.0'", "", "1.2", false},
      {"version='1.3'", "", "2004", false},
      {"version='1.0'", "2004", "1.0", true},
      {"version='1.3'", "1.2", "1.3", true},
      {"version='1'", "2004", "Incompatible Version", true},
      {"", "2004", "Incompatible Version", true},
  };
  for (const auto& [attribute, course, version, failed] : cases) {
    const Reading reading = Read(std::string("<manifest ") + attribute + "/>", course);
    EXPECT_EQ(reading.failed, failed) << attribute << " in " << course;
    EXPECT_EQ(reading.manifest.scormVersion, version) << attribute << " in " << course;
    EXPECT_EQ(reading.code, failed ? PlexoParseFailure::VERSION : PlexoParseFailure::NONE) << attribute;
  }
}

TEST(PlexoXMLParser, FailsWithTheCodeOfTheFault) {
  using enum PlexoParseFailure;
  const struct {
    const char* fault;
    std::string xml;
    const char* course;
    PlexoParseFailure code;
  } cases[] = {
      {"no fault", Manifest2004("<item identifier='i'/>", "<resource href='h'/>"), "2004", NONE},
      {"resource without href", Manifest2004("", "<resource/>"), "2004", PARSE},
      {"item without identifier", Manifest2004("<item/>"), "2004", PARSE},
      {"file without href", Manifest2004("", "<resource href='h'><file/></resource>"), "2004", PARSE},
      {"href as eleventh attribute",
       Manifest2004("",
                    "<resource href='h'><file a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' href='x'/>"
                    "</resource>"),
       "2004", PARSE},
      {"href as tenth attribute",
       Manifest2004("",
                    "<resource href='h'><file a='' b='' c='' d='' e='' f='' g='' h='' i='' href='x'/>"
                    "</resource>"),
       "2004", NONE},
      {"primaryObjective without objectiveID", Manifest2004("<imsss:primaryObjective/>"), "2004", PARSE},
      {"the same in a course of 1.2",
       "<manifest version='1.0'><organizations><imsss:primaryObjective/></organizations></manifest>", "1.2",
       NONE},
      {"the same outside the organizations", "<manifest version='1.3'><imsss:primaryObjective/></manifest>",
       "2004", NONE},
      {"mastery score in 2004", Manifest2004("<adlcp:masteryscore>80</adlcp:masteryscore>"), "2004", VERSION},
      {"time allowed in 2004", Manifest2004("<adlcp:maxtimeallowed/>"), "2004", VERSION},
      {"an organizations element that a resource closes",
       "<manifest version='1.3'><resource href='h'><organizations/><file href='x'/></resource></manifest>",
       "2004", NONE},
      {"a title that opens inside the organizations and is one by then",
       "<manifest version='1.3'><title><organizations/></title></manifest>", "2004", NONE},
      {"an element without meaning in a resource among the organizations",
       Manifest2004("<resource href='h'><x/></resource>"), "2004", NONE},
      // An element with a meaning in both counts twice there, so its end meets another state than its start.
      {"an item in a resource among the organizations",
       Manifest2004("<resource href='h'><item identifier='i'/></resource>"), "2004", PARSE},
      // Broken off, so that no later end meets a wrong state too.
      {"a resource that ends with such an element open",
       "<manifest version='1.3'><organizations><resource href='h'><title><organizations/></title></resource>",
       "2004", PARSE},
      {"organizations that end likewise",
       "<manifest version='1.3'><resource href='h'><organizations><title><organizations/></title>"
       "</organizations>",
       "2004", PARSE},
  };
  for (const auto& [fault, xml, course, code] : cases) {
    const Reading reading = Read(xml, course);
    EXPECT_EQ(reading.code, code) << fault;
    EXPECT_EQ(reading.failed, code != NONE) << fault;
  }
}

TEST(PlexoXMLParser, NothingIsReadAfterAFailure) {
  const Reading reading =
      Read(Manifest2004("<title>before</title><item/><title>after</title>", "<resource href='h'/>"), "2004");
  EXPECT_TRUE(reading.failed);
  EXPECT_EQ(reading.manifest.title, "before");
  EXPECT_EQ(reading.manifest.href, "");
  // Not even the text of the element that failed.
  EXPECT_EQ(Read(Manifest2004("<adlcp:masteryscore>80</adlcp:masteryscore>"), "2004").manifest.masteryScore,
            "");
}

TEST(PlexoXMLParser, XmlThatBreaksOffIsNoFailure) {
  const Reading reading = Read("<manifest version='1.3'><organizations><title>t</title></oops>", "2004");
  EXPECT_FALSE(reading.failed);
  EXPECT_EQ(reading.manifest.title, "t");
  EXPECT_FALSE(Read("no xml at all", "2004").failed);
  EXPECT_EQ(Read("no xml at all", "2004").manifest.scormVersion, "");
}

TEST(PlexoXMLParser, ReadsTheRunTimeDataOf12) {
  const auto read = [](const std::string& data) {
    return Read("<manifest version='1.0'><organizations>" + data + "</organizations></manifest>", "1.2")
        .manifest;
  };
  const PlexoSCOManifest all = read(
      "<adlcp:masteryscore>80</adlcp:masteryscore><adlcp:maxtimeallowed>01:00:00</adlcp:maxtimeallowed>"
      "<adlcp:timelimitaction>exit,message</adlcp:timelimitaction><adlcp:datafromlms>d</adlcp:datafromlms>");
  EXPECT_TRUE(all.hasMasteryScore && all.hasMaxTimeAllowed && all.hasTimeLimitAction && all.hasDataFromLMS);
  EXPECT_EQ(all.masteryScore, "80");
  EXPECT_EQ(all.maxTimeAllowed, "01:00:00");

  EXPECT_FALSE(read("<adlcp:masteryscore/>").hasMasteryScore);
  EXPECT_TRUE(read("<adlcp:masteryscore> </adlcp:masteryscore>").hasMasteryScore);
  EXPECT_EQ(read("<other:masteryscore>80</other:masteryscore>").masteryScore, "");
}

TEST(PlexoXMLParser, KeepsTheMostSpecificMetadataLocation) {
  const auto location = [](const std::string& text) {
    return text.empty() ? "" : "<metadata><adlcp:location>" + text + "</adlcp:location></metadata>";
  };
  const struct {
    std::string inManifest;
    std::string inOrganization;
    std::string inItem;
    std::string afterItem;
    std::string afterOrganizations;
    std::string inResource;
    const char* kept;
  } cases[] = {
      {"m", "", "", "", "", "", "m"},
      {"m", "", "", "", "", "r", "r"},
      {"m", "o", "", "", "", "", "o"},
      {"m", "", "i1</adlcp:location><adlcp:location>i2", "", "", "", "i1"},
      {"m", "", "i", "", "", "r", "r"},
      {"", "", "i", "", "later", "", "i"},
      {"", "o1", "", "o2", "", "", "o1"},
      {"", "", "", "", "", "r1</adlcp:location><adlcp:location>r2", "r1"},
      // Organizations leave their own scope behind, so that metadata after them outranks the manifest's.
      {"m", "", "", "", "later", "", "later"},
  };
  for (const auto& row : cases) {
    std::string xml = "<manifest version='1.3'>" + location(row.inManifest) + "<organizations><organization>";
    xml += location(row.inOrganization) + "<item identifier='i'>" + location(row.inItem) + "</item>";
    xml += location(row.afterItem) + "</organization></organizations>" + location(row.afterOrganizations);
    xml += "<resources><resource href='h'>" + location(row.inResource) + "</resource></resources></manifest>";
    const Reading reading = Read(xml, "2004");
    EXPECT_EQ(reading.manifest.metadataLocation, row.kept) << row.kept;
  }
}
