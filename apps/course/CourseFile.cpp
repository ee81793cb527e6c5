// SPDX-License-Identifier: Apache-2.0
#include "apps/course/CourseFile.h"

#include "apps/course/CourseReading.h"
#include "apps/course/CourseYaml.h"

namespace {

CourseFileResult Read(const std::string& path, CoursePurpose purpose, const CourseStop& stop) {
  CourseFileErrors errors;
  CourseFileResult result;
  if (const auto document = LoadCourseYaml(path, stop, errors)) {
    result.course = ReadCourseMap(*document, path, purpose, stop, errors);
  }
  result.errors = errors.TakeSorted();
  return result;
}

}  // namespace

CourseFileResult ReadCourseFile(const std::string& path, const CourseStop& stop) {
  return Read(path, CoursePurpose::Build, stop);
}

CourseFileResult ReadCourseDraft(const std::string& path, const CourseStop& stop) {
  return Read(path, CoursePurpose::Edit, stop);
}
