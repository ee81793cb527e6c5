// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "apps/author/CourseScreen.h"
#include "apps/course/CourseDocument.h"

/// What of the course in the panel can't be read off the screen at any time: the details that the manifest
/// dialog took, the title that was set last, and whether the sequence is forced. The panel keeps these to
/// itself, so they are noted as they pass.
class CourseDetails {
 public:
  /// The screen has to outlive this.
  explicit CourseDetails(const CourseScreen& courseScreen);
  CourseDetails(const CourseDetails&) = delete;
  CourseDetails& operator=(const CourseDetails&) = delete;

  /// Begins to follow the panel's cells, as soon as there is a panel. To be called often.
  void Attach();
  /// Called when the panel has gone back to the template choice.
  void SetCourseEnded(std::function<void()> notification) { courseEnded = std::move(notification); }

  /// Takes the details out of a manifest dialog that was confirmed; other dialogs are passed over.
  void NoteConfirmed(const TzDataModel& dialog);

  /// Puts the details into the course: all but its template, files and modules.
  void FillIn(CourseDocument& course) const;

  /// Has the panel force the sequence of the course in force, or not, as its check box does; also for a flat
  /// course, which has no check box.
  void ForceSequence(bool forced);

 private:
  void Watch(TzDataModel& cells, const char* cell, void (CourseDetails::*changed)(const TzVariant& value));
  void TitleChanged(const TzVariant& value);
  void ForceChanged(const TzVariant& value);
  void ViewChanged(const TzVariant& isTemplateChoice);
  void RemediationChanged(const TzVariant& isInForce);
  [[nodiscard]] bool IsForced() const;

  const CourseScreen* screen;
  std::function<void()> courseEnded;
  /// Watchers of cells can't be taken off again: they ask whether this is still there.
  std::shared_ptr<CourseDetails*> self = std::make_shared<CourseDetails*>(this);
  const TzDataModel* attached = nullptr;

  CourseDocument details;
  // The panel has one flag for the flat course and one for both kinds of module courses, which outlasts them.
  bool isListForced = false;
  bool areModulesForced = false;
  /// The check box of the remediation screen shows what a flat course wanted.
  bool isBoxBorrowed = false;
};
