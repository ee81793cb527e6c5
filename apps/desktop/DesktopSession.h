// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/author/AuthorUserInterface.h"
#include "apps/desktop/DesktopProblems.h"
#include "apps/desktop/DesktopProgress.h"
#include "apps/desktop/DesktopUserInterface.h"
#include "apps/desktop/DesktopWindows.h"
#include "host/session/TzSession.h"
#include "host/text/TzStringDictionary.h"

/// What the program offers the component: in force from its making to its end. The window has to outlive it.
class DesktopSession {
 public:
  DesktopSession(DesktopWindow& window, DesktopSettings& settings);
  ~DesktopSession();
  DesktopSession(const DesktopSession&) = delete;
  DesktopSession& operator=(const DesktopSession&) = delete;

  [[nodiscard]] TzStringDictionary& GetDictionary() { return dictionary; }
  [[nodiscard]] DesktopUserInterface& GetUserInterface() { return userInterface; }
  /// The same with what it knows of the course.
  [[nodiscard]] AuthorUserInterface& GetAuthor() { return author; }
  [[nodiscard]] const CourseScreen& GetScreen() const { return author.GetScreen(); }
  [[nodiscard]] DesktopProgress& GetProgress() { return progress; }
  [[nodiscard]] DesktopProblems& GetProblems() { return problems; }
  [[nodiscard]] const DesktopWindows& GetWindows() const { return windows; }

  [[nodiscard]] QString GetWord(const char* key) const;

  /// The component is in the middle of something, or waits for an answer: the course on the screen needn't be
  /// whole.
  [[nodiscard]] bool IsBusy() const;

 private:
  TzStringDictionary dictionary;
  DesktopProblems problems;
  DesktopWindows windows;
  DesktopUserInterface userInterface;
  AuthorUserInterface author{userInterface};
  DesktopProgress progress{userInterface, problems};
  TzSession previous;
};
