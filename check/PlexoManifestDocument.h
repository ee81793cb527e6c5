// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <string_view>

#include "check/PlexoManifestElement.h"
#include "host/files/TzPath.h"

/// A manifest as a tree of its elements, each with the line it stands in.
///
/// Namespaces are resolved (Namespaces in XML 1.0). Elements without one count as `Packaging`, and so does a
/// namespace that isn't known but is that of the document's element; of a known one that isn't `Packaging`
/// but has the document's element too, the names that packaging has do. A prefix that SCORM uses by custom
/// stands for its vocabulary where it is bound to nothing that is known. Comments and processing instructions
/// are left out. Guarantees: the limits of `TzXMLParser` and those below; of a document that breaks one of
/// these, what stood before is kept.
class PlexoManifestDocument {
 public:
  static constexpr std::size_t kMaximumElements = 500'000;
  static constexpr std::size_t kMaximumAttributes = 1000;
  /// What the xml:base addresses around all elements may add up to, in bytes: each reference is resolved
  /// against those around it.
  static constexpr std::size_t kMaximumBaseBytes = std::size_t{32} << 20U;

  PlexoManifestDocument() = default;
  PlexoManifestDocument(const PlexoManifestDocument&) = delete;
  PlexoManifestDocument& operator=(const PlexoManifestDocument&) = delete;

  /// Reads the file; called once. After an error, what stood before it can be looked at.
  void Read(const TzPath& file);

  /// Null if nothing was read.
  [[nodiscard]] const PlexoManifestElement* GetRoot() const {
    return elements.empty() ? nullptr : &elements.front();
  }
  /// In document order.
  [[nodiscard]] const std::deque<PlexoManifestElement>& GetElements() const { return elements; }
  /// What ended the reading, empty if nothing did; and its line, 0 if it has none.
  [[nodiscard]] const std::string& GetError() const { return error; }
  [[nodiscard]] int GetErrorLine() const { return errorLine; }
  /// The edition of the first namespace that is declared for the vocabulary; `Either` if none tells one.
  [[nodiscard]] PlexoNamespaceEdition GetDeclaredEdition(PlexoVocabulary vocabulary) const;
  /// The limit that ended the reading, "more than 500000 elements"; empty if none did.
  [[nodiscard]] const std::string& GetExcess() const { return excess; }

  /// The namespace of the document's element, if that is a manifest; empty if it has none.
  [[nodiscard]] const std::string& GetRootNamespace() const { return rootNamespace; }

  /// The namespace that manifests of these editions have.
  static std::string_view GetPackagingNamespace(PlexoNamespaceEdition edition);

 private:
  class Reading;

  std::deque<PlexoManifestElement> elements;
  std::map<PlexoVocabulary, PlexoNamespaceEdition> declaredEditions;
  std::string rootNamespace;
  std::string error;
  int errorLine = 0;
  std::string excess;
};
