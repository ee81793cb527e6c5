// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoScriptCheck.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

namespace {

using enum PlexoFindingId;

/// The API of one edition.
struct Api {
  PlexoScriptWords::Word start;
  PlexoScriptWords::Word end;
  const char* startName;
  const char* endName;
};
constexpr Api kApi12 = {PlexoScriptWords::Initialize12, PlexoScriptWords::Finish12, "LMSInitialize",
                        "LMSFinish"};
constexpr Api kApi2004 = {PlexoScriptWords::Initialize2004, PlexoScriptWords::Terminate2004, "Initialize",
                          "Terminate"};

/// "Initialize" alone may be any script's own; what looks for the API of SCORM 2004, or ends a session, means
/// that of the API.
bool Calls(PlexoScriptWords words, const Api& api) {
  const bool isSure = api.start != PlexoScriptWords::Initialize2004 || words.Has(PlexoScriptWords::Api2004) ||
                      words.Has(PlexoScriptWords::Terminate2004);
  return isSure && words.Has(api.start);
}

void CheckSco(const PlexoManifestElement& item, PlexoScriptWords words, bool is2004,
              PlexoFindingList& findings) {
  const Api* ownApi = is2004 ? &kApi2004 : &kApi12;
  const Api* otherApi = is2004 ? &kApi12 : &kApi2004;
  // A launch page of ours offers the content the API that it calls.
  if (words.Has(PlexoScriptWords::Translated) && words.Has(otherApi->start)) std::swap(ownApi, otherApi);
  const Api& own = *ownApi;
  const Api& other = *otherApi;
  const std::string identifier = item.GetValue("identifier");
  const bool isOthersOnly = !Calls(words, own) && Calls(words, other);
  if (!words.Has(own.start) || isOthersOnly) {
    // Behind "LMS" the words of SCORM 2004 are those of SCORM 1.2.
    if (!is2004 && words.Has(PlexoScriptWords::Assembled12) && words.Has(other.start)) return;
    if (Calls(words, other)) {
      findings.AddElement(OtherEditionApi, item, {identifier, other.startName, is2004 ? "2004" : "1.2"});
    } else {
      findings.AddElement(NoApi, item, {identifier, own.startName});
    }
  } else if (!words.Has(own.end)) {
    findings.AddElement(SessionNotEnded, item, {identifier, own.startName, own.endName});
  }
}

/// What ends a visit has an effect on all content of the course.
void CheckEnd(const PlexoManifestElement& item, PlexoScriptWords words, bool is2004,
              PlexoFindingList& findings) {
  std::string sent;
  if (words.Has(PlexoScriptWords::SendsLogout)) sent = "'logout' as its exit";
  if (is2004 && words.Has(PlexoScriptWords::SendsExitAll)) {
    if (!sent.empty()) sent += " and ";
    sent += "the navigation request 'exitAll'";
  }
  if (!sent.empty()) findings.AddElement(EndsCourse, item, {item.GetValue("identifier"), sent});
}

/// SCORM 1.2 keeps the data of every visit; SCORM 2004 forgets those of a visit that isn't suspended. Our
/// launch page suspends for content of SCORM 1.2.
void CheckBookmark(const PlexoManifestElement& item, PlexoScriptWords words, PlexoFindingList& findings) {
  const bool isKept = words.Has(PlexoScriptWords::Location) || words.Has(PlexoScriptWords::SuspendData);
  const bool suspends = words.Has(PlexoScriptWords::Exit) && words.Has(PlexoScriptWords::Suspend);
  if (!isKept || suspends || words.Has(PlexoScriptWords::Assembled) || words.Has(PlexoScriptWords::Content12))
    return;
  findings.AddElement(BookmarkLost, item, {item.GetValue("identifier")});
}

}  // namespace

void PlexoScriptCheck::Run(const PlexoCheckedPackage& package, const PlexoScriptIndex& scripts,
                           PlexoFindingList& findings) {
  if (package.GetEdition() == PlexoEdition::Unknown) return;
  const bool is2004 = IsPlexo2004(package.GetEdition());
  const Api& own = is2004 ? kApi2004 : kApi12;
  const auto& items = package.GetItems();
  const bool hasSeveral = std::count_if(items.begin(), items.end(), [&](const auto* item) {
                            return package.GetResourceOf(*item) != nullptr;
                          }) > 1;
  std::unordered_set<const PlexoResource*> seen;
  for (const PlexoManifestElement* item : items) {
    const PlexoResource* resource = package.GetResourceOf(*item);
    if (resource == nullptr || !scripts.Knows(*resource) || !seen.insert(resource).second) continue;
    if (resource->scormType == "sco") {
      const PlexoScriptWords words = scripts.GetWordsOf(*resource);
      CheckSco(*item, words, is2004, findings);
      if (hasSeveral) CheckEnd(*item, words, is2004, findings);
      if (is2004) CheckBookmark(*item, words, findings);
    } else if (resource->scormType == "asset" && Calls(scripts.GetListedWords(*resource), own)) {
      findings.AddElement(AssetUsesApi, *item, {item->GetValue("identifier"), own.startName});
    }
  }
}
