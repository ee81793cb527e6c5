// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzStrobePlayer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzStreamUtil.h"
#include "host/session/ITzProgressSink.h"
#include "host/session/TzProblem.h"
#include "host/session/TzSession.h"

namespace {

TzPath GetPlayerFolder() {
  return TzFileUtil::GetCurrentExecutablePath().GetParentTzPath() / "Templates/Publish/Plexo/Players/ruffle";
}

TzVariant ReadNumber(std::string_view text) {
  double number = NAN;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return {};
  // Up to here a script's number is a whole one exactly.
  constexpr double kMostWhole = 9007199254740992.0;
  if (std::trunc(number) == number && std::abs(number) < kMostWhole) {
    return {static_cast<std::int64_t>(number)};
  }
  return {number};
}

/// The value of an answer of the page.
TzVariant ReadAnswer(std::string_view answer) {
  const std::string_view kind = answer.substr(0, answer.find(' '));
  const std::string_view value = answer.substr(std::min(kind.size() + 1, answer.size()));
  if (kind == "string") return {TzString(value)};
  if (kind == "boolean") return {value == "true"};
  if (kind == "number") return ReadNumber(value);
  return {};
}

}  // namespace

TzStrobePlayer::TzStrobePlayer(int) {}

TzStrobePlayer::~TzStrobePlayer() = default;

std::uint8_t TzStrobePlayer::LoadMovie(const TzString& path, int, std::uint8_t) {
  const TzPath movie(path);
  name = movie.GetFileName().GetUTF8String();
  start = TzMovieServer::Clock::now();
  if (!IsMovie(movie)) return 0;
  const TzPath player = GetPlayerFolder();
  if (!TzFile(player / "ruffle.js").Exists()) {
    TzReportProblem(kTzMachineFailure, player.GetNative(),
                    "the movie player isn't installed; install the program again with its Templates folder");
    return 0;
  }
  server = std::make_unique<TzMovieServer>(movie, player);
  if (!server->Start() || !browser.Start(server->GetAddress(), server->GetPort())) return 0;
  const auto answer = WaitForPage();
  isLoaded = answer == "loaded";
  const std::string risk = browser.DescribeRisk();
  if (server->WasPageAsked() && !risk.empty()) TzReportProblem(kTzFailure, browser.GetProgram(), risk);
  if (answer && !isLoaded) TzReportProblem(kTzBadContent, name, "the movie player can't play it");
  return isLoaded ? 1 : 0;
}

/// Whether it starts as movies do: plain, or packed in one of two ways.
bool TzStrobePlayer::IsMovie(const TzPath& file) const {
  const auto stream = TzStreamUtil::CreateFileStreamRead(TzFile(file));
  std::array<char, 8> head{};
  const auto size = static_cast<std::ptrdiff_t>(head.size());
  if (stream == nullptr || stream->Read(std::as_writable_bytes(std::span(head))) != size) {
    TzReportProblem(kTzBadContent, name, "can't be read as a movie: it is too short, or not to be opened");
    return false;
  }
  const std::string_view mark(head.data(), 3);
  if (mark == "FWS" || mark == "CWS" || mark == "ZWS") return true;
  TzReportProblem(kTzBadContent, name, "isn't a movie: it doesn't start with FWS, CWS or ZWS");
  return false;
}

TzVariant TzStrobePlayer::CallActionScriptFunction(const TzString& request) {
  if (!isLoaded) return {};
  server->Ask(request.GetUTF8String());
  const auto answer = WaitForPage();
  // A page that was late once isn't in step any more.
  isLoaded = answer.has_value();
  if (answer == "missing")
    TzReportProblem(kTzBadContent, name, "the movie doesn't offer what it was asked for");
  if (answer == "malformed") TzReportProblem(kTzFailure, name, "what it is asked isn't a call of a function");
  return answer ? ReadAnswer(*answer) : TzVariant();
}

std::optional<std::string> TzStrobePlayer::WaitForPage() {
  Stop stop = Stop::No;
  auto answer = server->WaitForAnswer([&] {
    stop = FindStop();
    return stop == Stop::No;
  });
  if (!answer) ReportStop(stop);
  return answer;
}

TzStrobePlayer::Stop TzStrobePlayer::FindStop() {
  if (!ReportProgress()) return Stop::Asked;
  if (!browser.IsRunning() && (server->WasPageAsked() || !browser.RunWithoutSandbox())) return Stop::Ended;
  excess = browser.FindExcess();
  if (!excess.empty()) return Stop::Excess;
  const auto now = TzMovieServer::Clock::now();
  const auto ready = server->GetMovieAsked();
  if (ready) return now - *ready > kPatience ? Stop::Late : Stop::No;
  return now - start > kStartPatience ? Stop::NotReady : Stop::No;
}

/// False if the progress sink wants it stopped. The time until the player is ready isn't progress.
bool TzStrobePlayer::ReportProgress() {
  ITzProgressSink* sink = GetProgressSink();
  if (sink == nullptr) return true;
  using Milliseconds = std::chrono::milliseconds;
  const auto ready = server->GetMovieAsked();
  const auto spent = ready ? std::chrono::duration_cast<Milliseconds>(TzMovieServer::Clock::now() - *ready)
                           : Milliseconds(0);
  const Milliseconds total = kPatience;
  return sink->Report("asking " + name, static_cast<std::uint64_t>(std::min(spent, total).count()),
                      static_cast<std::uint64_t>(total.count()));
}

void TzStrobePlayer::ReportStop(Stop stop) const {
  const auto seconds = [](std::chrono::seconds time) { return std::to_string(time.count()) + " seconds"; };
  switch (stop) {
    case Stop::Ended:
      TzReportProblem(kTzMachineFailure, browser.GetProgram(),
                      "the browser ended while it played '" + name + "'");
      break;
    case Stop::Excess:
      TzReportProblem(kTzBadContent, name, "the movie was stopped: it took " + excess);
      break;
    case Stop::NotReady:
      TzReportProblem(kTzMachineFailure, browser.GetProgram(),
                      "the browser wasn't ready to play within " + seconds(kStartPatience) +
                          "; try again when the machine has less to do");
      break;
    case Stop::Late:
      TzReportProblem(kTzFailure, name,
                      "the file is a movie, but the player had no answer from it within " +
                          seconds(kPatience) + "; if the machine was busy, try again");
      break;
    case Stop::No:
    case Stop::Asked:
      break;
  }
}
