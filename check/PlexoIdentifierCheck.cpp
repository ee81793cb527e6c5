// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoIdentifierCheck.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// A name without colons (Namespaces in XML 1.0); of characters beyond ASCII all count as letters.
bool IsNCName(std::string_view text) {
  const auto isLetter = [](char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '_' || static_cast<signed char>(character) < 0;
  };
  return !text.empty() && isLetter(text.front()) &&
         std::all_of(text.begin(), text.end(), [&](char character) {
           return isLetter(character) || IsDigit(character) || character == '-' || character == '.';
         });
}

class IdentifierCheck {
 public:
  IdentifierCheck(const PlexoCheckedPackage& checked, PlexoFindingList& list)
      : package(checked), findings(list) {}

  void Run() {
    for (const PlexoManifestElement& element : package.manifest.GetElements()) {
      if (element.vocabulary == Packaging) Declare(element, "identifier");
      if (element.Is(Sequencing, "sequencing")) Declare(element, "ID");
    }
    for (const auto& [identifier, element] : malformed) CheckForm(identifier, *element);
    CheckItems();
    CheckDependencies();
    CheckDefault();
    CheckSharedSequencing();
  }

 private:
  void Declare(const PlexoManifestElement& element, std::string_view attribute) {
    const std::string* identifier = element.GetAttribute(attribute);
    if (identifier == nullptr) return;
    const auto [first, isNew] = declared.try_emplace(*identifier, element.line);
    if (!isNew) {
      findings.AddElement(IdentifierTwice, element, {*identifier, std::to_string(first->second)});
      // One finding for each identifier.
      malformed.erase(*identifier);
      return;
    }
    if (element.Is(Sequencing, "sequencing")) sharedSequencing.insert(*identifier);
    if (!IsNCName(*identifier)) malformed.emplace(*identifier, &element);
  }

  void CheckForm(const std::string& identifier, const PlexoManifestElement& element) {
    if (element.parent == nullptr && !identifier.empty() && IsDigit(identifier.front())) {
      findings.AddElement(ManifestIdentifierDigit, element, {identifier});
    } else {
      findings.AddElement(IdentifierMalformed, element, {element.name, identifier});
    }
  }

  void CheckItems() {
    for (const PlexoManifestElement* item : package.GetItems()) {
      const std::string* reference = item->GetAttribute("identifierref");
      if (reference == nullptr || reference->empty() || package.FindResource(*reference) != nullptr ||
          package.IsNested(*reference)) {
        continue;
      }
      findings.AddElement(ItemResourceUnknown, *item, {item->GetValue("identifier"), *reference});
    }
  }

  void CheckDependencies() {
    for (const PlexoResource& resource : package.GetResources()) {
      for (const auto& [element, identifier] : resource.dependencies) {
        if (package.FindResource(identifier) != nullptr || package.IsNested(identifier)) continue;
        findings.AddElement(DependencyUnknown, *element, {resource.identifier, identifier});
      }
    }
  }

  void CheckDefault() {
    const auto* list = package.manifest.GetRoot()->Find(Packaging, "organizations");
    const std::string* name = list != nullptr ? list->GetAttribute("default") : nullptr;
    if (name == nullptr) return;
    const auto& organizations = package.GetOrganizations();
    const bool isKnown = std::any_of(
        organizations.begin(), organizations.end(),
        [name](const auto* organization) { return organization->GetValue("identifier") == *name; });
    if (!isKnown) findings.AddElement(DefaultOrganizationUnknown, *list, {*name});
  }

  void CheckSharedSequencing() {
    for (const PlexoManifestElement& element : package.manifest.GetElements()) {
      if (!element.Is(Sequencing, "sequencing")) continue;
      const std::string* reference = element.GetAttribute("IDRef");
      if (reference == nullptr || sharedSequencing.contains(*reference)) continue;
      findings.AddElement(SharedSequencingUnknown, element, {*reference});
    }
  }

  const PlexoCheckedPackage& package;
  PlexoFindingList& findings;
  /// Identifiers and the line that declares each first.
  std::unordered_map<std::string, int> declared;
  /// In their order, so that findings have one.
  std::map<std::string, const PlexoManifestElement*> malformed;
  std::unordered_set<std::string> sharedSequencing;
};

}  // namespace

void PlexoIdentifierCheck::Run(const PlexoCheckedPackage& package, PlexoFindingList& findings) {
  IdentifierCheck(package, findings).Run();
}
