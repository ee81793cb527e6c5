// SPDX-License-Identifier: Apache-2.0
// A document that an author adds: checked, and given its tracking scripts.
#include "fuzz/FuzzFolder.h"
#include "host/pdf/TzPdfFailure.h"
#include "host/pdf/TzPdfKit.h"
#include "host/session/TzConsole.h"
#include "host/session/TzSession.h"
#include "intake/PlexoPdfWrapping.h"

namespace {

class NoConsole : public ITzConsole {
 public:
  void WriteOutput(std::string_view /*text*/) override {}
  void WriteError(std::string_view /*text*/) override {}
};

/// The number of pages, -1 if the document was refused.
int Insert(const TzPath& file, const char* script) {
  try {
    return PlexoPdfWrapping::InsertTrackingScripts(file, script, "first();", "other();");
  } catch (const TzPdfFailure&) {
    return -1;
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  static NoConsole console;
  TzSession::Install({.console = &console});
  TzPdfKit::Start();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string longScript(300, ';');
  const TzPath file = FuzzFolder::Write("document.pdf", data, size);
  if (PlexoPdfWrapping::CheckPdfFile(file) != 0) return 0;
  const int pages = Insert(file, longScript.c_str());
  if (pages < 0) return 0;
  FuzzRequire(PlexoPdfWrapping::CheckPdfFile(file) == 0, "a tracked document can be opened");
  FuzzRequire(Insert(file, "short();") == pages, "a document keeps its pages");
  return 0;
}
