// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "apps/author/AuthorUserInterface.h"
#include "apps/course/CourseDocument.h"
#include "host/headless/TzHeadlessDriver.h"
#include "support/TestSession.h"

/// A person at the panel, with a program between that knows the course, and SCO packages "a" to "h" on the
/// desk: in the folder of the test, and other ones of the same names in its folder "other".
class AuthorTest : public testing::Test {
 protected:
  AuthorTest();
  ~AuthorTest() override;

  [[nodiscard]] TzPath File(const std::string& name) const { return desk.Path() / (name + ".zip"); }
  [[nodiscard]] ListedFile Listed(const std::string& name) const {
    return {.name = name, .path = File(name)};
  }

  /// Presses the template's button and confirms the details: title "Fire & <safety>", and more as the script
  /// of the dialog wants it.
  void Choose(
      const std::string& templateName,
      const TzHeadlessDriver::DialogScript& more = [](TzHeadlessDriver& /*dialog*/) {});
  void AddFiles(const std::vector<std::string>& names) { AddPaths(Files(names)); }
  void AddPaths(const std::vector<TzPath>& files);
  /// Presses the add button of a module; its tooltip begins so.
  void AddTo(std::size_t module, const char* button, const std::vector<std::string>& names) {
    AddPathsTo(module, button, Files(names));
  }
  void AddPathsTo(std::size_t module, const char* button, const std::vector<TzPath>& files);
  /// A complete course of two modules of half the weight.
  void MakeModules(const std::string& templateName);
  /// Publishes through the panel and returns the manifest of the package.
  std::string Publish();
  /// Presses New, and answers the question whether to publish.
  void LeaveCourse();

  /// Of the course on the screen; an empty one, and a failure, without a course.
  [[nodiscard]] CourseDocument Read() const;

  TestFolder desk;
  TestSession& session;
  AuthorUserInterface& author;
  TzHeadlessDriver ui;

 private:
  [[nodiscard]] std::vector<TzPath> Files(const std::vector<std::string>& names) const;

  TzSession previous;
};

inline constexpr const char* kPreTestButton = "Add a pretest SCO to this course.";
inline constexpr const char* kContentButton = "Add a content SCO to this course.";
inline constexpr const char* kPostTestButton = "Add a post-test SCO to this course.";
