// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string_view>

#include "host/text/TzString.h"
#include "host/xml/ITzDOMSerializer.h"

/// A node of a document under construction. Valid as long as its creator; null where there is none.
class TzDOMNode {
 public:
  TzDOMNode() = default;
  [[nodiscard]] bool IsNull() const { return handle == nullptr; }

 private:
  friend class TzXMLDOMCreator;
  explicit TzDOMNode(void* node) : handle(node) {}
  void* handle = nullptr;
};

/// Builds an XML document and writes it as text.
///
/// The tree isn't namespace-aware: element and attribute names carry their prefixes as written, and names are
/// not checked. Characters that XML 1.0 doesn't allow in a document are left out of texts and values.
class TzXMLDOMCreator {
 public:
  TzXMLDOMCreator();
  ~TzXMLDOMCreator();
  TzXMLDOMCreator(const TzXMLDOMCreator&) = delete;
  TzXMLDOMCreator& operator=(const TzXMLDOMCreator&) = delete;

  /// Makes an element, the last child of its parent; a null parent makes the document's root. Constant time.
  /// The name is UTF-8. Null if it can't be made: no memory, or a second root.
  TzDOMNode CreateElementNode(std::string_view name, TzDOMNode parent);
  /// Gives the element an attribute, behind those it has. The caller doesn't repeat a name.
  void CreateAttributeNode(std::string_view name, const TzString& value, TzDOMNode element);
  /// Appends text to the element.
  void CreateTextNode(const TzString& text, TzDOMNode element);

  /// Hands the document's text to the serializer: with an XML declaration (version 1.0, encoding UTF-8) if
  /// `declaration` isn't 0, indented by two blanks a level if `indent` isn't 0. An element that holds text is
  /// never given white space of the indentation.
  void Serialize(ITzDOMSerializer& serializer, int declaration, int indent) const;

 private:
  struct Document;
  std::unique_ptr<Document> document;
};
