// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzXMLSchemaValidator.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "support/TestSession.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kSchemas = PLEXO_BIN "/Templates/Publish/LMS/Standard/SCORM/Default";
const std::string kFolder12 = kSchemas + "/1_2/static";
const std::string kFolder2004 = kSchemas + "/2004/static/3rd";

const std::string kManifest12 = R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest xmlns="http://www.imsproject.org/xsd/imscp_rootv1p1p2"
          xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_rootv1p2" identifier="C" version="1.0">
  <metadata>
    <schema>ADL SCORM</schema>
    <schemaversion>1.2</schemaversion>
    <lom xmlns="http://www.imsglobal.org/xsd/imsmd_rootv1p2p1">
      <general>
        <title><langstring>Fire safety</langstring></title>
        <description><langstring xml:lang="en">What to do</langstring></description>
      </general>
      <educational><typicallearningtime><datetime>01:30:00</datetime></typicallearningtime></educational>
    </lom>
  </metadata>
  <organizations default="C_ORG">
    <organization identifier="C_ORG">
      <title>Fire safety</title>
      <item identifier="I" identifierref="R">
        <title>Doors</title>
        <adlcp:maxtimeallowed></adlcp:maxtimeallowed>
        <adlcp:timelimitaction>exit,no message</adlcp:timelimitaction>
        <adlcp:datafromlms></adlcp:datafromlms>
        <adlcp:masteryscore>80</adlcp:masteryscore>
      </item>
    </organization>
  </organizations>
  <resources>
    <resource identifier="R" type="webcontent" adlcp:scormtype="sco" href="index.htm"><file href="index.htm"/></resource>
  </resources>
</manifest>
)";

const std::string kManifest2004 = R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest xmlns="http://www.imsglobal.org/xsd/imscp_v1p1" xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3"
          xmlns:adlseq="http://www.adlnet.org/xsd/adlseq_v1p3" xmlns:adlnav="http://www.adlnet.org/xsd/adlnav_v1p3"
          xmlns:imsss="http://www.imsglobal.org/xsd/imsss" identifier="C" version="1.3">
  <metadata>
    <schema>ADL SCORM</schema>
    <schemaversion>2004 3rd Edition</schemaversion>
    <lom xmlns="http://ltsc.ieee.org/xsd/LOM">
      <general><title><string language="en">Fire safety</string></title></general>
      <educational><typicalLearningTime><duration>PT1H30M</duration></typicalLearningTime></educational>
    </lom>
  </metadata>
  <organizations default="C_ORG">
    <organization identifier="C_ORG" adlseq:objectivesGlobalToSystem="false">
      <title>Fire safety</title>
      <item identifier="W" isvisible="false">
        <title>Fire safety</title>
        <item identifier="I" identifierref="R">
          <title>Doors</title>
          <imsss:sequencing>
            <imsss:rollupRules objectiveMeasureWeight="1"/>
            <imsss:objectives>
              <imsss:primaryObjective satisfiedByMeasure="false" objectiveID="obj-Item_1"/>
            </imsss:objectives>
          </imsss:sequencing>
          <adlnav:presentation>
            <adlnav:navigationInterface><adlnav:hideLMSUI>continue</adlnav:hideLMSUI></adlnav:navigationInterface>
          </adlnav:presentation>
        </item>
        <imsss:sequencing><imsss:controlMode choice="true" flow="true"/></imsss:sequencing>
      </item>
      <imsss:sequencing><imsss:controlMode choice="true" flow="true"/></imsss:sequencing>
    </organization>
  </organizations>
  <resources>
    <resource identifier="R" type="webcontent" adlcp:scormType="sco" href="index.htm"><file href="index.htm"/></resource>
  </resources>
</manifest>
)";

std::vector<std::string> Validate(const TzXMLSchemaValidator& validator, std::string_view text) {
  const TestFolder folder;
  std::vector<std::string> findings;
  for (const TzSchemaFinding& finding : validator.Validate(folder.Write("imsmanifest.xml", text))) {
    findings.push_back(std::to_string(finding.line) + ": " + finding.message);
  }
  return findings;
}

std::string Replaced(std::string text, std::string_view find, std::string_view replacement) {
  const std::size_t at = text.find(find);
  if (at == std::string::npos) throw std::logic_error("nothing to replace in the manifest");
  return text.replace(at, find.size(), replacement);
}

TEST(TzXMLSchemaValidator, TellsAValidManifestFromAFaultyOneInBothEditions) {
  const TzXMLSchemaValidator scorm12(TzPath(kFolder12), "1.2");
  const TzXMLSchemaValidator scorm2004(TzPath(kFolder2004), "2004");
  ASSERT_EQ(scorm12.GetSchemaError(), "");
  ASSERT_EQ(scorm2004.GetSchemaError(), "");
  EXPECT_THAT(Validate(scorm12, kManifest12), IsEmpty());
  EXPECT_THAT(Validate(scorm2004, kManifest2004), IsEmpty());

  const struct {
    const TzXMLSchemaValidator& validator;
    const std::string& valid;
    const char* find;
    const char* replacement;
    const char* finding;
  } cases[] = {
      {scorm12, kManifest12, " type=\"webcontent\"", "",
       "28: element 'resource': The attribute 'type' is required but missing"},
      {scorm12, kManifest12, "scormtype", "scormType", "28: element 'resource', attribute 'adlcp:scormType'"},
      {scorm12, kManifest12, "<langstring>Fire safety</langstring>", "",
       "9: element 'imsmd:title': Missing child element(s)"},
      {scorm12, kManifest12, "\"en\"", "\"\"", "10: element 'imsmd:langstring', attribute 'xml:lang'"},
      {scorm12, kManifest12, "\"C_ORG\"", "\"D_ORG\"",
       "15: attribute 'default': 'D_ORG' is declared nowhere"},
      {scorm12, kManifest12, "\"R\" type", "\"I\" type",
       "28: attribute 'identifier': 'I' is declared already"},
      {scorm2004, kManifest2004, "<adlnav:hideLMSUI>continue</adlnav:hideLMSUI>", "<adlnav:hide/>",
       "27: element 'adlnav:hide'"},
      {scorm2004, kManifest2004, "identifier=\"W\" ", "", "16: element 'item': The attribute 'identifier'"},
      {scorm2004, kManifest2004, "continue", "resume", "27: element 'adlnav:hideLMSUI'"},
      {scorm2004, kManifest2004, "objectiveMeasureWeight=\"1\"", "objectiveMeasureWeight=\"1.5\"",
       "21: element 'imsss:rollupRules', attribute 'objectiveMeasureWeight'"},
      {scorm2004, kManifest2004, "<duration>", "<time>1</time><duration>", "10: element 'lom:time'"},
      {scorm2004, kManifest2004, "imscp_v1p1", "imscp_rootv1p1p2",
       "manifest': No matching global declaration"},
  };
  for (const auto& [validator, valid, find, replacement, finding] : cases) {
    const std::vector<std::string> findings = Validate(validator, Replaced(valid, find, replacement));
    EXPECT_THAT(findings, ElementsAre(HasSubstr(finding))) << find;
  }
}

TEST(TzXMLSchemaValidator, SaysWhatKeepsADocumentFromBeingRead) {
  const TzXMLSchemaValidator validator(TzPath(kFolder12), "1.2");
  EXPECT_THAT(Validate(validator, Replaced(kManifest12, "?>", "?><!DOCTYPE manifest SYSTEM 'x.dtd'>")),
              ElementsAre("0: a document type declaration isn't allowed"));
  EXPECT_THAT(Validate(validator, Replaced(kManifest12, "</organizations>", "</organisations>")),
              ElementsAre(HasSubstr("26: Opening and ending tag mismatch")));
  EXPECT_EQ(Validate(validator, "").size(), 1U);
  const std::vector<TzSchemaFinding> findings = validator.Validate(TzPath("/no/such/imsmanifest.xml"));
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].message, "can't be opened");
}

TEST(TzXMLSchemaValidator, SaysWhatKeepsTheSchemaFromBeingCompiled) {
  EXPECT_THAT(TzXMLSchemaValidator(TzPath(kFolder2004), "1.1").GetSchemaError(), HasSubstr("'1.1'"));
  EXPECT_THAT(TzXMLSchemaValidator(TzPath(kFolder12), "2004").GetSchemaError(),
              HasSubstr(": 'imscp_v1p1.xsd' is missing"));

  const TestFolder copy;
  std::filesystem::copy(kFolder12, copy.Path().GetNative(), std::filesystem::copy_options::recursive);
  copy.Write("adlcp_rootv1p2.xsd",
             "<schema xmlns='http://www.w3.org/2001/XMLSchema'\n"
             "targetNamespace='http://www.adlnet.org/xsd/adlcp_rootv1p2'>\n"
             "<element name='location' type='missing'/></schema>");
  const TzXMLSchemaValidator validator(copy.Path(), "1.2");
  EXPECT_THAT(validator.GetSchemaError(), testing::StartsWith("adlcp_rootv1p2.xsd: line 3: "));
  EXPECT_THAT(Validate(validator, kManifest12), ElementsAre("0: " + validator.GetSchemaError()));
}

TEST(TzXMLSchemaValidator, DoesWithoutTheCustomLomDocument) {
  const TestFolder copy;
  std::filesystem::copy(kFolder2004, copy.Path().GetNative(), std::filesystem::copy_options::recursive);
  copy.Write("lomCustom.xsd", "no schema at all");
  EXPECT_EQ(TzXMLSchemaValidator(copy.Path(), "2004").GetSchemaError(), "");
}

/// A place in the network that notes whether anybody came.
class Listener {
 public:
  Listener() : socket(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(socket, generic, length) != 0 || listen(socket, 1) != 0)
      throw std::runtime_error("can't listen");
    getsockname(socket, generic, &length);
    port = ntohs(address.sin_port);
  }
  ~Listener() { close(socket); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  [[nodiscard]] std::string GetAddress() const { return "http://127.0.0.1:" + std::to_string(port); }
  [[nodiscard]] bool WasAsked() const { return accept(socket, nullptr, nullptr) >= 0; }

 private:
  int socket;
  int port = 0;
};

TEST(TzXMLSchemaValidator, TakesWhatLiesInTheNetworkFromTheFolder) {
  const Listener listener;
  const TestFolder copy;
  std::filesystem::copy(kFolder2004, copy.Path().GetNative(), std::filesystem::copy_options::recursive);
  std::ifstream published(kFolder2004 + "/imscp_v1p1.xsd");
  const std::string text(std::istreambuf_iterator<char>(published), {});
  std::filesystem::remove((copy.Path() / "imscp_v1p1.xsd").GetNative());
  copy.Write("imscp_v1p1.xsd",
             Replaced(text, "\"xml.xsd\"", "\"" + listener.GetAddress() + "/2001/03/xml.xsd\""));

  const TzXMLSchemaValidator validator(copy.Path(), "2004");
  EXPECT_EQ(validator.GetSchemaError(), "");
  const std::string place = listener.GetAddress() + "/imscp_v1p1.xsd";
  const std::string located = R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation=")"
                              "http://www.imsglobal.org/xsd/imscp_v1p1 " +
                              place + " urn:x " + place + "\" identifier=\"C\"";
  EXPECT_THAT(Validate(validator, Replaced(kManifest2004, " identifier=\"C\"", located)), IsEmpty());
  EXPECT_FALSE(listener.WasAsked());
}

TEST(TzXMLSchemaValidator, WorksOnSeveralThreadsAtOnce) {
  std::vector<std::thread> threads;
  std::vector<std::size_t> findings(4, 99);
  threads.reserve(findings.size());
  for (std::size_t& count : findings) {
    threads.emplace_back([&count] {
      for (int run = 0; run < 5; ++run) {
        const TzXMLSchemaValidator validator(TzPath(kFolder2004), "2004");
        count = Validate(validator, kManifest2004).size();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(findings, testing::Each(0U));
}

}  // namespace
