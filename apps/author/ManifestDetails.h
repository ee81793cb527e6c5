// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "apps/course/CourseDocument.h"
#include "host/sheets/TzDataModel.h"

// The cells of the manifest dialog, and the details of a course that stand in them.

bool IsManifestDialog(const TzDataModel& dialog);

/// What the dialog says, as the component stores it.
void ReadManifestDetails(const TzDataModel& dialog, CourseDocument& course);

/// Fills the dialog in.
void EnterManifestDetails(const CourseDocument& course, TzDataModel& dialog);

/// The course's title, or what a course is called that has none.
std::string GetTitleOrDefault(const CourseDocument& course);
