// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/AdoptWords.h"

#include <algorithm>
#include <array>

#include "apps/cli/PackageReasons.h"
#include "check/PlexoFindingTable.h"

namespace {

using enum PlexoFindingId;

/// What an author wants to know of an adoption, the most important first. The others come behind these, and
/// at the end those that only mend how the package is written.
constexpr std::array kImportant = {SequencingDropped,     PrerequisitesDropped, ItemLeftOut,
                                   OrganizationsLeftOut,  LaunchValueReplaced,  LaunchDataUnread,
                                   LimitDropped,          LaunchDataDropped,    ListedFileAbsent,
                                   MetadataFileAbsent,    ItemMended,           ItemsSeparated,
                                   PackagesOutgrowSource, SiblingPageLinked,    SiblingLinksDead,
                                   OtherItemsLeftOut,     LaunchPageAdded,      CompletionPasses,
                                   OtherResourceLaunched, TitleSupplied,        OtherTitleRead};
constexpr std::array kMended = {VersionCorrected, PrefixRebound, EncodingChanged, HrefMatched, FilesListed};

std::size_t GetRank(const PlexoFinding& finding) {
  const auto place = std::ranges::find(kImportant, finding.id) - kImportant.begin();
  const bool isMended = std::ranges::find(kMended, finding.id) != kMended.end();
  return static_cast<std::size_t>(place) + (isMended ? 1 : 0);
}

bool IsError(const PlexoFinding& finding) {
  return PlexoFindingTable::GetKind(finding.id).severity == PlexoSeverity::Error;
}

/// What a message that names the package itself needn't say again.
std::string DropSubject(const std::string& text) {
  constexpr std::string_view kSubject = "the package: ";
  return text.starts_with(kSubject) ? text.substr(kSubject.size()) : text;
}

CommandFailure DescribeRefusal(const PlexoAdoptResult& result, const std::string& subject,
                               const std::string& severalItems) {
  CommandFailure failure{ExitStatus::Refused, subject, {}, {}};
  for (const PlexoFinding& finding : result.findings) {
    // What keeps an item from being launched is the reason why none can be.
    if (!IsError(finding) && finding.id != PlexoFindingId::ItemLeftOut) continue;
    const std::string text = DropSubject(PlexoFindingTable::GetText(finding));
    if (!IsError(finding) || !failure.message.empty()) {
      failure.reasons.push_back(text);
      continue;
    }
    failure.message = text;
    failure.reasons.push_back(
        finding.id == PlexoFindingId::SeveralItems ? severalItems : PlexoFindingTable::GetWayOut(finding));
  }
  constexpr std::size_t kMostReasons = 10;
  failure.reasons.resize(std::min(failure.reasons.size(), kMostReasons));
  return failure;
}

}  // namespace

CommandFailure DescribeAdoptFailure(const PlexoAdoptResult& result, const std::string& subject,
                                    const std::string& severalItems, CommandSession& session) {
  const std::vector<TzProblem> problems = session.TakeProblems();
  if (result.code == kTzCancelled) return {ExitStatus::Interrupted, subject, "interrupted", {}};
  if (result.code == kTzBadContent && std::ranges::any_of(result.findings, IsError)) {
    return DescribeRefusal(result, subject, severalItems);
  }
  const PackageReasons reasons(session, TzPath::FromNative(subject));
  const bool isMachine = result.code == kTzMachineFailure || HasMachineFailure(problems);
  return {isMachine ? ExitStatus::Machine : ExitStatus::Refused, subject, result.failure,
          reasons.Describe(problems)};
}

bool IsRefusedByAdopter(const PlexoAdoptResult& result) {
  static constexpr std::array kRefusals = {
      ManifestIllFormed, ManifestTooLarge, RootNotManifest, ForeignFormat,    SeveralManifests, EditionUntold,
      NothingToLaunch,   SeveralItems,     ItemUnknown,     PackagesTooLarge, TooManyItems};
  return result.code == kTzBadContent && std::ranges::any_of(result.findings, [](const auto& finding) {
           return std::ranges::find(kRefusals, finding.id) != kRefusals.end();
         });
}

void SortByImportance(std::vector<PlexoFinding>& findings) {
  std::ranges::stable_sort(findings, {}, GetRank);
}

bool IsToldByItself(const PlexoFinding& finding) {
  static constexpr std::array kTold = {ItemLeftOut,       CompletionMayNotPass,  ReportsNothing,
                                       SuccessUncertain,  LaunchValueReplaced,   LaunchDataUnread,
                                       SiblingPageLinked, PackagesOutgrowSource, SiblingLinksDead};
  return std::ranges::find(kTold, finding.id) != kTold.end();
}

std::string DescribeAdoption(const PlexoAdopter& adopter, const std::vector<PlexoFinding>& findings) {
  std::vector<PlexoFinding> changes;
  for (const PlexoFinding& finding : findings) {
    const bool isWarning = PlexoFindingTable::GetKind(finding.id).severity == PlexoSeverity::Warning;
    if (isWarning && !IsToldByItself(finding)) changes.push_back(finding);
  }
  // A reason may be a hint, which says more than nothing.
  if (changes.empty()) changes = adopter.GetReasons();
  if (changes.empty()) return "the course file asks for it";
  SortByImportance(changes);
  std::string text = PlexoFindingTable::GetText(changes.front());
  if (changes.size() > 1) text += "; 'plexo adopt' tells " + std::to_string(changes.size() - 1) + " more";
  return text;
}

std::vector<std::string> MakeAdoptedNames(const std::string& baseName, std::size_t count) {
  if (count == 1) return {baseName + ".zip"};
  const std::size_t width = std::to_string(count).size();
  std::vector<std::string> names;
  for (std::size_t index = 1; index <= count; ++index) {
    const std::string number = std::to_string(index);
    std::string name = baseName + "-";
    names.push_back(name.append(width - number.size(), '0').append(number).append(".zip"));
  }
  return names;
}
