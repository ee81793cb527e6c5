// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/files/TzPath.h"

/// A SCO package in the making: a manifest of SCORM 2004 with one item, unless told otherwise.
class ScoZip {
 public:
  explicit ScoZip(std::string packageName) : name(std::move(packageName)) {}

  ScoZip& Scorm12();
  ScoZip& Scorm2004();
  /// The item's title and its launch file.
  ScoZip& Item(const std::string& itemTitle, const std::string& launchFile);
  /// A file that the manifest lists.
  ScoZip& File(const std::string& path, const std::string& content);
  /// Elements for the item, in the manifest's own notation.
  ScoZip& ItemContent(const std::string& xml);
  /// This text in place of the manifest.
  ScoZip& Manifest(const std::string& text);
  /// All entries stand in this folder, the manifest too.
  ScoZip& InFolder(const std::string& folder);
  ScoZip& WithoutManifest();

  [[nodiscard]] std::string GetManifest() const;
  [[nodiscard]] std::string Build() const;
  /// Writes NAME.zip into the folder.
  TzPath Save(const TzPath& folder) const;

 private:
  struct Entry {
    std::string path;
    std::string content;
  };

  std::string name;
  bool is2004 = true;
  std::string title = "Untitled";
  std::string href = "index.htm";
  std::string itemContent;
  std::string prefix;
  std::vector<Entry> files;
  std::optional<std::string> manifest;
  bool hasManifest = true;
};

/// Bytes that no archiver makes smaller, the same for the same seed.
std::string MakeNoise(std::size_t size, unsigned seed);
