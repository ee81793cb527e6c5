// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoFileShares.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AdoptedPackages.h"
#include "support/ScoZip.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Two SCOs, with these elements in their resources, and further resources.
std::string TwoSCOs(const std::string& hrefA, const std::string& filesA, const std::string& hrefB,
                    const std::string& filesB, const std::vector<std::string>& files,
                    const std::string& more = {}) {
  ScoZip zip("two");
  for (const std::string& file : files) zip.File(file, file);
  const auto resource = [](const std::string& name, const std::string& href, const std::string& content) {
    return "<resource identifier='R" + name + "' type='webcontent' adlcp:scormType='sco' href='" + href +
           "'>" + content + "</resource>";
  };
  return zip
      .Manifest(
          "<manifest identifier='M' version='1.3' xmlns='http://www.imsglobal.org/xsd/imscp_v1p1' "
          "xmlns:adlcp='http://www.adlnet.org/xsd/adlcp_v1p3'><organizations><organization identifier='O'>"
          "<title>Two</title><item identifier='A' identifierref='RA'/>"
          "<item identifier='B' identifierref='RB'><title>Second</title></item>"
          "</organization></organizations><resources>" +
          resource("A", hrefA, filesA) + resource("B", hrefB, filesB) + more + "</resources></manifest>")
      .Build();
}

TEST(PlexoFileShares, GiveEachItemItsOwnFilesAndThoseOfItsDependencies) {
  const Adoption adoption =
      Adopt(TwoSCOs("a/i.htm", "<file href='a/i.htm'/><file href='a/x.js'/><dependency identifierref='S'/>",
                    "b/i.htm", "<file href='b/i.htm'/><file href='b/x.js'/><dependency identifierref='T'/>",
                    {"a/i.htm", "a/x.js", "b/i.htm", "b/x.js", "s.js", "t.js", "unlisted.css"},
                    "<resource identifier='S' type='webcontent'><file href='s.js'/><dependency "
                    "identifierref='S'/></resource>"
                    "<resource identifier='T' type='webcontent'><file href='t.js'/><dependency "
                    "identifierref='S'/></resource>"),
            ForList());
  EXPECT_THAT(adoption.FileNames(0), ElementsAre("content/a/i.htm", "content/a/x.js", "content/s.js",
                                                 "content/unlisted.css", "imsmanifest.xml"));
  EXPECT_THAT(adoption.FileNames(1), ElementsAre("content/b/i.htm", "content/b/x.js", "content/s.js",
                                                 "content/t.js", "content/unlisted.css", "imsmanifest.xml"));
  EXPECT_EQ(adoption.items[0].title, "Two") << "the nearest title around an item without one";
  EXPECT_EQ(adoption.items[1].title, "Second");
  EXPECT_THAT(adoption.Manifest(1), HasSubstr("identifier=\"M-B\""));
  EXPECT_THAT(adoption.reasons, Contains(StartsWith("PLX-841")));
}

TEST(PlexoFileShares, GiveAnItemThatListsNothingWhatMayBeMeantForIt) {
  // The first resource lists everything, as some makers do.
  const Adoption flat = Adopt(TwoSCOs("a.htm", "<file href='a.htm'/><file href='all.js'/>", "b.htm",
                                      "<file href='b.htm'/>", {"a.htm", "b.htm", "all.js"}),
                              ForList());
  EXPECT_THAT(flat.FileNames(1), ElementsAre("content/all.js", "content/b.htm", "imsmanifest.xml"));
  const Adoption folders = Adopt(TwoSCOs("a/a.htm", "<file href='a/own.js'/><file href='lib/all.js'/>",
                                         "b/b.htm", "", {"a/a.htm", "b/b.htm", "a/own.js", "lib/all.js"}),
                                 ForList());
  EXPECT_THAT(folders.FileNames(1), ElementsAre("content/b/b.htm", "content/lib/all.js", "imsmanifest.xml"));
}

TEST(PlexoFileShares, HoldWhatBelongsToNoItem) {
  const std::string own = "<file href='a/i.htm'/><file href='a/x.js'/>";
  const std::string ofB = "<file href='b/i.htm'/><file href='b/x.js'/><dependency identifierref='MISSPELT'/>";
  const Adoption adoption =
      Adopt(TwoSCOs("a/i.htm", own, "b/i.htm", ofB, {"a/i.htm", "a/x.js", "b/i.htm", "b/x.js", "api.js"},
                    "<resource identifier='C' type='webcontent'><file href='api.js'/></resource>"),
            ForList());
  for (const std::size_t index : {0U, 1U}) EXPECT_EQ(adoption.packages.at(index).count("content/api.js"), 1U);
  EXPECT_EQ(adoption.packages[0].count("content/b/x.js"), 0U);
}

TEST(PlexoFileShares, AreRefusedWhereTheyWouldOutgrowTheirSource) {
  std::string items;
  std::string resources;
  ScoZip zip("many");
  constexpr std::size_t kShared = 8U << 20U;
  for (int index = 0; index < 140; ++index) {
    const std::string number = std::to_string(index);
    items += "<item identifier='I" + number + "' identifierref='R" + number + "'/>";
    resources += "<resource identifier='R" + number + "' type='webcontent' href='" + number +
                 ".htm'><file href='" + number + ".htm'/><file href='shared.bin'/></resource>";
    zip.File(number + ".htm", "x");
  }
  zip.File("shared.bin", MakeNoise(kShared, 1));
  const std::string archive =
      zip.Manifest("<manifest identifier='M' version='1.3'><organizations><organization identifier='O'>" +
                   items + "</organization></organizations><resources>" + resources +
                   "</resources></manifest>")
          .Build();
  EXPECT_THAT(Adopt(archive, ForList()).findings,
              Contains(StartsWith("PLX-807 the package: its 140 items share so many files")));
  PlexoAdoptRequest one;
  one.item = "I7";
  EXPECT_THAT(Adopt(archive, one).FileNames(),
              ElementsAre("content/7.htm", "content/shared.bin", "imsmanifest.xml"));
}

TEST(PlexoFileShares, AreRefusedForMoreItemsThanThereCanBePackages) {
  std::string items;
  for (int index = 0; index <= 1'000; ++index) {
    items += "<item identifier='I" + std::to_string(index) + "' identifierref='R'/>";
  }
  const std::string archive =
      ScoZip("many")
          .Manifest("<manifest identifier='M' version='1.3'><organizations><organization identifier='O'>" +
                    items +
                    "</organization></organizations><resources><resource identifier='R' type='webcontent' "
                    "href='a.htm'><file href='a.htm'/></resource></resources></manifest>")
          .File("a.htm", "x")
          .Build();
  EXPECT_THAT(Adopt(archive, ForList()).findings,
              Contains("PLX-808 the package: it has 1001 items that can be launched; a package of each is "
                       "made of 1000 at most"));
  PlexoAdoptRequest one;
  one.item = "I1000";
  EXPECT_THAT(Adopt(archive, one).FileNames(), ElementsAre("content/a.htm", "imsmanifest.xml"));
}

TEST(PlexoFileShares, LeaveOneItemWhereOneIsWanted) {
  const std::string archive =
      TwoSCOs("a.htm", "", "b.htm", "<file href='b.htm'/><file href='x.js'/>", {"a.htm", "b.htm", "x.js"});
  const Adoption refused = Adopt(archive);
  EXPECT_THAT(refused.findings,
              Contains("PLX-805 the package: 2 of its items can be launched, and one is wanted: "
                       "'A' (Two), 'B' (Second)"));
  PlexoAdoptRequest request;
  request.item = "B";
  const Adoption second = Adopt(archive, request);
  EXPECT_THAT(second.FileNames(), ElementsAre("content/b.htm", "content/x.js", "imsmanifest.xml"));
  EXPECT_THAT(second.reasons,
              ElementsAre("PLX-845 the package: item 'B' was taken, and 1 others left out: 'A' (Two)"));
  request.item = "C";
  EXPECT_THAT(Adopt(archive, request).findings,
              Contains("PLX-806 item 'C': isn't among those that can be launched: 'A' (Two), 'B' (Second)"));
}

TEST(PlexoFileShares, StartFromTheDefaultOrganization) {
  std::string manifest = ScoZip("a").Item("A", "a.htm").GetManifest();
  manifest.replace(
      manifest.find("<organization identifier"), 0,
      "<organization identifier='FIRST'><item identifier='F' identifierref='R'/></organization>");
  const Adoption adoption = Adopt(ScoZip("a").File("a.htm", "x").Manifest(manifest).Build());
  ASSERT_EQ(adoption.items.size(), 1U);
  EXPECT_EQ(adoption.items[0].identifier, "I-a");
}

TEST(PlexoFileShares, TakeTheOnlySCOOfAManifestWithoutItems) {
  const std::string start = "<manifest identifier='M' version='1.3'><organizations/><resources>";
  const std::string page = "<resource identifier='R' type='webcontent' adlcp:scormType='sco' href='b.htm'/>";
  const std::string other = "<resource identifier='X' type='webcontent' href='a.htm'/>";
  const auto zip = [&](const std::string& resources) {
    return ScoZip("a")
        .File("a.htm", "x")
        .File("b.htm", "x")
        .Manifest(start + resources + "</resources></manifest>")
        .Build();
  };
  EXPECT_THAT(Adopt(zip(page + other)).Manifest(), HasSubstr("href=\"content/b.htm\">"));
  EXPECT_EQ(Adopt(zip(page + other)).items[0].title, "b.htm");
  EXPECT_THAT(Adopt(zip(other)).Manifest(), HasSubstr("href=\"content/a.htm\">"));
}

}  // namespace
