// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "host/files/TzPath.h"
#include "support/RawZip.h"

/// A minimal SCORM package without a fault, for a test to change one thing of: two SCOs in the folders "a"
/// and "b", launched by the items FIRST and SECOND. In the manifest the comments "<!--first-->" and
/// "<!--second-->" mark the place behind each item's title, "<!--items-->" that behind the items,
/// "<!--file-->" that behind the last file.
class CheckedPackage {
 public:
  static CheckedPackage Scorm12();
  static CheckedPackage Scorm2004();

  /// Puts other text in place of the only occurrence of `find` in the manifest.
  CheckedPackage& Replace(std::string_view find, const std::string& replacement);
  /// Removes what stands in the manifest from the first of these texts to the end of the other.
  CheckedPackage& Cut(std::string_view from, std::string_view to);
  /// Puts text at a mark: "second".
  CheckedPackage& At(const std::string& mark, const std::string& text) {
    return Replace("<!--" + mark + "-->", text);
  }
  /// Adds sequencing to an item: "first".
  CheckedPackage& Sequence(const std::string& mark, const std::string& content);
  /// Adds a file, or gives one another content.
  CheckedPackage& File(const std::string& name, const std::string& content);
  /// The same, with a file element for it.
  CheckedPackage& Listed(const std::string& name, const std::string& content = "x");
  CheckedPackage& Entry(const RawEntry& entry);
  CheckedPackage& Rename(const std::string& name, const std::string& newName);
  CheckedPackage& Remove(const std::string& name);
  /// Ends the archive in the form that holds more than 65,535 entries.
  CheckedPackage& Zip64();

  [[nodiscard]] std::string Build() const { return archive.Build(); }

  /// A page that calls the API, and sets these elements of the data model.
  static std::string Page2004(const std::string& names);

 private:
  CheckedPackage(const std::string& manifest, const std::string& page);
  RawEntry& Find(const std::string& name);

  RawZip archive;
};
