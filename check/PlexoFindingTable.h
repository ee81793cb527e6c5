// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "check/PlexoFinding.h"

enum class PlexoSeverity { Error, Warning, Hint };

/// What is known of a finding whatever the package.
struct PlexoFindingKind {
  PlexoFindingId id;
  /// "PLX-001": never given to another finding, nor changed.
  std::string_view code;
  PlexoSeverity severity;
  std::string_view title;
  /// The text, with the finding's words for "{0}", "{1}" ...; likewise the way out.
  std::string_view pattern;
  std::string_view wayOut;
  /// There may be many of them that say the same: a list names the first words of some only.
  bool isListedBriefly = false;
};

/// The one table of all findings: the command line, the tests and docs/messages.md use it.
class PlexoFindingTable {
 public:
  /// By id, which is also the order of the codes.
  [[nodiscard]] static std::span<const PlexoFindingKind> GetKinds();
  [[nodiscard]] static const PlexoFindingKind& GetKind(PlexoFindingId id);
  /// The text of one finding, without place and way out.
  [[nodiscard]] static std::string GetText(const PlexoFinding& finding);
  [[nodiscard]] static std::string GetWayOut(const PlexoFinding& finding);
  /// "error", "warning" or "hint".
  [[nodiscard]] static std::string_view GetName(PlexoSeverity severity);
  /// The table as a page in Markdown.
  [[nodiscard]] static std::string WriteMarkdown();
};
