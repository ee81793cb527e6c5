// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoReferenceScan.h"

#include <gtest/gtest.h>

namespace {

/// The addresses, each with a blank behind it; those below a base as "BASE+ADDRESS".
std::string Scan(const std::string& text, std::size_t pieceSize) {
  std::string found;
  PlexoReferenceScan scan([&found](std::string_view base, std::string_view address) {
    if (!base.empty()) found.append(base).append("+");
    found.append(address).append(" ");
  });
  for (std::size_t at = 0; at < text.size(); at += pieceSize) {
    const std::string piece = text.substr(at, pieceSize);
    scan.Feed(std::as_bytes(std::span(piece)));
  }
  scan.Finish();
  return found;
}

TEST(PlexoReferenceScan, FindsTheAddressesThatPagesAndStyleSheetsState) {
  const struct {
    const char* text;
    const char* addresses;
  } cases[] = {
      {"<img src=\"a.png\" alt='src'>", "a.png "},
      {"<A HREF = 'b.htm?x=1&amp;y=2#top'>", "b.htm?x=1&y=2#top "},
      {"<script src=c.js></script><frame src=d.htm>", "c.js d.htm "},
      {"<img srcset='small.png 1x, large.png 2x'>", "small.png large.png "},
      {"<param name=\"movie\" value=\"film.swf\"><object data='film.swf'>", "film.swf film.swf "},
      {"<meta http-equiv='refresh' content='0; url=next.htm'>", "next.htm "},
      {"a { background: url( \"i.png\" ) } b { background: url(j.png) }", "i.png j.png "},
      {"@import 'k.css'; @import url(l.css);", "k.css l.css "},
      {"<base href='sub/'><link href='m.css'>", "sub/+m.css "},
      {"<script>img.src = 'n.png'; url = 'o.htm'</script>", "n.png o.htm "},
      {"<p>the source = 'x', srcs = 'y' and a(z)</p>", ""},
      {"<img src=''><img src", ""},
  };
  for (const auto& [text, addresses] : cases) {
    EXPECT_EQ(Scan(text, 1000), addresses) << text;
    EXPECT_EQ(Scan(text, 1), addresses) << text;
  }
  EXPECT_EQ(Scan("<img src='" + std::string(100'000, 'x') + "'><img src='p.png'>", 1000), "p.png ");
  EXPECT_EQ(Scan(std::string("<\0i\0m\0g\0 \0s\0r\0c\0=\0'\0q\0'\0>\0", 28), 1000), "q ");
}

}  // namespace
