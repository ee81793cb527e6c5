// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CourseReader.h"

#include <utility>

#include "apps/author/TreeGlance.h"
#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_TextEdit.h"

using kelpui::controls::UI_Checkbox;
using kelpui::controls::UI_NumberEdit;
using kelpui::controls::UI_RowPtr;
using kelpui::controls::UI_TextEdit;

namespace {

ListedFile MakeListedFile(const TzPath& path, std::string title) {
  return ListedFile{.name = path.GetString().GetUTF8String(), .path = path, .title = std::move(title)};
}

std::vector<ListedFile> ReadFiles(const CourseScreen::Tree& tree, const CourseSources& sources) {
  std::vector<ListedFile> files;
  for (std::size_t index = 0; index < tree.CountRows(); ++index) {
    const UI_RowPtr row = tree.GetRow(static_cast<std::int64_t>(index));
    if (const auto file = sources.GetFile(row)) files.push_back(MakeListedFile(*file, sources.GetTitle(row)));
  }
  return files;
}

CourseModule ReadModule(TreeGlance& glance, const UI_RowPtr& row, const CourseSources& sources) {
  CourseModule module;
  if (const auto* title = glance.Find<UI_TextEdit>(*row)) module.title = title->GetText().GetUTF8String();
  if (const auto* weightage = glance.Find<UI_NumberEdit>(*row)) {
    module.weightage = weightage->GetText().GetUTF8String();
  }
  // A box that hasn't been made yet hasn't been checked either.
  if (const UI_RowPtr header = CourseSources::GetHeader(*row, CoursePlace::Content)) {
    const auto* force = TreeGlance::FindMade<UI_Checkbox>(*header);
    module.forceContentSequence = force != nullptr && force->GetValue() == 1;
  }
  const CourseSources::ModuleFiles files = sources.GetModuleFiles(row);
  const auto make = [&](const TzPath& path, CoursePlace place) {
    return MakeListedFile(path, sources.GetTitle(row, place, path));
  };
  if (files.preTest) module.preTest = make(*files.preTest, CoursePlace::PreTest);
  for (const TzPath& path : files.content) module.content.push_back(make(path, CoursePlace::Content));
  if (files.postTest) module.postTest = make(*files.postTest, CoursePlace::PostTest);
  return module;
}

}  // namespace

std::optional<CourseDocument> CourseReader::Read() const {
  CourseSources& sources = ui.GetSources();
  sources.Settle();
  const auto courseTemplate = ui.GetScreen().GetTemplate();
  if (!courseTemplate) return std::nullopt;
  CourseDocument course;
  course.courseTemplate = *courseTemplate;
  course.intake = CourseIntake::AsIs;
  ui.GetDetails().FillIn(course);
  CourseScreen::Tree* tree = ui.GetScreen().GetTree();
  if (tree == nullptr) return course;
  if (courseTemplate == CourseTemplate::MultipleScos) {
    course.files = ReadFiles(*tree, sources);
    return course;
  }
  TreeGlance glance(*tree);
  for (std::size_t index = 0; index < tree->CountRows(); ++index) {
    const UI_RowPtr row = tree->GetRow(static_cast<std::int64_t>(index));
    course.modules.push_back(ReadModule(glance, row, sources));
  }
  return course;
}
