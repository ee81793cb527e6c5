// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoManifestTree.h"

#include <iterator>

TzDOMNode PlexoManifestTree::WriteNode(std::string_view name, TzDOMNode parent, PlexoAttributes attributes,
                                       const TzString& text) {
  const TzDOMNode node = dom.CreateElementNode(name, parent);
  for (auto attribute = std::rbegin(attributes); attribute != std::rend(attributes); ++attribute) {
    if (!attribute->name.empty()) dom.CreateAttributeNode(attribute->name, attribute->value, node);
  }
  if (!text.IsEmpty()) dom.CreateTextNode(text, node);
  return node;
}
