// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoSchemaNames.h"

#include <gtest/gtest.h>

#include "core/PlexoCourseModel.h"
#include "support/TestSession.h"

// The list stands in two libraries that may not know each other: adoption forecasts which files a course
// removes from what it takes in.
TEST(PlexoSchemaNames, HaveEveryDocumentThatACourseRemoves) {
  TestSession session;
  const PlexoCourseModel* course = GetCourseModel();
  ASSERT_EQ(course->GetScorm2004SchemaFileCount(), 25U);
  for (std::size_t index = 0; index < course->GetScorm2004SchemaFileCount(); ++index) {
    const std::string name = course->GetScorm2004SchemaFile(index).GetUTF8String();
    EXPECT_TRUE(PlexoSchemaNames::Has(name, PlexoCourseEdition::Scorm2004)) << name;
    EXPECT_TRUE(PlexoSchemaNames::Has(name, PlexoCourseEdition::Scorm12)) << name;
  }
  for (std::size_t index = 0; index < course->GetScorm12SchemaFileCount(); ++index) {
    const std::string name = course->GetScorm12SchemaFile(index).GetUTF8String();
    EXPECT_TRUE(PlexoSchemaNames::Has(name, PlexoCourseEdition::Scorm12)) << name;
  }
}
