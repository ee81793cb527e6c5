// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/CommandSession.h"

#include <algorithm>

#include "host/files/TzFileUtil.h"
#include "host/pdf/TzPdfKit.h"
#include "panel/PlexoStrings.h"

CommandSession::CommandSession(ProgressBar::Display display) : progressBar(display) {
  TzSession session;
  session.dictionary = &dictionary;
  session.userInterface = &userInterface;
  session.progress = &progressBar;
  session.problems = &problems;
  session.console = &console;
  previous = TzSession::Install(session);
  RegisterDefaultStrings();
  TzPdfKit::Start();
}

CommandSession::~CommandSession() {
  TzPdfKit::Stop();
  TzFileUtil::DeleteAllTempFilesCreated();
  TzSession::Install(previous);
}

std::vector<std::string> CommandSession::TakeBoxTexts() {
  const std::vector<TzShownBox>& boxes = userInterface.GetShownBoxes();
  std::vector<std::string> texts;
  for (; boxesTaken < boxes.size(); ++boxesTaken) texts.push_back(boxes[boxesTaken].text.GetUTF8String());
  return texts;
}

std::string CommandSession::GetWords(const char* key) const {
  return dictionary.GetString(key).GetUTF8String();
}

bool HasMachineFailure(const std::vector<TzProblem>& problems) {
  return std::ranges::any_of(problems, [](const TzProblem& each) { return each.code == kTzMachineFailure; });
}
