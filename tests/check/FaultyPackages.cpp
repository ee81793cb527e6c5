// SPDX-License-Identifier: Apache-2.0
#include "FaultyPackages.h"

#include "support/CheckedPackage.h"

namespace {

using enum PlexoFindingId;

CheckedPackage New() { return CheckedPackage::Scorm2004(); }
CheckedPackage Old() { return CheckedPackage::Scorm12(); }

std::string Text(std::size_t length) { return std::string(length, 'x'); }

std::string Repeat(const std::string& text, int count) {
  std::string repeated;
  for (int number = 0; number < count; ++number) {
    std::string one = text;
    repeated += one.replace(one.find('#'), 1, std::to_string(number));
  }
  return repeated;
}

CheckedPackage Crowded() {
  CheckedPackage package = New().Zip64();
  for (int number = 0; number < 0xFFFF; ++number)
    package.Entry({.name = "b/" + std::to_string(number) + "/"});
  return package;
}

}  // namespace

std::vector<FaultyPackage> FaultyArchives() {
  const std::string kManifest = "imsmanifest.xml";
  return {
      {ArchiveUnreadable, "isn't a ZIP archive", "Not an archive."},
      {ManifestMissing, "imsmanifest.xml", New().Remove(kManifest).Build()},
      {ManifestInFolder, "course/imsmanifest.xml", New().Rename(kManifest, "course/imsmanifest.xml").Build()},
      {ManifestNameCase, "IMSManifest.xml", New().Rename(kManifest, "IMSManifest.xml").Build()},
      {EntryNameRefused, "leads out of the folder", New().Entry({.name = "../evil.js"}).Build()},
      {EntryClash, "two entries", New().Entry({.name = "a/index.htm"}).Build()},
      {EntryPacking, "encrypted", New().Entry({.name = "b/x.bin", .flags = 1}).Build()},
      {EntryDamaged, "CRC-32",
       New().Listed("b/x.js").Remove("b/x.js").Entry({.name = "b/x.js", .crc = 1}).Build()},
      {EntryDamaged, "CRC-32",
       New().Listed("b/x.mp4").Remove("b/x.mp4").Entry({.name = "b/x.mp4", .crc = 1}).Build()},
      {EntryDamaged, "CRC-32",
       New().Remove(kManifest).Entry({.name = kManifest, .content = "<manifest/>", .crc = 1}).Build()},
      {ArchiveUnpacksHuge, "200 times",
       New()
           .Listed("b/x.bin")
           .Remove("b/x.bin")
           .Entry({.name = "b/x.bin", .deflate = true, .size = 300U << 20U})
           .Build()},
      {EntryCaseTwins, "b/x.JS",
       New()
           .Listed("b/x.JS")
           .Entry({.name = "b/X.js"})
           .At("resources", R"(
           <resource identifier="RES-C" type="webcontent" adlcp:scormType="asset"><file href="b/X.js"/></resource>)")
           .Build()},
      {EntryNameEncoding, "b/caf\u00E9",
       New().Listed("b/caf\u00E9").Rename("b/caf\u00E9", "b/caf\x82").Build()},
      {EntryBackslash, "b/x.js", New().Listed("b/x.js").Rename("b/x.js", "b\\x.js").Build()},
      {EntryNameOnWindows, "what?", New().Listed("b/what%3F").Rename("b/what%3F", "b/what?").Build()},
      {EntryJunk, "macOS", New().Entry({.name = "__MACOSX/._a"}).Build()},
      {EntryJunk, "Windows", New().Entry({.name = "b/Thumbs.db"}).Build()},
      {ArchiveTooLarge, "65538 entries", Crowded().Build()},
  };
}

std::vector<FaultyPackage> FaultyManifests() {
  const std::string kThird = R"(<item identifier="THIRD" identifierref="RES-A"><title>Third</title></item>)";
  return {
      {ManifestTooLarge, "16 MiB", New().At("end", Text(17U << 20U)).Build()},
      {ManifestTooLarge, "1000 attributes", New().At("end", "<x " + Repeat("a#='' ", 1001) + "/>").Build()},
      {ManifestTooLarge, "xml:base",
       New()
           .Replace("<resources>", "<resources xml:base=\"" + Text(1U << 20U) + "\">")
           .At("resources", Repeat("<resource identifier=\"R#\" type=\"webcontent\"/>", 40))
           .Build()},
      {ManifestIllFormed, "line 4", New().Replace("<metadata>", "<metadata").Build()},
      {ManifestIllFormed, "document type",
       New().Replace("<manifest", "<!DOCTYPE manifest><manifest").Build()},
      {ManifestInvalid, "bogus", New().At("second", "<bogus/>").Build()},
      {ManifestInvalid, "x}bogus': the schemas of the edition",
       New().At("second", "<v:bogus xmlns:v='http://example.org/x'/>").Build()},
      {ManifestInvalid, "bogus", Old().At("second", "<bogus/>").Build()},
      {EditionNotValidated, "4th", New().Replace("2004 3rd", "2004 4th").Build()},
      {SchemaFileMissing, "imscp_v1p1.xsd",
       New()
           .Replace("<manifest", R"(<manifest xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
           xsi:schemaLocation="http://www.imsglobal.org/xsd/imscp_v1p1 imscp_v1p1.xsd")")
           .Build()},
      {RootNotManifest, "'course'",
       New().Replace("<manifest", "<course").Replace("</manifest", "</course").Build()},
      {EditionUnknown, "'2005'", New().Replace("2004 3rd Edition", "2005").Build()},
      {EditionUnknown, "SCORM 1.2", Old().Replace("<schemaversion>1.2</schemaversion>", "").Build()},
      {EditionUndetermined, "'2005'",
       New()
           .Replace("2004 3rd Edition", "2005")
           .Replace(" xmlns=\"http://www.imsglobal.org/xsd/imscp_v1p1\"", "")
           .Replace(" xmlns:adlcp=\"http://www.adlnet.org/xsd/adlcp_v1p3\"", "")
           .Build()},
      {NamespaceOfOtherEdition, "SCORM 2004 3rd",
       New()
           .Replace("http://www.imsglobal.org/xsd/imscp_v1p1",
                    "http://www.imsproject.org/xsd/imscp_rootv1p1p2")
           .Build()},
      {NoOrganization, "organization",
       New()
           .Cut("<organization ", "</organization>")
           .Cut(" default=", "\"ORG\"")
           .Replace(R"("sco" href="a/index.htm")", R"("asset" href="a/index.htm")")
           .Replace(R"("sco" href="b/index.htm")", R"("asset" href="b/index.htm")")
           .Build()},
      {OrganizationEmpty, "OTHER",
       New()
           .At("organizations", R"(<organization identifier="OTHER"><title>T</title></organization>)")
           .Build()},
      {TitleMissing, "SECOND", New().Replace("<title>Second</title>", "").Build()},
      {TitleEmpty, "SECOND", New().Replace("<title>Second</title>", "<title> </title>").Build()},
      {ItemWithoutResource, "THIRD",
       New().At("items", R"(<item identifier="THIRD"><title>Third</title></item>)").Build()},
      {ItemWithBoth, "SECOND",
       New()
           .At("second", kThird + "<imsss:sequencing><imsss:controlMode flow=\"true\"/></imsss:sequencing>")
           .Build()},
      {ResourceWithoutHref, "RES-B", New().Replace(R"( href="b/index.htm">)", ">").Build()},
      {ScormTypeMissing, "adlcp:scormType",
       New().Replace(R"(adlcp:scormType="sco" href="b/index.htm")", R"(href="b/index.htm")").Build()},
      {ScormTypeMissing, "adlcp:scormtype",
       Old().Replace(R"(adlcp:scormtype="sco" href="b/index.htm")", R"(href="b/index.htm")").Build()},
      {ResourceType, "text/html",
       New().Replace(R"("RES-B" type="webcontent")", R"("RES-B" type="text/html")").Build()},
      {ResourceUnused, "RES-C",
       New()
           .At("resources", R"(<resource identifier="RES-C" type="webcontent"
           adlcp:scormType="sco" href="b/index.htm"><file href="b/index.htm"/></resource>)")
           .Build()},
      {LowerCaseLaunchData, "adlcp:datafromlms",
       New()
           .At("second",
               "<x:datafromlms\nxmlns:x=\"http://www.adlnet.org/xsd/adlcp_v1p3\"\n>x</x:datafromlms>")
           .Build()},
      {LowerCaseLaunchData, "adlcp:datafromlms",
       New().At("second", "<adlcp:datafromlms>x</adlcp:datafromlms>").Build()},
      {RepeatedLaunchData, "adlcp:masteryscore",
       Old()
           .At("second",
               "<adlcp:masteryscore>1</adlcp:masteryscore><adlcp:masteryscore>2</adlcp:masteryscore>")
           .Build()},
      {NestedManifest, "'SUB'",
       New()
           .At("items", R"(<item identifier="THIRD" identifierref="SUB"><title>Third</title></item>)")
           .File("c/x.htm", "")
           .At("end", R"(<manifest identifier="SUB"><organizations/><resources><resource identifier="SUB-R"
           type="webcontent" adlcp:scormType="sco"><file href="c/x.htm"/></resource></resources></manifest>)")
           .Build()},
  };
}

std::vector<FaultyPackage> FaultyReferences() {
  return {
      {ManifestIdentifierDigit, "1COURSE", New().Replace("\"COURSE\"", "\"1COURSE\"").Build()},
      {IdentifierMalformed, "SEC OND", New().Replace("\"SECOND\"", "\"SEC OND\"").Build()},
      // Whatever refers to it, and whatever else is wrong with it.
      {IdentifierMalformed, "1 ORG",
       New()
           .Replace("default=\"ORG\"", "default=\"1 ORG\"")
           .Replace("identifier=\"ORG\"", "identifier=\"1 ORG\"")
           .Build()},
      {IdentifierMalformed, "1RES",
       New()
           .Replace("identifierref=\"RES-B\"", "identifierref=\"1RES\"")
           .Replace("identifier=\"RES-B\"", "identifier=\"1RES\"")
           .Build()},
      {IdentifierTwice, "1C",
       New()
           .At("items", R"(<item identifier="1C" identifierref="RES-A"><title>C</title></item>)")
           .At("resources", R"(<resource identifier="1C" type="webcontent" adlcp:scormType="asset"/>)")
           .Build()},
      {IdentifierTwice, "line 11", New().Replace("\"SECOND\"", "\"FIRST\"").Build()},
      {ItemResourceUnknown, "NONE",
       New().At("items", R"(<item identifier="C" identifierref="NONE"><title>C</title></item>)").Build()},
      {DependencyUnknown, "NONE", New().At("file", R"(<dependency identifierref="NONE"/>)").Build()},
      {DefaultOrganizationUnknown, "NONE", New().Replace(R"(default="ORG")", R"(default="NONE")").Build()},
      {SharedSequencingUnknown, "NONE", New().At("second", R"(<imsss:sequencing IDRef="NONE"/>)").Build()},
      {FileMissing, "b/x.js", New().Listed("b/x.js").Remove("b/x.js").Build()},
      {LaunchFileMissing, "b/x.htm",
       New().Replace(R"("sco" href="b/index.htm")", R"("sco" href="b/x.htm")").Build()},
      {LaunchFileMissing, "#top",
       New().Replace(R"("sco" href="b/index.htm")", R"("sco" href="#top")").Build()},
      {LaunchFileUnlisted, "b/index.htm", New().Replace(R"(<file href="b/index.htm"/>)", "").Build()},
      {FileNameCase, "b/X.js", New().Listed("b/X.js").Rename("b/X.js", "b/x.js").Build()},
      {FileUnlisted, "b/x.js", New().File("b/x.js", "").Build()},
      {FileUnlisted, "plexo_players/ruffle/ruffle.js",
       New().File("plexo_players/ruffle/ruffle.js", "").Build()},
      {HrefRawCharacters, "b/100%.js", New().Listed("b/100%.js").Build()},
      {HrefRawCharacters, "b/[1].js", New().Listed("b/[1].js").Build()},
      {HrefRawCharacters, "b/a%41.js", New().Listed("b/a%41.js").Build()},
      {HrefBackslash, "b\\x.js", New().Listed("b\\x.js").Rename("b\\x.js", "b/x.js").Build()},
      {HrefBackslash, "b\\index.htm",
       New().Replace(R"("sco" href="b/index.htm")", R"("sco" href="b\index.htm")").Build()},
      {HrefLeavesPackage, "'/up/b/index.htm'",
       New()
           .Replace(R"("RES-B" type)", R"("RES-B" xml:base="/up/x" type)")
           .Replace(R"(<file href="b/index.htm"/>)", "")
           .Remove("b/index.htm")
           .Build()},
      {HrefLeavesPackage, "../x.js", New().Listed("../x.js").Remove("../x.js").Build()},
      {HrefExternal, "http://", New().Listed("http://example.org/").Remove("http://example.org/").Build()},
  };
}

std::vector<FaultyPackage> LongTexts() {
  const auto kNewData = [](std::size_t length) {
    return "<adlcp:dataFromLMS>" + Text(length) + "</adlcp:dataFromLMS>";
  };
  return {
      {PathTooLong, "302", New().Listed("b/" + Text(149) + "/" + Text(150)).Build()},
      {IdentifierTooLong, "4001",
       New()
           .Sequence("second", "<imsss:objectives><imsss:primaryObjective objectiveID=\"" + Text(4001) +
                                   "\"/></imsss:objectives>")
           .Build()},
      {IdentifierTooLong, "256", Old().Replace("\"SECOND\"", "\"" + Text(256) + "\"").Build()},
      {TitleTooLong, "201", New().Replace("Second", Text(201)).Build()},
      {HrefTooLong, "2012",
       New().Replace(R"("sco" href="b/index.htm)", R"("sco" href="b/index.htm?)" + Text(2000)).Build()},
      {ParametersTooLong, "1001",
       New().Replace("\"RES-B\">", "\"RES-B\" parameters=\"" + Text(1001) + "\">").Build()},
      {LaunchDataTooLong, "4001", New().At("second", kNewData(4001)).Build()},
      {MetadataTooLong, "2001",
       New()
           .At("metadata", "<lom xmlns=\"http://ltsc.ieee.org/xsd/LOM\"><general><description><string>" +
                               Text(2001) + "</string></description></general></lom>")
           .Build()},
      {SuspendDataLimited, "4000",
       New().File("b/index.htm", CheckedPackage::Page2004("cmi.suspend_data cmi.exit 'suspend'")).Build()},
      // Not the script of our own pages, which keeps to the limit: it lacks its support files.
      {SuspendDataLimited, "4000",
       New().Listed("b/standard.js", "var PlexoVisit = 'cmi.suspend_data cmi.exit suspend';").Build()},
      {SuspendDataLimited, "4096",
       Old()
           .File("b/index.htm",
                 "<script>API.LMSInitialize(''); API.LMSSetValue('cmi.suspend_data', ''); "
                 "API.LMSFinish('')</script>")
           .Build()},
  };
}
