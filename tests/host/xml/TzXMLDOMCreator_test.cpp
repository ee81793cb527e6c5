// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzXMLDOMCreator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "host/xml/TzXMLParser.h"
#include "support/TestSession.h"

namespace {

class Collector : public ITzDOMSerializer {
 public:
  void Write(const TzString& piece) override { text += piece; }
  TzString text;
};

std::string Serialize(const TzXMLDOMCreator& creator, int declaration, int indent) {
  Collector collector;
  creator.Serialize(collector, declaration, indent);
  return collector.text.GetUTF8String();
}

TEST(TzXMLDOMCreator, WritesTheTreeAsItWasBuilt) {
  TzXMLDOMCreator creator;
  const TzDOMNode root = creator.CreateElementNode("manifest", {});
  creator.CreateAttributeNode("identifier", "C", root);
  creator.CreateAttributeNode("adlcp:x", "", root);
  creator.CreateTextNode("Doors", creator.CreateElementNode("title", root));
  creator.CreateElementNode("item", creator.CreateElementNode("organization", root));
  EXPECT_TRUE(creator.CreateElementNode("second", {}).IsNull());

  EXPECT_EQ(Serialize(creator, 1, 1), R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest identifier="C" adlcp:x="">
  <title>Doors</title>
  <organization>
    <item />
  </organization>
</manifest>
)");
  EXPECT_EQ(Serialize(creator, 0, 0), R"(<manifest identifier="C" adlcp:x=""><title>Doors</title>)"
                                      "<organization><item/></organization></manifest>");
}

TEST(TzXMLDOMCreator, AddsNoWhiteSpaceToAnElementThatHoldsText) {
  TzXMLDOMCreator creator;
  const TzDOMNode root = creator.CreateElementNode("p", {});
  creator.CreateElementNode("a", creator.CreateElementNode("b", root));
  creator.CreateElementNode("c", root);
  creator.CreateTextNode("text", root);
  creator.CreateElementNode("d", root);
  creator.CreateElementNode("e", root);
  EXPECT_EQ(Serialize(creator, 0, 1), "<p><b>\n    <a />\n  </b><c />text<d /><e /></p>\n");
}

struct Read {
  std::string attribute;
  std::string text;
};

/// What a reader makes of a value and a text after they were written.
Read RoundTrip(const TzString& content) {
  TzXMLDOMCreator creator;
  const TzDOMNode root = creator.CreateElementNode("t", {});
  creator.CreateAttributeNode("a", content, root);
  creator.CreateTextNode(content, root);
  const TestFolder folder;
  Read read;
  TzXMLParser parser(0);
  parser.setSource(TzFile(folder.Write("out.xml", Serialize(creator, 1, 1))));
  parser.setUserData(&read);
  parser.setElementHandler(
      [](void* data, const char*, const char** attributes) {
        static_cast<Read*>(data)->attribute = attributes[1];
      },
      nullptr);
  parser.setCharacterDataHandler([](void* data, const char* text, int length) {
    static_cast<Read*>(data)->text.append(text, static_cast<std::size_t>(length));
  });
  parser.parse();
  return read;
}

TEST(TzXMLDOMCreator, TextsAndValuesSurviveARoundTrip) {
  const char* const cases[] = {
      "Doors & <exits> \"a\" 'b' ]]>",
      "&amp; &#10;",
      "tab\tline\nreturn\rboth\r\n",
      " blanks  ",
      "Tür 表 🚪",
      "\x7F",
  };
  for (const char* content : cases) {
    const Read read = RoundTrip(content);
    EXPECT_EQ(read.attribute, content);
    EXPECT_EQ(read.text, content);
  }
}

TEST(TzXMLDOMCreator, LeavesOutWhatIsNoCharacterOfXML) {
  const std::pair<std::u16string, const char*> cases[] = {
      {{u'a', 0, 1, 8, 0x0B, 0x1F, u'b'}, "ab"},
      {{u'a', 0xFFFE, 0xFFFF, u'b'}, "ab"},
      {{u'a', 0xD83D, u'b', 0xDEAA, 0xD83D}, "ab"},
      {{0xDEAA, 0xD83D, 0xD83D, 0xDEAA}, "🚪"},
      {{0xFFFD}, "\xEF\xBF\xBD"},
  };
  for (const auto& [units, expected] : cases) {
    const Read read = RoundTrip(TzString(units));
    EXPECT_EQ(read.attribute, expected);
    EXPECT_EQ(read.text, expected);
  }
}

TEST(TzXMLDOMCreator, CutsItsPiecesBetweenCharacters) {
  for (const char* character : {"x", "ü", "表", "🚪"}) {
    for (int shift = 0; shift < 4; ++shift) {
      std::string text(static_cast<std::size_t>(shift), '-');
      for (int count = 0; count < 5000; ++count) text += character;
      const Read read = RoundTrip(text);
      EXPECT_EQ(read.text, text) << character << ", " << shift;
    }
  }
}

}  // namespace
