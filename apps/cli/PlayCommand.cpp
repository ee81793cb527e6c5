// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PlayCommand.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "apps/cli/Interrupt.h"
#include "apps/cli/PackageFile.h"
#include "check/PlexoScratchFolder.h"
#include "host/xml/TzXMLParser.h"

namespace {

constexpr const char* kManifestName = "imsmanifest.xml";

std::string AddLine(const std::string& package, int line) {
  const std::string name = package + ": " + kManifestName;
  return line > 0 ? name + ":" + std::to_string(line) : name;
}

bool IsExpectation(const PlayLine& line) {
  using enum PlayLine::Kind;
  return line.kind == ExpectDelivery || line.kind == ExpectStatus || line.kind == ExpectMeasure ||
         line.kind == ExpectProspect;
}

}  // namespace

ExitStatus PlayCommand::Run() {
  if (const auto failure = CheckPackageFile(options.package, "a SCORM package", ExitStatus::Machine))
    return Fail(*failure);
  PlexoCheckedPackage package;
  if (const auto failure = ReadManifest(package)) return Fail(*failure);
  const PlexoSequencingReading reading = PlexoSequencingReader::Read(package, options.organization);
  if (reading.definition == nullptr) {
    const bool isOfPackage = reading.failureLine == 0;
    return Fail({ExitStatus::Refused,
                 isOfPackage ? options.package : AddLine(options.package, reading.failureLine),
                 reading.failure,
                 {}});
  }
  PrintNotes(reading);
  return Play(reading);
}

std::optional<CommandFailure> PlayCommand::ReadManifest(PlexoCheckedPackage& package) {
  const auto refuse = [this](std::string message) {
    static_cast<void>(session.TakeProblems());
    return CommandFailure{ExitStatus::Refused, options.package, std::move(message), {}};
  };
  const auto fail = [&](const TzZipFailure& failure) {
    CommandFailure described = refuse(failure.GetReason());
    if (failure.code == kTzCancelled)
      described = {ExitStatus::Interrupted, options.package, "interrupted", {}};
    if (failure.code == kTzMachineFailure) described.status = ExitStatus::Machine;
    return described;
  };
  if (const TzZipFailure failure = package.archive.Open(TzPath::FromNative(options.package)); failure)
    return fail(failure);
  const auto& entries = package.archive.GetEntries();
  const auto manifest = std::find_if(entries.begin(), entries.end(), [](const TzZipEntry& entry) {
    return entry.name == kManifestName && !entry.isFolder && !entry.isFaulty;
  });
  if (manifest == entries.end()) return refuse(std::string("it has no ") + kManifestName + " at its top");
  if (manifest->size > TzXMLParser::kMaximumSize)
    return refuse(std::string("its ") + kManifestName + " is too large to be one");
  const PlexoScratchFolder scratch("play");
  if (scratch.GetPath().IsEmpty())
    return fail({kTzMachineFailure, {}, "there is no folder for temporary files", 0});
  if (const TzZipFailure failure = package.ReadManifest(*manifest, scratch.GetPath() / kManifestName);
      failure)
    return fail(failure);
  if (!package.manifest.GetExcess().empty())
    return refuse(std::string("its ") + kManifestName + " has " + package.manifest.GetExcess());
  if (!package.manifest.GetError().empty()) {
    CommandFailure failure = refuse(package.manifest.GetError());
    failure.subject = AddLine(options.package, package.manifest.GetErrorLine());
    return failure;
  }
  if (package.manifest.GetRoot() == nullptr || package.manifest.GetRoot()->name != "manifest")
    return refuse(std::string("its ") + kManifestName + " has no manifest element");
  package.Index();
  static_cast<void>(session.TakeProblems());
  return std::nullopt;
}

void PlayCommand::PrintNotes(const PlexoSequencingReading& reading) {
  constexpr std::size_t kMostShown = 20;
  const auto& notes = reading.notes.Get();
  for (std::size_t at = 0; at < std::min(notes.size(), kMostShown); ++at)
    output.Warn(AddLine(options.package, notes[at].line) + ": " + notes[at].text);
  const std::size_t hidden = notes.size() - std::min(notes.size(), kMostShown) + reading.notes.GetDropped();
  if (hidden > 0) output.Warn(options.package + ": and " + std::to_string(hidden) + " more of this kind");
  if (!reading.hasSequencing) {
    output.Note(options.package +
                ": it has no sequencing, so the standard's defaults are played: every item may be chosen");
  }
}

ExitStatus PlayCommand::Play(const PlexoSequencingReading& reading) {
  PlayInput input(options.script);
  isTerminal = input.IsTerminal() && !output.IsJson();
  const PlayScript script(*reading.definition);
  std::string folder;
  if (!input.IsStandardInput()) folder = std::filesystem::path(options.script).parent_path().string();
  PlaySession play(reading, options.seed, folder);
  if (input.IsStandardInput()) return Converse(input, script, play);
  std::vector<PlayLine> lines;
  if (const auto failure = ReadScript(input, script, lines)) return Fail(*failure);
  for (const PlayLine& line : lines) {
    if (Interrupt::IsAsked()) return Fail({ExitStatus::Interrupted, GetScriptName(), "interrupted", {}});
    if (line.kind == PlayLine::Kind::Quit) break;
    if (const auto status = RunLine(line, play)) return *status;
  }
  return Finish();
}

std::optional<CommandFailure> PlayCommand::ReadScript(PlayInput& input, const PlayScript& script,
                                                      std::vector<PlayLine>& lines) const {
  int number = 0;
  while (const auto text = input.ReadLine()) {
    PlayMistake mistake;
    auto line = script.Parse(*text, ++number, mistake);
    if (!line.has_value()) return DescribeMistake(number, mistake);
    if (line->kind != PlayLine::Kind::Empty) lines.push_back(std::move(*line));
  }
  if (Interrupt::IsAsked())
    return CommandFailure{ExitStatus::Interrupted, GetScriptName(), "interrupted", {}};
  if (input.GetFailure().empty()) return std::nullopt;
  return CommandFailure{ExitStatus::Usage, options.script, "can't be read: " + input.GetFailure(), {}};
}

ExitStatus PlayCommand::Converse(PlayInput& input, const PlayScript& script, PlaySession& play) {
  int number = 0;
  while (true) {
    output.Prompt(isTerminal ? "> " : "");
    const auto text = input.ReadLine();
    if (!text.has_value()) break;
    PlayMistake mistake;
    const auto line = script.Parse(*text, ++number, mistake);
    if (!line.has_value()) {
      const CommandFailure failure = DescribeMistake(number, mistake);
      if (!isTerminal) return Fail(failure);
      output.PrintLine("  " + failure.message);
    } else if (line->kind == PlayLine::Kind::Quit) {
      break;
    } else if (line->kind != PlayLine::Kind::Empty) {
      const auto status = RunLine(*line, play);
      // A person may try again.
      if (status.has_value() && !isTerminal) return *status;
    }
  }
  if (isTerminal) output.PrintLine("");
  if (Interrupt::IsAsked()) return Fail({ExitStatus::Interrupted, GetScriptName(), "interrupted", {}});
  if (!input.GetFailure().empty())
    return Fail({ExitStatus::Machine, GetScriptName(), "can't be read: " + input.GetFailure(), {}});
  return Finish();
}

std::optional<ExitStatus> PlayCommand::RunLine(const PlayLine& line, PlaySession& play) {
  const PlayAnswer answer = play.Run(line);
  if (answer.failure.has_value()) return Fail(*answer.failure);
  if (IsExpectation(line)) ++expectations;
  if (!answer.holds) ++failedExpectations;
  PrintAnswer(line, answer);
  return std::nullopt;
}

void PlayCommand::PrintAnswer(const PlayLine& line, const PlayAnswer& answer) {
  if (output.IsJson()) {
    using Json = nlohmann::ordered_json;
    Json object = {{"line", line.number}, {"text", line.text}};
    object.update(answer.fields);
    output.PrintDocument(object.dump(-1, ' ', false, Json::error_handler_t::replace));
    return;
  }
  if (!isTerminal) output.PrintLine("> " + line.text);
  const std::string lead =
      answer.holds ? "  " : "  " + GetScriptName() + ":" + std::to_string(line.number) + ": failed: ";
  for (const std::string& text : answer.text) output.PrintLine(lead + text);
}

ExitStatus PlayCommand::Finish() {
  const std::string count = std::to_string(expectations);
  if (!output.IsJson() && failedExpectations > 0) {
    output.PrintLine(std::to_string(failedExpectations) + " of " + count +
                     (expectations > 1 ? " expectations failed" : " expectation failed"));
  } else if (!output.IsJson() && expectations > 0) {
    output.PrintLine(expectations > 1 ? "all " + count + " expectations hold" : "the expectation holds");
  }
  return failedExpectations > 0 ? ExitStatus::Findings : ExitStatus::Done;
}

ExitStatus PlayCommand::Fail(const CommandFailure& failure) {
  output.Explain(failure);
  if (output.IsJson()) {
    using Json = nlohmann::ordered_json;
    const bool isInterrupted = failure.status == ExitStatus::Interrupted;
    const Json object = {
        {"error",
         {{"subject", failure.subject},
          {"message", failure.message},
          {"status", isInterrupted ? Interrupt::GetStatus() : static_cast<int>(failure.status)}}}};
    output.PrintDocument(object.dump(-1, ' ', false, Json::error_handler_t::replace));
  }
  return failure.status;
}

CommandFailure PlayCommand::DescribeMistake(int line, const PlayMistake& mistake) const {
  return {ExitStatus::Usage,
          GetScriptName() + ":" + std::to_string(line) + ":" + std::to_string(mistake.column),
          mistake.message,
          {}};
}

std::string PlayCommand::GetScriptName() const {
  return options.script.empty() || options.script == "-" ? "standard input" : options.script;
}
