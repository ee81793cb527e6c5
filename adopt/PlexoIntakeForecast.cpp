// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoIntakeForecast.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_set>
#include <utility>

namespace {

using enum PlexoFindingId;
using enum PlexoVocabulary;

struct ReadName {
  PlexoVocabulary vocabulary;
  std::string_view name;
  std::string_view prefix;
};
/// The names that the reader looks for, beside those of the launch data.
constexpr std::array kReadNames = {
    ReadName{Packaging, "manifest", ""},
    ReadName{Packaging, "organizations", ""},
    ReadName{Packaging, "item", ""},
    ReadName{Packaging, "title", ""},
    ReadName{Packaging, "resource", ""},
    ReadName{Packaging, "file", ""},
    ReadName{Adlcp, "location", "adlcp:"},
    ReadName{Adlcp, "masteryscore", "adlcp:"},
    ReadName{Adlcp, "datafromlms", "adlcp:"},
    ReadName{Adlcp, "maxtimeallowed", "adlcp:"},
    ReadName{Adlcp, "dataFromLMS", "adlcp:"},
    ReadName{Adlcp, "timelimitaction", "adlcp:"},
    ReadName{Adlcp, "timeLimitAction", "adlcp:"},
    ReadName{Sequencing, "primaryObjective", "imsss:"},
};

struct ReadAttribute {
  std::string_view element;
  std::string_view attribute;
};
constexpr std::array kReadAttributes = {
    ReadAttribute{"manifest", "version"},
    ReadAttribute{"item", "identifier"},
    ReadAttribute{"resource", "href"},
    ReadAttribute{"file", "href"},
    ReadAttribute{"primaryObjective", "objectiveID"},
};

/// The folders that a course of SCORM 2004 deletes from what it takes in.
constexpr std::array<std::string_view, 4> kSchemaFolders = {"common/", "extend/", "unique/", "vocab/"};

class Forecast {
 public:
  Forecast(const PlexoCheckedPackage& checked, const PlexoLaunchable& launched,
           const PlexoAdoptedSCO& adopted, PlexoAdoptFindings& adoptFindings)
      : package(checked), launchable(launched), sco(adopted), findings(adoptFindings) {}

  void ReadManifest() {
    for (const PlexoManifestElement& element : package.manifest.GetElements()) {
      CheckPrefix(element);
      CheckAttributes(element);
      CheckBase(element);
      CheckLimits(element);
      if (element.qualifiedName == "resource") lastResource = &element;
      if (element.qualifiedName == "title" && IsInOrganizations(element)) lastTitle = &element;
      if (element.qualifiedName == "file") Note(element.GetValue("href"));
    }
    CheckLast();
  }

  void CheckFiles(const std::vector<const TzZipEntry*>& content) {
    std::vector<const TzZipEntry*> unlisted;
    std::set<std::string_view> folders;
    for (const TzZipEntry* file : content) {
      if (IsAtTop(file->name) && !listed.contains(file->name)) unlisted.push_back(file);
      for (const std::string_view folder : kSchemaFolders) {
        if (file->name.starts_with(folder)) folders.insert(folder);
      }
    }
    if (!unlisted.empty()) CheckTopFiles(unlisted);
    if (sco.courseEdition == PlexoCourseEdition::Scorm12) return;
    for (const std::string_view folder : folders) {
      findings.AddReason(SchemaFolderNameTaken, {std::string(folder)});
    }
  }

 private:
  [[nodiscard]] static bool IsAtTop(std::string_view name) { return name.find('/') == std::string::npos; }

  void Note(std::string href) {
    if (IsAtTop(href)) listed.insert(std::move(href));
  }

  void CheckTopFiles(const std::vector<const TzZipEntry*>& unlisted) {
    std::vector<std::string> strays;
    std::vector<std::string> misread;
    const std::unordered_set<const TzZipEntry*> meant = GetMeantFiles();
    for (const TzZipEntry* file : unlisted) {
      (meant.contains(file) ? misread : strays).push_back(file->name);
    }
    for (const auto& [id, names] :
         {std::pair{TopFilesMoved, &strays}, std::pair{ListedOtherwise, &misread}}) {
      if (names->empty()) continue;
      findings.AddReason(id, {PlexoAdoptFindings::DescribeNames(names->front(), names->size())});
    }
  }

  [[nodiscard]] static bool IsInOrganizations(const PlexoManifestElement& element) {
    for (const auto* around = element.parent; around != nullptr; around = around->parent) {
      if (around->name == "organizations") return true;
    }
    return false;
  }

  /// The files that the manifest lists, in whatever way.
  [[nodiscard]] std::unordered_set<const TzZipEntry*> GetMeantFiles() const {
    std::unordered_set<const TzZipEntry*> meant;
    for (const PlexoResource& resource : package.GetResources()) {
      for (const PlexoFileReference& file : resource.files) {
        meant.insert(PlexoLaunchableItems::FindFile(file, package));
      }
    }
    return meant;
  }

  void CheckPrefix(const PlexoManifestElement& element) {
    for (const auto& [vocabulary, name, prefix] : kReadNames) {
      if (!element.Is(vocabulary, name)) continue;
      const std::string written =
          element.qualifiedName.substr(0, element.qualifiedName.size() - element.name.size());
      if (written == prefix) continue;
      const std::string known(prefix);
      findings.AddReason(PrefixRebound, {written, known.empty() ? "none" : "'" + known + "'"});
    }
  }

  void CheckAttributes(const PlexoManifestElement& element) {
    for (const auto& [name, attribute] : kReadAttributes) {
      if (element.name != name) continue;
      // A course of SCORM 1.2 does without the objective's.
      const bool isObjective = name == "primaryObjective";
      const bool isRead = sco.courseEdition == PlexoCourseEdition::Scorm2004 && IsInOrganizations(element);
      if (!isObjective || isRead) CheckAttribute(element, attribute);
    }
  }

  void CheckAttribute(const PlexoManifestElement& element, std::string_view wanted) {
    constexpr int kAttributesSeen = 10;
    const auto found =
        std::find_if(element.attributes.begin(), element.attributes.end(), [wanted](const auto& attribute) {
          return attribute.vocabulary == Packaging && attribute.name == wanted;
        });
    const std::vector<std::string> words = {element.name, element.GetValue("identifier"),
                                            std::string(wanted)};
    if (found == element.attributes.end()) {
      // A manifest without a version has a finding of its own.
      if (element.name != "manifest") findings.AddReason(AttributeMissing, words);
    } else if (found->number > kAttributesSeen) {
      findings.AddReason(AttributeTooFar, words);
    }
  }

  void CheckBase(const PlexoManifestElement& element) {
    const std::string* base = element.GetAttribute(Other, "base");
    if (base == nullptr || base->empty() || *base == "./") return;
    findings.AddReason(BaseResolved, {*base});
  }

  // A course of SCORM 2004 refuses them wherever they stand; what becomes of the launched item's own is told
  // by its data.
  void CheckLimits(const PlexoManifestElement& element) {
    if (sco.courseEdition == PlexoCourseEdition::Scorm12 || !IsInOrganizations(element)) return;
    if (!element.Is(Adlcp, "masteryscore") && !element.Is(Adlcp, "maxtimeallowed")) return;
    if (sco.HasLaunchPage() && element.parent == launchable.item) return;
    const char* limit = element.name == "masteryscore" ? "mastery score" : "time limit";
    findings.AddReason(LimitDropped, {element.parent->GetValue("identifier"), limit, element.text});
  }

  void CheckLast() {
    if (lastResource != nullptr && lastResource != launchable.resource->element &&
        lastResource->GetAttribute("href") != nullptr) {
      findings.AddReason(OtherResourceLaunched,
                         {lastResource->GetValue("identifier"), launchable.GetName(), launchable.page->name});
    }
    if (lastTitle == nullptr || lastTitle->text.empty()) {
      findings.AddReason(TitleSupplied, {launchable.GetName(), sco.title});
    } else if (lastTitle->parent != launchable.item && lastTitle->text != sco.title) {
      findings.AddReason(OtherTitleRead, {lastTitle->text, launchable.GetName(), sco.title});
    }
  }

  const PlexoCheckedPackage& package;
  const PlexoLaunchable& launchable;
  const PlexoAdoptedSCO& sco;
  PlexoAdoptFindings& findings;
  const PlexoManifestElement* lastResource = nullptr;
  const PlexoManifestElement* lastTitle = nullptr;
  /// What the manifest lists at the top, as it is written.
  std::unordered_set<std::string> listed;
};

}  // namespace

void PlexoIntakeForecast::AddReasons(const PlexoCheckedPackage& package, const PlexoLaunchable& launchable,
                                     const PlexoAdoptedSCO& sco,
                                     const std::vector<const TzZipEntry*>& content,
                                     PlexoAdoptFindings& findings) {
  Forecast forecast(package, launchable, sco, findings);
  forecast.ReadManifest();
  forecast.CheckFiles(content);
}
