// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

/// The exception codes of SCORM 2004 Sequencing and Navigation: NB_2_1_1 is "NB.2.1-1".
enum class PlexoSequencingException : std::uint8_t {
  None,
  NB_2_1_1,
  NB_2_1_2,
  NB_2_1_3,
  NB_2_1_4,
  NB_2_1_5,
  NB_2_1_6,
  NB_2_1_7,
  NB_2_1_8,
  NB_2_1_9,
  NB_2_1_10,
  NB_2_1_11,
  NB_2_1_12,
  NB_2_1_13,
  TB_2_3_1,
  TB_2_3_2,
  TB_2_3_3,
  TB_2_3_4,
  TB_2_3_5,
  TB_2_3_6,
  TB_2_3_7,
  SB_2_1_1,
  SB_2_1_2,
  SB_2_1_3,
  SB_2_1_4,
  SB_2_2_1,
  SB_2_2_2,
  SB_2_4_1,
  SB_2_4_2,
  SB_2_4_3,
  SB_2_5_1,
  SB_2_6_1,
  SB_2_6_2,
  SB_2_7_1,
  SB_2_7_2,
  SB_2_8_1,
  SB_2_8_2,
  SB_2_9_1,
  SB_2_9_2,
  SB_2_9_3,
  SB_2_9_4,
  SB_2_9_5,
  SB_2_9_6,
  SB_2_9_7,
  SB_2_9_8,
  SB_2_9_9,
  SB_2_10_1,
  SB_2_10_2,
  SB_2_10_3,
  SB_2_11_1,
  SB_2_11_2,
  SB_2_12_1,
  SB_2_13_1,
  DB_1_1_1,
  DB_1_1_2,
  DB_1_1_3,
  DB_2_1,
};

/// The codes in writing. Those that no request can reach (a path in a tree is never empty) are there because
/// the book has them.
class PlexoExceptionText {
 public:
  /// "NB.2.1-1"; empty for None.
  [[nodiscard]] static std::string_view GetCode(PlexoSequencingException exception);
  /// "the sequencing session has already begun"
  [[nodiscard]] static std::string_view GetText(PlexoSequencingException exception);
};
