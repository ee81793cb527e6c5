// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoLaunchableItems.h"

#include <algorithm>
#include <sstream>
#include <utility>

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

/// An address of a schema is read without the blanks around it (XML Schema Part 2, anyURI).
std::string_view Trim(std::string_view href) {
  constexpr std::string_view kBlanks = " \t\r\n";
  href.remove_prefix(std::min(href.find_first_not_of(kBlanks), href.size()));
  return href.substr(0, href.find_last_not_of(kBlanks) + 1);
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

std::string JoinFirst(const std::vector<std::string>& names) {
  constexpr std::size_t kMostShown = 20;
  std::string text;
  for (std::size_t index = 0; index < std::min(names.size(), kMostShown); ++index) {
    text += (text.empty() ? "" : ", ") + names[index];
  }
  return names.size() > kMostShown ? text + " ..." : text;
}

class ItemSearch {
 public:
  ItemSearch(const PlexoCheckedPackage& checked, PlexoAdoptFindings& adoptFindings)
      : package(checked), findings(adoptFindings) {}

  std::vector<PlexoLaunchable> Run() {
    const auto organizations = GetOrganizations();
    for (const PlexoManifestElement* organization : organizations) {
      AddItems(*organization);
      if (found.empty()) continue;
      TellOthers(*organization, organizations);
      break;
    }
    if (found.empty()) AddOnlyResource();
    if (found.size() == 1 && found.front().item == nullptr && package.GetItems().size() == 1) {
      const PlexoManifestElement& item = *package.GetItems().front();
      found.front().item = &item;
      const std::string cause = leftOut.empty() ? "it names no resource" : leftOut.front().second;
      findings.AddReason(ItemMended,
                         {item.GetValue("identifier"), cause, found.front().resource->identifier});
    } else {
      for (const auto& [identifier, cause] : leftOut) findings.AddReason(ItemLeftOut, {identifier, cause});
    }
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

  /// Those without items are empty frames.
  void TellOthers(const PlexoManifestElement& taken,
                  const std::vector<const PlexoManifestElement*>& organizations) {
    std::vector<std::string> others;
    for (const PlexoManifestElement* other : organizations) {
      if (other == &taken || other->Find(Packaging, "item") == nullptr) continue;
      others.push_back("'" + other->GetValue("identifier") + "' (" + GetOwnTitle(*other) + ")");
    }
    if (!others.empty()) {
      findings.AddReason(OrganizationsLeftOut, {taken.GetValue("identifier"), JoinFirst(others)});
    }
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
    const TzZipEntry* page = resource != nullptr && resource->launch
                                 ? PlexoLaunchableItems::FindFile(*resource->launch, package)
                                 : nullptr;
    if (page != nullptr) {
      found.push_back({&item, resource, page});
    } else {
      leftOut.emplace_back(item.GetValue("identifier"), DescribeCause(reference, resource));
    }
  }

  /// Why an item with this reference has no page.
  static std::string DescribeCause(const std::string& reference, const PlexoResource* resource) {
    if (resource == nullptr) return "the manifest has no resource '" + reference + "', which it names";
    if (!resource->launch) return "its resource '" + reference + "' has no href";
    const PlexoFileReference& page = *resource->launch;
    if (page.href.isExternal) return "its page '" + page.written + "' is on another server";
    if (page.href.leavesPackage) return "its page '" + page.written + "' lies outside the package";
    return "its page '" + page.written + "' isn't in the package";
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
  /// Items that lead nowhere: their identifiers, and why.
  std::vector<std::pair<std::string, std::string>> leftOut;
};

}  // namespace

std::string PlexoLaunchable::GetIdentifier() const {
  return item != nullptr ? item->GetValue("identifier") : std::string();
}

std::string PlexoLaunchable::GetName() const {
  const std::string identifier = GetIdentifier();
  return identifier.empty() ? "'" + page->name + "'" : "item '" + identifier + "'";
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
  return std::string(PlexoCheckedPackage::GetFileName(launchable.page->name));
}

std::string PlexoLaunchableItems::Describe(const std::vector<PlexoLaunchable>& launchables,
                                           const PlexoCheckedPackage& package) {
  std::vector<std::string> names;
  names.reserve(launchables.size());
  for (const PlexoLaunchable& launchable : launchables) {
    names.push_back("'" + launchable.GetIdentifier() + "' (" + GetTitle(launchable, package) + ")");
  }
  return JoinFirst(names);
}

const TzZipEntry* PlexoLaunchableItems::FindFile(const PlexoFileReference& reference,
                                                 const PlexoCheckedPackage& package) {
  if (reference.entry != nullptr) return reference.entry;
  const PlexoHref href = PlexoHref::Read(reference.base, Trim(reference.written));
  if (href.isExternal || href.leavesPackage) return nullptr;
  for (const std::string& path : {href.path, href.rawPath}) {
    if (const TzZipEntry* file = package.FindFile(path); file != nullptr) return file;
  }
  return package.FindFileInAnyCase(TzZipName::IsUtf8(href.path) ? href.path : FromLatin1(href.path));
}

bool PlexoLaunchableItems::IsAsset(const PlexoResource& resource) {
  return GetScormType(resource) == "asset";
}
