// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoTemplateSubstitution.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "support/FaultyFileSystem.h"
#include "support/TestSession.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Substitution = PlexoTemplateSubstitution;

const Substitution::Placeholders kPlaceholders = {
    {"@MOVIEWIDTH", "640"}, {"@TITLE", TzString("caf\u00E9 @MOVIEWIDTH")}, {"@EMPTY", ""}};

/// What becomes of a template, copied in chunks of this size.
std::string Substitute(const TestFolder& folder, const std::string& text,
                       std::size_t chunkSize = Substitution::kChunkSize) {
  const TzFile target(folder.Path() / "page.htm");
  EXPECT_EQ(Substitution::SubstituteTemplate(TzFile(folder.Write("template.htm", text)), target,
                                             kPlaceholders, chunkSize, Substitution::kBufferSize),
            0);
  return ReadFile(target.GetPath());
}

}  // namespace

TEST(PlexoTemplateSubstitution, ReplacesWhatItKnowsAndDropsTheRest) {
  const TestFolder folder;
  const struct {
    const char* text;
    const char* page;
  } cases[] = {
      {"width=@MOVIEWIDTH height", "width=640 height"},
      {"'@MOVIEWIDTH'\"@MOVIEWIDTH\"<@MOVIEWIDTH>@MOVIEWIDTH\r\n@MOVIEWIDTH", "'640'\"640\"<640>640\r\n640"},
      {"@MOVIEWIDTHpx;x y", " y"},
      {"@MOVIEWIDTH@MOVIEWIDTH end", " end"},
      {"to me@example.com now @ and @UNKNOWN", "to me now  and "},
      {"[@EMPTY ]", "[ ]"},
      // What was put in isn't looked at, and is UTF-8 in a template of any encoding.
      {"\xE4 @TITLE.", "\xE4 "},
      {"\xE4 @TITLE \xE4", "\xE4 caf\xC3\xA9 @MOVIEWIDTH \xE4"},
      {"", ""},
  };
  for (const auto& [text, page] : cases) EXPECT_EQ(Substitute(folder, text), page) << text;
}

TEST(PlexoTemplateSubstitution, LeavesEverythingElseAsItIsWhateverTheChunks) {
  const TestFolder folder;
  std::string text;
  for (int number = 0; number < 20000; ++number) text += static_cast<char>(number * 7 + number / 256);
  std::erase(text, '@');
  for (const std::size_t chunk : {std::size_t{1}, std::size_t{3072}, std::size_t{30720}}) {
    EXPECT_EQ(Substitute(folder, text, chunk), text) << chunk;
  }
}

TEST(PlexoTemplateSubstitution, APlaceholderOnAChunksBorderIsLostInTwoPieces) {
  const TestFolder folder;
  EXPECT_EQ(Substitute(folder, "abc@MOVIEWIDTH def", 14), "abc640 def");
  EXPECT_EQ(Substitute(folder, "abc@MOVIEWIDTH def", 13), "abcH def");
}

TEST(PlexoTemplateSubstitution, FaultyTemplatesEndIt) {
  TestSession session;
  const TestFolder folder;
  const TzFile page(folder.Path() / "page.htm");
  const auto copy = [&](const std::string& text, std::size_t bufferSize) {
    return Substitution::SubstituteTemplate(TzFile(folder.Write("template.htm", text)), page, kPlaceholders,
                                            3072, bufferSize);
  };
  EXPECT_EQ(copy("@" + std::string(253, 'x'), 3072), 0);
  EXPECT_THAT(session.problems, IsEmpty());
  EXPECT_EQ(copy("@" + std::string(254, 'x'), 3072), 1);
  EXPECT_EQ(copy("12345@MOVIEWIDTH ", 9), 0);
  EXPECT_EQ(copy("12345@MOVIEWIDTH ", 8), 1);
  EXPECT_EQ(copy("12345@MOVIEWIDTH ", 7), 1);
  ASSERT_EQ(session.problems.size(), 3U);
  EXPECT_THAT(session.problems[0].GetText(), HasSubstr("a placeholder of 255 bytes or more"));
  EXPECT_THAT(session.problems[1].GetText(), HasSubstr("more than there is room for"));

  const TzFile source(folder.Write("template.htm", "a page"));
  {
    const FaultyFileSystem full(FaultyFileSystem::Operation::Write, 1, ENOSPC);
    EXPECT_EQ(Substitution::SubstituteTemplate(source, page, kPlaceholders), 0);
  }
  ASSERT_EQ(session.problems.size(), 4U);
  EXPECT_EQ(session.problems[3].code, kTzMachineFailure);

  const TzFile missing(folder.Path() / "missing.htm");
  EXPECT_EQ(Substitution::SubstituteTemplate(missing, page, {}), 1);
  EXPECT_EQ(Substitution::SubstituteTemplate(source, TzFile(folder.Path() / "no/such/page.htm"), {}), 1);
}

TEST(PlexoTemplateSubstitution, TheShippedPagesKeepTheirPlaceholdersAwayFromTheBordersOfChunks) {
  constexpr std::size_t kDistance = 300;
  std::size_t pages = 0;
  for (const char* version : {"1_2", "2004"}) {
    const std::filesystem::path folder =
        std::filesystem::path(PLEXO_SOURCE "/templates/Publish/Plexo/SCORM") / version;
    for (const char* page : {"Default.htm", "DefaultPDF.htm"}) {
      const std::string text = ReadFile(TzPath::FromNative((folder / page).native()));
      pages += text.empty() ? 0 : 1;
      for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + 1)) {
        const std::size_t inChunk = at % Substitution::kChunkSize;
        const bool isFirst = at < Substitution::kChunkSize;
        EXPECT_TRUE((isFirst || inChunk >= kDistance) && inChunk + kDistance < Substitution::kChunkSize)
            << folder / page << ": byte " << at;
      }
    }
  }
  EXPECT_EQ(pages, 4U);
}
