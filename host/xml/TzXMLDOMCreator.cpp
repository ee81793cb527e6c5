// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzXMLDOMCreator.h"

#include <algorithm>
#include <pugixml.hpp>
#include <string>

namespace {

constexpr bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// True for a unit that is a character of XML 1.0 by itself (clause 2.2).
constexpr bool IsCharacter(char16_t unit) {
  if (unit < 0x20) return unit == u'\t' || unit == u'\n' || unit == u'\r';
  return unit < 0xD800 || (unit >= 0xE000 && unit < 0xFFFE);
}

const char16_t* GetTextEscape(char16_t unit) {
  switch (unit) {
    case u'&':
      return u"&amp;";
    case u'<':
      return u"&lt;";
    case u'>':
      return u"&gt;";
    case u'\r':
      return u"&#13;";
    default:
      return nullptr;
  }
}

// A reader turns white space that is written plainly in a value into blanks.
const char16_t* GetValueEscape(char16_t unit) {
  switch (unit) {
    case u'"':
      return u"&quot;";
    case u'\t':
      return u"&#9;";
    case u'\n':
      return u"&#10;";
    default:
      return GetTextEscape(unit);
  }
}

/// Stands in every text and value as it is.
constexpr bool IsPlain(char16_t unit) {
  return unit >= 0x20 && unit < 0x80 && unit != u'&' && unit != u'<' && unit != u'>' && unit != u'"';
}

/// The text as it stands in a document, in UTF-8.
std::string GetMarkup(const TzString& text, const char16_t* (*escapeOf)(char16_t)) {
  const std::u16string& units = text.GetUnits();
  if (std::all_of(units.begin(), units.end(), IsPlain)) return text.GetUTF8String();
  std::u16string markup;
  markup.reserve(units.size());
  for (std::size_t index = 0; index < units.size(); ++index) {
    const char16_t unit = units[index];
    if (const char16_t* escape = escapeOf(unit); escape != nullptr) {
      markup += escape;
    } else if (IsCharacter(unit)) {
      markup += unit;
    } else if (IsHighSurrogate(unit) && index + 1 < units.size() && IsLowSurrogate(units[index + 1])) {
      markup += unit;
      markup += units[++index];
    }
  }
  return TzString(std::move(markup)).GetUTF8String();
}

/// The part of a text that holds whole characters only.
std::string_view GetWholeCharacters(std::string_view utf8) {
  std::size_t start = utf8.size();
  while (start > 0 && utf8.size() - start < 4) {
    --start;
    const auto byte = static_cast<unsigned char>(utf8[start]);
    if (byte < 0x80) return utf8;
    if (byte < 0xC0) continue;
    const std::size_t length = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return utf8.size() - start < length ? utf8.substr(0, start) : utf8;
  }
  return utf8;
}

/// pugixml cuts its text anywhere; the serializer's pieces are cut between characters.
class Writer : public pugi::xml_writer {
 public:
  explicit Writer(ITzDOMSerializer& target) : serializer(target) {}

  void write(const void* data, std::size_t size) override {
    pending.append(static_cast<const char*>(data), size);
    const std::string_view whole = GetWholeCharacters(pending);
    serializer.Write(TzString(whole));
    pending.erase(0, whole.size());
  }

 private:
  ITzDOMSerializer& serializer;
  std::string pending;
};

// pugixml breaks the line around an element unless text stands next to it. So that no white space gets into
// an element that holds text, each of its children elements stands between two texts, empty ones where need
// be.
bool HoldsText(pugi::xml_node element) { return element.first_child().type() == pugi::node_pcdata; }

void StartHoldingText(pugi::xml_node element) {
  for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
    element.insert_child_before(pugi::node_pcdata, child);
  }
}

}  // namespace

struct TzXMLDOMCreator::Document {
  pugi::xml_document tree;

  static pugi::xml_node Resolve(TzDOMNode node) {
    return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node.handle));
  }
};

TzXMLDOMCreator::TzXMLDOMCreator() : document(std::make_unique<Document>()) {}

TzXMLDOMCreator::~TzXMLDOMCreator() = default;

TzDOMNode TzXMLDOMCreator::CreateElementNode(std::string_view name, TzDOMNode parent) {
  if (parent.IsNull() && document->tree.document_element()) return {};
  pugi::xml_node parentNode = parent.IsNull() ? document->tree : Document::Resolve(parent);
  pugi::xml_node element = parentNode.append_child(pugi::node_element);
  element.set_name(std::string(name).c_str());
  if (HoldsText(parentNode)) parentNode.append_child(pugi::node_pcdata);
  return TzDOMNode(element.internal_object());
}

void TzXMLDOMCreator::CreateAttributeNode(std::string_view name, const TzString& value, TzDOMNode element) {
  pugi::xml_attribute attribute = Document::Resolve(element).append_attribute(std::string(name).c_str());
  attribute.set_value(GetMarkup(value, GetValueEscape).c_str());
}

void TzXMLDOMCreator::CreateTextNode(const TzString& text, TzDOMNode element) {
  const std::string markup = GetMarkup(text, GetTextEscape);
  if (markup.empty()) return;
  pugi::xml_node node = Document::Resolve(element);
  if (!HoldsText(node)) StartHoldingText(node);
  node.append_child(pugi::node_pcdata).set_value(markup.c_str());
}

void TzXMLDOMCreator::Serialize(ITzDOMSerializer& serializer, int declaration, int indent) const {
  // Texts and values are markup already; pugixml's own escaping would write a carriage return plainly.
  const unsigned int layout = indent != 0 ? pugi::format_indent : pugi::format_raw;
  const unsigned int format = layout | pugi::format_no_escapes | pugi::format_no_declaration;
  if (declaration != 0) serializer.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  Writer writer(serializer);
  document->tree.print(writer, "  ", format, pugi::encoding_utf8);
}
