// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// What a headless session showed and what was done in it, a line each, in order.
///
///     press "+ Module"
///       + checkbox "Force Module Sequence" off
///     box "Plexo Error": "The file is damaged" -> OK
///     dialog "Course Manifest Details"
///
/// Lines with + and - are views that came to be seen or ceased to be, each with its state.
class TzTranscript {
 public:
  void Add(const std::string& line) { lines.push_back(line); }
  /// The difference between two pictures of a screen, each a list of lines.
  void AddDifference(const std::vector<std::string>& before, const std::vector<std::string>& after);

  [[nodiscard]] const std::vector<std::string>& GetLines() const { return lines; }
  [[nodiscard]] std::string GetText() const;

 private:
  std::vector<std::string> lines;
};
