// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoScriptWords.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

PlexoScriptWords Scan(std::string_view text, std::size_t pieceBytes) {
  PlexoScriptScan scan;
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, pieceBytes);
    scan.Feed(std::as_bytes(std::span(piece)));
    text.remove_prefix(piece.size());
  }
  return scan.Finish();
}

TEST(PlexoScriptScan, FindsWordsWhereverPiecesEnd) {
  const struct {
    std::string_view text;
    PlexoScriptWords::Word word;
    bool isFound;
  } cases[] = {
      {"this.api.LMSInitialize('')", PlexoScriptWords::Initialize12, true},
      {"API[\"LMSInitialize\"]", PlexoScriptWords::Initialize12, true},
      {"myLMSInitialize()", PlexoScriptWords::Initialize12, false},
      {"LMSInitialize", PlexoScriptWords::Initialize2004, false},
      {"Initialized", PlexoScriptWords::Initialize2004, false},
      {"parent.API_1484_11", PlexoScriptWords::Initialize2004, true},
      {"SetValue('cmi.completion_status')", PlexoScriptWords::Completion, true},
      {"cmi.completion_status_x", PlexoScriptWords::Completion, false},
      {"'cmi.' + name", PlexoScriptWords::Assembled, true},
      {"'cmi.objectives.' + n + '.success_status'", PlexoScriptWords::Success, true},
      {"cmi.success_status", PlexoScriptWords::Completion, false},
      {"api['LMS' + name]", PlexoScriptWords::Assembled12, true},
      {"no LMS was found", PlexoScriptWords::Assembled12, false},
      {"status = 'failed'", PlexoScriptWords::Failed, true},
      {"alert('failed to start')", PlexoScriptWords::Failed, false},
      {"SetValue('cmi.exit', 'logout')", PlexoScriptWords::SendsLogout, true},
      {"SetValue('cmi.exit', exit), 'logout'", PlexoScriptWords::SendsLogout, false},
      {"SetValue('adl.nav.request', 'exitAll')", PlexoScriptWords::SendsExitAll, true},
      {{"i\0.\0L\0M\0S\0F\0i\0n\0i\0s\0h\0(\0", 24}, PlexoScriptWords::Finish12, true},
  };
  for (const auto& [text, word, isFound] : cases) {
    for (const std::size_t pieceBytes : {1U, 7U, 1000U}) {
      EXPECT_EQ(Scan(text, pieceBytes).Has(word), isFound) << text << " in pieces of " << pieceBytes;
    }
  }
}

TEST(PlexoScriptScan, ForgetsWordsWithoutEnd) {
  for (const std::size_t pieceBytes : {4096U, 1'000'000U}) {
    EXPECT_FALSE(
        Scan(std::string(100'000, 'x') + ".LMSInitialize ", pieceBytes).Has(PlexoScriptWords::Initialize12));
  }
}

}  // namespace
