// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoSequencingReader.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "check/PlexoActivityRulesReader.h"
#include "sequencer/PlexoDefinitionBuilder.h"

namespace {

using enum PlexoVocabulary;

constexpr PlexoWord<std::uint8_t> kHiddenControls[] = {
    {"previous", kPlexoHidesPrevious},
    {"continue", kPlexoHidesContinue},
    {"exit", kPlexoHidesExit},
    {"exitAll", kPlexoHidesExitAll},
    {"abandon", kPlexoHidesAbandon},
    {"abandonAll", kPlexoHidesAbandonAll},
    {"suspendAll", kPlexoHidesSuspendAll},
};

PlexoSequencingEdition GetSequencingEdition(PlexoEdition edition) {
  if (edition == PlexoEdition::Scorm2004Fourth) return PlexoSequencingEdition::Fourth;
  return edition == PlexoEdition::Scorm2004Second ? PlexoSequencingEdition::Second
                                                  : PlexoSequencingEdition::Third;
}

/// An identifier or title as a message shows it: foreign text may be of any length.
std::string Quote(const std::string& text) {
  constexpr std::size_t kMost = 100;
  return "'" + (text.size() > kMost ? text.substr(0, kMost) + "..." : text) + "'";
}

/// Cut between characters of UTF-8.
std::string Cut(const std::string& title) {
  if (title.size() <= PlexoSequencingReader::kMaxTitleBytes) return title;
  constexpr unsigned kContinuationMask = 0xC0;
  constexpr unsigned kContinuation = 0x80;
  std::size_t end = PlexoSequencingReader::kMaxTitleBytes;
  while (end > 0 && (static_cast<unsigned char>(title[end]) & kContinuationMask) == kContinuation) --end;
  return title.substr(0, end);
}

class ManifestReading {
 public:
  ManifestReading(const PlexoCheckedPackage& source, PlexoSequencingReading& target)
      : package(source),
        result(target),
        values(target.notes),
        edition(GetSequencingEdition(source.GetEdition())),
        builder(edition) {}

  void Run(const PlexoManifestElement& organization) {
    CollectShared();
    bool areGlobalsForSystem = true;
    values.ReadFlag(organization, AdlSequencing, "objectivesGlobalToSystem", areGlobalsForSystem);
    builder.SetGlobalsForSystem(areGlobalsForSystem);
    AddActivity(organization);
    result.definition = builder.Build();
    if (result.definition != nullptr) return;
    const PlexoIndex activity = builder.GetFaultyActivity();
    result.failure = PlexoDefinitionBuilder::GetText(builder.GetFault());
    if (activity < result.sources.size()) result.failureLine = result.sources[activity].element->line;
  }

 private:
  void CollectShared() {
    for (const auto* collection : package.manifest.GetRoot()->FindAll(Sequencing, "sequencingCollection")) {
      for (const PlexoManifestElement* sequencing : collection->FindAll(Sequencing, "sequencing")) {
        if (const auto* name = sequencing->GetAttribute("ID"); name != nullptr)
          shared.try_emplace(*name, sequencing);
      }
    }
  }

  /// The depth of the recursion is that of the document, which the parser bounds.
  void AddActivity(const PlexoManifestElement& element) {
    if (builder.GetFault() != PlexoDefinitionFault::None) return;
    const auto items = element.FindAll(Packaging, "item");
    PlexoActivityRules rules;
    ReadItem(element, rules);
    ReadSequencing(element, rules);
    ReadThreshold(element, items.empty(), rules);
    result.sources.push_back(FindContent(element, items.empty()));
    builder.Open(std::move(rules));
    for (const PlexoManifestElement* item : items) AddActivity(*item);
    builder.Close();
  }

  void ReadItem(const PlexoManifestElement& element, PlexoActivityRules& rules) {
    rules.identifier = element.GetValue("identifier");
    if (rules.identifier.empty()) {
      result.notes.Add(element, "the " + element.name + " has no identifier, so that nothing can name it");
    } else if (!identifiers.insert(rules.identifier).second) {
      result.notes.Add(element, "the identifier " + Quote(rules.identifier) +
                                    " was given before; only the first activity can be named by it");
    }
    if (const auto* title = element.Find(Packaging, "title"); title != nullptr)
      rules.title = Cut(title->text);
    values.ReadFlag(element, "isvisible", rules.isVisible);
    const PlexoManifestElement* presentation = element.Find(Navigation, "presentation");
    if (presentation == nullptr) return;
    for (const auto* navigation : presentation->FindAll(Navigation, "navigationInterface")) {
      for (const auto* hidden : navigation->FindAll(Navigation, "hideLMSUI")) ReadHidden(*hidden, rules);
    }
  }

  void ReadHidden(const PlexoManifestElement& element, PlexoActivityRules& rules) {
    const auto* found =
        std::find_if(std::begin(kHiddenControls), std::end(kHiddenControls),
                     [&element](const auto& control) { return control.word == element.text; });
    if (found != std::end(kHiddenControls)) {
      rules.hiddenControls |= found->meaning;
    } else {
      result.notes.Add(element, "'hideLMSUI': there is no control " + Quote(element.text) + " to hide");
    }
  }

  void ReadSequencing(const PlexoManifestElement& element, PlexoActivityRules& rules) {
    const PlexoManifestElement* own = element.Find(Sequencing, "sequencing");
    if (own == nullptr) return;
    result.hasSequencing = true;
    const PlexoManifestElement* referred = nullptr;
    if (const auto* name = own->GetAttribute("IDRef"); name != nullptr) {
      const auto found = shared.find(*name);
      if (found != shared.end()) {
        referred = found->second;
      } else {
        result.notes.Add(*own, "the sequencing collection has no " + Quote(*name) + "; it is left out");
      }
    }
    PlexoActivityRulesReader(own, referred, result.notes).Read(rules);
  }

  // Before the 4th Edition the element's text is the threshold, and of content alone. That edition has
  // attributes, and clusters may have them too.
  void ReadThreshold(const PlexoManifestElement& element, bool isLeaf, PlexoActivityRules& rules) {
    const PlexoManifestElement* threshold = element.Find(Adlcp, "completionThreshold");
    if (threshold == nullptr) return;
    PlexoCompletionThreshold& completion = rules.completion;
    constexpr PlexoNumberRange kShares{0, 1};
    if (edition == PlexoSequencingEdition::Fourth) {
      values.ReadFlag(*threshold, "completedByMeasure", completion.isByMeasure);
      values.ReadNumber(*threshold, "minProgressMeasure", kShares, completion.minProgressMeasure);
      values.ReadNumber(*threshold, "progressWeight", {0, 1'000'000}, completion.progressWeight);
      if (!threshold->text.empty())
        result.notes.Add(*threshold, "'completionThreshold' has no text in the 4th Edition; it is ignored");
    } else if (threshold->text.empty() || !isLeaf) {
      result.notes.Add(*threshold, isLeaf ? "'completionThreshold' has no number; it is ignored"
                                          : "only content has a 'completionThreshold'; it is ignored");
    } else {
      completion.isByMeasure = true;
      values.ReadNumber(*threshold, kShares, completion.minProgressMeasure);
    }
  }

  PlexoActivitySource FindContent(const PlexoManifestElement& element, bool isLeaf) {
    PlexoActivitySource source{&element, nullptr, PlexoContentKind::None};
    if (!isLeaf) return source;
    source.resource = package.GetResourceOf(element);
    if (source.resource == nullptr) {
      result.notes.Add(element, "the " + element.name + " launches nothing that the package has");
      return source;
    }
    const std::string& type = source.resource->scormType;
    source.kind = type == "asset" ? PlexoContentKind::Asset : PlexoContentKind::Sco;
    if (type != "asset" && type != "sco")
      result.notes.Add(*source.resource->element,
                       "the resource is neither 'sco' nor 'asset'; it is played as a SCO");
    return source;
  }

  const PlexoCheckedPackage& package;
  PlexoSequencingReading& result;
  PlexoSequencingValues values;
  PlexoSequencingEdition edition;
  PlexoDefinitionBuilder builder;
  std::unordered_map<std::string_view, const PlexoManifestElement*> shared;
  std::unordered_set<std::string> identifiers;
};

const PlexoManifestElement* FindOrganization(const PlexoCheckedPackage& package, std::string_view named,
                                             PlexoReadingNotes& notes) {
  const auto& all = package.GetOrganizations();
  const auto find = [&all](std::string_view identifier) -> const PlexoManifestElement* {
    const auto found = std::find_if(all.begin(), all.end(), [identifier](const auto* organization) {
      return organization->GetValue("identifier") == identifier;
    });
    return found != all.end() ? *found : nullptr;
  };
  if (!named.empty()) return find(named);
  if (all.empty()) return nullptr;
  const PlexoManifestElement& list = *all.front()->parent;
  const std::string* chosen = list.GetAttribute("default");
  if (chosen == nullptr) return all.front();
  const PlexoManifestElement* organization = find(*chosen);
  if (organization != nullptr) return organization;
  notes.Add(list, "there is no organization " + Quote(*chosen) + "; the first one is played");
  return all.front();
}

std::string ExplainMissing(const PlexoCheckedPackage& package, std::string_view named) {
  std::string list;
  for (const PlexoManifestElement* organization : package.GetOrganizations())
    list += (list.empty() ? "" : ", ") + Quote(organization->GetValue("identifier"));
  if (list.empty()) return "the manifest has no organization, so there is nothing to play";
  return "there is no organization " + Quote(std::string(named)) + "; it has " + list;
}

}  // namespace

PlexoSequencingReading PlexoSequencingReader::Read(const PlexoCheckedPackage& package,
                                                   std::string_view organization) {
  PlexoSequencingReading reading;
  if (package.GetEdition() == PlexoEdition::Scorm12) {
    reading.failure =
        "the package is of SCORM 1.2, which leaves the order of its items to the LMS; only SCORM 2004 can be "
        "played";
    return reading;
  }
  if (package.GetEdition() == PlexoEdition::Unknown) {
    reading.failure = "the manifest's schemaversion names no edition of SCORM 2004";
    return reading;
  }
  const auto* chosen = FindOrganization(package, organization, reading.notes);
  if (chosen == nullptr) {
    reading.failure = ExplainMissing(package, organization);
  } else {
    ManifestReading(package, reading).Run(*chosen);
  }
  return reading;
}
