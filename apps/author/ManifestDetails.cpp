// SPDX-License-Identifier: Apache-2.0
#include "apps/author/ManifestDetails.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

namespace {

/// A part of a duration, "hh:mm:ss", and its cell.
struct DurationPart {
  const char* cell;
  std::size_t position;
};

constexpr DurationPart kDuration[] = {
    {"courseDurationHours", 0}, {"courseDurationMins", 3}, {"courseDurationSecs", 6}};

std::string FormatDuration(const TzVariant::Dictionary& result) {
  std::string text;
  for (const DurationPart& part : kDuration) {
    std::array<char, 24> number = {};
    std::snprintf(number.data(), number.size(), "%02d", static_cast<int>(result.at(part.cell).GetInteger()));
    text += (text.empty() ? "" : ":") + std::string(number.data());
  }
  return text;
}

}  // namespace

bool IsManifestDialog(const TzDataModel& dialog) {
  return dialog.GetSheet().name == "PlexoCourseManifestDialog";
}

void ReadManifestDetails(const TzDataModel& dialog, CourseDocument& course) {
  const TzVariant variant = dialog.GetCellValue("result");
  const TzVariant::Dictionary& result = variant.GetDictionary();
  const auto text = [&](const char* cell) { return result.at(cell).GetString().GetUTF8String(); };
  const auto textIf = [&](const char* enable, const char* cell) {
    return result.at(enable).GetBool() ? std::optional(text(cell)) : std::nullopt;
  };
  course.scormVersion = result.at("SCORMVersion").GetInteger() == 1 ? "2004" : "1.2";
  course.identifier = text("courseIdentifier");
  std::ranges::replace(course.identifier, ' ', '_');
  course.title = text("courseTitle");
  course.description = text("courseDescription");
  if (course.description->empty()) course.description.reset();
  course.version = textIf("enableCourseVersion", "courseVersion");
  course.duration.reset();
  if (result.at("enableCourseDuration").GetBool()) course.duration = FormatDuration(result);
  course.subject = textIf("enableCourseSubject", "courseSubject");
}

void EnterManifestDetails(const CourseDocument& course, TzDataModel& dialog) {
  dialog.SetCellValue("SCORMVersion", course.scormVersion == "1.2" ? 0 : 1);
  dialog.SetCellValue("courseIdentifier", TzString(course.identifier));
  dialog.SetCellValue("courseTitle", TzString(GetTitleOrDefault(course)));
  dialog.SetCellValue("courseDescription", TzString(course.description.value_or("")));
  dialog.SetCellValue("enableCourseVersion", course.version.has_value());
  dialog.SetCellValue("courseVersion", TzString(course.version.value_or("")));
  dialog.SetCellValue("enableCourseDuration", course.duration.has_value());
  const TzString duration(course.duration.value_or("00:00:00"));
  for (const DurationPart& part : kDuration) {
    dialog.SetCellValue(part.cell, std::int64_t{duration.Substring(part.position, 2).ToInteger()});
  }
  dialog.SetCellValue("enableCourseSubject", course.subject.has_value());
  dialog.SetCellValue("courseSubject", TzString(course.subject.value_or("")));
  dialog.Update();
}

std::string GetTitleOrDefault(const CourseDocument& course) {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (course.title || dictionary == nullptr) return course.title.value_or("");
  return dictionary->GetString("kDefaultCourseTitle").GetUTF8String();
}
