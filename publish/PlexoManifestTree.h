// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <string_view>

#include "host/xml/TzXMLDOMCreator.h"

/// One attribute of an element to be written.
struct PlexoAttribute {
  std::string_view name;
  TzString value;
};

using PlexoAttributes = std::initializer_list<PlexoAttribute>;

/// The small layer through which every part of a manifest is written.
class PlexoManifestTree {
 public:
  /// A null parent makes the document's root. An attribute whose name is empty is left out, so that a writer
  /// can list one that depends. The order of attributes in the result is not the one given. An empty text
  /// writes none.
  TzDOMNode WriteNode(std::string_view name, TzDOMNode parent, PlexoAttributes attributes,
                      const TzString& text = {});
  TzDOMNode WriteEmptyNode(std::string_view name, TzDOMNode parent) { return WriteNode(name, parent, {}); }
  TzDOMNode WriteTextNode(std::string_view name, const TzString& text, TzDOMNode parent) {
    return WriteNode(name, parent, {}, text);
  }

  void Serialize(ITzDOMSerializer& serializer) const { dom.Serialize(serializer, 1, 1); }

 private:
  TzXMLDOMCreator dom;
};
