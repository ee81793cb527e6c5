// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/AdoptCommand.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

#include "apps/cli/AdoptWords.h"
#include "apps/cli/FindingOutput.h"
#include "apps/cli/PackageFile.h"
#include "check/PlexoFindingTable.h"

namespace fs = std::filesystem;

ExitStatus AdoptCommand::Run() {
  if (const auto failure = CheckPackageFile(options.package, "a SCORM package", ExitStatus::Machine)) {
    return output.Fail({*failure});
  }
  PlexoAdopter adopter(MakeRequest(), PlexoAdopter::GetLaunchInstallFolder());
  const PlexoAdoptResult examined = adopter.Examine();
  if (examined.code != kTzSuccess) return FailBy(examined);
  static_cast<void>(session.TakeProblems());

  const std::vector<std::string> names = MakeNames(adopter.GetItems().size());
  ExitStatus status = ExitStatus::Done;
  const auto targets = MakeTargets(names, status);
  if (!targets) return status;
  const PlexoAdoptResult written = adopter.Write(*targets);
  if (written.code != kTzSuccess) return FailBy(written);
  if (output.IsJson()) {
    PrintJson(adopter, names, examined.findings);
  } else {
    std::vector<PlexoFinding> findings = examined.findings;
    SortByImportance(findings);
    PrintText(adopter, names, findings);
  }
  return ExitStatus::Done;
}

PlexoAdoptRequest AdoptCommand::MakeRequest() const {
  PlexoAdoptRequest request;
  request.package = TzPath::FromNative(options.package);
  request.item = options.item;
  request.completion = options.completion;
  // Whether content may never pass matters to a course that waits for it, and takes reading every script.
  request.scripts = PlexoAdoptRequest::Scripts::Skip;
  if (!options.folder.empty()) request.place = PlexoAdoptRequest::Place::List;
  if (options.scormVersion == "1.2") request.edition = PlexoCourseEdition::Scorm12;
  if (options.scormVersion == "2004") request.edition = PlexoCourseEdition::Scorm2004;
  return request;
}

std::vector<std::string> AdoptCommand::MakeNames(std::size_t count) const {
  if (!options.output.empty()) return {options.output};
  const fs::path source(options.package);
  const std::string base = source.stem().native();
  if (options.folder.empty()) return {(source.parent_path() / (base + "-adopted.zip")).native()};
  std::vector<std::string> names = MakeAdoptedNames(base, count);
  for (std::string& name : names) name = (fs::path(options.folder) / name).native();
  return names;
}

std::optional<std::vector<TzPath>> AdoptCommand::MakeTargets(const std::vector<std::string>& names,
                                                             ExitStatus& status) {
  std::vector<CommandFailure> failures;
  if (const auto failure = MakeFolder()) failures.push_back(*failure);
  std::vector<TzPath> targets;
  for (const std::string& name : names) {
    if (!failures.empty()) break;
    const PackageTarget target(name);
    if (target.IsSameFileAs(TzPath::FromNative(options.package))) {
      failures.push_back({ExitStatus::Usage, name, "is the package that is adopted; write to another", {}});
    } else if (const auto failure = target.Check(options.existing)) {
      failures.push_back(*failure);
    }
    targets.push_back(target.folder / target.fileName);
  }
  if (failures.empty()) return targets;
  status = output.Fail(failures);
  return std::nullopt;
}

std::optional<CommandFailure> AdoptCommand::MakeFolder() const {
  std::error_code error;
  if (options.folder.empty() || fs::exists(options.folder, error)) return std::nullopt;
  if (fs::create_directory(options.folder, error)) return std::nullopt;
  const bool lacksParent = error == std::errc::no_such_file_or_directory;
  return CommandFailure{lacksParent ? ExitStatus::Usage : ExitStatus::Machine,
                        options.folder,
                        "the folder can't be made: " + error.message(),
                        {}};
}

ExitStatus AdoptCommand::FailBy(const PlexoAdoptResult& result) {
  return output.Fail({DescribeAdoptFailure(
      result, options.package, "--item ID takes one of them, -d FOLDER makes a package of each", session)});
}

void AdoptCommand::PrintText(const PlexoAdopter& adopter, const std::vector<std::string>& names,
                             const std::vector<PlexoFinding>& findings) {
  for (std::size_t index = 0; index < names.size(); ++index) {
    output.PrintLine(names[index]);
    output.PrintLine("  " + adopter.GetItems()[index].title);
  }
  PrintFindings(findings);
  if (adopter.GetReasons().empty()) {
    output.PrintLine(options.package + ": a course takes it as it is, too");
  }
}

void AdoptCommand::PrintFindings(const std::vector<PlexoFinding>& findings) {
  constexpr std::size_t kMostShown = 10;
  for (auto first = findings.begin(); first != findings.end();) {
    const auto end =
        std::find_if(first, findings.end(), [&](const PlexoFinding& other) { return other.id != first->id; });
    const PlexoFindingKind& kind = PlexoFindingTable::GetKind(first->id);
    const auto count = static_cast<std::size_t>(end - first);
    for (std::size_t index = 0; index < std::min(count, kMostShown); ++index) {
      output.PrintLine(std::string(PlexoFindingTable::GetName(kind.severity)) + " " + std::string(kind.code) +
                       ": " + PlexoFindingTable::GetText(first[static_cast<std::ptrdiff_t>(index)]));
    }
    if (count > kMostShown) {
      output.PrintLine("  and " + std::to_string(count - kMostShown) + " more; --json lists them all");
    }
    first = end;
  }
}

void AdoptCommand::PrintJson(const PlexoAdopter& adopter, const std::vector<std::string>& names,
                             const std::vector<PlexoFinding>& findings) {
  using Json = nlohmann::ordered_json;
  Json packages = Json::array();
  for (std::size_t index = 0; index < names.size(); ++index) {
    const PlexoAdoptedItem& item = adopter.GetItems()[index];
    packages.push_back({{"path", names[index]}, {"title", item.title}, {"item", item.identifier}});
  }
  const Json document = {{"source", options.package},
                         {"needed", !adopter.GetReasons().empty()},
                         {"packages", packages},
                         {"findings", DescribeFindings(findings)}};
  output.PrintDocument(document.dump(2, ' ', false, Json::error_handler_t::replace));
}
