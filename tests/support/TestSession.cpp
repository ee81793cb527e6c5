// SPDX-License-Identifier: Apache-2.0
#include "support/TestSession.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/PlexoCourseModel.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"

namespace fs = std::filesystem;

TestSession::TestSession()
    : previous(TzSession::Install(
          {.dictionary = &dictionary, .userInterface = &ui, .windows = &windows, .problems = this})) {
  PlexoCourseModel* course = GetCourseModel();
  course->ResetManifestDetails();
  course->SetCourseType(PlexoCourseType::LINEAR);
  course->SetCourseIdentifier({});
  course->SetCourseTitle({});
  course->SetCourseDescription({});
  course->SetCourseDuration({});
  course->SetCourseSubject({});
  GetLinearCourseModel()->Clear();
  GetModuleCourseModel()->Clear();
}

TestSession::~TestSession() { TzSession::Install(previous); }

std::vector<std::string> TestSession::BoxTexts() const {
  std::vector<std::string> texts;
  for (const TzShownBox& box : ui.GetShownBoxes()) texts.push_back(box.text.GetUTF8String());
  return texts;
}

TestFolder::TestFolder() {
  std::string name = (fs::temp_directory_path() / "plexo-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for a test");
  path = TzPath::FromNative(name);
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  fs::remove_all(path.GetNative(), ignored);
}

TzPath TestFolder::Write(const std::string& name, std::string_view content) const {
  TzPath file = path / name;
  WriteFile(file, content);
  return file;
}

std::string ReadFile(const TzPath& file) {
  std::ifstream stream(file.GetNative(), std::ios::binary);
  EXPECT_TRUE(stream.is_open()) << file;
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

void WriteFile(const TzPath& file, std::string_view content) {
  fs::create_directories(fs::path(file.GetNative()).parent_path());
  std::ofstream(file.GetNative(), std::ios::binary) << content;
}

std::vector<std::string> ListTree(const TzPath& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(folder.GetNative())) {
    names.push_back(fs::relative(entry.path(), folder.GetNative()).string() +
                    (entry.is_directory() ? "/" : ""));
  }
  std::ranges::sort(names);
  return names;
}
