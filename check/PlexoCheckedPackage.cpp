// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoCheckedPackage.h"

#include <algorithm>

#include "host/files/TzStreamUtil.h"

namespace {

using enum PlexoVocabulary;

/// The xml:base values around an element and its own, outermost first.
std::string GetBase(const PlexoManifestElement& element) {
  std::string base = element.parent != nullptr ? GetBase(*element.parent) : std::string();
  const std::string* own = element.GetAttribute(Other, "base");
  if (own == nullptr) return base;
  if (!base.empty() && !base.ends_with('/')) base.resize(base.rfind('/') + 1);
  return base + *own;
}

}  // namespace

TzZipFailure PlexoCheckedPackage::ReadManifest(const TzZipEntry& entry, const TzPath& file) {
  const auto stream = TzStreamUtil::CreateFileStreamWrite(TzFile(file), 0, 0, 0);
  bool isWritten = stream != nullptr;
  TzZipFailure failure;
  if (isWritten) {
    failure = archive.Read(entry, [&](std::span<const std::byte> piece) {
      isWritten = isWritten && stream->Write(piece) == kTzSuccess;
    });
    isWritten = isWritten && stream->Close() == kTzSuccess;
  }
  if (!isWritten) failure = {kTzMachineFailure, {}, "can't write a temporary file", 0};
  if (!failure) manifest.Read(file);
  return failure;
}

void PlexoCheckedPackage::Index(std::string manifestFolder) {
  folder = std::move(manifestFolder);
  if (!folder.empty()) folder += '/';
  IndexFiles();
  const PlexoManifestElement* root = manifest.GetRoot();
  if (root == nullptr) return;
  IndexEdition();
  if (const auto* list = root->Find(Packaging, "organizations"); list != nullptr) {
    organizations = list->FindAll(Packaging, "organization");
    for (const PlexoManifestElement* organization : organizations) IndexItems(*organization);
  }
  if (const auto* list = root->Find(Packaging, "resources"); list != nullptr) IndexResources(*list);
  IndexNestedManifests(*root);
  for (const PlexoManifestElement& element : manifest.GetElements()) {
    if (element.Is(Adlcp, "location")) metadataFiles.push_back(MakeReference(element, element.text));
  }
}

void PlexoCheckedPackage::IndexFiles() {
  if (!files.empty()) return;
  for (const TzZipEntry& entry : archive.GetEntries()) {
    if (entry.isFolder) continue;
    files.try_emplace(entry.name, &entry);
    foldedFiles.try_emplace(FoldCase(entry.name), &entry);
  }
}

void PlexoCheckedPackage::IndexEdition() {
  const PlexoManifestElement& root = *manifest.GetRoot();
  if (const PlexoManifestElement* metadata = root.Find(Packaging, "metadata"); metadata != nullptr) {
    const PlexoManifestElement* version = metadata->Find(Packaging, "schemaversion");
    if (version == nullptr) version = metadata->Find(Packaging, "schema");
    if (version != nullptr) schemaVersion = version->text;
  }
  edition = GetPlexoEdition(schemaVersion);
  if (edition != PlexoEdition::Unknown) return;
  isEditionNamed = false;
  PlexoNamespaceEdition declared = root.edition;
  if (declared == PlexoNamespaceEdition::Either) declared = manifest.GetDeclaredEdition(Adlcp);
  if (declared == PlexoNamespaceEdition::Scorm12) edition = PlexoEdition::Scorm12;
  // All editions of 2004 have the same namespaces.
  if (declared == PlexoNamespaceEdition::Scorm2004) edition = PlexoEdition::Scorm2004Third;
}

void PlexoCheckedPackage::IndexItems(const PlexoManifestElement& parent) {
  for (const PlexoManifestElement* item : parent.FindAll(Packaging, "item")) {
    items.push_back(item);
    IndexItems(*item);
  }
}

void PlexoCheckedPackage::IndexResources(const PlexoManifestElement& list) {
  for (const PlexoManifestElement* element : list.FindAll(Packaging, "resource")) {
    PlexoResource& resource = resources.emplace_back();
    resource.element = element;
    resource.identifier = element->GetValue("identifier");
    const std::string_view typeName = std::string_view(GetScormTypeName()).substr(6);
    if (const auto* type = element->GetAttribute(Adlcp, typeName); type != nullptr)
      resource.scormType = *type;
    if (const auto* href = element->GetAttribute("href"); href != nullptr && !href->empty()) {
      resource.launch = MakeReference(*element, *href);
    }
    for (const PlexoManifestElement* child : element->children) {
      if (child->Is(Packaging, "file")) {
        resource.files.push_back(MakeReference(*child, child->GetValue("href")));
      } else if (child->Is(Packaging, "dependency")) {
        resource.dependencies.emplace_back(child, child->GetValue("identifierref"));
      }
    }
    resourcesByIdentifier.try_emplace(resource.identifier, &resource);
  }
}

void PlexoCheckedPackage::IndexNestedManifests(const PlexoManifestElement& parent) {
  const auto note = [this](const PlexoManifestElement& element) {
    if (const auto* href = element.GetAttribute("href"); href != nullptr)
      nestedFiles.push_back(MakeReference(element, *href));
    if (const auto* identifier = element.GetAttribute("identifier"); identifier != nullptr)
      nestedIdentifiers.insert(*identifier);
  };
  for (const PlexoManifestElement* nested : parent.FindAll(Packaging, "manifest")) {
    nestedManifests.push_back(nested);
    note(*nested);
    if (const auto* list = nested->Find(Packaging, "resources"); list != nullptr) {
      for (const PlexoManifestElement* resource : list->FindAll(Packaging, "resource")) {
        note(*resource);
        for (const PlexoManifestElement* file : resource->FindAll(Packaging, "file")) note(*file);
      }
    }
    IndexNestedManifests(*nested);
  }
}

PlexoFileReference PlexoCheckedPackage::MakeReference(const PlexoManifestElement& element,
                                                      std::string written) const {
  PlexoFileReference reference;
  reference.element = &element;
  reference.base = folder + GetBase(element);
  reference.href = PlexoHref::Read(reference.base, written);
  reference.written = std::move(written);
  if (reference.href.isExternal || reference.href.leavesPackage) return reference;
  reference.entry = FindFile(reference.href.path);
  if (reference.entry == nullptr) reference.entry = FindFile(reference.href.rawPath);
  return reference;
}

const char* PlexoCheckedPackage::GetScormTypeName() const {
  return edition == PlexoEdition::Scorm12 ? "adlcp:scormtype" : "adlcp:scormType";
}

const TzZipEntry* PlexoCheckedPackage::FindFile(std::string_view name) const {
  const auto found = files.find(name);
  return found != files.end() ? found->second : nullptr;
}

const TzZipEntry* PlexoCheckedPackage::FindFileInAnyCase(std::string_view name) const {
  const auto found = foldedFiles.find(FoldCase(name));
  return found != foldedFiles.end() ? found->second : nullptr;
}

const PlexoResource* PlexoCheckedPackage::FindResource(std::string_view identifier) const {
  const auto found = resourcesByIdentifier.find(identifier);
  return found != resourcesByIdentifier.end() ? found->second : nullptr;
}

const PlexoResource* PlexoCheckedPackage::GetResourceOf(const PlexoManifestElement& item) const {
  const std::string* reference = item.GetAttribute("identifierref");
  return reference != nullptr ? FindResource(*reference) : nullptr;
}

std::string_view PlexoCheckedPackage::GetFileName(std::string_view name) {
  return name.substr(name.rfind('/') + 1);
}

std::string_view PlexoCheckedPackage::GetFolder(std::string_view name) {
  const std::size_t slash = name.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : name.substr(0, slash);
}

std::string PlexoCheckedPackage::FoldCase(std::string_view name) {
  std::string folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return folded;
}
