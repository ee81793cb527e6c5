// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoAdoptedManifest.h"

#include <algorithm>
#include <set>

#include "adopt/PlexoLaunchAddress.h"
#include "adopt/PlexoLaunchSettings.h"
#include "host/xml/TzXMLDOMCreator.h"

namespace {

/// What the two editions write in different ways.
struct Dialect {
  std::string_view packagingNamespace;
  std::string_view adlNamespace;
  std::string_view schemaVersion;
  std::string_view scormType;
  std::string_view timeLimitAction;
  std::string_view dataFromLms;
};
constexpr Dialect kScorm12 = {"http://www.imsproject.org/xsd/imscp_rootv1p1p2",
                              "http://www.adlnet.org/xsd/adlcp_rootv1p2",
                              "1.2",
                              "adlcp:scormtype",
                              "adlcp:timelimitaction",
                              "adlcp:datafromlms"};
constexpr Dialect kScorm2004 = {"http://www.imsglobal.org/xsd/imscp_v1p1",
                                "http://www.adlnet.org/xsd/adlcp_v1p3",
                                "2004 3rd Edition",
                                "adlcp:scormType",
                                "adlcp:timeLimitAction",
                                "adlcp:dataFromLMS"};

class TextSerializer : public ITzDOMSerializer {
 public:
  void Write(const TzString& piece) override { text += piece.GetUTF8String(); }
  std::string text;
};

/// Identifiers of one document, each its own.
class Identifiers {
 public:
  std::string Take(const std::string& wanted) {
    std::string identifier = wanted;
    for (int number = 1; !taken.insert(identifier).second; ++number) {
      identifier = wanted + "-" + std::to_string(number);
    }
    return identifier;
  }

 private:
  std::set<std::string> taken;
};

class ManifestWriting {
 public:
  ManifestWriting(const PlexoAdoptedSCO& adopted, const std::vector<std::string>& fileNames)
      : sco(adopted),
        files(fileNames),
        is12(sco.courseEdition == PlexoCourseEdition::Scorm12),
        dialect(is12 ? kScorm12 : kScorm2004) {}

  std::string Run() {
    Identifiers identifiers;
    manifestId = identifiers.Take(PlexoAdoptedManifest::MakeIdentifier(sco.manifest, "MANIFEST"));
    itemId = identifiers.Take(PlexoAdoptedManifest::MakeIdentifier(sco.item, "ITEM"));
    organizationId = identifiers.Take("ORG");
    resourceId = identifiers.Take("RES");

    const TzDOMNode root = Add("manifest", {});
    Set(root, "identifier", manifestId);
    Set(root, "version", GetManifestVersion(sco.courseEdition));
    Set(root, "xmlns", dialect.packagingNamespace);
    Set(root, "xmlns:adlcp", dialect.adlNamespace);
    if (!is12) Set(root, "xmlns:imsss", "http://www.imsglobal.org/xsd/imsss");
    const TzDOMNode metadata = Add("metadata", root);
    AddText("schema", "ADL SCORM", metadata);
    AddText("schemaversion", dialect.schemaVersion, metadata);
    WriteOrganization(root);
    WriteResource(root);
    TextSerializer serializer;
    dom.Serialize(serializer, 1, 1);
    return serializer.text;
  }

 private:
  void WriteOrganization(TzDOMNode root) {
    const TzDOMNode list = Add("organizations", root);
    Set(list, "default", organizationId);
    const TzDOMNode organization = Add("organization", list);
    Set(organization, "identifier", organizationId);
    AddText("title", sco.title, organization);
    const TzDOMNode item = Add("item", organization);
    Set(item, "identifier", itemId);
    Set(item, "identifierref", resourceId);
    AddText("title", sco.title, item);
    if (sco.metadata != nullptr) {
      const TzDOMNode metadata = Add("metadata", item);
      AddText("adlcp:location", PlexoAdoptedManifest::kMetadataFile, metadata);
    }
    // The limits of SCORM 2004 content are in a notation of their own, and its launch page sees to them.
    const bool hasLimits = is12 && sco.contentEdition == PlexoCourseEdition::Scorm12;
    if (hasLimits) AddOptional("adlcp:maxtimeallowed", sco.data.maxTimeAllowed, item);
    AddOptional(dialect.timeLimitAction, sco.data.timeLimitAction, item);
    AddOptional(dialect.dataFromLms, sco.data.dataFromLms, item);
    if (hasLimits) AddOptional("adlcp:masteryscore", sco.data.masteryScore, item);
    if (is12 || sco.objective.empty()) return;
    const TzDOMNode sequencing = Add("imsss:sequencing", item);
    const TzDOMNode objectives = Add("imsss:objectives", sequencing);
    Set(Add("imsss:primaryObjective", objectives), "objectiveID", sco.objective);
  }

  void WriteResource(TzDOMNode root) {
    const TzDOMNode resource = Add("resource", Add("resources", root));
    Set(resource, "identifier", resourceId);
    Set(resource, "type", "webcontent");
    Set(resource, dialect.scormType, "sco");
    Set(resource, "href", sco.HasLaunchPage() ? PlexoLaunchSettings::kPage : sco.launch);
    for (const std::string& file : files) {
      Set(Add("file", resource), "href", PlexoLaunchAddress::EncodePath(file));
    }
  }

  TzDOMNode Add(std::string_view name, TzDOMNode parent) { return dom.CreateElementNode(name, parent); }
  void AddText(std::string_view name, std::string_view text, TzDOMNode parent) {
    dom.CreateTextNode(text, Add(name, parent));
  }
  void AddOptional(std::string_view name, const std::string& text, TzDOMNode parent) {
    if (!text.empty()) AddText(name, text, parent);
  }
  void Set(TzDOMNode element, std::string_view name, std::string_view value) {
    dom.CreateAttributeNode(name, value, element);
  }

  const PlexoAdoptedSCO& sco;
  const std::vector<std::string>& files;
  bool is12;
  const Dialect& dialect;
  TzXMLDOMCreator dom;
  std::string manifestId;
  std::string itemId;
  std::string organizationId;
  std::string resourceId;
};

}  // namespace

std::string PlexoAdoptedManifest::Write(const PlexoAdoptedSCO& sco, const std::vector<std::string>& files) {
  return ManifestWriting(sco, files).Run();
}

std::string PlexoAdoptedManifest::MakeIdentifier(std::string_view text, std::string_view otherwise) {
  const auto isLetter = [](char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '_';
  };
  const auto isFurther = [](char character) {
    return (character >= '0' && character <= '9') || character == '-' || character == '.';
  };
  // A name without a letter of ASCII would become nothing but underscores.
  if (std::none_of(text.begin(), text.end(), isLetter)) return std::string(otherwise);
  std::string identifier;
  for (const char character : text)
    identifier += isLetter(character) || isFurther(character) ? character : '_';
  return isLetter(identifier.front()) ? identifier : "_" + identifier;
}
