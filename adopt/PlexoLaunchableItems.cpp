// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoLaunchableItems.h"

#include <algorithm>
#include <sstream>

#include "host/files/TzZipName.h"
#include "host/text/TzString.h"

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

std::string GetScormType(const PlexoResource& resource) {
  for (const PlexoManifestAttribute& attribute : resource.element->attributes) {
    if (PlexoCheckedPackage::FoldCase(attribute.name) == "scormtype") {
      return PlexoCheckedPackage::FoldCase(attribute.value);
    }
  }
  return {};
}

/// With single blanks only.
std::string Collapse(const std::string& text) {
  std::istringstream words(text);
  std::string collapsed;
  for (std::string word; words >> word;) collapsed += (collapsed.empty() ? "" : " ") + word;
  return collapsed;
}

/// Old tools write the bytes of ISO-8859-1 as escapes: "%FC".
std::string FromLatin1(std::string_view bytes) {
  std::u16string units;
  for (const char byte : bytes) units += static_cast<unsigned char>(byte);
  return TzString(units).GetUTF8String();
}

std::string GetOwnTitle(const PlexoManifestElement& element) {
  const PlexoManifestElement* title = element.Find(Packaging, "title");
  return title != nullptr ? Collapse(title->text) : std::string();
}

class ItemSearch {
 public:
  ItemSearch(const PlexoCheckedPackage& checked, PlexoAdoptFindings& adoptFindings)
      : package(checked), findings(adoptFindings) {}

  std::vector<PlexoLaunchable> Run() {
    for (const PlexoManifestElement* organization : GetOrganizations()) {
      AddItems(*organization);
      if (!found.empty()) return found;
    }
    AddOnlyResource();
    return found;
  }

 private:
  /// The default one first.
  [[nodiscard]] std::vector<const PlexoManifestElement*> GetOrganizations() const {
    std::vector<const PlexoManifestElement*> organizations = package.GetOrganizations();
    if (organizations.empty()) return organizations;
    const std::string named = organizations.front()->parent->GetValue("default");
    std::stable_partition(organizations.begin(), organizations.end(), [&named](const auto* organization) {
      return organization->GetValue("identifier") == named;
    });
    return organizations;
  }

  void AddItems(const PlexoManifestElement& parent) {
    for (const PlexoManifestElement* item : parent.FindAll(Packaging, "item")) {
      AddItem(*item);
      AddItems(*item);
    }
  }

  void AddItem(const PlexoManifestElement& item) {
    const std::string reference = Collapse(item.GetValue("identifierref"));
    if (reference.empty()) return;
    const PlexoResource* resource = package.FindResource(reference);
    if (resource == nullptr || !resource->launch) {
      findings.Add(ItemLeftOut, {item.GetValue("identifier"), reference});
    } else if (const TzZipEntry* page = PlexoLaunchableItems::FindFile(*resource->launch, package);
               page != nullptr) {
      found.push_back({&item, resource, page});
    } else {
      findings.Add(ItemLeftOut, {item.GetValue("identifier"), resource->launch->written});
    }
  }

  void AddOnlyResource() {
    std::vector<PlexoLaunchable> scos;
    std::vector<PlexoLaunchable> all;
    for (const PlexoResource& resource : package.GetResources()) {
      if (!resource.launch) continue;
      const TzZipEntry* page = PlexoLaunchableItems::FindFile(*resource.launch, package);
      if (page == nullptr) continue;
      all.push_back({nullptr, &resource, page});
      if (GetScormType(resource) == "sco") scos.push_back(all.back());
    }
    if (!scos.empty()) {
      found = std::move(scos);
    } else if (all.size() == 1) {
      found = std::move(all);
    }
  }

  const PlexoCheckedPackage& package;
  PlexoAdoptFindings& findings;
  std::vector<PlexoLaunchable> found;
};

}  // namespace

std::string PlexoLaunchable::GetIdentifier() const {
  return item != nullptr ? item->GetValue("identifier") : std::string();
}

std::vector<PlexoLaunchable> PlexoLaunchableItems::Find(const PlexoCheckedPackage& package,
                                                        PlexoAdoptFindings& findings) {
  return ItemSearch(package, findings).Run();
}

std::string PlexoLaunchableItems::GetTitle(const PlexoLaunchable& launchable,
                                           const PlexoCheckedPackage& package) {
  for (const PlexoManifestElement* element = launchable.item; element != nullptr; element = element->parent) {
    if (std::string title = GetOwnTitle(*element); !title.empty()) return title;
  }
  for (const PlexoManifestElement* organization : package.GetOrganizations()) {
    if (std::string title = GetOwnTitle(*organization); !title.empty()) return title;
  }
  return launchable.page->name.substr(launchable.page->name.rfind('/') + 1);
}

std::string PlexoLaunchableItems::Describe(const std::vector<PlexoLaunchable>& launchables,
                                           const PlexoCheckedPackage& package) {
  constexpr std::size_t kMostShown = 20;
  std::string text;
  for (std::size_t index = 0; index < std::min(launchables.size(), kMostShown); ++index) {
    text += (text.empty() ? "'" : ", '") + launchables[index].GetIdentifier() + "' (" +
            GetTitle(launchables[index], package) + ")";
  }
  return launchables.size() > kMostShown ? text + " ..." : text;
}

const TzZipEntry* PlexoLaunchableItems::FindFile(const PlexoFileReference& reference,
                                                 const PlexoCheckedPackage& package) {
  if (reference.entry != nullptr || reference.href.isExternal || reference.href.leavesPackage) {
    return reference.entry;
  }
  const std::string& path = reference.href.path;
  return package.FindFileInAnyCase(TzZipName::IsUtf8(path) ? path : FromLatin1(path));
}

bool PlexoLaunchableItems::IsAsset(const PlexoResource& resource) {
  return GetScormType(resource) == "asset";
}
