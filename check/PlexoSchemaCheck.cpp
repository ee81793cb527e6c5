// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoSchemaCheck.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <unordered_map>

#include "check/PlexoFindingTable.h"
#include "host/xml/TzXMLSchemaValidator.h"

namespace {

using enum PlexoFindingId;

/// The elements and attributes that findings speak of, by line.
class Explained {
 public:
  explicit Explained(const std::vector<PlexoFinding>& findings) {
    for (const PlexoFinding& finding : findings) {
      if (finding.place.line == 0) continue;
      const std::string_view path = finding.place.element;
      const std::string_view last = path.substr(path.rfind('/') + 1);
      byLine[finding.place.line].emplace(last.substr(0, last.find('[')));
    }
  }

  [[nodiscard]] bool Covers(const TzSchemaFinding& finding) const {
    const auto found = byLine.find(finding.line);
    if (found == byLine.end()) return false;
    // The validator tells of identifiers and references without naming the element.
    if (finding.message.ends_with("is declared already") ||
        finding.message.ends_with("is declared nowhere")) {
      return true;
    }
    return std::any_of(found->second.begin(), found->second.end(), [&](const std::string& element) {
      // A name of a vocabulary that the edition lacks is told with its namespace.
      return finding.message.find("'" + element + "'") != std::string::npos ||
             finding.message.find("}" + element + "'") != std::string::npos;
    });
  }

 private:
  std::unordered_map<int, std::set<std::string>> byLine;
};

void CheckLocations(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  const PlexoManifestElement& root = *package.manifest.GetRoot();
  const std::string* locations = root.GetAttribute(PlexoVocabulary::Instance, "schemaLocation");
  if (locations == nullptr) return;
  std::istringstream words(*locations);
  std::string uri;
  std::string location;
  while (words >> uri >> location) {
    const PlexoHref href = PlexoHref::Read({}, location);
    if (href.isExternal || href.leavesPackage || package.FindFile(href.path) != nullptr) continue;
    findings.AddElement(SchemaFileMissing, root, {location});
  }
}

}  // namespace

void PlexoSchemaCheck::Run(const PlexoCheckedPackage& package, const TzPath& manifest,
                           const TzPath& schemaFolder, PlexoFindingList& findings) {
  const Explained explained(findings.Get());
  CheckLocations(package, findings);
  const PlexoEdition edition = package.GetEdition();
  if (edition == PlexoEdition::Unknown) return;
  const bool is12 = edition == PlexoEdition::Scorm12;
  if (!is12 && edition != PlexoEdition::Scorm2004Third) {
    findings.AddLine(EditionNotValidated, 0, {package.GetSchemaVersion()});
    return;
  }
  const TzPath folder = schemaFolder / (is12 ? "1_2/static" : "2004/static/3rd");
  const TzXMLSchemaValidator validator(folder, is12 ? "1.2" : "2004");
  if (!validator.GetSchemaError().empty()) {
    findings.Add(SchemaUnavailable, {validator.GetSchemaError()});
    return;
  }
  for (const TzSchemaFinding& finding : validator.Validate(manifest)) {
    if (!explained.Covers(finding)) findings.AddLine(ManifestInvalid, finding.line, {finding.message});
  }
}
