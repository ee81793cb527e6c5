// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoManifestElement.h"

#include <algorithm>

const PlexoManifestElement* PlexoManifestElement::Find(PlexoVocabulary ofVocabulary,
                                                       std::string_view ofName) const {
  const auto found = std::find_if(children.begin(), children.end(),
                                  [&](const auto* child) { return child->Is(ofVocabulary, ofName); });
  return found != children.end() ? *found : nullptr;
}

std::vector<const PlexoManifestElement*> PlexoManifestElement::FindAll(PlexoVocabulary ofVocabulary,
                                                                       std::string_view ofName) const {
  std::vector<const PlexoManifestElement*> found;
  for (const PlexoManifestElement* child : children) {
    if (child->Is(ofVocabulary, ofName)) found.push_back(child);
  }
  return found;
}

const std::string* PlexoManifestElement::GetAttribute(std::string_view ofName) const {
  return GetAttribute(PlexoVocabulary::Packaging, ofName);
}

const std::string* PlexoManifestElement::GetAttribute(PlexoVocabulary ofVocabulary,
                                                      std::string_view ofName) const {
  const auto found = std::find_if(attributes.begin(), attributes.end(), [&](const auto& attribute) {
    return attribute.vocabulary == ofVocabulary && attribute.name == ofName;
  });
  return found != attributes.end() ? &found->value : nullptr;
}

std::string PlexoManifestElement::GetValue(std::string_view ofName, std::string_view otherwise) const {
  const std::string* value = GetAttribute(ofName);
  return value != nullptr ? *value : std::string(otherwise);
}

std::string PlexoManifestElement::GetPath() const {
  constexpr std::size_t kMostBytes = 4000;
  std::string path;
  for (const PlexoManifestElement* at = this; at != nullptr; at = at->parent) {
    std::string step = "/" + at->qualifiedName;
    if (at->parent != nullptr) step += "[" + std::to_string(at->number) + "]";
    if (step.size() + path.size() > kMostBytes) return "..." + path;
    path.insert(0, step);
  }
  return path;
}
