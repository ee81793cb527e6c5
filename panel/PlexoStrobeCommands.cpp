// SPDX-License-Identifier: Apache-2.0
#include "panel/PlexoStrobeCommands.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "core/PlexoCourseModel.h"
#include "host/session/TzSession.h"
#include "host/session/TzStrobeDialogResourceStringExternalizer.h"
#include "host/text/ITzStringDictionary.h"
#include "intake/PlexoAddFileDriver.h"
#include "panel/PlexoAppBar.h"
#include "panel/PlexoSCORemoval.h"

namespace {

/// How a player writes a call: the names of the function and of the form that it wants the reply in, and an
/// element for each argument.
[[maybe_unused]] constexpr std::string_view kSampleCall =
    "<invoke name=\"testEI\" returntype=\"xml\"><arguments><string>somestring</string></arguments></invoke>";

/// The words that a player shows.
constexpr const char* kResourceStringKeys[] = {
    "kPlexoUIAddModuleText",
    "kPlexoUIDefaultModuleNamePrefix",
    "kPlexoUIForcedSequenceModule",
    "kPlexoUIForcedSequenceContent",
    "kPlexoUIPreTestDefaultHeader",
    "kPlexoUIContentDefaultHeader",
    "kPlexoUIPostTestDefaultHeader",
    "kPlexoUIAddPreTest",
    "kPlexoUIAddContent",
    "kPlexoUIAddPostTest",
    "kPlexoUIWeightage",
    "kPlexoUIDefaultCourseName",
    "kPlexoUIScormVersionPrefix",
    "kPlexoUITemplate1ShortDesc",
    "kPlexoUITemplate2ShortDesc",
    "kPlexoUITemplate3ShortDesc",
    "kPlexoUITemplate1LongDesc",
    "kPlexoUITemplate2LongDesc",
    "kPlexoUITemplate3LongDesc",
    "kPlexoUICallOutText",
    "kPlexoUIAddPostTestTooltip",
    "kPlexoUIAddPreTestTooltip",
    "kPlexoUIAddContentTooltip",
    "kPlexoUIContentForceSequenceLabel",
    "kPlexoUIContentForceSequenceToolTip",
    "kPlexoUIModuleForceSequenceLabel",
    "kPlexoUIModuleForceSequenceToolTip",
    "kPlexoUIPreTestText",
    "kPlexoUIPostTestText",
    "kPlexoUIContentText",
    "kPlexoUIWeightageText",
    "kPlexoUIModuleText",
    "kPlexoUIAddModuleToolTip",
    "kPlexoUIMoveSelectionUpToolTip",
    "kPlexoUIMoveSelectionDownToolTip",
    "kPlexoUIDeleteSelectionToolTip",
    "kTzPlexoTemplateChoose",
    "kTzPlexoFile",
    "kTzPlexoAddFile",
    "kTzPlexoEditCrsTitle",
    "kTzPlexoEditModuleName",
};

constexpr struct {
  const char* name;
  PlexoCourseType type;
} kCourseTypes[] = {
    {"PRE_CONTENT_POST", PlexoCourseType::PRE_CONTENT_POST},
    {"CONTENT_POST", PlexoCourseType::CONTENT_POST},
    {"LINEAR", PlexoCourseType::LINEAR},
};

void MarkDirty() { GetCourseModel()->SetIsDirty(true); }

TzString TextOf(const TzFPFunctionArgumentList& call, std::size_t argument) {
  return call.GetNthArgument(argument).GetString();
}

bool IsTrueText(const TzFPFunctionArgumentList& call, std::size_t argument) {
  return TextOf(call, argument) == "true";
}

/// A number cut to a whole one, the nearest that an index can be.
int IndexOf(const TzFPFunctionArgumentList& call, std::size_t argument) {
  using Limits = std::numeric_limits<int>;
  const std::int64_t number = call.GetNthArgument(argument).GetInteger();
  return static_cast<int>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

bool IsBelow(int index, std::size_t count) { return index >= 0 && static_cast<std::size_t>(index) < count; }

/// An id may be a path with points, of which the last part counts.
TzString StripIdPath(const TzString& id) {
  const std::u16string& units = id.GetUnits();
  const std::size_t point = units.rfind(u'.');
  return point == std::u16string::npos ? id : TzString(units.substr(point + 1));
}

TzString KeyOf(const TzFPFunctionArgumentList& call) { return StripIdPath(TextOf(call, 0)); }

/// The numbers of a list like "0,2". A piece that is no number counts as 0, also an empty one.
std::vector<int> ParseIndices(const TzString& text) {
  using Limits = std::numeric_limits<int>;
  std::vector<int> indices;
  const std::u16string& units = text.GetUnits();
  for (std::size_t start = 0; start <= units.size();) {
    const std::size_t comma = std::min(units.find(u',', start), units.size());
    const long number = TzString(units.substr(start, comma - start)).ToInteger();
    indices.push_back(static_cast<int>(std::clamp<long>(number, Limits::min(), Limits::max())));
    start = comma + 1;
  }
  return indices;
}

void Reply(TzString& reply, const TzString& value) {
  reply.AppendUTF8("<string>");
  reply += value;
  reply.AppendUTF8("</string>");
}

/// Of commands that add files: nothing was added, nothing is said.
void ReplyAdded(TzString& reply, const std::vector<TzString>& names, const TzString& value) {
  if (names.empty()) return;
  MarkDirty();
  Reply(reply, value);
}

void AddTest(const TzFPFunctionArgumentList& call, PlexoSCOKind kind, TzString& reply) {
  const std::vector<TzString> names = PlexoAddFileDriver::AddFilesToModule(KeyOf(call), kind);
  ReplyAdded(reply, names, names.empty() ? TzString() : names.front());
}

void DoNothing(PlexoView& /*view*/, const TzFPFunctionArgumentList& /*call*/, TzString& /*reply*/) {}

void SetResourceStrings(PlexoView& /*view*/, const TzFPFunctionArgumentList& /*call*/, TzString& /*reply*/) {
  // A player gets the words in another way; it asks for them here all the same.
  static auto* const externalizer = new TzStrobeDialogResourceStringExternalizer;
  static_cast<void>(externalizer->GetXMLForResourceStrings(
      {std::begin(kResourceStringKeys), std::end(kResourceStringKeys)}));
}

}  // namespace

const PlexoStrobeCommands::Command PlexoStrobeCommands::kCommands[] = {
    {"CreateCourseModel", DoNothing},
    {"ASCall_GetLocale", DoNothing},
    {"AddContentSCO", AddContentSCO},
    {"CreateModuleModel", CreateModuleModel},
    {"DeleteSelectionsFromModel", DoNothing},
    {"RemoveSCOsFromLinearList", RemoveSCOsFromLinearList},
    {"RemoveContentSCOs", RemoveContentSCOs},
    {"SetWeightage", SetWeightage},
    {"SetAttempts", SetAttempts},
    {"SetContentForcedSequence", SetContentForcedSequence},
    {"SetForcedSequence", SetForcedSequence},
    {"RemovePostTest", RemovePostTest},
    {"RemovePreTest", RemovePreTest},
    {"RemoveModule", RemoveModule},
    {"AddPreTestSCO", AddPreTestSCO},
    {"AddPostTestSCO", AddPostTestSCO},
    {"AddSCOToLinearList", AddSCOToLinearList},
    {"CheckPublishStatus", DoNothing},
    {"SwapModules", SwapModules},
    {"SwapContentSCOs", SwapContentSCOs},
    {"SwapLinearSCOs", SwapLinearSCOs},
    {"ShowMessageDialog", ShowMessageDialog},
    {"GetSCORMVersion", GetSCORMVersion},
    {"GetCourseTitle", GetCourseTitle},
    {"SetModuleTitle", SetModuleTitle},
    {"invokeSetResourceStrings", SetResourceStrings},
    {"ShowCourseManifestDialog",
     [](PlexoView& view, const Call&, TzString&) { view.ShowCourseManifestDialog(); }},
    {"DisableNewManifestButtonOnAppBar",
     [](PlexoView&, const Call& call, TzString&) { SetNewButtonDisabled(call.GetNthArgument(0).GetBool()); }},
    {"DisablePublishButton", [](PlexoView&, const Call& call,
                                TzString&) { SetPublishButtonDisabled(call.GetNthArgument(0).GetBool()); }},
    {"SetCourseType", SetCourseType},
};

void PlexoStrobeCommands::Run(PlexoView& view, const TzFPFunctionArgumentList& call, TzString& reply) {
  const auto* const command = std::ranges::find(kCommands, call.GetFunctionName(), &Command::name);
  if (command != std::end(kCommands)) command->run(view, call, reply);
}

void PlexoStrobeCommands::CreateModuleModel(PlexoView& view, const Call& call, TzString& /*reply*/) {
  view.GetModules().AddModule(KeyOf(call), TextOf(call, 1));
  MarkDirty();
}

void PlexoStrobeCommands::SetModuleTitle(PlexoView& view, const Call& call, TzString& /*reply*/) {
  view.GetModules().SetModuleTitle(KeyOf(call), TextOf(call, 1));
  MarkDirty();
}

// The panel's own field is where a weightage comes from. A player reports one, which makes the course dirty
// and changes no module; both are meant so.
void PlexoStrobeCommands::SetWeightage(PlexoView& /*view*/, const Call& /*call*/, TzString& /*reply*/) {
  MarkDirty();
}

void PlexoStrobeCommands::SetAttempts(PlexoView& view, const Call& call, TzString& /*reply*/) {
  view.GetModules().SetAttempts(KeyOf(call), TextOf(call, 1));
  MarkDirty();
}

void PlexoStrobeCommands::SetContentForcedSequence(PlexoView& view, const Call& call, TzString& /*reply*/) {
  view.GetModules().SetContentForcedSequence(KeyOf(call), IsTrueText(call, 1));
  MarkDirty();
}

void PlexoStrobeCommands::SetForcedSequence(PlexoView& view, const Call& call, TzString& /*reply*/) {
  view.SetForcedSequence(IsTrueText(call, 0));
}

void PlexoStrobeCommands::SetCourseType(PlexoView& view, const Call& call, TzString& /*reply*/) {
  const TzString name = TextOf(call, 0);
  for (const auto& [typeName, type] : kCourseTypes) {
    if (name == typeName) view.StoreCourseType(type);
  }
}

void PlexoStrobeCommands::AddPreTestSCO(PlexoView& /*view*/, const Call& call, TzString& reply) {
  AddTest(call, PlexoSCOKind::PRE_TEST, reply);
}

void PlexoStrobeCommands::AddPostTestSCO(PlexoView& /*view*/, const Call& call, TzString& reply) {
  AddTest(call, PlexoSCOKind::POST_TEST, reply);
}

void PlexoStrobeCommands::AddContentSCO(PlexoView& /*view*/, const Call& call, TzString& reply) {
  const auto names = PlexoAddFileDriver::AddFilesToModule(KeyOf(call), PlexoSCOKind::CONTENT);
  ReplyAdded(reply, names, PlexoView::JoinNames(names));
}

void PlexoStrobeCommands::AddSCOToLinearList(PlexoView& view, const Call& /*call*/, TzString& reply) {
  const auto names = PlexoAddFileDriver::AddFilesToLinearCourse(view.linearCourse);
  ReplyAdded(reply, names, PlexoView::JoinNames(names));
}

void PlexoStrobeCommands::RemovePreTest(PlexoView& view, const Call& call, TzString& /*reply*/) {
  PlexoSCORemoval::RemovePreTest(view.GetModules(), KeyOf(call));
}

void PlexoStrobeCommands::RemovePostTest(PlexoView& view, const Call& call, TzString& /*reply*/) {
  PlexoSCORemoval::RemovePostTest(view.GetModules(), KeyOf(call));
}

void PlexoStrobeCommands::RemoveContentSCOs(PlexoView& view, const Call& call, TzString& /*reply*/) {
  PlexoSCORemoval::RemoveContentSCOs(view.GetModules(), KeyOf(call), ParseIndices(TextOf(call, 1)));
}

void PlexoStrobeCommands::RemoveModule(PlexoView& view, const Call& call, TzString& /*reply*/) {
  PlexoSCORemoval::RemoveModule(view.GetModules(), KeyOf(call));
}

void PlexoStrobeCommands::RemoveSCOsFromLinearList(PlexoView& /*view*/, const Call& call,
                                                   TzString& /*reply*/) {
  PlexoSCORemoval::RemoveLinearSCOs(*GetLinearCourseModel(), ParseIndices(TextOf(call, 0)));
}

void PlexoStrobeCommands::SwapModules(PlexoView& view, const Call& call, TzString& /*reply*/) {
  view.SwapModules(IndexOf(call, 0), IndexOf(call, 1));
}

void PlexoStrobeCommands::SwapContentSCOs(PlexoView& view, const Call& call, TzString& /*reply*/) {
  PlexoModuleCourseModel& modules = view.GetModules();
  const TzString key = KeyOf(call);
  const std::size_t count = modules.ReadModule(key).contents.size();
  const int first = IndexOf(call, 1);
  const int second = IndexOf(call, 2);
  if (IsBelow(first, count) && IsBelow(second, count)) {
    modules.SwapContentSCOs(key, static_cast<std::size_t>(first), static_cast<std::size_t>(second));
  }
  MarkDirty();
}

void PlexoStrobeCommands::SwapLinearSCOs(PlexoView& /*view*/, const Call& call, TzString& /*reply*/) {
  GetLinearCourseModel()->SwapSCOs(IndexOf(call, 0), IndexOf(call, 1));
  MarkDirty();
}

void PlexoStrobeCommands::ShowMessageDialog(PlexoView& /*view*/, const Call& call, TzString& /*reply*/) {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (dictionary == nullptr) return;
  PlexoView::ShowErrorBox(dictionary->GetString("kPlexoError"), dictionary->GetString(TextOf(call, 0)));
}

void PlexoStrobeCommands::GetSCORMVersion(PlexoView& /*view*/, const Call& /*call*/, TzString& reply) {
  Reply(reply, GetCourseModel()->GetScormVersion());
}

void PlexoStrobeCommands::GetCourseTitle(PlexoView& /*view*/, const Call& /*call*/, TzString& reply) {
  Reply(reply, GetCourseModel()->GetCourseTitle());
}
