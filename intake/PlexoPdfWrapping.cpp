// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoPdfWrapping.h"

#include <exception>
#include <string>

#include "core/PlexoCourseModel.h"
#include "core/PlexoErrorBox.h"
#include "host/pdf/TzPdfFailure.h"
#include "host/pdf/TzPdfKit.h"
#include "host/session/TzConsole.h"
#include "host/session/TzProblem.h"
#include "intake/PlexoPdfFields.h"
#include "intake/PlexoPdfScripts.h"
#include "intake/PlexoSCOWrapper.h"
#include "intake/PlexoSharedPlayer.h"
#include "intake/PlexoWrappedFile.h"

namespace {

constexpr const char* kScriptName = "PDF SCORM wrapper";

void Report(const TzPath& path, const std::string& message) {
  TzReportProblem(kTzFailure, path.GetFileName().GetUTF8String(), message);
}

/// Whether the pages hold no more than what is shown until a viewer has laid out the form (PDF 32000-1,
/// 12.7.8).
bool IsDynamicForm(const TzPdfObject& catalog, const TzPdfObject& form) {
  return catalog.Get("NeedsRendering").IsTrue() || form.Get("Fields").GetCount() == 0;
}

/// What the author wouldn't expect of a document that is tracked all the same.
void ReportDoubts(const TzPath& path, const TzPdfObject& catalog) {
  constexpr long long kSignaturesExist = 1;
  const TzPdfObject form = catalog.Get("AcroForm");
  if ((form.Get("SigFlags").GetInteger() & kSignaturesExist) != 0 || catalog.Get("Perms").Has("DocMDP")) {
    Report(path, "its signatures don't hold in the course, for tracking changes the document");
  }
  if (!form.Has("XFA")) return;
  if (IsDynamicForm(catalog, form)) {
    Report(path,
           "it is a dynamic XFA form: most browsers show learners a request to wait instead of its content; "
           "print the form to a new PDF document and add that");
  } else {
    Report(path, "it has an XFA form; a viewer that shows that form may not report page views");
  }
}

const char* GetScript(PlexoTrackingScript script) {
  const std::string* text = GetCourseModel()->GetTrackingScript(script);
  return text != nullptr ? text->c_str() : nullptr;
}

int Refuse(const ITzStringDictionary& dictionary, const char* key) {
  ShowErrorBox(dictionary, key);
  return 1;
}

const char* GetCheckKey(std::int32_t result) {
  if (result == -3) return "kPlexoPDFPermissionError";
  return result == -4 ? "kPlexoPDFPortfolioError" : "kPlexoPDFInvalidPDFError";
}

bool MakeTracked(const TzPath& copy) {
  try {
    return PlexoPdfWrapping::InsertTrackingScripts(copy, GetScript(PlexoTrackingScript::DocumentLevel),
                                                   GetScript(PlexoTrackingScript::FirstPage),
                                                   GetScript(PlexoTrackingScript::OtherPages)) >= 0;
  } catch (const std::exception& failure) {
    Report(copy, failure.what());
    return false;
  }
}

}  // namespace

int PlexoPdfWrapping::AddDocument(const TzPath& path, const TzPath& scoFolder, PlexoSCOModel& sco,
                                  const ITzStringDictionary& dictionary) {
  if (const std::int32_t result = CheckPdfFile(path); result < 0) {
    return Refuse(dictionary, GetCheckKey(result));
  }
  const PlexoWrappedFile file(path, scoFolder, "pdf");
  if (file.WasAddedAlready(dictionary)) return 0;
  if (!file.CopyIn()) return Refuse(dictionary, "kPlexoErrorPDFFileCopy");
  if (!MakeTracked(file.GetCopy())) return Refuse(dictionary, "kPlexoPDFJSInsertionError");

  PlexoSCOManifest manifest = file.Describe(sco);
  PlexoSCOWrapper wrapper;
  wrapper.SetKind(PlexoWrapperKind::PDF);
  wrapper.SetSourcePath(file.GetCopy());
  wrapper.SetScormVersion(manifest.scormVersion);
  if (wrapper.GenerateWrapper() != 0) return Refuse(dictionary, "kPlexoErrorPDFHTMLGen");
  PlexoSharedPlayer::CopySharedPlayer(PlexoWrapperKind::PDF);
  file.Record(std::move(manifest), wrapper.GetGeneratedFiles(), sco);
  return 0;
}

std::int32_t PlexoPdfWrapping::CheckPdfFile(const TzPath& path) {
  if (path.IsEmpty()) return -1;
  const auto document = OpenPdfDocument(path);
  if (document == nullptr) return -2;
  try {
    if (!document->GrantsChange()) {
      Report(path, "its permissions don't allow to change it and to add form fields");
      return -3;
    }
    if (document->IsCollection()) {
      Report(path, "add the documents in it one by one");
      return -4;
    }
    return 0;
  } catch (const TzPdfFailure& failure) {
    Report(path, failure.what());
    return -2;
  }
}

std::int32_t PlexoPdfWrapping::InsertTrackingScripts(const TzPath& path, const char* documentScript,
                                                     const char* firstPageScript,
                                                     const char* otherPagesScript) {
  if (path.IsEmpty()) return -1;
  const auto document = OpenPdfDocument(path);
  if (document == nullptr) return -2;
  if (!PlexoPdfScripts::AddDocumentScript(*document, kScriptName, documentScript)) return -4;
  const std::size_t pages = document->CountPages();
  PlexoPdfScripts::AddPageOpenScript(*document, document->GetPage(0), firstPageScript);
  for (std::size_t index = 1; index < pages; ++index) {
    PlexoPdfScripts::AddPageOpenScript(*document, document->GetPage(index), otherPagesScript);
  }
  ReportDoubts(path, document->GetCatalog());
  PlexoPdfFields::AddMissing(*document);
  document->Save(path);
  return static_cast<std::int32_t>(pages);
}

std::unique_ptr<TzPdfDocument> PlexoPdfWrapping::OpenPdfDocument(const TzPath& path) {
  const std::string name = path.GetString().GetUTF8String();
  try {
    auto document = TzPdfKit::Open(path);
    TzWriteOutput("Successfully opened " + name + "\n");
    return document;
  } catch (const TzPdfFailure&) {
    TzWriteError("Unable to open " + name + "\n");
    return nullptr;
  }
}
