// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/InspectCommand.h"

#include <nlohmann/json.hpp>

#include "apps/cli/AdoptWords.h"
#include "apps/cli/FindingOutput.h"
#include "apps/cli/PackageFile.h"
#include "apps/cli/PackageReasons.h"
#include "apps/cli/ScratchFolder.h"
#include "host/files/TzZipUtils.h"

namespace {

const char* GetName(PlexoParseFailure failure) {
  switch (failure) {
    case PlexoParseFailure::PARSE:
      return "PARSE";
    case PlexoParseFailure::VERSION:
      return "VERSION";
    case PlexoParseFailure::NONE:
      break;
  }
  return "NONE";
}

}  // namespace

ExitStatus InspectCommand::Run() {
  if (const auto failure = CheckPackageFile(options.package, "a SCO package", ExitStatus::Machine)) {
    return output.Fail({*failure});
  }
  PlexoAdoptRequest request;
  request.package = TzPath::FromNative(options.package);
  request.place = PlexoAdoptRequest::Place::List;
  request.scripts = PlexoAdoptRequest::Scripts::Skip;
  if (options.scormVersion == "1.2") request.edition = PlexoCourseEdition::Scorm12;
  if (options.scormVersion == "2004") request.edition = PlexoCourseEdition::Scorm2004;
  PlexoAdopter adopter(std::move(request), PlexoAdopter::GetLaunchInstallFolder());
  const PlexoAdoptResult adoption = adopter.Examine();
  if (adoption.code == kTzCancelled) return output.Fail({DescribeRefusal(adoption)});
  const bool isAdopted = adoption.code == kTzSuccess && !adopter.GetReasons().empty();
  if (isAdopted && !output.IsJson()) {
    PrintAdoption(adopter, adoption);
    return ExitStatus::Done;
  }
  return TellReading(adopter, adoption);
}

ExitStatus InspectCommand::TellReading(const PlexoAdopter& adopter, const PlexoAdoptResult& adoption) {
  const bool isAdopted = adoption.code == kTzSuccess && !adopter.GetReasons().empty();
  const bool isRefused = IsRefusedByAdopter(adoption);
  static_cast<void>(session.TakeProblems());
  const std::optional<TzPath> folder = MakeScratchFolder("inspect");
  if (!folder) return FailWithoutFolder();
  const TzPath manifestFile = *folder / "imsmanifest.xml";
  if (const auto failure = ExtractManifest(manifestFile); failure && !isAdopted) {
    return output.Fail({isRefused ? DescribeRefusal(adoption) : *failure});
  }
  std::string courseVersion = options.scormVersion;
  if (courseVersion.empty()) {
    const std::string named = Read(manifestFile, "").manifest.scormVersion.GetUTF8String();
    courseVersion = named == "1.2" ? "1.2" : "2004";
    static_cast<void>(session.TakeProblems());
  }
  const Reading reading = Read(manifestFile, courseVersion);
  const std::vector<TzProblem> problems = session.TakeProblems();
  if (output.IsJson()) {
    PrintJson(reading, adopter, adoption);
  } else if (!isRefused) {
    PrintText(reading);
  }
  if (isAdopted) return ExitStatus::Done;
  if (isRefused) {
    output.Explain(DescribeRefusal(adoption));
    return ExitStatus::Refused;
  }
  // A manifest that never told its version is no failure of the reader, and refused by the course.
  const bool isOfCourse = reading.manifest.scormVersion.GetUTF8String() == courseVersion;
  if (reading.hasFailed || !isOfCourse) return ExplainFailure(reading, manifestFile, courseVersion);
  for (const TzProblem& problem : problems) output.Warn(options.package + ": its " + problem.GetText());
  return HasMachineFailure(problems) ? ExitStatus::Machine : ExitStatus::Done;
}

ExitStatus InspectCommand::FailWithoutFolder() {
  const PackageReasons reasons(session, TzPath::FromNative(options.package));
  return output.Fail({{ExitStatus::Machine, options.package, "there is no folder to unpack its manifest into",
                       reasons.Describe(session.TakeProblems())}});
}

std::optional<CommandFailure> InspectCommand::ExtractManifest(const TzPath& manifestFile) {
  const TzPath package = TzPath::FromNative(options.package);
  const TzErrorCodeEnum result = TzZipUtils::ExtractFile(package, "imsmanifest.xml", manifestFile);
  if (result == kTzSuccess) return std::nullopt;
  const std::vector<TzProblem> problems = session.TakeProblems();
  PackageReasons reasons(session, package);
  CommandFailure failure{ExitStatus::Refused, options.package, session.GetWords("kPlexoErrorUnzip"), {}};
  if (result == kTzCancelled) {
    failure.status = ExitStatus::Interrupted;
    failure.message = "interrupted";
  } else if (result == kTzFailure && !HasMachineFailure(problems)) {
    failure.message = session.GetWords("kPlexoErrorInvalidSCORM");
    failure.reasons = reasons.ExplainMissingManifest();
  } else {
    if (HasMachineFailure(problems)) failure.status = ExitStatus::Machine;
    failure.reasons = reasons.Describe(problems);
  }
  return failure;
}

InspectCommand::Reading InspectCommand::Read(const TzPath& manifestFile, const std::string& courseVersion) {
  PlexoXMLParser parser(courseVersion);
  parser.setSource(TzFile(manifestFile));
  parser.parse();
  Reading reading;
  reading.manifest.masteryScore = {};
  reading.manifest.maxTimeAllowed = {};
  reading.manifest.timeLimitAction = {};
  parser.CopyManifestTo(reading.manifest);
  reading.failure = parser.GetFailureCode();
  reading.hasFailed = parser.HasFailed();
  return reading;
}

void InspectCommand::PrintText(const Reading& reading) {
  const PlexoSCOManifest& manifest = reading.manifest;
  const std::pair<const char*, TzString> fields[] = {
      {"identifier", manifest.identifier},
      {"title", manifest.title},
      {"launch page", manifest.href},
      {"metadata file", manifest.metadataLocation},
      {"objective", manifest.objectiveId},
      {"SCORM version", manifest.scormVersion},
      {"mastery score", manifest.masteryScore},
      {"time allowed", manifest.maxTimeAllowed},
      {"time limit action", manifest.timeLimitAction},
      {"launch data", manifest.dataFromLMS},
  };
  std::vector<std::vector<std::string>> rows;
  for (const auto& [name, value] : fields) {
    rows.push_back({name, value.IsEmpty() ? "-" : MakePrintable(value.GetUTF8String())});
  }
  rows.push_back({"files", std::to_string(manifest.files.size())});
  for (const std::string& line : AlignColumns(rows)) output.PrintLine(line);
  for (const TzString& file : manifest.files) output.PrintLine("  " + MakePrintable(file.GetUTF8String()));
}

void InspectCommand::PrintAdoption(const PlexoAdopter& adopter, const PlexoAdoptResult& adoption) {
  output.PrintLine("adopted first: " + MakePrintable(DescribeAdoption(adopter, adoption.findings)));
  for (std::size_t index = 0; index < adopter.GetItems().size(); ++index) {
    const PlexoAdoptedItem& item = adopter.GetItems()[index];
    std::vector<std::vector<std::string>> rows = {
        {"identifier", item.identifier.empty() ? "-" : MakePrintable(item.identifier)},
        {"title", MakePrintable(item.title)},
        {"launch page", MakePrintable(item.page)},
        {"SCORM version", std::string(GetScormVersion(item.courseEdition))},
        {"files", std::to_string(adopter.CountFiles(index))}};
    if (item.contentEdition != item.courseEdition) {
      rows[3][1] +=
          ", through a page that translates its SCORM " + std::string(GetScormVersion(item.contentEdition));
    }
    for (const std::string& line : AlignColumns(rows)) output.PrintLine("  " + line);
    if (index + 1 < adopter.GetItems().size()) output.PrintLine("");
  }
}

CommandFailure InspectCommand::DescribeRefusal(const PlexoAdoptResult& adoption) {
  return DescribeAdoptFailure(adoption, options.package, {}, session);
}

void InspectCommand::PrintJson(const Reading& reading, const PlexoAdopter& adopter,
                               const PlexoAdoptResult& adoption) {
  using Json = nlohmann::ordered_json;
  const PlexoSCOManifest& manifest = reading.manifest;
  Json files = Json::array();
  for (const TzString& file : manifest.files) files.push_back(file.GetUTF8String());
  Json document = {{"identifier", manifest.identifier.GetUTF8String()},
                   {"title", manifest.title.GetUTF8String()},
                   {"href", manifest.href.GetUTF8String()},
                   {"metadataLocation", manifest.metadataLocation.GetUTF8String()},
                   {"objectiveId", manifest.objectiveId.GetUTF8String()},
                   {"scormVersion", manifest.scormVersion.GetUTF8String()},
                   {"masteryScore", manifest.masteryScore.GetUTF8String()},
                   {"hasMasteryScore", manifest.hasMasteryScore},
                   {"maxTimeAllowed", manifest.maxTimeAllowed.GetUTF8String()},
                   {"hasMaxTimeAllowed", manifest.hasMaxTimeAllowed},
                   {"timeLimitAction", manifest.timeLimitAction.GetUTF8String()},
                   {"hasTimeLimitAction", manifest.hasTimeLimitAction},
                   {"dataFromLMS", manifest.dataFromLMS.GetUTF8String()},
                   {"hasDataFromLMS", manifest.hasDataFromLMS},
                   {"files", files},
                   {"failed", reading.hasFailed},
                   {"failureCode", GetName(reading.failure)}};
  Json items = Json::array();
  for (std::size_t index = 0; index < adopter.GetItems().size(); ++index) {
    const PlexoAdoptedItem& item = adopter.GetItems()[index];
    items.push_back({{"identifier", item.identifier},
                     {"title", item.title},
                     {"page", item.page},
                     {"scormVersion", GetScormVersion(item.courseEdition)},
                     {"contentScormVersion", GetScormVersion(item.contentEdition)},
                     {"files", adopter.CountFiles(index)}});
  }
  document["adoption"] = {{"possible", adoption.code == kTzSuccess},
                          {"needed", !adopter.GetReasons().empty()},
                          {"items", items},
                          {"findings", DescribeFindings(adoption.findings)}};
  output.PrintDocument(document.dump(2, ' ', false, Json::error_handler_t::replace));
}

ExitStatus InspectCommand::ExplainFailure(const Reading& reading, const TzPath& manifestFile,
                                          const std::string& courseVersion) {
  const bool isUnread = reading.hasFailed && reading.failure != PlexoParseFailure::VERSION;
  const char* key = isUnread ? "kPlexoErrorParseManifest" : "kPlexoErrorIncompatibleSCORMVersion";
  PackageReasons reasons(session, TzPath::FromNative(options.package));
  output.Explain({ExitStatus::Refused, options.package, session.GetWords(key),
                  reasons.ExplainManifest(manifestFile, courseVersion)});
  return ExitStatus::Refused;
}
