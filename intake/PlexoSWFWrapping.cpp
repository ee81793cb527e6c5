// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoSWFWrapping.h"

#include <string>
#include <utility>

#include "core/PlexoCourseModel.h"
#include "core/PlexoErrorBox.h"
#include "host/files/TzFile.h"
#include "host/movie/TzAnimationUtils.h"
#include "host/movie/TzStrobePlayer.h"
#include "host/session/TzProblem.h"
#include "intake/PlexoSCOWrapper.h"
#include "intake/PlexoSharedPlayer.h"
#include "intake/PlexoWrappedFile.h"

namespace {

constexpr std::int32_t kStrobePlayerVersion = 9;
/// Twice what the largest screens have.
constexpr std::int32_t kMostPixels = 8'192;

bool IsSize(std::int32_t pixels) { return pixels >= 1 && pixels <= kMostPixels; }

const char* GetProbeMessage(std::int32_t result) {
  switch (result) {
    case kPlexoProbeNoFile:
      return "kPlexoErrorLISWFPathInvalid";
    case kPlexoProbeNotLoaded:
      return "kPlexoErrorLISWFNotSWF";
    case kPlexoProbeNotActionScript3:
      return "kPlexoErrorLISWFNotAS3SWF";
    case kPlexoProbeNoInteraction:
      return "kPlexoErrorLISWFNotLISWF";
    case kPlexoProbeNoSize:
      return "kPlexoErrorLISWFInvalidLISWF";
    default:
      return "kPlexoErrorLISWFUnknown";
  }
}

/// Shows the text of the key and returns 1, the result of a refusal.
int Refuse(const ITzStringDictionary& dictionary, const char* key) {
  ShowErrorBox(dictionary, key);
  return 1;
}

bool IsInteraction(TzStrobePlayer& player) {
  const TzVariant variant = player.CallActionScriptFunction(
      "<invoke name=\"tzGetValue\" returntype=\"xml\"><arguments><string>isSendScoreSWF</string></arguments>"
      "</invoke>");
  TzString answer = "false";
  if (variant.GetKind() == TzVariant::Kind::Text) answer = variant.GetString();
  if (variant.GetKind() == TzVariant::Kind::Bool) answer = variant.GetBool() ? "true" : "false";
  return answer == "true";
}

bool ReadVariable(TzStrobePlayer& player, const char* name, std::int32_t& value) {
  return TzAnimationUtils::GetVariableForTzSWF(player, kTzActionScript3, name, value) == kTzSuccess;
}

}  // namespace

std::int32_t PlexoSWFWrapping::ProbeLearningInteraction(const TzString& swfPath, std::int32_t& width,
                                                        std::int32_t& height) {
  if (!TzFile(TzPath(swfPath)).Exists()) return kPlexoProbeNoFile;
  const std::string name = TzPath(swfPath).GetFileName().GetUTF8String();
  TzStrobePlayer player(32);
  if (player.LoadMovie(swfPath, 0, 1) == 0) return kPlexoProbeNotLoaded;
  if (!IsInteraction(player)) {
    TzReportProblem(kTzBadContent, name,
                    "asked for 'isSendScoreSWF' by its function 'tzGetValue', it doesn't answer true");
    return kPlexoProbeNoInteraction;
  }
  if (!ReadVariable(player, "MovieWidth", width) || !ReadVariable(player, "MovieHeight", height)) {
    TzReportProblem(kTzBadContent, name, "its 'MovieWidth' and 'MovieHeight' aren't both numbers");
    return kPlexoProbeNoSize;
  }
  if (IsSize(width) && IsSize(height)) return kPlexoProbeIsInteraction;
  TzReportProblem(kTzBadContent, name,
                  "its 'MovieWidth' and 'MovieHeight' are " + std::to_string(width) + " and " +
                      std::to_string(height) + "; expected 1 to " + std::to_string(kMostPixels));
  return kPlexoProbeNoSize;
}

int PlexoSWFWrapping::WrapLearningInteraction(const TzPath& swfInSCOFolder, std::int32_t width,
                                              std::int32_t height, std::vector<TzString>& generatedFiles) {
  PlexoSCOWrapper wrapper;
  wrapper.SetKind(PlexoWrapperKind::SWF);
  wrapper.SetSourcePath(swfInSCOFolder);
  wrapper.SetPlayerVersion(kStrobePlayerVersion);
  wrapper.SetWidth(width);
  wrapper.SetHeight(height);
  wrapper.SetScormVersion(GetCourseModel()->GetScormVersion());
  const int result = wrapper.GenerateWrapper();
  generatedFiles = wrapper.GetGeneratedFiles();
  return result;
}

int PlexoSWFWrapping::AddMovie(const TzPath& path, const TzPath& scoFolder, PlexoSCOModel& sco,
                               const ITzStringDictionary& dictionary) {
  std::int32_t width = 0;
  std::int32_t height = 0;
  if (const std::int32_t result = ProbeLearningInteraction(path.GetString(), width, height);
      result != kPlexoProbeIsInteraction) {
    return Refuse(dictionary, GetProbeMessage(result));
  }
  const PlexoWrappedFile file(path, scoFolder, "swf");
  if (file.WasAddedAlready(dictionary)) return 0;
  if (!file.CopyIn()) return Refuse(dictionary, "kPlexoErrorSWFFileCopy");
  PlexoSCOManifest manifest = file.Describe(sco);
  std::vector<TzString> generatedFiles;
  if (WrapLearningInteraction(file.GetCopy(), width, height, generatedFiles) != 0) {
    return Refuse(dictionary, "kPlexoErrorLISWFHTMLGen");
  }
  PlexoSharedPlayer::CopySharedPlayer(PlexoWrapperKind::SWF);
  file.Record(std::move(manifest), generatedFiles, sco);
  return 0;
}
