// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/ProgressBar.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "apps/cli/CommandOutput.h"
#include "apps/cli/Interrupt.h"
#include "host/text/TzString.h"

namespace {

constexpr std::chrono::milliseconds kInterval{100};
constexpr std::size_t kUsualColumns = 80;
constexpr std::string_view kClearLine = "\r\x1b[K";

bool CanDrawOnStandardError() {
  const char* terminal = std::getenv("TERM");
  return isatty(STDERR_FILENO) != 0 && terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::size_t GetTerminalColumns() {
  winsize size = {};
  const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? size.ws_col : kUsualColumns;
}

void WriteToTerminal(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

}  // namespace

std::string FormatProgress(std::string_view activity, std::uint64_t done, std::uint64_t total,
                           std::size_t columns) {
  constexpr std::size_t kBarPlaces = 30;
  constexpr double kWhole = 100.0;
  const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
  const auto filled = static_cast<std::size_t>(share * static_cast<double>(kBarPlaces));
  const std::string percent = std::to_string(static_cast<int>(share * kWhole));
  std::string line = "[" + std::string(filled, '#') + std::string(kBarPlaces - filled, '.') + "]";
  line += std::string(5 - percent.size(), ' ') + percent + "%  " + MakePrintable(activity);
  return TzString(line).Substring(0, columns).GetUTF8String();
}

ProgressBar::ProgressBar(Display display)
    : isTerminal(display == Display::Shown && CanDrawOnStandardError()) {}

ProgressBar::~ProgressBar() { Clear(); }

bool ProgressBar::Report(std::string_view activity, std::uint64_t done, std::uint64_t total) {
  if (Interrupt::IsAsked()) return false;
  if (!isTerminal) return true;
  const Clock::time_point now = Clock::now();
  if (activity != current) {
    current = activity;
    if (!isDrawn) lastDrawn = now;
  }
  if (now - lastDrawn < kInterval) return true;
  lastDrawn = now;
  isDrawn = true;
  // The last place stays free: a full line would wrap on some terminals.
  WriteToTerminal("\r" + FormatProgress(activity, done, total, GetTerminalColumns() - 1) + "\x1b[K");
  return true;
}

void ProgressBar::Clear() {
  if (!isDrawn) return;
  isDrawn = false;
  WriteToTerminal(std::string(kClearLine));
}
