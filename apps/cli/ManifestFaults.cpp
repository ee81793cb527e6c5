// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/ManifestFaults.h"

#include <optional>
#include <string_view>

#include "check/PlexoHref.h"
#include "host/xml/TzXMLParser.h"

namespace {

constexpr std::string_view kExpectedVersions = "expected '1.0' or '1.3'";

/// Walks through a manifest by the manifest reader's rules, and puts the first one that is broken in words.
class FaultReading : public TzXMLParser {
 public:
  explicit FaultReading(const std::string& version) : TzXMLParser(0), courseVersion(version) {
    setElementHandler(&OnStart, &OnEnd);
    setUserData(this);
  }

  [[nodiscard]] std::string GetFault() const {
    // Of a document that was given up nobody knows what the rest holds.
    const bool wasReadToItsEnd = GetLine() == 0 && !WasRefused();
    const bool lacksManifest = wasReadToItsEnd && !hasManifest;
    return fault.empty() && lacksManifest ? "its imsmanifest.xml has no manifest element" : fault;
  }

 private:
  static void OnStart(void* self, const char* name, const char** attributes) {
    static_cast<FaultReading*>(self)->Start(name, attributes);
  }
  static void OnEnd(void* self, const char* name) { static_cast<FaultReading*>(self)->End(name); }

  void Start(std::string_view name, const char** attributes) {
    if (!fault.empty()) return;
    if (name == "organizations") {
      inOrganizations = true;
    } else if (name == "manifest") {
      CheckVersion(attributes);
    } else if (name == "resource") {
      inResource = true;
      Require("href", name, attributes);
    } else {
      if (inOrganizations) CheckInOrganizations(name, attributes);
      if (inResource && name == "file") Require("href", name, attributes);
    }
  }

  void End(std::string_view name) {
    if (name == "organizations") inOrganizations = false;
    if (name == "resource") inResource = false;
  }

  void CheckVersion(const char** attributes) {
    hasManifest = true;
    const auto version = Find("version", attributes);
    if (!version) {
      fault = "its manifest says no version; ";
      fault += kExpectedVersions;
    } else if (*version != "1.0" && *version != "1.3") {
      fault = "its manifest says version '" + *version + "'; ";
      fault += kExpectedVersions;
    } else if (const char* scorm = *version == "1.0" ? "1.2" : "2004"; courseVersion != scorm) {
      fault = "its manifest says version '" + *version + "' (SCORM " + scorm + "), the course is SCORM " +
              courseVersion;
    }
  }

  void CheckInOrganizations(std::string_view name, const char** attributes) {
    const bool is12 = courseVersion == "1.2";
    if (name == "item") Require("identifier", name, attributes);
    if (name == "imsss:primaryObjective" && !is12) Require("objectiveID", name, attributes);
    if ((name == "adlcp:masteryscore" || name == "adlcp:maxtimeallowed") && !is12) {
      fault =
          "its element " + std::string(name) + " belongs to SCORM 1.2, the course is SCORM " + courseVersion;
    }
  }

  // The reader looks at an element's first ten attributes only.
  void Require(std::string_view wanted, std::string_view element, const char** attributes) {
    if (!fault.empty() || Find(wanted, attributes)) return;
    const auto identifier = Find("identifier", attributes);
    fault = "its element " + std::string(element) + (identifier ? " '" + *identifier + "'" : "") +
            " lacks the attribute " + std::string(wanted);
    for (std::size_t pair = 0; attributes[2 * pair] != nullptr; ++pair) {
      if (wanted == attributes[2 * pair]) fault += " among its first ten";
    }
  }

  static std::optional<std::string> Find(std::string_view wanted, const char** attributes) {
    constexpr std::size_t kAttributesSeen = 10;
    for (std::size_t pair = 0; pair < kAttributesSeen && attributes[2 * pair] != nullptr; ++pair) {
      if (wanted == attributes[2 * pair]) return attributes[2 * pair + 1];
    }
    return std::nullopt;
  }

  std::string courseVersion;
  bool hasManifest = false;
  bool inOrganizations = false;
  bool inResource = false;
  std::string fault;
};

}  // namespace

std::string FindManifestFault(const TzPath& manifestFile, const std::string& courseVersion) {
  FaultReading reading(courseVersion);
  reading.setSource(TzFile(manifestFile));
  reading.parse();
  return reading.GetFault();
}

std::string FindLaunchFault(const std::string& address) {
  const PlexoHref href = PlexoHref::Read({}, address);
  if (!href.isExternal && !href.leavesPackage) return {};
  return "its launch address '" + address + "' leads out of the package";
}
