// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/PlexoEdition.h"
#include "check/PlexoHref.h"
#include "check/PlexoManifestDocument.h"
#include "host/files/TzZipInspection.h"

/// A reference of the manifest to a file of the package.
struct PlexoFileReference {
  const PlexoManifestElement* element = nullptr;
  /// As the manifest writes it, without the bases around it.
  std::string written;
  /// What the bases add up to, and the manifest's folder.
  std::string base;
  PlexoHref href;
  /// Null if the package has no such file.
  const TzZipEntry* entry = nullptr;
};

/// A resource of the manifest.
struct PlexoResource {
  const PlexoManifestElement* element = nullptr;
  std::string identifier;
  /// "sco", "asset" or what else is written; empty if the attribute is absent or not of this edition.
  std::string scormType;
  std::optional<PlexoFileReference> launch;
  std::vector<PlexoFileReference> files;
  /// The identifiers that it depends on.
  std::vector<std::pair<const PlexoManifestElement*, std::string>> dependencies;
};

/// A package as the checks look at it: what is in the archive, and what the manifest says about it.
class PlexoCheckedPackage {
 public:
  TzZipInspection archive;
  PlexoManifestDocument manifest;

  /// Unpacks the manifest to the file, and reads it.
  [[nodiscard]] TzZipFailure ReadManifest(const TzZipEntry& entry, const TzPath& file);
  /// Makes the look-ups of files alone, when the archive was opened.
  void IndexFiles();
  /// Makes the look-ups below, when the archive was opened and, if there is one, the manifest read.
  /// `manifestFolder` is where the manifest lies in the archive: its references start there.
  void Index(std::string manifestFolder = {});

  /// The edition that the manifest's schemaversion names, else that of its namespaces.
  [[nodiscard]] PlexoEdition GetEdition() const { return edition; }
  /// False if only the namespaces tell the edition, or nothing does.
  [[nodiscard]] bool IsEditionNamed() const { return isEditionNamed; }
  /// What the manifest names as its schemaversion, or its schema if that is missing.
  [[nodiscard]] const std::string& GetSchemaVersion() const { return schemaVersion; }
  /// The attribute of a resource that says what it is: "adlcp:scormtype" in SCORM 1.2.
  [[nodiscard]] const char* GetScormTypeName() const;

  /// The file of this name; null if there is none.
  [[nodiscard]] const TzZipEntry* FindFile(std::string_view name) const;
  /// A file whose name differs at most in the case of ASCII letters; null if there is none.
  [[nodiscard]] const TzZipEntry* FindFileInAnyCase(std::string_view name) const;
  /// The first resource of this identifier; null if there is none.
  [[nodiscard]] const PlexoResource* FindResource(std::string_view identifier) const;

  [[nodiscard]] const std::deque<PlexoResource>& GetResources() const { return resources; }
  /// In document order, those of nested manifests left out.
  [[nodiscard]] const std::vector<const PlexoManifestElement*>& GetOrganizations() const {
    return organizations;
  }
  [[nodiscard]] const std::vector<const PlexoManifestElement*>& GetItems() const { return items; }
  /// The manifests in the manifest, however deep, of which nothing else is looked at than the files that they
  /// name.
  [[nodiscard]] const std::vector<const PlexoManifestElement*>& GetNestedManifests() const {
    return nestedManifests;
  }
  [[nodiscard]] const std::vector<PlexoFileReference>& GetNestedFiles() const { return nestedFiles; }
  /// True for the identifier of a nested manifest, or of a resource of one.
  [[nodiscard]] bool IsNested(std::string_view identifier) const {
    return nestedIdentifiers.contains(identifier);
  }
  /// The metadata files that the manifest names.
  [[nodiscard]] const std::vector<PlexoFileReference>& GetMetadataFiles() const { return metadataFiles; }

  /// The resource that an item launches; null if it has none.
  [[nodiscard]] const PlexoResource* GetResourceOf(const PlexoManifestElement& item) const;

  /// The last component of an entry's name, and what stands before it: "a/b" of "a/b/c", empty at the top.
  static std::string_view GetFileName(std::string_view name);
  static std::string_view GetFolder(std::string_view name);
  /// ASCII letters in lower case.
  static std::string FoldCase(std::string_view name);

 private:
  void IndexEdition();
  void IndexItems(const PlexoManifestElement& parent);
  void IndexResources(const PlexoManifestElement& list);
  void IndexNestedManifests(const PlexoManifestElement& parent);
  [[nodiscard]] PlexoFileReference MakeReference(const PlexoManifestElement& element,
                                                 std::string written) const;

  std::string folder;
  PlexoEdition edition = PlexoEdition::Unknown;
  bool isEditionNamed = true;
  std::string schemaVersion;
  std::unordered_map<std::string_view, const TzZipEntry*> files;
  std::unordered_map<std::string, const TzZipEntry*> foldedFiles;
  std::deque<PlexoResource> resources;
  std::unordered_map<std::string_view, const PlexoResource*> resourcesByIdentifier;
  std::vector<const PlexoManifestElement*> organizations;
  std::vector<const PlexoManifestElement*> items;
  std::vector<const PlexoManifestElement*> nestedManifests;
  std::vector<PlexoFileReference> nestedFiles;
  std::unordered_set<std::string_view> nestedIdentifiers;
  std::vector<PlexoFileReference> metadataFiles;
};
