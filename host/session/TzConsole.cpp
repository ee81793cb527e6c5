// SPDX-License-Identifier: Apache-2.0
#include "host/session/TzConsole.h"

#include <cstdio>

#include "host/session/TzSession.h"

namespace {

void WriteTo(FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

}  // namespace

void TzWriteOutput(std::string_view text) {
  ITzConsole* console = TzSession::Current().console;
  if (console == nullptr) return WriteTo(stdout, text);
  console->WriteOutput(text);
}

void TzWriteError(std::string_view text) {
  ITzConsole* console = TzSession::Current().console;
  if (console == nullptr) return WriteTo(stderr, text);
  console->WriteError(text);
}
