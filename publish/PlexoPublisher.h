// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/PlexoCourseModel.h"
#include "publish/PlexoManifestWriter.h"

/// Turns the course into one SCORM package: a ZIP of the working folder, with a generated `imsmanifest.xml`
/// and the published schema documents.
///
/// Publishing changes the working folder (the manifest, the schema documents and sorted files are put there)
/// and of the course nothing but the dirty mark. It can be repeated: the same course gives the same manifest.
/// Blocks until done; results are 0 for success.
class PlexoPublisher {
 public:
  /// The process's publisher, made on first use. Null only without memory.
  static PlexoPublisher* GetPublisher();

  /// Writes the manifest, copies the schema documents, and packs the working folder into the course's publish
  /// folder under its package name, replacing a package there. A failed schema copy shows a box, and the
  /// package is made all the same, unless the disk of the working folder is full; a failed packing shows a
  /// box and returns the packer's code.
  [[nodiscard]] int PublishPackage();

  /// Generates `imsmanifest.xml` and writes it to the top of the working folder.
  [[nodiscard]] int WriteManifest();

 private:
  [[nodiscard]] static int WriteManifestFile(const PlexoCourseModel& course, TzString& text);
};
