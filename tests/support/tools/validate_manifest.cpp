// SPDX-License-Identifier: Apache-2.0
//
// validate-manifest [--schemas FOLDER] IMSMANIFEST.xml|PACKAGE.zip
//
// Validates a manifest against the published schema documents of its edition of SCORM, by default those of
// the install tree beside this program; FOLDER holds 1_2/static and 2004/static/3rd as that tree does.
// Findings go to standard error. Exit status: 0 valid; 1 not valid; 2 it couldn't be validated.

#include <algorithm>
#include <cstring>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "host/files/TzFileUtil.h"
#include "host/files/TzZipUtils.h"
#include "host/session/TzProblem.h"
#include "host/session/TzSession.h"
#include "host/xml/TzXMLParser.h"
#include "host/xml/TzXMLSchemaValidator.h"

namespace {

struct Edition {
  const char* manifestVersion;
  const char* name;
  const char* fullName;
  const char* folder;
};

constexpr Edition kEditions[] = {
    {"1.0", "1.2", "SCORM 1.2", "1_2/static"},
    {"1.3", "2004", "SCORM 2004 3rd Edition", "2004/static/3rd"},
};

class ErrorStreamSink : public ITzProblemSink {
 public:
  void Report(const TzProblem& problem) override { std::cerr << problem.GetText() << '\n'; }
};

/// Removes what `TzFileUtil::CreateTempDir` made.
struct TempFolders {
  ~TempFolders() { TzFileUtil::DeleteAllTempFilesCreated(); }
};

struct Root {
  bool wasSeen = false;
  std::string version;
};

void NoteRoot(void* userData, const char*, const char** attributes) {
  Root& root = *static_cast<Root*>(userData);
  if (root.wasSeen) return;
  root.wasSeen = true;
  for (; attributes[0] != nullptr; attributes += 2) {
    if (std::strcmp(attributes[0], "version") == 0) root.version = attributes[1];
  }
}

Root ReadRoot(const TzPath& manifest) {
  Root root;
  TzXMLParser parser(0);
  parser.setSource(TzFile(manifest));
  parser.setUserData(&root);
  parser.setElementHandler(NoteRoot, nullptr);
  parser.parse();
  return root;
}

const Edition* FindEdition(const std::string& manifestVersion) {
  const auto* const found =
      std::find_if(std::begin(kEditions), std::end(kEditions),
                   [&](const Edition& edition) { return manifestVersion == edition.manifestVersion; });
  return found != std::end(kEditions) ? found : nullptr;
}

int Validate(const TzPath& manifest, const TzPath& schemas) {
  const Root root = ReadRoot(manifest);
  if (!root.wasSeen) return 2;
  const Edition* edition = FindEdition(root.version);
  if (edition == nullptr) {
    std::cerr << "imsmanifest.xml: its version is '" << root.version << "'; expected '1.0' or '1.3'\n";
    return 1;
  }
  const TzXMLSchemaValidator validator(schemas / edition->folder, edition->name);
  if (!validator.GetSchemaError().empty()) {
    std::cerr << "schema documents: " << validator.GetSchemaError() << '\n';
    return 2;
  }
  const std::vector<TzSchemaFinding> findings = validator.Validate(manifest);
  for (const TzSchemaFinding& finding : findings) {
    std::cerr << "imsmanifest.xml: line " << finding.line << ": " << finding.message << '\n';
  }
  if (!findings.empty()) return 1;
  std::cout << "imsmanifest.xml: valid against the " << edition->fullName << " schema documents\n";
  return 0;
}

int ValidateFile(const TzPath& file, const TzPath& schemas) {
  if (TzFileUtil::GetExtension(file) != "zip") return Validate(file, schemas);
  const TempFolders cleanUp;
  const TzPath folder = TzFileUtil::CreateTempDir("validate-manifest");
  const TzPath manifest = folder / "imsmanifest.xml";
  if (folder.IsEmpty()) return 2;
  const int result = TzZipUtils::ExtractFile(file, "imsmanifest.xml", manifest);
  if (result == kTzFailure) std::cerr << file << ": imsmanifest.xml can't be taken out of it\n";
  if (result != kTzSuccess) return 2;
  return Validate(manifest, schemas);
}

}  // namespace

int main(int argc, char** argv) {
  TzPath schemas = TzFileUtil::GetCurrentExecutablePath().GetParentTzPath() /
                   "Templates/Publish/LMS/Standard/SCORM/Default";
  int next = 1;
  if (argc > 3 && std::strcmp(argv[1], "--schemas") == 0) {
    schemas = TzPath::FromNative(argv[2]);
    next = 3;
  }
  if (argc != next + 1 || argv[next][0] == '-') {
    std::cerr << "usage: validate-manifest [--schemas FOLDER] IMSMANIFEST.xml|PACKAGE.zip\n";
    return 2;
  }
  ErrorStreamSink problems;
  TzSession session;
  session.problems = &problems;
  TzSession::Install(session);
  return ValidateFile(TzPath::FromNative(argv[next]), schemas);
}
