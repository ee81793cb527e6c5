// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

#include "adopt/PlexoAdopter.h"
#include "host/files/TzPath.h"

/// The packages under tests/data, each in the style of some maker, as archives.
std::vector<std::string> DataPackageNames();
/// Packs one of them. A manifest that names windows-1252 is written in it; what a desktop system leaves
/// behind is added to a package that lies in a folder.
std::string BuildDataPackage(const std::string& name);

/// The files of an archive by their names.
std::map<std::string, std::string> ReadPackage(const TzPath& archive);

/// What an adoption came to, with the packages that it wrote.
struct Adoption {
  PlexoAdoptResult result;
  /// "PLX-811 the manifest: ...", those of the findings and those of the reasons.
  std::vector<std::string> findings;
  std::vector<std::string> reasons;
  std::vector<PlexoAdoptedItem> items;
  /// The archives' bytes, in order; empty if the package was refused.
  std::vector<std::string> archives;
  std::vector<std::map<std::string, std::string>> packages;

  [[nodiscard]] const std::string& Manifest(std::size_t index = 0) const {
    return packages.at(index).at("imsmanifest.xml");
  }
  [[nodiscard]] std::vector<std::string> FileNames(std::size_t index = 0) const;
};

/// Adopts an archive; the request's own path doesn't matter.
Adoption Adopt(const std::string& archive, PlexoAdoptRequest request = {});
/// A request that takes any number of items, for a course of this edition.
PlexoAdoptRequest ForList();
PlexoAdoptRequest ForList(PlexoCourseEdition edition);
