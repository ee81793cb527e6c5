// SPDX-License-Identifier: Apache-2.0
// A manifest of any maker, and behind a line "%%" the script of a learner in it.
#include <algorithm>
#include <sstream>
#include <string>

#include "apps/cli/PlayScript.h"
#include "apps/cli/PlaySession.h"
#include "fuzz/FuzzFolder.h"
#include "sequencer/PlexoDefinitionFormat.h"

namespace {

void CheckReading(const PlexoSequencingReading& reading) {
  FuzzRequire((reading.definition == nullptr) == !reading.failure.empty(), "what isn't read has a reason");
  if (reading.definition == nullptr) return;
  FuzzRequire(reading.sources.size() == reading.definition->GetCount(), "every activity has a source");
  const auto stored = PlexoDefinitionFormat::Write(*reading.definition);
  const PlexoReadDefinition copy = PlexoDefinitionFormat::Read(stored);
  FuzzRequire(copy.definition != nullptr && PlexoDefinitionFormat::Write(*copy.definition) == stored,
              "a definition survives its binary form");
}

bool IsFile(const PlayLine& line) {
  return line.kind == PlayLine::Kind::Save || line.kind == PlayLine::Kind::Load;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  constexpr std::string_view kSeparator = "\n%%\n";
  const std::size_t end = std::min(input.find(kSeparator), size);
  PlexoCheckedPackage package;
  package.manifest.Read(FuzzFolder::Write("imsmanifest.xml", data, end));
  if (package.manifest.GetRoot() == nullptr || !package.manifest.GetError().empty()) return 0;
  package.Index();
  const PlexoSequencingReading reading = PlexoSequencingReader::Read(package);
  CheckReading(reading);
  if (reading.definition == nullptr || end == size) return 0;

  const PlayScript script(*reading.definition);
  PlaySession play(reading, 1, {});
  std::istringstream lines(input.substr(end + kSeparator.size()));
  int number = 0;
  // Long scripts tell no more than short ones.
  for (std::string text; number < 200 && std::getline(lines, text);) {
    PlayMistake mistake;
    const auto line = script.Parse(text, ++number, mistake);
    FuzzRequire(line.has_value() || (!mistake.message.empty() && mistake.column > 0),
                "a mistake is explained");
    if (!line.has_value() || IsFile(*line)) continue;
    const PlayAnswer answer = play.Run(*line);
    FuzzRequire(!answer.failure.has_value(), "only files make a line fail");
    static_cast<void>(answer.fields.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
  }
  return 0;
}
