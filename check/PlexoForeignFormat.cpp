// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoForeignFormat.h"

#include <algorithm>
#include <array>

namespace {

struct Mark {
  std::string_view ending;
  std::string_view format;
};
/// By how telling they are: a package may serve several formats.
constexpr std::array kMarks = {
    Mark{"cmi5.xml", "a cmi5 package"},
    Mark{"tincan.xml", "an xAPI package"},
    Mark{".crs", "an AICC package"},
    Mark{".cst", "an AICC package"},
};

/// Some makers write a name of their own where SCORM has its schema's.
bool IsMarkedAsScorm(const PlexoCheckedPackage& package) {
  if (package.manifest.GetDeclaredEdition(PlexoVocabulary::Adlcp) != PlexoNamespaceEdition::Either)
    return true;
  const auto& resources = package.GetResources();
  return std::any_of(resources.begin(), resources.end(), [](const PlexoResource& resource) {
    const auto& attributes = resource.element->attributes;
    return std::any_of(attributes.begin(), attributes.end(), [](const PlexoManifestAttribute& attribute) {
      return PlexoCheckedPackage::FoldCase(attribute.name) == "scormtype";
    });
  });
}

}  // namespace

std::string_view PlexoForeignFormat::FindByFiles(const PlexoCheckedPackage& package) {
  for (const auto& [ending, format] : kMarks) {
    for (const TzZipEntry& entry : package.archive.GetEntries()) {
      if (entry.isFolder) continue;
      const std::string name = PlexoCheckedPackage::FoldCase(entry.name);
      const std::string_view fileName = PlexoCheckedPackage::GetFileName(name);
      if (ending.starts_with('.') ? fileName.ends_with(ending) : fileName == ending) return format;
    }
  }
  return {};
}

std::string PlexoForeignFormat::FindByManifest(const PlexoCheckedPackage& package) {
  std::string schema;
  if (const auto* metadata = package.manifest.GetRoot()->Find(PlexoVocabulary::Packaging, "metadata");
      metadata != nullptr) {
    const PlexoManifestElement* named = metadata->Find(PlexoVocabulary::Packaging, "schema");
    if (named != nullptr) schema = named->text;
  }
  const std::string folded = PlexoCheckedPackage::FoldCase(schema);
  const auto has = [](std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
  };
  if (has(folded, "common cartridge") || has(package.manifest.GetRootNamespace(), "/imsccv")) {
    return "a Common Cartridge";
  }
  if (has(folded, "qti")) return "a QTI package";
  // SCORM builds upon IMS content packaging, and old tools name that alone.
  if (schema.empty() || has(folded, "scorm") || has(folded, "adl") || has(folded, "ims content")) return {};
  return IsMarkedAsScorm(package) ? "" : "a package of the schema '" + schema + "'";
}
