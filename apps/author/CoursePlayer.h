// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "apps/author/AuthorUserInterface.h"
#include "apps/course/CourseDocument.h"

/// Something of a course that the panel didn't take, or took otherwise than it was written.
struct CoursePlayRefusal {
  /// A file's path, or a part of the course ("module 2").
  std::string subject;
  /// What was wrong with it: the component's own words where it had some.
  std::string message;
};

struct CoursePlayResult {
  enum class Outcome {
    /// The course is in the panel, but for what was refused.
    Opened,
    /// The panel didn't begin the course.
    Refused,
    /// Stopped on the way; the panel shows the template choice.
    Cancelled,
  };
  Outcome outcome = Outcome::Opened;
  std::vector<CoursePlayRefusal> refusals;
};

/// Opens a course by doing in the panel what a person would: gives up the course that is there, chooses the
/// template, answers the manifest dialog, adds the files and fills in the rows. None of that but the result
/// shows, and nobody is asked whether the other course may go. UI thread, between two events.
class CoursePlayer : private AuthorScript {
 public:
  /// `activity` names what is being added. False stops.
  using Progress = std::function<bool(const std::string& activity, std::size_t done, std::size_t total)>;

  explicit CoursePlayer(AuthorUserInterface& userInterface, Progress progress = nullptr)
      : ui(userInterface), report(std::move(progress)) {}

  CoursePlayResult Play(const CourseDocument& courseDocument);

 private:
  using Outcome = CoursePlayResult::Outcome;
  using RowPtr = kelpui::controls::UI_RowPtr;
  /// Has the panel ask for files, which the chooser then answers, and tells what it took.
  using Add = std::function<CourseSources::Placed()>;
  struct Cancelled {};

  int AnswerBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) override;
  std::vector<TzPath> AnswerChooser(const TzFileChooserRequest& request) override;
  void NoteTaken(const TzPath& file, const TzPath& holder) override;
  void RunDialog(TzCanvas& dialog) override;

  Outcome PlayScripted();
  [[nodiscard]] bool Leave();
  [[nodiscard]] bool Begin();
  void PlayFiles();
  void PlayModules();
  void PlayModule(const CourseModule& module, std::size_t number, const RowPtr& row);
  void PlayPlace(const std::vector<ListedFile>& files, const RowPtr& row, CoursePlace place);
  void EnterWeightage(double percent, std::size_t number, const RowPtr& row);

  /// Those that are there; the others are refused.
  [[nodiscard]] std::vector<TzPath> FindThere(const std::vector<ListedFile>& files);
  /// Adds the files, in as many choices as it takes; returns how many the panel took.
  void AddAll(const std::vector<TzPath>& files, const Add& add);
  void NoteBoxes(const std::vector<TzPath>& files, const CourseSources::Placed& placed);
  void Refuse(const std::string& subject, const std::string& message);
  /// Throws `Cancelled` if it was stopped.
  void Advance(const std::string& activity);

  AuthorUserInterface& ui;
  Progress report;
  const CourseDocument* course = nullptr;
  std::vector<CoursePlayRefusal> refusals;
  /// For the next chooser.
  std::vector<TzPath> answer;
  /// Of the last choice, those whose names were taken.
  std::vector<TzPath> heldBack;
  /// Texts of the boxes since they were noted last.
  std::vector<std::string> boxes;
  std::size_t done = 0;
  std::size_t total = 0;
};
