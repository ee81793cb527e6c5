// SPDX-License-Identifier: Apache-2.0
#include "host/xml/TzXMLParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RecordedProblems.h"
#include "support/TestSession.h"

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Reading {
  std::vector<std::string> events;
  std::vector<std::string> problems;
};

std::vector<std::string>& Events(void* userData) { return *static_cast<std::vector<std::string>*>(userData); }

/// Events read as "<name a=1>", "</name>" and "text".
Reading Read(const TzPath& document) {
  Reading reading;
  const RecordedProblems problems;
  TzXMLParser parser(0);
  parser.setSource(TzFile(document));
  parser.setUserData(&reading.events);
  parser.setElementHandler(
      [](void* data, const char* name, const char** attributes) {
        std::string event = "<"s + name;
        for (; *attributes != nullptr; attributes += 2) event += " "s + attributes[0] + "=" + attributes[1];
        Events(data).push_back(event + ">");
      },
      [](void* data, const char* name) { Events(data).push_back("</"s + name + ">"); });
  parser.setCharacterDataHandler([](void* data, const char* text, int length) {
    Events(data).emplace_back(text, static_cast<std::size_t>(length));
  });
  parser.parse();
  reading.problems = problems.Texts();
  return reading;
}

Reading Read(std::string_view text) {
  const TestFolder folder;
  return Read(folder.Write("imsmanifest.xml", text));
}

std::string Utf16(std::u16string_view units, bool bigEndian) {
  std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : units) {
    const char high = static_cast<char>(unit >> 8U);
    const char low = static_cast<char>(unit & 0xFFU);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

std::string Declared(const std::string& encoding, const std::string& text) {
  return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><t>" + text + "</t>";
}

TEST(TzXMLParser, ReadsTextInTheEncodingOfTheDocument) {
  const struct {
    const char* what;
    std::string document;
    std::string text;
  } cases[] = {
      {"nothing said", "<t>T\xC3\xBCr</t>", "Tür"},
      {"UTF-8 mark", "\xEF\xBB\xBF<t>T\xC3\xBCr</t>", "Tür"},
      {"UTF-8 mark before a stale declaration", "\xEF\xBB\xBF" + Declared("windows-1252", "T\xC3\xBCr"),
       "Tür"},
      {"UTF-16, little end first", Utf16(u"<t>T\u00FCr \U0001F6AA</t>", false), "Tür 🚪"},
      {"UTF-16, big end first", Utf16(u"<?xml version='1.0' encoding='utf-16'?><t>T\u00FCr</t>", true),
       "Tür"},
      {"UTF-16 mark before a stale declaration",
       Utf16(u"<?xml version='1.0' encoding='utf-8'?><t>T\u00FCr</t>", false), "Tür"},
      {"ISO-8859-1", Declared("ISO-8859-1", "T\xFCr"), "Tür"},
      {"windows-1252", Declared("Windows-1252", "\x80 5, \x93T\xFCr\x94"), "€ 5, “Tür”"},
      {"Shift_JIS, second byte as ']' or a back-slash", Declared("Shift_JIS", "\x83\x5D\x95\x5C"), "ゾ表"},
      {"Shift_JIS as Windows extends it", Declared("Shift_JIS", "\x87\x40 C:\\"), "① C:\\"},
      {"EUC-JP with three bytes", Declared("EUC-JP", "\x8F\xB0\xA1\xB0\xA1"), "丂亜"},
      {"Big5", Declared("Big5", "\xAA\xF9"), "門"},
      {"GBK", Declared("GBK", "\xC3\xC5"), "门"},
      {"GB18030 with two and four bytes", Declared("GB18030", "\xC3\xC5\x95\x32\x82\x36"), "门𠀀"},
      {"ISO-2022-JP, which shifts", Declared("ISO-2022-JP", "\x1B$B0!\x1B(B"), "亜"},
  };
  for (const auto& [what, document, text] : cases) {
    const Reading reading = Read(document);
    EXPECT_THAT(reading.events, ElementsAre("<t>", text, "</t>")) << what;
    EXPECT_THAT(reading.problems, IsEmpty()) << what;
  }
}

TEST(TzXMLParser, KeepsACharacterWholeThatLiesAcrossTwoPiecesOfTheFile) {
  std::string document = Declared("Shift_JIS", "");
  document.resize(document.size() - 4);
  // An odd number of bytes before it puts the pieces' border into some character.
  std::string expected(document.size() % 2 == 0 ? 1 : 0, 'x');
  document += expected;
  for (int count = 0; count < 100'000; ++count) {
    document += "\x95\x5C";
    expected += "表";
  }
  EXPECT_THAT(Read(document + "</t>").events, ElementsAre("<t>", expected, "</t>"));
}

TEST(TzXMLParser, RefusesBytesThatMeanNothingInTheEncoding) {
  const struct {
    const char* what;
    std::string document;
    const char* problem;
  } cases[] = {
      {"no such encoding", Declared("no-such", "x"), "line 1, column 31: unknown encoding"},
      {"UTF-8 without a declaration", "<t>T\xFCr</t>", "line 1, column 5: not well-formed (invalid token)"},
      {"windows-1252", Declared("windows-1252", "\x81"), "not a character of the declared encoding"},
      {"end within a character", Declared("Shift_JIS", "") + "\x95",
       "not a character of the declared encoding"},
  };
  for (const auto& [what, document, problem] : cases) {
    EXPECT_THAT(Read(document).problems, ElementsAre(HasSubstr(problem))) << what;
  }
}

TEST(TzXMLParser, HandsOutAdjacentTextInOnePiece) {
  const struct {
    const char* content;
    const char* text;
  } cases[] = {
      {"Doors &amp; exits", "Doors & exits"},
      {"&lt;&#66;&#x43;&gt;&quot;&apos;", "<BC>\"'"},
      {"one\r\ntwo\rthree\nfour", "one\ntwo\nthree\nfour"},
      {"a <![CDATA[<b> & ]]>c", "a <b> & c"},
      {"a<!-- between -->b<?pi x?>c", "abc"},
      {"  ", "  "},
  };
  for (const auto& [content, text] : cases) {
    EXPECT_THAT(Read("<t>"s + content + "</t>").events, ElementsAre("<t>", text, "</t>")) << content;
  }
  EXPECT_THAT(Read("<t>a<b/>c</t>").events, ElementsAre("<t>", "a", "<b>", "</b>", "c", "</t>"));
}

TEST(TzXMLParser, LeavesNamesAsWritten) {
  EXPECT_THAT(Read("<a:item a:b='1' xmlns:a='u' c='x&#10;y&lt;'/>").events,
              ElementsAre("<a:item a:b=1 xmlns:a=u c=x\ny<>", "</a:item>"));
}

TEST(TzXMLParser, HandsOutWhatStoodBeforeAnErrorAndNothingAfterIt) {
  const Reading reading = Read("<a>\n <b>text</b>\n</c><d/>");
  EXPECT_THAT(reading.events, ElementsAre("<a>", "\n ", "<b>", "text", "</b>"));
  EXPECT_THAT(reading.problems, ElementsAre("imsmanifest.xml: line 3, column 3: mismatched tag"));

  EXPECT_THAT(Read("").problems, ElementsAre("imsmanifest.xml: line 1, column 1: no element found"));
  EXPECT_THAT(Read(TzPath("/no/such/imsmanifest.xml")).problems,
              ElementsAre("imsmanifest.xml: can't be opened"));
}

std::string Nested(int depth) {
  std::string text;
  for (int level = 1; level < depth; ++level) text += "<e>";
  text += "<e/>";
  for (int level = 1; level < depth; ++level) text += "</e>";
  return text;
}

TEST(TzXMLParser, RefusesHostileDocumentsBeforeTheyCost) {
  const struct {
    const char* what;
    std::string document;
    const char* problem;
  } cases[] = {
      {"entities that multiply",
       "<!DOCTYPE t [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;'>]><t>&b;</t>",
       "a document type declaration isn't allowed"},
      {"a file from outside", "<!DOCTYPE t [<!ENTITY a SYSTEM 'file:///etc/passwd'>]><t>&a;</t>",
       "a document type declaration isn't allowed"},
      {"size", "<t>" + std::string(TzXMLParser::kMaximumSize, ' ') + "</t>", "larger than 16 MiB"},
  };
  for (const auto& [what, document, problem] : cases) {
    const Reading reading = Read(document);
    EXPECT_THAT(reading.events, IsEmpty()) << what;
    EXPECT_THAT(reading.problems, ElementsAre(HasSubstr(problem))) << what;
  }

  EXPECT_THAT(Read(Nested(TzXMLParser::kMaximumDepth)).problems, IsEmpty());
  // Elements beside each other are no depth.
  EXPECT_THAT(Read("<t>" + Nested(200) + Nested(200) + "</t>").problems, IsEmpty());
  const Reading deep = Read(Nested(TzXMLParser::kMaximumDepth + 1));
  EXPECT_EQ(deep.events.size(), static_cast<std::size_t>(TzXMLParser::kMaximumDepth));
  EXPECT_THAT(deep.problems, ElementsAre(HasSubstr("elements are nested deeper than 256")));
}

TEST(TzXMLParser, LivesWithoutHandlers) {
  const TestFolder folder;
  const RecordedProblems problems;
  TzXMLParser parser(0);
  parser.setSource(TzFile(folder.Write("imsmanifest.xml", "<a>text<b/></a>")));
  parser.parse();
  EXPECT_THAT(problems.Texts(), IsEmpty());
}

TEST(TzXMLParser, TellsTheLineOfTheTagWhileAHandlerRuns) {
  const TestFolder folder;
  struct Lines {
    explicit Lines(const TzFile& source) : parser(0) {
      parser.setSource(source);
      parser.setUserData(this);
      parser.setElementHandler(
          [](void* self, const char*, const char**) { static_cast<Lines*>(self)->Note(); },
          [](void* self, const char*) { static_cast<Lines*>(self)->Note(); });
      parser.setCharacterDataHandler([](void* self, const char*, int) { static_cast<Lines*>(self)->Note(); });
      parser.parse();
    }
    void Note() { seen.push_back(parser.GetLine()); }

    TzXMLParser parser;
    std::vector<int> seen;
  };
  const Lines whole{TzFile(folder.Write("a.xml", "<?xml version='1.0'?>\n<a\n x='1'>\r\n\n<b/></a>"))};
  // The start of a, the text before b, b, and the end of a.
  EXPECT_THAT(whole.seen, ElementsAre(2, 5, 5, 5, 5));
  EXPECT_EQ(whole.parser.GetLine(), 0);

  const Lines broken{TzFile(folder.Write("b.xml", "<a>\n\n</b>"))};
  EXPECT_EQ(broken.parser.GetLine(), 3);
}

}  // namespace
