// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CoursePlayer.h"

#include <algorithm>
#include <utility>

#include "apps/author/ManifestDetails.h"
#include "apps/author/TreeGlance.h"
#include "apps/course/Weightage.h"
#include "host/files/TzFile.h"
#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/kelpui/UI_TextEdit.h"
#include "host/sheets/TzDataModel.h"

using kelpui::controls::UI_Button;
using kelpui::controls::UI_Checkbox;
using kelpui::controls::UI_NumberEdit;
using kelpui::controls::UI_TextEdit;

namespace {

/// Puts a script in the person's place for as long as it lives.
class Scripted {
 public:
  Scripted(AuthorUserInterface& userInterface, AuthorScript& script) : ui(userInterface) {
    ui.SetScript(&script);
  }
  ~Scripted() { ui.SetScript(nullptr); }
  Scripted(const Scripted&) = delete;
  Scripted& operator=(const Scripted&) = delete;

 private:
  AuthorUserInterface& ui;
};

std::size_t CountSteps(const CourseDocument& course) {
  std::size_t steps = course.files.size();
  for (const CourseModule& module : course.modules) {
    steps += 1 + module.content.size() + (module.preTest ? 1 : 0) + (module.postTest ? 1 : 0);
  }
  return steps;
}

std::string NameModule(std::size_t number) { return "module " + std::to_string(number); }

/// Whole percents for modules that share the course evenly: the panel has no others.
double ShareEvenly(std::size_t number, std::size_t modules) {
  constexpr std::size_t kWhole = 100;
  const std::size_t rest = kWhole % modules;
  const std::size_t percent = kWhole / modules + (number > modules - rest ? 1 : 0);
  return static_cast<double>(percent);
}

std::vector<ListedFile> MakeList(const std::optional<ListedFile>& file) {
  return file ? std::vector{*file} : std::vector<ListedFile>();
}

}  // namespace

CoursePlayResult CoursePlayer::Play(const CourseDocument& courseDocument) {
  course = &courseDocument;
  refusals.clear();
  boxes.clear();
  done = 0;
  total = 1 + CountSteps(courseDocument);
  const Scripted scripted(ui, *this);
  const Outcome outcome = PlayScripted();
  return {outcome, std::move(refusals)};
}

CoursePlayer::Outcome CoursePlayer::PlayScripted() {
  try {
    if (!Leave() || !Begin()) return Outcome::Refused;
    if (course->courseTemplate == CourseTemplate::MultipleScos) {
      PlayFiles();
    } else {
      PlayModules();
    }
    ui.GetDetails().ForceSequence(course->forceSequence);
    return Outcome::Opened;
  } catch (const Cancelled&) {
    ui.GetScreen().Press("new");
    return Outcome::Cancelled;
  }
}

// Asked whether to publish what there is, the script says no.
bool CoursePlayer::Leave() {
  const CourseScreen& screen = ui.GetScreen();
  if (screen.GetTemplate()) screen.Press("new");
  if (!screen.GetTemplate()) return true;
  Refuse("the panel", "the course in it can't be left");
  return false;
}

bool CoursePlayer::Begin() {
  Advance(course->title.value_or(course->identifier));
  const bool isPressed = ui.GetScreen().Press(CourseScreen::GetChooseAction(course->courseTemplate));
  if (!isPressed) Refuse("the panel", "its template choice can't be reached");
  ui.RunScriptedTimers();
  for (const std::string& text : std::exchange(boxes, {})) Refuse(course->identifier, text);
  if (!ui.GetScreen().GetTemplate()) return false;
  TzDataModel& cells = *ui.GetScreen().GetCells();
  cells.SetCellValue("course_title", TzString(GetTitleOrDefault(*course)));
  cells.Update();
  return true;
}

int CoursePlayer::AnswerBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) {
  if (kind != TzMessageBoxKind::Ok) return kTzButtonNo;
  boxes.push_back(options.GetText().GetUTF8String());
  return kTzButtonOk;
}

std::vector<TzPath> CoursePlayer::AnswerChooser(const TzFileChooserRequest& /*request*/) {
  return std::exchange(answer, {});
}

void CoursePlayer::NoteTaken(const TzPath& file, const TzPath& holder) {
  Refuse(file.GetString().GetUTF8String(),
         file == holder ? "is in its place already"
                        : "its name is taken by " + holder.GetString().GetUTF8String() + "; rename the file");
  heldBack.push_back(file);
}

void CoursePlayer::RunDialog(TzCanvas& dialog) {
  TzDataModel* cells = dialog.GetDataModel();
  if (cells == nullptr || !IsManifestDialog(*cells)) return;
  EnterManifestDetails(*course, *cells);
  PressBelow(dialog, "ok");
}

void CoursePlayer::PlayFiles() {
  const Add add = [this] {
    ui.GetScreen().Press("add_file");
    return ui.GetSources().SettleList();
  };
  // Each file is a choice of its own, so that the way can be seen.
  for (const TzPath& file : FindThere(course->files)) AddAll({file}, add);
}

void CoursePlayer::PlayModules() {
  const CourseScreen& screen = ui.GetScreen();
  for (std::size_t number = 1; number <= course->modules.size(); ++number) {
    const auto index = static_cast<std::int64_t>(number - 1);
    Advance(course->modules[number - 1].title.value_or(NameModule(number)));
    CourseScreen::Tree* tree = screen.GetTree();
    // The first module comes with the template.
    if (tree != nullptr && tree->GetRow(index) == nullptr) screen.Press("add_module");
    const RowPtr row = tree != nullptr ? tree->GetRow(index) : nullptr;
    if (row == nullptr) {
      Refuse(NameModule(number), "the panel added no module");
      return;
    }
    PlayModule(course->modules[number - 1], number, row);
  }
}

void CoursePlayer::PlayModule(const CourseModule& module, std::size_t number, const RowPtr& row) {
  TreeGlance glance(*row->GetTree());
  if (auto* title = glance.Find<UI_TextEdit>(*row)) {
    title->EnterText(module.title.value_or("Module_" + std::to_string(number)));
  }
  const auto percent = ReadWeightagePercent(module.weightage.value_or(""));
  EnterWeightage(percent.value_or(ShareEvenly(number, course->modules.size())), number, row);
  if (module.forceContentSequence) {
    const RowPtr header = CourseSources::GetHeader(*row, CoursePlace::Content);
    if (auto* force = glance.Find<UI_Checkbox>(*header)) force->EnterValue(1);
  }
  PlayPlace(MakeList(module.preTest), row, CoursePlace::PreTest);
  PlayPlace(module.content, row, CoursePlace::Content);
  PlayPlace(MakeList(module.postTest), row, CoursePlace::PostTest);
}

void CoursePlayer::EnterWeightage(double percent, std::size_t number, const RowPtr& row) {
  TreeGlance glance(*row->GetTree());
  auto* field = glance.Find<UI_NumberEdit>(*row);
  if (field == nullptr) return;
  field->EnterValue(percent);
  if (field->GetValue() == percent) return;
  Refuse(NameModule(number), "its weightage of " + FormatNumber(percent) + "% became " +
                                 field->GetText().GetUTF8String() +
                                 "%, since the panel takes whole percents");
}

void CoursePlayer::PlayPlace(const std::vector<ListedFile>& files, const RowPtr& row, CoursePlace place) {
  const std::vector<TzPath> there = FindThere(files);
  const RowPtr header = CourseSources::GetHeader(*row, place);
  if (there.empty() || header == nullptr) return;
  AddAll(there, [&] {
    TreeGlance glance(*row->GetTree());
    if (auto* button = glance.Find<UI_Button>(*header)) button->Press();
    return ui.GetSources().SettleModule(row, place);
  });
}

std::vector<TzPath> CoursePlayer::FindThere(const std::vector<ListedFile>& files) {
  std::vector<TzPath> there;
  for (const ListedFile& file : files) {
    const std::string path = file.path.GetString().GetUTF8String();
    if (!TzFile(file.path).Exists()) {
      Refuse(path, "doesn't exist");
      continue;
    }
    if (!file.item.empty() || file.completionPasses) {
      Refuse(path,
             "its options ('item', 'completion-passes') are for packages that are adopted; "
             "the panel takes it as it is");
    }
    there.push_back(file.path);
  }
  return there;
}

void CoursePlayer::AddAll(const std::vector<TzPath>& files, const Add& add) {
  std::vector<TzPath> left = files;
  while (!left.empty()) {
    Advance(left.front().GetFileName().GetUTF8String());
    answer = left;
    const CourseSources::Placed placed = add();
    // The first of the choice was counted when it was begun.
    done += heldBack.size() - (heldBack.size() == left.size() ? 1 : 0);
    // Of several of one name the first was tried.
    for (const TzPath& file : std::exchange(heldBack, {})) {
      left.erase(std::next(std::ranges::find(left.rbegin(), left.rend(), file)).base());
    }
    if (left.empty()) break;
    NoteBoxes(left, placed);
    // The file behind those that were placed was refused, and those after it weren't looked at.
    const std::size_t dealtWith = std::min(left.size(), placed.size() + 1);
    done += dealtWith - 1;
    left.erase(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(dealtWith));
  }
}

void CoursePlayer::NoteBoxes(const std::vector<TzPath>& files, const CourseSources::Placed& placed) {
  std::vector<std::string> texts = std::exchange(boxes, {});
  if (placed.size() == files.size()) return;
  if (texts.empty()) texts.emplace_back("the panel doesn't take files of this kind");
  const std::string path = files[placed.size()].GetString().GetUTF8String();
  for (const std::string& text : texts) Refuse(path, text);
}

void CoursePlayer::Refuse(const std::string& subject, const std::string& message) {
  refusals.push_back({subject, message});
}

void CoursePlayer::Advance(const std::string& activity) {
  if (report && !report(activity, done, total)) throw Cancelled();
  ++done;
}
