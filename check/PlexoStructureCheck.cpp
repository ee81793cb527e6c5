// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoStructureCheck.h"

#include <array>
#include <unordered_set>
#include <utility>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

/// The launch data of an item, under the names of SCORM 1.2 and of SCORM 2004.
constexpr std::array kLaunchData = {
    std::pair{"datafromlms", "dataFromLMS"},
    std::pair{"timelimitaction", "timeLimitAction"},
    std::pair{"masteryscore", ""},
    std::pair{"maxtimeallowed", ""},
};

class StructureCheck {
 public:
  StructureCheck(const PlexoCheckedPackage& checked, PlexoFindingList& list)
      : package(checked), findings(list) {}

  void Run() {
    const PlexoManifestElement& root = *package.manifest.GetRoot();
    if (root.name != "manifest") {
      findings.AddElement(RootNotManifest, root, {root.qualifiedName});
      return;
    }
    CheckEdition(root);
    if (package.GetOrganizations().empty()) findings.AddElement(NoOrganization, root, {});
    for (const PlexoManifestElement* organization : package.GetOrganizations()) {
      CheckTitle(*organization);
      if (organization->Find(Packaging, "item") == nullptr) {
        findings.AddElement(OrganizationEmpty, *organization, {organization->GetValue("identifier")});
      }
    }
    for (const PlexoManifestElement* nested : package.GetNestedManifests()) {
      findings.AddElement(NestedManifest, *nested, {nested->GetValue("identifier")});
    }
    for (const PlexoManifestElement* item : package.GetItems()) {
      CheckTitle(*item);
      CheckItem(*item);
      CheckLaunchData(*item);
    }
    for (const PlexoResource& resource : package.GetResources()) {
      // The second of two with one identifier has a finding already.
      const bool isFirst = package.FindResource(resource.identifier) == &resource;
      if (resource.scormType != "sco" || !isFirst || launched.contains(&resource)) continue;
      findings.AddElement(ResourceUnused, *resource.element, {resource.identifier});
    }
  }

 private:
  void CheckEdition(const PlexoManifestElement& root) {
    const PlexoEdition edition = package.GetEdition();
    if (!package.IsEditionNamed()) {
      const std::string& version = package.GetSchemaVersion();
      const std::string written = version.empty() ? "the manifest" : "'" + version + "'";
      if (edition == PlexoEdition::Unknown) {
        findings.AddElement(EditionUndetermined, root, {written});
      } else {
        findings.AddElement(EditionUnknown, root, {written, IsPlexo2004(edition) ? "2004" : "1.2"});
      }
      return;
    }
    const auto expected =
        IsPlexo2004(edition) ? PlexoNamespaceEdition::Scorm2004 : PlexoNamespaceEdition::Scorm12;
    if (root.vocabulary == Packaging && root.edition == expected) return;
    std::string written = root.qualifiedName.find(':') == std::string::npos ? "xmlns" : root.qualifiedName;
    findings.AddElement(NamespaceOfOtherEdition, root,
                        {std::move(written), package.GetSchemaVersion(),
                         std::string(PlexoManifestDocument::GetPackagingNamespace(expected))});
  }

  void CheckTitle(const PlexoManifestElement& element) {
    const PlexoManifestElement* title = element.Find(Packaging, "title");
    if (title != nullptr && !title->text.empty()) return;
    findings.AddElement(title == nullptr ? TitleMissing : TitleEmpty, element,
                        {element.name, element.GetValue("identifier")});
  }

  void CheckItem(const PlexoManifestElement& item) {
    const std::string identifier = item.GetValue("identifier");
    const bool hasItems = item.Find(Packaging, "item") != nullptr;
    const std::string* reference = item.GetAttribute("identifierref");
    if (reference == nullptr || reference->empty()) {
      if (!hasItems) findings.AddElement(ItemWithoutResource, item, {identifier});
      return;
    }
    if (hasItems && IsPlexo2004(package.GetEdition())) findings.AddElement(ItemWithBoth, item, {identifier});
    const PlexoResource* resource = package.FindResource(*reference);
    if (resource != nullptr && launched.insert(resource).second) CheckLaunched(*resource, identifier);
  }

  void CheckLaunched(const PlexoResource& resource, const std::string& item) {
    const PlexoManifestElement& element = *resource.element;
    if (!resource.launch.has_value())
      findings.AddElement(ResourceWithoutHref, element, {resource.identifier, item});
    if (resource.scormType != "sco" && resource.scormType != "asset" &&
        package.GetEdition() != PlexoEdition::Unknown) {
      findings.AddElement(ScormTypeMissing, element, {resource.identifier, package.GetScormTypeName()});
    }
    if (const std::string type = element.GetValue("type"); type != "webcontent") {
      findings.AddElement(ResourceType, element, {resource.identifier, type});
    }
  }

  void CheckLaunchData(const PlexoManifestElement& item) {
    for (const auto& [oldName, newName] : kLaunchData) {
      const auto found = item.FindAll(Adlcp, oldName);
      const std::string written = std::string("adlcp:") + oldName;
      const std::string identifier = item.GetValue("identifier");
      if (IsPlexo2004(package.GetEdition())) {
        if (std::string_view(newName).empty()) continue;
        for (const auto* element : found) {
          findings.AddElement(LowerCaseLaunchData, *element,
                              {identifier, written, std::string("adlcp:") + newName});
        }
      } else if (found.size() > 1) {
        findings.AddElement(RepeatedLaunchData, *found[1], {identifier, written});
      }
    }
  }

  const PlexoCheckedPackage& package;
  PlexoFindingList& findings;
  std::unordered_set<const PlexoResource*> launched;
};

}  // namespace

void PlexoStructureCheck::Run(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  StructureCheck(package, findings).Run();
}
