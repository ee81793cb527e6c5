// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "sequencer/PlexoSequencingDefinition.h"

/// A course in a few words, for tests. One activity a line, indented by two blanks a level, with its
/// identifier and what isn't a default; its rules and objectives behind "|":
///
///   edition 4
///   root flow nochoice
///     a bycontent limit=2 weight=0.5
///       | disabled if not satisfied of o1, objectiveStatusKnown of o1
///       | skip if any completed, measure > 0.5
///       | primary byMeasure=0.6 write sm g1
///       | objective o1 read sm g0
///     b
///       | rollup atLeastCount 2 not satisfied, completed => incomplete
///
/// The letters of maps are s(atisfied), m(easure), r(aw), n (min), x (max), c(ompleted), p(rogress).
class CourseText {
 public:
  /// Null, with a failure of the test, if the text isn't understood.
  static std::shared_ptr<const PlexoSequencingDefinition> Parse(const std::vector<std::string>& lines);
};
