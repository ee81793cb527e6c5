// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoScriptIndex.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

bool IsScript(std::string_view name) {
  static constexpr std::array<std::string_view, 7> kExtensions = {".js",   ".mjs", ".cjs",  ".htm",
                                                                  ".html", ".xht", ".xhtml"};
  const std::size_t point = name.rfind('.');
  if (point == std::string_view::npos) return false;
  const std::string extension = PlexoCheckedPackage::FoldCase(name.substr(point));
  return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

/// An archive that unpacks to far more than its size isn't read through.
bool UnpacksHuge(const TzZipInspection& archive) {
  const auto& faults = archive.GetFaults();
  return std::any_of(faults.begin(), faults.end(),
                     [](const TzZipFault& fault) { return fault.kind == TzZipFaultKind::Size; });
}

}  // namespace

PlexoScriptIndex::PlexoScriptIndex(PlexoCheckedPackage& checked, PlexoFindingList& findings)
    : package(checked) {
  if (UnpacksHuge(checked.archive)) return;
  ReadScripts(checked, findings);
  AddDependencies();
  isRead = true;
}

void PlexoScriptIndex::ReadScripts(PlexoCheckedPackage& checked, PlexoFindingList& findings) {
  std::vector<std::pair<const TzZipEntry*, PlexoScriptWords>> found;
  std::unordered_set<std::string> launchFolders;
  for (const TzZipEntry& entry : checked.archive.GetEntries()) {
    if (entry.isFolder || entry.isFaulty || !IsScript(entry.name)) continue;
    PlexoScriptScan scan;
    TzZipFailure problem =
        checked.archive.Read(entry, [&scan](std::span<const std::byte> piece) { scan.Feed(piece); });
    if (problem && problem.code != kTzBadContent) {
      failure = std::move(problem);
      return;
    }
    if (problem) findings.AddFile(PlexoFindingId::EntryDamaged, entry.name, {entry.name, problem.message});
    PlexoScriptWords words = scan.Finish();
    // It refuses suspend data that an LMS needn't store.
    if (words.Has(PlexoScriptWords::Wrapping) && IsWrapperScript(checked, entry))
      words.Remove(PlexoScriptWords::SuspendData);
    words.Remove(PlexoScriptWords::Wrapping);
    if (words.Has(PlexoScriptWords::Translated) && IsLaunchSettings(checked, entry)) {
      launchFolders.emplace(PlexoCheckedPackage::GetFolder(entry.name));
      AddFile(entry, words);
    } else {
      words.Remove(PlexoScriptWords::Translated);
      found.emplace_back(&entry, words);
    }
  }
  for (const auto& [entry, words] : found) {
    if (!launchFolders.contains(std::string(PlexoCheckedPackage::GetFolder(entry->name))))
      AddFile(*entry, words);
  }
}

bool PlexoScriptIndex::IsLaunchSettings(const PlexoCheckedPackage& checked, const TzZipEntry& entry) {
  const std::string folder(PlexoCheckedPackage::GetFolder(entry.name));
  return (folder == "launch" || folder.ends_with("/launch")) && entry.name == folder + "/settings.js" &&
         checked.FindFile(folder + "/launch.html") != nullptr;
}

bool PlexoScriptIndex::IsWrapperScript(const PlexoCheckedPackage& checked, const TzZipEntry& entry) {
  const std::string folder(PlexoCheckedPackage::GetFolder(entry.name));
  return entry.name == folder + "/standard.js" &&
         checked.FindFile(folder + "/SCORM_support/scorm_support.js") != nullptr;
}

void PlexoScriptIndex::AddFile(const TzZipEntry& entry, PlexoScriptWords words) {
  byFile[&entry] = words;
  atTop.Add(words);
  const std::string_view name = entry.name;
  for (std::size_t slash = name.rfind('/'); slash != std::string_view::npos && slash > 0;
       slash = name.rfind('/', slash - 1)) {
    byFolder[name.substr(0, slash)].Add(words);
  }
}

void PlexoScriptIndex::AddDependencies() {
  std::unordered_map<const PlexoResource*, std::vector<const PlexoResource*>> dependents;
  std::vector<const PlexoResource*> changed;
  for (const PlexoResource& resource : package.GetResources()) {
    byResource[&resource] = GetListedWords(resource);
    changed.push_back(&resource);
    for (const auto& [element, identifier] : resource.dependencies) {
      const PlexoResource* needed = package.FindResource(identifier);
      if (needed != nullptr) dependents[needed].push_back(&resource);
    }
  }
  // A set of words only grows, and there are few words: so this ends, round dependencies or not.
  while (!changed.empty()) {
    const PlexoResource* needed = changed.back();
    changed.pop_back();
    for (const PlexoResource* dependent : dependents[needed]) {
      if (byResource[dependent].Add(byResource[needed])) changed.push_back(dependent);
    }
  }
}

PlexoScriptWords PlexoScriptIndex::GetWordsOf(const PlexoResource& resource) const {
  if (resource.launch.has_value() && resource.launch->entry != nullptr) {
    return GetWordsOf(resource, *resource.launch->entry);
  }
  const auto found = byResource.find(&resource);
  return found != byResource.end() ? found->second : PlexoScriptWords();
}

PlexoScriptWords PlexoScriptIndex::GetWordsOf(const PlexoResource& resource,
                                              const TzZipEntry& launchFile) const {
  PlexoScriptWords words;
  if (const auto found = byResource.find(&resource); found != byResource.end()) words = found->second;
  const std::string_view launch = launchFile.name;
  const std::size_t slash = launch.rfind('/');
  if (slash == std::string_view::npos) {
    words.Add(atTop);
  } else if (const auto found = byFolder.find(launch.substr(0, slash)); found != byFolder.end()) {
    words.Add(found->second);
  }
  return words;
}

bool PlexoScriptIndex::Knows(const PlexoResource& resource) const {
  return isRead && resource.launch.has_value() && resource.launch->entry != nullptr;
}

PlexoScriptWords PlexoScriptIndex::GetListedWords(const PlexoResource& resource) const {
  PlexoScriptWords words;
  const auto add = [&](const PlexoFileReference& file) {
    if (const auto found = byFile.find(file.entry); found != byFile.end()) words.Add(found->second);
  };
  if (resource.launch.has_value()) add(*resource.launch);
  for (const PlexoFileReference& file : resource.files) add(file);
  return words;
}
