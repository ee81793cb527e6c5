// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What a manifest's names belong to, whatever their prefix and edition.
enum class PlexoVocabulary {
  Packaging,
  Adlcp,
  Sequencing,
  AdlSequencing,
  Navigation,
  Metadata,
  Instance,
  Other
};

/// The edition that a namespace belongs to.
enum class PlexoNamespaceEdition { Either, Scorm12, Scorm2004 };

struct PlexoManifestAttribute {
  /// `Packaging` without a prefix.
  PlexoVocabulary vocabulary = PlexoVocabulary::Packaging;
  /// Without its prefix.
  std::string name;
  /// As written; of an identifier or a reference to one, without the blanks around it.
  std::string value;
  /// Among the attributes as written, declarations of namespaces too; from 1 on.
  int number = 1;
};

/// One element of a manifest. Elements belong to their `PlexoManifestDocument`, and live as long as it.
struct PlexoManifestElement {
  PlexoVocabulary vocabulary = PlexoVocabulary::Other;
  PlexoNamespaceEdition edition = PlexoNamespaceEdition::Either;
  /// As written, and without its prefix.
  std::string qualifiedName;
  std::string name;
  /// Without the blanks around it.
  std::string text;
  /// Where its start tag begins.
  int line = 0;
  /// Among its siblings of the same name as written, from 1 on.
  int number = 1;
  std::vector<PlexoManifestAttribute> attributes;
  PlexoManifestElement* parent = nullptr;
  std::vector<PlexoManifestElement*> children;

  [[nodiscard]] bool Is(PlexoVocabulary ofVocabulary, std::string_view ofName) const {
    return vocabulary == ofVocabulary && name == ofName;
  }
  /// The first child of this name; null if there is none.
  [[nodiscard]] const PlexoManifestElement* Find(PlexoVocabulary ofVocabulary, std::string_view ofName) const;
  [[nodiscard]] std::vector<const PlexoManifestElement*> FindAll(PlexoVocabulary ofVocabulary,
                                                                 std::string_view ofName) const;
  /// The value of an attribute; null if it is absent.
  [[nodiscard]] const std::string* GetAttribute(std::string_view ofName) const;
  [[nodiscard]] const std::string* GetAttribute(PlexoVocabulary ofVocabulary, std::string_view ofName) const;
  /// The value of an attribute without a prefix; the default if it is absent.
  [[nodiscard]] std::string GetValue(std::string_view ofName, std::string_view otherwise = {}) const;
  /// "/manifest/organizations[1]/organization[2]": an XPath in the names as written. Of one that is longer
  /// than anybody reads, the end.
  [[nodiscard]] std::string GetPath() const;
};
