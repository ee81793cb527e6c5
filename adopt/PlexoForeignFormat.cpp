// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoForeignFormat.h"

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

}  // namespace

std::string_view PlexoForeignFormat::FindByFiles(const PlexoCheckedPackage& package) {
  for (const auto& [ending, format] : kMarks) {
    for (const TzZipEntry& entry : package.archive.GetEntries()) {
      if (entry.isFolder) continue;
      const std::string name = PlexoCheckedPackage::FoldCase(entry.name);
      const std::string_view fileName = std::string_view(name).substr(name.rfind('/') + 1);
      if (ending.starts_with('.') ? fileName.ends_with(ending) : fileName == ending) return format;
    }
  }
  return {};
}

std::string_view PlexoForeignFormat::FindByManifest(const PlexoCheckedPackage& package) {
  const PlexoManifestElement* metadata =
      package.manifest.GetRoot()->Find(PlexoVocabulary::Packaging, "metadata");
  if (metadata == nullptr) return {};
  const PlexoManifestElement* schema = metadata->Find(PlexoVocabulary::Packaging, "schema");
  if (schema == nullptr) return {};
  const bool isCartridge =
      PlexoCheckedPackage::FoldCase(schema->text).find("common cartridge") != std::string::npos;
  return isCartridge ? "a Common Cartridge" : "";
}
