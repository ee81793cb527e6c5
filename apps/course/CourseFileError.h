// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

/// Asked now and then by a reading; true ends it.
using CourseStop = std::function<bool()>;

/// What kind of thing is wrong, from the mildest to what outweighs the others.
enum class CourseFault {
  /// A listed file of a kind that courses don't take.
  Refused,
  /// The course file doesn't say what it should.
  Wrong,
  /// The machine failed.
  Machine,
  /// Whoever asked for the reading stopped it.
  Stopped,
};

/// Something wrong at a place of a course file.
struct CourseFileError {
  /// Counted from 1; 0 for the file as a whole.
  int line = 0;
  int column = 0;
  CourseFault fault = CourseFault::Wrong;
  std::string message;
  /// A way out, or why it is wrong; may be empty.
  std::string reason;
};
