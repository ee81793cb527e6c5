// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoMetadataFiles.h"

PlexoMetadataFiles::PlexoMetadataFiles(const PlexoCheckedPackage& checked) : package(checked) {
  for (const PlexoFileReference& reference : package.GetMetadataFiles()) {
    const PlexoManifestElement* metadata = reference.element->parent;
    if (metadata != nullptr && !reference.written.empty())
      byElement.try_emplace(metadata->parent, &reference);
  }
}

const TzZipEntry* PlexoMetadataFiles::Find(const PlexoLaunchable& launchable, Scope scope,
                                           PlexoAdoptFindings& findings) const {
  std::vector<const PlexoManifestElement*> places = {launchable.resource->element};
  if (launchable.item != nullptr) places.push_back(launchable.item);
  if (scope == Scope::Package) {
    if (launchable.item != nullptr) places.push_back(launchable.item->parent);
    places.push_back(package.manifest.GetRoot());
  }
  for (const PlexoManifestElement* place : places) {
    const auto named = byElement.find(place);
    if (named == byElement.end()) continue;
    const TzZipEntry* file = PlexoLaunchableItems::FindFile(*named->second, package);
    if (file != nullptr) return file;
    findings.AddReason(PlexoFindingId::MetadataFileAbsent,
                       {launchable.GetIdentifier(), named->second->written});
  }
  return nullptr;
}
