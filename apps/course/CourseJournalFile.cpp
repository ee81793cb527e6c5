// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseJournalFile.h"

#include <charconv>
#include <sstream>

#include "apps/course/CourseFileWriter.h"
#include "apps/course/CourseReading.h"
#include "apps/course/CourseYaml.h"
#include "apps/course/CourseYamlText.h"

namespace {

constexpr std::string_view kJournalKeys[] = {"time", "course-file", "course"};

/// Below a key of the journal. A text of a course never runs over a line's end, so lines can be moved in.
std::string Indent(const std::string& text) {
  std::istringstream lines(text);
  std::string indented;
  for (std::string line; std::getline(lines, line);) indented += "  " + line + "\n";
  return indented;
}

std::int64_t ReadTime(const CourseKeys& keys, CourseFileErrors& errors) {
  keys.Require("time", "when it was written");
  const auto text = keys.ReadText("time");
  if (!text) return 0;
  std::int64_t time = 0;
  const char* end = text->text.data() + text->text.size();
  const auto [stop, error] = std::from_chars(text->text.data(), end, time);
  if (error != std::errc() || stop != end) errors.Add(text->mark, "'time' must be a number of seconds");
  return time;
}

}  // namespace

std::optional<TzProblem> WriteCourseJournal(const std::string& path, const CourseJournalEntry& entry) {
  if (auto problem = FindUnwritableFile(entry.course)) return problem;
  std::string text = "time: " + std::to_string(entry.time) + "\n";
  if (entry.courseFile) text += "course-file: " + WriteYamlText(*entry.courseFile) + "\n";
  text += "course:\n" + Indent(FormatCourse(entry.course, path, CoursePaths::Absolute));
  return ReplaceCourseText(path, text);
}

CourseJournalResult ReadCourseJournal(const std::string& path) {
  CourseFileErrors errors;
  CourseJournalResult result;
  if (const auto document = LoadCourseYaml(path, nullptr, errors)) {
    CourseKeys keys(*document, "the journal", kJournalKeys, errors);
    result.entry.time = ReadTime(keys, errors);
    if (const auto courseFile = keys.ReadText("course-file")) result.entry.courseFile = courseFile->text;
    keys.Require("course", "the course that it keeps");
    if (const auto course = keys.ReadNode("course")) {
      result.entry.course = ReadCourseMap(*course, path, CoursePurpose::Edit, nullptr, errors);
    }
  }
  result.errors = errors.TakeSorted();
  return result;
}
