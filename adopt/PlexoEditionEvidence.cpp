// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoEditionEvidence.h"

namespace {

using enum PlexoCourseEdition;
using Evidence = std::optional<PlexoCourseEdition>;

Evidence FindBySchemaVersion(const std::string& written) {
  const std::string version = PlexoCheckedPackage::FoldCase(written);
  if (version.find("2004") != std::string::npos || version.starts_with("cam") || version.starts_with("1.3")) {
    return Scorm2004;
  }
  if (version == "1.2" || version == "scorm 1.2") return Scorm12;
  return std::nullopt;
}

Evidence FindByNamespaces(const PlexoManifestDocument& manifest) {
  for (const PlexoVocabulary vocabulary : {PlexoVocabulary::Adlcp, PlexoVocabulary::Packaging}) {
    const PlexoNamespaceEdition declared = manifest.GetDeclaredEdition(vocabulary);
    if (declared == PlexoNamespaceEdition::Scorm12) return Scorm12;
    if (declared == PlexoNamespaceEdition::Scorm2004) return Scorm2004;
  }
  return std::nullopt;
}

Evidence FindByScormType(const PlexoCheckedPackage& package) {
  for (const PlexoResource& resource : package.GetResources()) {
    for (const PlexoManifestAttribute& attribute : resource.element->attributes) {
      if (attribute.name == "scormtype") return Scorm12;
      if (attribute.name == "scormType") return Scorm2004;
    }
  }
  return std::nullopt;
}

Evidence FindByVersion(const std::string& version) {
  if (version.starts_with("1.3") || version.starts_with("2004")) return Scorm2004;
  if (version.starts_with("1.2") || version == "1.0") return Scorm12;
  return std::nullopt;
}

}  // namespace

Evidence PlexoEditionEvidence::Find(const PlexoCheckedPackage& package) {
  Evidence found = FindBySchemaVersion(package.GetSchemaVersion());
  if (!found) found = FindByNamespaces(package.manifest);
  if (!found) found = FindByScormType(package);
  if (!found) found = FindByVersion(package.manifest.GetRoot()->GetValue("version"));
  return found;
}
