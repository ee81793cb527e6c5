// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PackageReasons.h"

#include <algorithm>

#include "apps/cli/ManifestFaults.h"
#include "apps/cli/ScratchFolder.h"
#include "core/PlexoCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzZipInspection.h"
#include "host/files/TzZipUtils.h"

namespace {

constexpr const char* kManifestName = "imsmanifest.xml";
constexpr std::size_t kMostReasons = 5;

bool IsManifestName(std::string word) {
  std::ranges::transform(word, word.begin(), [](char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  });
  return word == kManifestName;
}

/// What stands for a manifest at the top of this archive or in a folder there; empty if nothing does.
std::string FindManifestIn(const std::vector<TzZipEntry>& entries) {
  std::string inFolder;
  for (const TzZipEntry& entry : entries) {
    const std::size_t slash = entry.name.find('/');
    const bool isTop = slash == std::string::npos;
    const std::size_t start = isTop ? 0 : slash + 1;
    if (entry.isFolder || entry.isFaulty || !IsManifestName(entry.name.substr(start))) continue;
    if (isTop) return entry.name;
    if (inFolder.empty()) inFolder = entry.name;
  }
  return inFolder;
}

void Append(std::vector<std::string>& reasons, std::vector<std::string> more) {
  std::ranges::move(more, std::back_inserter(reasons));
}

}  // namespace

std::vector<std::string> PackageReasons::Explain(const std::string& boxText, const std::string& courseVersion,
                                                 const TzPath& scoFolder,
                                                 const std::vector<TzProblem>& problems) {
  const auto says = [&](const char* key) { return boxText == session.GetWords(key); };
  std::vector<std::string> reasons;
  if (says("kPlexoErrorParseManifest") || says("kPlexoErrorIncompatibleSCORMVersion")) {
    const std::optional<TzPath> folder = MakeScratchFolder("manifest");
    if (folder && TzZipUtils::ExtractFile(package, kManifestName, *folder / kManifestName) == kTzSuccess) {
      return ExplainManifest(*folder / kManifestName, courseVersion);
    }
  }
  reasons = Describe(problems);
  if (says("kPlexoErrorInvalidSCORM")) Append(reasons, ExplainMissingManifest());
  if (says("kPlexoErrorSCOFolderExists")) Append(reasons, ExplainTakenName(scoFolder));
  return reasons;
}

std::vector<std::string> PackageReasons::ExplainMissingManifest() const {
  std::vector<std::string> reasons = {"it has no imsmanifest.xml at its top"};
  TzZipInspection archive;
  if (archive.Open(package)) return reasons;
  const std::string found = FindManifestIn(archive.GetEntries());
  if (found.empty()) return reasons;
  reasons.push_back("it has '" + found + "'; " +
                    (found.find('/') != std::string::npos ? "pack the content of the folder, not the folder"
                                                          : "the name must be in small letters"));
  return reasons;
}

std::vector<std::string> PackageReasons::ExplainManifest(const TzPath& manifestFile,
                                                         const std::string& courseVersion) {
  static_cast<void>(session.TakeProblems());
  const std::string fault = FindManifestFault(manifestFile, courseVersion);
  std::vector<std::string> reasons;
  if (!fault.empty()) reasons.push_back(fault);
  for (const TzProblem& problem : session.TakeProblems()) reasons.push_back("its " + problem.GetText());
  if (reasons.empty()) reasons.emplace_back("its manifest's elements stand in an unexpected order");
  return reasons;
}

std::vector<std::string> PackageReasons::ExplainTakenName(const TzPath& scoFolder) const {
  const TzString baseName = TzFileUtil::GetBaseFileName(package);
  for (const PlexoSCOManifest& manifest : GetCourseModel()->GetSCOManifests()) {
    if (manifest.folderPath != scoFolder.GetString()) continue;
    return {"the name '" + baseName.GetUTF8String() + "' is taken by " + manifest.sourcePath.GetUTF8String()};
  }
  return {};
}

std::vector<std::string> PackageReasons::Describe(const std::vector<TzProblem>& problems) const {
  const std::string packageName = package.GetFileName().GetUTF8String();
  std::vector<std::string> reasons;
  for (const TzProblem& problem : problems) {
    const std::string text = problem.GetText();
    const bool isOfPackage = text.starts_with(packageName + ": ");
    const std::string reason = isOfPackage ? text.substr(packageName.size() + 2) : text;
    if (std::ranges::find(reasons, reason) == reasons.end()) reasons.push_back(reason);
  }
  if (reasons.size() > kMostReasons) {
    const std::string rest = std::to_string(reasons.size() - kMostReasons);
    reasons.resize(kMostReasons);
    reasons.push_back("and " + rest + " more");
  }
  return reasons;
}
