// SPDX-License-Identifier: Apache-2.0
#include "sequencer/SessionCases.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

std::vector<SessionCase> SessionCase::ReadAll() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(PLEXO_SOURCE "/tests/sequencer/cases"))
    files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  std::vector<SessionCase> cases;
  for (const auto& path : files) {
    std::ifstream file(path);
    bool isSession = false;
    for (std::string line; std::getline(file, line);) {
      if (line.empty() || line[0] == '#') continue;
      if (line.rfind("== ", 0) == 0) {
        cases.push_back({path.stem().string() + ": " + line.substr(3), {}, {}});
        isSession = false;
      } else if (line == "--") {
        isSession = true;
      } else {
        (isSession ? cases.back().session : cases.back().course).push_back(line);
      }
    }
  }
  return cases;
}
