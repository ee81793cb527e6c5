// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/AdoptWords.h"

#include <algorithm>

#include "apps/cli/PackageReasons.h"
#include "check/PlexoFindingTable.h"

namespace {

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
