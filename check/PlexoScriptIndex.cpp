// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoScriptIndex.h"

#include <utility>
#include <vector>

PlexoScriptIndex::PlexoScriptIndex(const PlexoCheckedPackage& checked, const PlexoContentReading& reading)
    : package(checked), isRead(reading.IsRead()), failure(reading.GetFailure()) {
  if (!isRead) return;
  AddScripts(reading.GetScripts());
  AddDependencies();
}

PlexoScriptIndex::PlexoScriptIndex(PlexoCheckedPackage& checked, PlexoFindingList& findings)
    : PlexoScriptIndex(checked,
                       PlexoContentReading(checked, PlexoContentReading::Extent::Scripts, findings)) {}

void PlexoScriptIndex::AddScripts(const std::vector<PlexoScript>& scripts) {
  for (const PlexoScript& script : scripts) {
    if (!script.words.Has(PlexoScriptWords::Translated)) continue;
    std::string folder(PlexoCheckedPackage::GetFolder(script.entry->name));
    const PlexoHref content = PlexoHref::Read(folder + "/", script.content);
    const bool isInPackage = !content.isExternal && !content.leavesPackage;
    std::string behind(isInPackage ? PlexoCheckedPackage::GetFolder(content.path) : folder);
    contentFolders.emplace(std::move(folder), std::move(behind));
    AddFile(*script.entry, script.words);
  }
  for (const PlexoScript& script : scripts) {
    PlexoScriptWords words = script.words;
    const std::string folder(PlexoCheckedPackage::GetFolder(script.entry->name));
    if (words.Has(PlexoScriptWords::Translated) || contentFolders.contains(folder)) continue;
    // It refuses suspend data that an LMS needn't store, and takes no completion back.
    if (words.Has(PlexoScriptWords::Wrapping) && IsWrapperScript(*script.entry))
      words.Remove(PlexoScriptWords::SuspendData | PlexoScriptWords::Incomplete);
    words.Remove(PlexoScriptWords::Wrapping);
    AddFile(*script.entry, words);
  }
}

bool PlexoScriptIndex::IsWrapperScript(const TzZipEntry& entry) const {
  const std::string folder(PlexoCheckedPackage::GetFolder(entry.name));
  return entry.name == folder + "/standard.js" &&
         package.FindFile(folder + "/SCORM_support/scorm_support.js") != nullptr;
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
  const std::string folder(PlexoCheckedPackage::GetFolder(launchFile.name));
  words.Add(GetWordsBelow(folder));
  if (const auto behind = contentFolders.find(folder); behind != contentFolders.end())
    words.Add(GetWordsBelow(behind->second));
  return words;
}

PlexoScriptWords PlexoScriptIndex::GetWordsBelow(std::string_view folder) const {
  if (folder.empty()) return atTop;
  const auto found = byFolder.find(folder);
  return found != byFolder.end() ? found->second : PlexoScriptWords();
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
