// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoSchemaCheck.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "check/PlexoFindingTable.h"
#include "host/xml/TzXMLSchemaValidator.h"

namespace {

using enum PlexoFindingId;

/// Where an element stands that the validator speaks of.
struct Spot {
  int line = 0;
  /// Null if several of its name stand in the line.
  const PlexoManifestElement* element = nullptr;
};

/// The elements of the manifest, by name. The validator tells the line in which a start tag ends; people look
/// for it where it begins.
class ElementFinder {
 public:
  explicit ElementFinder(const PlexoManifestDocument& manifest) {
    for (const PlexoManifestElement& element : manifest.GetElements()) {
      all.push_back(&element);
      byName[element.name].push_back(&element);
    }
  }

  [[nodiscard]] Spot Find(const TzSchemaFinding& finding) const {
    constexpr std::string_view kStart = "element '";
    const std::string_view message = finding.message;
    if (!message.starts_with(kStart)) return FindAmong(all, finding.line);
    std::string_view name = message.substr(kStart.size());
    name = name.substr(0, name.find('\''));
    const auto found = byName.find(name.substr(name.find_last_of(":}") + 1));
    return found != byName.end() ? FindAmong(found->second, finding.line) : Spot{finding.line, nullptr};
  }

 private:
  using Elements = std::vector<const PlexoManifestElement*>;

  /// The last of them that begins in this line or before it.
  static Spot FindAmong(const Elements& elements, int line) {
    const auto behind =
        std::upper_bound(elements.begin(), elements.end(), line,
                         [](int wanted, const auto* element) { return wanted < element->line; });
    if (behind == elements.begin()) return {line, nullptr};
    const auto last = std::prev(behind);
    const bool isOnlyOne = last == elements.begin() || (*std::prev(last))->line != (*last)->line;
    return {(*last)->line, isOnlyOne ? *last : nullptr};
  }

  Elements all;
  std::unordered_map<std::string_view, Elements> byName;
};

/// The elements that findings speak of, by line: their paths.
class Explained {
 public:
  explicit Explained(const std::vector<PlexoFinding>& findings) {
    for (const PlexoFinding& finding : findings) {
      if (finding.place.line == 0) continue;
      const std::string_view path = finding.place.element;
      const std::string_view last = path.substr(path.rfind('/') + 1);
      byLine[finding.place.line].emplace(last.substr(0, last.find('[')));
      paths.insert(finding.place.element);
      if (finding.id == IdentifierMalformed || finding.id == ManifestIdentifierDigit)
        identifiers.insert(finding.words.back());
      if (finding.id == IdentifierTwice) identifiers.insert(finding.words.front());
    }
  }

  [[nodiscard]] bool Covers(const TzSchemaFinding& finding, const Spot& spot) const {
    if (IsOfIdentifier(finding.message)) return true;
    const auto found = byLine.find(spot.line);
    if (found == byLine.end()) return false;
    // The validator tells of identifiers and references without naming the element.
    if (finding.message.ends_with("is declared already") ||
        finding.message.ends_with("is declared nowhere")) {
      return true;
    }
    if (spot.element != nullptr) return paths.contains(spot.element->GetPath());
    return std::any_of(found->second.begin(), found->second.end(), [&](const std::string& element) {
      // A name of a vocabulary that the edition lacks is told with its namespace.
      return finding.message.find("'" + element + "'") != std::string::npos ||
             finding.message.find("}" + element + "'") != std::string::npos;
    });
  }

 private:
  /// True for an identifier that is told of already, wherever it stands.
  [[nodiscard]] bool IsOfIdentifier(std::string_view message) const {
    constexpr std::string_view kStart = ": '";
    const std::size_t start = message.find(kStart);
    const std::size_t end = message.rfind("' is not a valid value of the atomic type 'xs:ID");
    if (start == std::string_view::npos || end == std::string_view::npos) return false;
    const std::size_t from = start + kStart.size();
    return from <= end && identifiers.contains(std::string(message.substr(from, end - from)));
  }

  std::unordered_map<int, std::set<std::string>> byLine;
  std::unordered_set<std::string> paths;
  std::unordered_set<std::string> identifiers;
};

/// What the validator says, in an author's words where its own are for makers of schemas.
std::string GetText(const TzSchemaFinding& finding) {
  for (const std::string_view kind : {"element", "attribute"}) {
    const std::string theirs = "No matching global " + std::string(kind) +
                               " declaration available, but demanded by the strict wildcard";
    if (!finding.message.ends_with(theirs)) continue;
    return finding.message.substr(0, finding.message.size() - theirs.size()) +
           "the schemas of the edition don't have it";
  }
  return finding.message;
}

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
  const ElementFinder elements(package.manifest);
  for (const TzSchemaFinding& finding : validator.Validate(manifest)) {
    const Spot spot = elements.Find(finding);
    if (explained.Covers(finding, spot)) continue;
    if (spot.element != nullptr) {
      findings.AddElement(ManifestInvalid, *spot.element, {GetText(finding)});
    } else {
      findings.AddLine(ManifestInvalid, spot.line, {GetText(finding)});
    }
  }
}
