// SPDX-License-Identifier: Apache-2.0
#include "host/headless/TzTranscript.h"

#include <map>

namespace {

/// Adds each line of the one that isn't in the other, as often as it isn't, behind the sign.
void AddMissing(const std::vector<std::string>& from, const std::vector<std::string>& other, const char* sign,
                std::vector<std::string>& lines) {
  std::map<std::string, int> known;
  for (const std::string& line : other) ++known[line];
  for (const std::string& line : from) {
    if (known[line]-- > 0) continue;
    lines.push_back(std::string("  ") + sign + " " + line);
  }
}

}  // namespace

void TzTranscript::AddDifference(const std::vector<std::string>& before,
                                 const std::vector<std::string>& after) {
  AddMissing(before, after, "-", lines);
  AddMissing(after, before, "+", lines);
}

std::string TzTranscript::GetText() const {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}
