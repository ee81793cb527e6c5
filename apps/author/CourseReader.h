// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "apps/author/AuthorUserInterface.h"
#include "apps/course/CourseDocument.h"

/// Reads the course off the panel, as it stands at the time: a document that can be saved, and played into
/// the panel again.
///
/// It says what the component's course holds, which isn't always what the person wanted: a row that stands
/// for no file (its file was there already) is left out. Modules that nobody has scrolled to are read too,
/// without the person's view changing.
class CourseReader {
 public:
  explicit CourseReader(AuthorUserInterface& userInterface) : ui(userInterface) {}

  /// None while the template choice shows, and without a panel.
  [[nodiscard]] std::optional<CourseDocument> Read() const;

 private:
  AuthorUserInterface& ui;
};
