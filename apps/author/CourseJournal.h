// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "apps/course/CourseJournalFile.h"
#include "host/files/TzFileDescriptor.h"
#include "host/files/TzPath.h"

/// Keeps unsaved work in a folder, so that it outlives a crash.
///
/// Each running program has a journal of its own there, and beside it a file with the number of its process,
/// which it holds locked: the system lets go of the lock when the program ends, however it does. A journal
/// whose lock nobody holds was left by a crash.
class CourseJournal {
 public:
  /// Makes the folder where it is missing. If that, or the lock, can't be had, there is no journal:
  /// `GetProblem` tells why, and nothing is written or found.
  explicit CourseJournal(TzPath journalFolder);
  /// A journal that wasn't cleared stays, and is found at the next start.
  ~CourseJournal();
  CourseJournal(const CourseJournal&) = delete;
  CourseJournal& operator=(const CourseJournal&) = delete;

  [[nodiscard]] const std::optional<TzProblem>& GetProblem() const { return problem; }

  /// To be asked once, at the start: the latest work that a crashed run left. It is this program's from then
  /// on: kept until `Clear`, or until another is noted. Journals that can't be read are passed over.
  [[nodiscard]] std::optional<CourseJournalEntry> Find();

  /// The course as it is by now, and the course file that it belongs to, if there is one. Written in one
  /// step, and only if it differs from what was noted last. None if it is kept.
  [[nodiscard]] std::optional<TzProblem> NoteChange(const CourseDocument& course,
                                                    const std::optional<std::string>& courseFile);

  /// There is nothing to lose: the course was saved, or given up.
  void Clear();

 private:
  [[nodiscard]] bool TakeName(const std::string& name);
  [[nodiscard]] TzPath GetFile() const;

  TzPath folder;
  std::string ownName;
  TzFileDescriptor lock;
  std::optional<TzProblem> problem;
  std::optional<CourseJournalEntry> noted;
};
