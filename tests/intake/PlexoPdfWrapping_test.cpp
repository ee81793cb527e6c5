// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoPdfWrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "core/PlexoLinearCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/pdf/TzPdfFailure.h"
#include "host/pdf/TzPdfKit.h"
#include "intake/PlexoAddFileDriver.h"
#include "panel/PlexoStrings.h"
#include "support/FaultyFileSystem.h"
#include "support/OwnInstallTree.h"
#include "support/PdfFile.h"
#include "support/TestSession.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char* kDocument = "app.alert('document');";
constexpr const char* kFirst = "sendFirst();";
constexpr const char* kOther = "sendOther();";

class PlexoPdfWrappingTest : public testing::Test {
 protected:
  PlexoPdfWrappingTest() {
    RegisterDefaultStrings();
    TzPdfKit::Start();
    LayOwnInstallTree();
  }
  ~PlexoPdfWrappingTest() override { TzPdfKit::Stop(); }

  TzPath Save(const PdfFile& file) const { return file.Save(folder.Path()); }

  static int Insert(const TzPath& file) {
    return PlexoPdfWrapping::InsertTrackingScripts(file, kDocument, kFirst, kOther);
  }

  /// The document as text: each stream unpacked, each object on lines of its own.
  static std::string TextOf(const TzPath& file) {
    return ReadFile(ConvertPdf(file, {"--qdf", "--object-streams=disable", "--no-original-object-ids"}));
  }

  std::vector<TzString> AddLinear(const std::vector<TzPath>& files) {
    session.ui.AnswerNextChooser(files);
    return PlexoAddFileDriver::AddFilesToLinearCourse(GetLinearCourseModel());
  }

  TestSession session;
  TestFolder folder;
};

std::vector<std::string> OpenScriptsOf(TzPdfDocument& document) {
  std::vector<std::string> scripts;
  for (std::size_t index = 0; index < document.CountPages(); ++index) {
    scripts.push_back(document.GetPage(index).Get("AA").Get("O").Get("JS").GetText());
  }
  return scripts;
}

std::vector<std::string> FieldsOf(const TzPdfDocument& document) {
  std::vector<std::string> names;
  const TzPdfObject fields = document.GetCatalog().Get("AcroForm").Get("Fields");
  for (std::size_t index = 0; index < fields.GetCount(); ++index) {
    names.push_back(fields.At(index).Get("T").GetText());
  }
  return names;
}

}  // namespace

TEST_F(PlexoPdfWrappingTest, SaysWhichDocumentsCanBeTracked) {
  const TzPath plain = PdfFile(1).Save(folder.Path(), "plain.pdf");
  int copies = 0;
  const auto encrypt = [&](const std::string& userPassword, const std::vector<std::string>& permissions) {
    std::vector<std::string> options = {"--encrypt", userPassword, "secret", "256"};
    options.insert(options.end(), permissions.begin(), permissions.end());
    options.push_back("--");
    return folder.Write(std::to_string(++copies) + ".pdf", ReadFile(ConvertPdf(plain, options)));
  };
  const struct {
    const char* kind;
    TzPath file;
    int expected;
  } cases[] = {
      {"plain", plain, 0},
      {"everything allowed", encrypt("", {}), 0},
      {"no path", {}, -1},
      {"absent", folder.Path() / "absent.pdf", -2},
      {"no document", folder.Write("a.pdf", "%PDF, or not"), -2},
      {"opens with a password", encrypt("reader", {}), -2},
      {"no change allowed", encrypt("", {"--modify=none"}), -3},
      {"only forms can be filled", encrypt("", {"--modify=form"}), -3},
      {"no form fields can be made", encrypt("", {"--annotate=n"}), -3},
      {"portfolio", Save(PdfFile(1).Catalog("/Collection << /View /D >>")), -4},
  };
  for (const auto& [kind, file, expected] : cases) {
    EXPECT_EQ(PlexoPdfWrapping::CheckPdfFile(file), expected) << kind;
  }
}

TEST_F(PlexoPdfWrappingTest, ADocumentGetsOneScriptAndEachPageOne) {
  for (const int pages : {1, 3, 2'000}) {
    const TzPath file = Save(PdfFile(pages));
    EXPECT_EQ(Insert(file), pages);
    TzPdfDocument document(file);
    const std::vector<std::string> scripts = OpenScriptsOf(document);
    EXPECT_EQ(scripts.front(), kFirst);
    EXPECT_EQ(std::ranges::count(scripts, kOther), pages - 1);
    const TzPdfObject names = document.GetCatalog().Get("Names").Get("JavaScript").Get("Names");
    EXPECT_EQ(names.At(0).GetText(), "PDF SCORM wrapper");
    EXPECT_EQ(names.At(1).Get("JS").GetText(), kDocument);
  }
  EXPECT_THAT(session.output,
              HasSubstr("Successfully opened " + folder.Path().GetNative() + "/document.pdf\n"));
  EXPECT_EQ(Insert({}), -1);
  EXPECT_EQ(Insert(folder.Path() / "absent.pdf"), -2);
  EXPECT_EQ(session.errors, "Unable to open " + folder.Path().GetNative() + "/absent.pdf\n");
  EXPECT_EQ(Insert(Save(PdfFile(1).Catalog("/Names << /JavaScript << /Kids [ 3 ] >> >>"))), -4);
  EXPECT_THROW(static_cast<void>(Insert(Save(PdfFile(0)))), TzPdfFailure);
  EXPECT_EQ(ReadFile(folder.Path() / "document.pdf"), PdfFile(0).Build());
}

TEST_F(PlexoPdfWrappingTest, WhatAPageDidWhenOpenedIsKeptButForItsScript) {
  const std::string kGoTo = "/S /GoTo /D (here)";
  const struct {
    const char* kind;
    std::string actions;
    std::vector<std::string> expected;
  } cases[] = {
      {"nothing", "/AA << /C << /S /JavaScript /JS (closing) >> >>", {kFirst}},
      {"no dictionary", "/AA 7", {kFirst}},
      {"an action", "/AA << /O << " + kGoTo + " >> >>", {kFirst, "GoTo"}},
      {"a script", "/AA << /O << /S /JavaScript /JS (old) >> >>", {kFirst}},
      {"a script behind an action",
       "/AA << /O << " + kGoTo + " /Next << /S /JavaScript /JS (old) /Next << " + kGoTo + " >> >> >> >>",
       {"GoTo", kFirst, "GoTo"}},
      {"a list of actions behind one",
       "/AA << /O << " + kGoTo + " /Next [ << " + kGoTo + " >> ] >> >>",
       {kFirst, "GoTo"}},
      {"a circle", "/AA << /O 5000 0 R >>", {kFirst, "GoTo", "GoTo", "GoTo"}},
  };
  for (const auto& [kind, actions, expected] : cases) {
    const TzPath file = Save(PdfFile(1).Page(0, actions).Object(5'000, "<< " + kGoTo + " /Next 5000 0 R >>"));
    EXPECT_EQ(Insert(file), 1) << kind;
    TzPdfDocument document(file);
    std::vector<std::string> found;
    TzPdfObject action = document.GetPage(0).Get("AA").Get("O");
    for (; action.IsDictionary() && found.size() < 4; action = action.Get("Next")) {
      found.push_back(action.Get("S").IsName("GoTo") ? "GoTo" : action.Get("JS").GetText());
    }
    EXPECT_EQ(found, expected) << kind;
    EXPECT_EQ(document.GetPage(0).Get("AA").Has("C"), actions.find("/C") != std::string::npos) << kind;
    EXPECT_THAT(TextOf(file), Not(HasSubstr("old"))) << kind;
  }
}

TEST_F(PlexoPdfWrappingTest, AScriptOfMoreThan256BytesBecomesAPackedStream) {
  for (const std::size_t size : {256U, 257U, 39'000U}) {
    const std::string script = "/" + std::string(size - 1, '*');
    const TzPath file = Save(PdfFile(1));
    EXPECT_EQ(PlexoPdfWrapping::InsertTrackingScripts(file, kDocument, script.c_str(), kOther), 1);
    TzPdfDocument document(file);
    const bool isString = document.GetPage(0).Get("AA").Get("O").Get("JS").IsString();
    EXPECT_EQ(isString, size == 256) << size;
    EXPECT_EQ(ReadFile(file).find("/Filter [ /FlateDecode ]") == std::string::npos, isString) << size;
    EXPECT_THAT(TextOf(file), HasSubstr(script)) << size;
  }
}

TEST_F(PlexoPdfWrappingTest, AMissingScriptLeavesItsActionsWithoutText) {
  const TzPath file = Save(PdfFile(2));
  EXPECT_EQ(PlexoPdfWrapping::InsertTrackingScripts(file, kDocument, kFirst, nullptr), 2);
  TzPdfDocument document(file);
  EXPECT_THAT(OpenScriptsOf(document), ElementsAre(kFirst, ""));
  EXPECT_TRUE(document.GetPage(1).Get("AA").Get("O").Get("S").IsName("JavaScript"));
}

TEST_F(PlexoPdfWrappingTest, TheFieldsOfTheScriptsJoinThoseOfTheDocument) {
  const TzPath file =
      Save(PdfFile(2)
               .Catalog("/AcroForm << /Fields [ 5000 0 R 5001 0 R ] /DA (/F 9 Tf) /SigFlags 3 "
                        "/XFA (x) >>")
               .Page(0, "/Annots [ 5000 0 R ]")
               .Object(5'000, "<< /FT /Tx /T (surname) /V (Doe) >>")
               .Object(5'001, "<< /FT /Tx /T (command) >>"));
  EXPECT_EQ(Insert(file), 2);
  EXPECT_THAT(session.problems, testing::SizeIs(2));
  EXPECT_EQ(Insert(file), 2);
  const TzPdfDocument document(file);
  EXPECT_THAT(FieldsOf(document), ElementsAre("surname", "command", "aicc_url", "aicc_sid", "session_id",
                                              "version", "aicc_data", "connectresponse", "isfdf"));
  const TzPdfObject form = document.GetCatalog().Get("AcroForm");
  EXPECT_EQ(form.Get("DA").GetText(), "/F 9 Tf");
  EXPECT_EQ(form.Get("Fields").At(0).Get("V").GetText(), "Doe");
  EXPECT_EQ(TzPdfDocument(file).GetPage(0).Get("Annots").GetCount(), 8U);
  // Hidden, and the answer may have lines.
  EXPECT_EQ(form.Get("Fields").At(7).Get("F").GetInteger(), 2);
  EXPECT_NE(form.Get("Fields").At(7).Get("Ff").GetInteger() & 4'096, 0);
}

TEST_F(PlexoPdfWrappingTest, WarnsThatLearnersWontSeeADynamicForm) {
  const struct {
    const char* form;
    const char* warning;
  } cases[] = {
      {"/AcroForm << /Fields [ 5000 0 R ] /XFA (x) >>", "may not report page views"},
      {"/AcroForm << /Fields [ ] /XFA (x) >>", "is a dynamic XFA form"},
      {"/NeedsRendering true /AcroForm << /Fields [ 5000 0 R ] /XFA (x) >>", "is a dynamic XFA form"},
      {"/NeedsRendering true /AcroForm << /Fields [ 5000 0 R ] >>", ""},
  };
  for (const auto& [form, warning] : cases) {
    session.problems.clear();
    EXPECT_EQ(Insert(Save(PdfFile(1).Catalog(form).Object(5'000, "<< /FT /Tx /T (surname) >>"))), 1) << form;
    EXPECT_EQ(session.problems.size(), warning[0] == '\0' ? 0U : 1U) << form;
    const std::string told = session.problems.empty() ? "" : session.problems[0].message;
    EXPECT_THAT(told, HasSubstr(warning)) << form;
  }
}

TEST_F(PlexoPdfWrappingTest, ADocumentOfAnAuthorBecomesASco) {
  GetCourseModel()->SetScormVersion("1.2");
  const TzPath chosen = PdfFile(2).Save(folder.Path(), "Guide.PDF");
  EXPECT_THAT(AddLinear({chosen}), ElementsAre("Guide"));
  EXPECT_THAT(session.BoxTexts(), IsEmpty());
  EXPECT_EQ(ReadFile(chosen), PdfFile(2).Build());

  const PlexoSCOModel sco = GetLinearCourseModel()->GetSCO(0);
  EXPECT_EQ(sco.launchFile, "Guide.htm");
  EXPECT_EQ(sco.scormVersion, "1.2");
  EXPECT_THAT(sco.files, ElementsAre("Guide.htm", "Guide.pdf"));
  EXPECT_EQ(sco.manifest, GetCourseModel()->GetSCOManifest(0));
  EXPECT_THAT(sco.manifest.files,
              ElementsAre("Guide.pdf", "SCORM_support/scorm_support.js", "standard.js", "Guide.htm"));
  EXPECT_EQ(sco.manifest.href, "Guide.htm");
  EXPECT_EQ(sco.manifest.sourcePath, chosen.GetString());
  EXPECT_EQ(sco.manifest.masteryScore, "0");
  const TzPath copy = TzPath(sco.folderPath) / "Guide.pdf";
  TzPdfDocument document(copy);
  EXPECT_THAT(OpenScriptsOf(document), testing::Each(HasSubstr("sendPageView(this.pageNum);")));

  EXPECT_THAT(AddLinear({chosen}), ElementsAre(""));
  EXPECT_THAT(session.BoxTexts(), ElementsAre(HasSubstr("already been added")));
}

TEST_F(PlexoPdfWrappingTest, ARefusedDocumentHasItsWordsAndLeavesNothing) {
  const auto add = [&](const PdfFile& file) { EXPECT_THAT(AddLinear({Save(file)}), IsEmpty()); };
  add(PdfFile(1).Catalog("/Collection << >>"));
  add(PdfFile(0));
  EXPECT_THAT(AddLinear({folder.Write("a.pdf", "x")}), IsEmpty());
  {
    const FaultyFileSystem full(FaultyFileSystem::Operation::Copy, 1, ENOSPC);
    add(PdfFile(1));
  }
  {
    const TzPath file = Save(PdfFile(1));
    const FaultyFileSystem full(FaultyFileSystem::Operation::Write, 1, ENOSPC);
    EXPECT_THAT(AddLinear({file}), IsEmpty());
  }
  EXPECT_THAT(
      session.BoxTexts(),
      ElementsAre("PDF portfolios are not supported.", "Unable to insert SCORM-tracking javascript into PDF",
                  "Invalid PDF file", "Error occurred while copying the PDF file to the working directory.",
                  "Unable to insert SCORM-tracking javascript into PDF"));
  GetCourseModel()->SetAllowWrappedContent(false);
  add(PdfFile(1));
  GetCourseModel()->SetAllowWrappedContent(true);
  EXPECT_EQ(session.BoxTexts().size(), 5U);
  EXPECT_EQ(GetCourseModel()->GetSCOManifestCount(), 0U);
  EXPECT_THAT(ListTree(GetCourseModel()->GetWorkingFolder()), testing::Each("Linear/"));
}
