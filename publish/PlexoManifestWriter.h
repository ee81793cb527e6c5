// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "core/PlexoCourseModel.h"
#include "core/PlexoSCOManifest.h"
#include "publish/PlexoIdentifiers.h"
#include "publish/PlexoManifestTree.h"

/// Which manifest is written; every branch of the writers tests this.
enum class PlexoManifestVersion : std::uint32_t { Scorm12 = 0, Scorm2004 = 1 };

/// `imsmanifest.xml` under construction: its frame, its items and its resources (SCORM 1.2 and SCORM 2004 3rd
/// Edition Content Aggregation Model). Writing an item also sorts the files of its SCO in the working folder.
class PlexoManifestWriter {
 public:
  /// Starts the document with everything but items and resources: root, metadata, organizations and, in
  /// SCORM 2004, the hidden item that wraps the course.
  explicit PlexoManifestWriter(const PlexoCourseModel& courseModel);

  /// An item under `parent` (null: under the default parent) and its title. An empty `identifierref` is left
  /// out. With a manifest, whose SCO stands in `stagedFolder`/`scoName` of the working folder:
  /// - its metadata file is copied to the top of the working folder, under a name built from its path,
  ///   which the item's metadata then names;
  /// - the files at the top of the SCO's folder that its manifest doesn't list move to the top of the
  ///   working folder, the later of two of one name replacing the earlier;
  /// - its launch data and time limit action follow, their element names in lower case in both versions.
  TzDOMNode WriteItem(const TzString& identifier, const TzString& title, const TzString& identifierref,
                      bool isVisible, TzDOMNode parent, const PlexoSCOManifest* manifest,
                      const TzString& stagedFolder);

  /// The one resource of a SCO, with every file that its manifest lists, as listed.
  void WriteResource(const TzString& stagedFolder, const PlexoSCOManifest& manifest, std::uint32_t index,
                     std::uint32_t moduleIndex, ItemKind kind);

  /// The fixed run-time data of a SCORM 1.2 item.
  void WriteScorm12ItemData(TzDOMNode item);

  /// Hides the LMS's own buttons at this item (ADL navigation presentation); never the previous button.
  void WritePresentation(TzDOMNode item, bool hideExitAll);

  [[nodiscard]] bool IsScorm2004() const { return version == PlexoManifestVersion::Scorm2004; }
  [[nodiscard]] PlexoManifestTree& GetTree() { return tree; }
  [[nodiscard]] TzDOMNode GetOrganizationNode() const { return organizationNode; }
  /// The hidden item that carries the course's rollup; null in SCORM 1.2.
  [[nodiscard]] TzDOMNode GetRootClusterNode() const { return rootClusterNode; }

 private:
  TzDOMNode WriteRoot();
  void WriteOrganizations(TzDOMNode root);
  void WriteItemMetadata(TzDOMNode item, const TzString& relativeFolder, const TzString& location);
  void MoveUnlistedFiles(const TzPath& scoFolder, const std::vector<TzString>& listed) const;

  const PlexoCourseModel& course;
  const PlexoManifestVersion version;
  const TzPath workingFolder;
  PlexoManifestTree tree;
  TzDOMNode organizationNode;
  TzDOMNode resourcesNode;
  TzDOMNode rootClusterNode;
  TzDOMNode itemParentNode;
};
