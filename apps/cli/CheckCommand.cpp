// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CheckCommand.h"

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>

#include "apps/cli/FindingOutput.h"
#include "apps/cli/PackageFile.h"
#include "check/PlexoFindingTable.h"
#include "core/PlexoInstallFolder.h"

namespace {

constexpr std::array kSeverities = {PlexoSeverity::Error, PlexoSeverity::Warning, PlexoSeverity::Hint};

PlexoSeverity GetSeverity(const PlexoFinding& finding) {
  return PlexoFindingTable::GetKind(finding.id).severity;
}

auto Count(const std::vector<PlexoFinding>& findings, PlexoSeverity severity) {
  return std::count_if(findings.begin(), findings.end(),
                       [severity](const PlexoFinding& finding) { return GetSeverity(finding) == severity; });
}

/// "2 errors, 1 warning", without those that there are none of.
std::string Summarise(const std::vector<PlexoFinding>& findings) {
  std::string summary;
  for (const PlexoSeverity severity : kSeverities) {
    const auto count = Count(findings, severity);
    if (count == 0) continue;
    if (!summary.empty()) summary += ", ";
    summary += std::to_string(count) + " " + std::string(PlexoFindingTable::GetName(severity));
    if (count > 1) summary += "s";
  }
  return summary.empty() ? "nothing found" : summary;
}

/// Where a finding is, if its text doesn't say that already.
std::string DescribePlace(const PlexoPlace& place) {
  if (place.line == 0) return {};
  std::string text = place.file + ":" + std::to_string(place.line) + ": ";
  if (!place.element.empty()) text += place.element + ": ";
  return text;
}

/// "hint PLX-212: A SCO is never launched".
std::string DescribeKind(const PlexoFindingKind& kind) {
  return std::string(PlexoFindingTable::GetName(kind.severity)) + " " + std::string(kind.code) + ": " +
         std::string(kind.title);
}

std::string DescribeBound(const PlexoPlayExtent& play) {
  return "  played by " + std::to_string(play.learners) + " learners with " + std::to_string(play.requests) +
         " requests; the course has more states than the " + std::to_string(play.states) +
         " looked at, so that other learners may find other ways";
}

}  // namespace

ExitStatus CheckCommand::Run() {
  if (options.task == CheckOptions::Task::List) {
    std::string page = PlexoFindingTable::WriteMarkdown();
    page.pop_back();  // The output ends the last line itself.
    output.PrintDocument(page);
    return ExitStatus::Done;
  }
  if (const auto failure = CheckPackageFile(options.package, "a SCORM package", ExitStatus::Refused)) {
    return output.Fail({*failure});
  }
  const PlexoPackageChecker checker(GetSchemaInstallFolder());
  const PlexoCheckResult result = checker.Check(TzPath::FromNative(options.package));
  static_cast<void>(session.TakeProblems());
  if (result.code == kTzCancelled) {
    return output.Fail({{ExitStatus::Interrupted, options.package, "interrupted", {}}});
  }
  if (result.code != kTzSuccess) {
    return output.Fail({{ExitStatus::Refused, options.package, result.failure, {}}});
  }
  if (!options.witness.empty()) return PrintWitness(result.findings);
  if (output.IsJson()) {
    PrintJson(result);
  } else {
    PrintText(result);
  }
  const bool fails = Count(result.findings, PlexoSeverity::Error) > 0 ||
                     (options.failing == CheckOptions::Failing::Warnings &&
                      Count(result.findings, PlexoSeverity::Warning) > 0);
  return fails ? ExitStatus::Findings : ExitStatus::Done;
}

ExitStatus CheckCommand::PrintWitness(const std::vector<PlexoFinding>& findings) {
  for (const PlexoFinding& finding : findings) {
    if (finding.witness.empty() || PlexoFindingTable::GetKind(finding.id).code != options.witness) continue;
    output.PrintDocument(std::string_view(finding.witness).substr(0, finding.witness.size() - 1));
    return ExitStatus::Done;
  }
  return output.Fail(
      {{ExitStatus::Usage,
        options.package,
        "has no finding '" + options.witness + "' that comes of playing the course",
        {"'plexo check' without --witness shows the findings and which of them have a script"}}});
}

void CheckCommand::PrintText(const PlexoCheckResult& result) {
  const std::vector<PlexoFinding>& findings = result.findings;
  std::map<std::pair<PlexoSeverity, PlexoFindingId>, std::vector<const PlexoFinding*>> kinds;
  for (const PlexoFinding& finding : findings) kinds[{GetSeverity(finding), finding.id}].push_back(&finding);
  for (const auto& [key, ofKind] : kinds) PrintKind(ofKind);
  output.PrintLine(options.package + ": " + Summarise(findings));
  if (result.play.learners > 0 && !result.play.isComplete) output.PrintLine(DescribeBound(result.play));
}

void CheckCommand::PrintKind(const std::vector<const PlexoFinding*>& findings) {
  const PlexoFindingKind& kind = PlexoFindingTable::GetKind(findings.front()->id);
  const bool isShort = options.extent == CheckOptions::Extent::Short;
  if (isShort && kind.isListedBriefly) {
    PrintBriefly(findings);
    return;
  }
  constexpr std::size_t kMostShown = 10;
  const std::size_t shown = isShort ? std::min(findings.size(), kMostShown) : findings.size();
  output.PrintLine(DescribeKind(kind));
  for (std::size_t index = 0; index < shown; ++index) {
    output.PrintLine("  " + DescribePlace(findings[index]->place) +
                     PlexoFindingTable::GetText(*findings[index]));
  }
  if (findings.size() > shown) {
    output.PrintLine("  and " + std::to_string(findings.size() - shown) + " more; --verbose shows them all");
  }
  output.PrintLine("  Way out: " + PlexoFindingTable::GetWayOut(*findings.front()));
  if (!findings.front()->witness.empty()) {
    output.PrintLine("  See it: plexo check " + options.package + " --witness " + std::string(kind.code) +
                     " | plexo play " + options.package);
  }
  output.PrintLine("");
}

void CheckCommand::PrintBriefly(const std::vector<const PlexoFinding*>& findings) {
  constexpr std::size_t kMostNamed = 3;
  std::string line = DescribeKind(PlexoFindingTable::GetKind(findings.front()->id)) + ": ";
  if (findings.size() > kMostNamed) line += std::to_string(findings.size()) + ", such as ";
  for (std::size_t index = 0; index < std::min(findings.size(), kMostNamed); ++index) {
    line += (index > 0 ? ", '" : "'") + findings[index]->words.front() + "'";
  }
  output.PrintLine(line + "; --verbose tells more");
  output.PrintLine("");
}

void CheckCommand::PrintJson(const PlexoCheckResult& result) {
  const std::vector<PlexoFinding>& findings = result.findings;
  using Json = nlohmann::ordered_json;
  const Json document = {{"package", options.package},
                         {"errors", Count(findings, PlexoSeverity::Error)},
                         {"warnings", Count(findings, PlexoSeverity::Warning)},
                         {"hints", Count(findings, PlexoSeverity::Hint)},
                         {"played",
                          {{"learners", result.play.learners},
                           {"requests", result.play.requests},
                           {"states", result.play.states},
                           {"complete", result.play.isComplete}}},
                         {"findings", DescribeFindings(findings)}};
  output.PrintDocument(document.dump(2, ' ', false, Json::error_handler_t::replace));
}
