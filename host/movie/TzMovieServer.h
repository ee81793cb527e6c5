// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <string>

#include "host/files/TzPath.h"
#include "host/movie/TzHttpConnection.h"

/// Serves one movie, the player and the page around them to one browser of this machine, and is the other
/// side of the page's talk.
///
/// Guarantees: listens on the loopback address only, on a free port, and answers nothing that isn't below a
/// path of 128 random bits: the page, its script, the player's files, the movie, and the page's posts. It is
/// also the browser's proxy, one that refuses every other address: a browser that sends everything through it
/// reaches nothing else, neither other machines nor other servers of this one. Needs no thread: it serves
/// while somebody waits for an answer.
class TzMovieServer {
 public:
  using Clock = std::chrono::steady_clock;

  TzMovieServer(TzPath movieFile, TzPath playerFolder);

  /// False, with a problem reported, if there is no port to be had.
  [[nodiscard]] bool Start();
  [[nodiscard]] std::uint16_t GetPort() const { return port; }
  /// The page's address.
  [[nodiscard]] std::string GetAddress() const;
  /// Whether a browser came for the page at all.
  [[nodiscard]] bool WasPageAsked() const { return wasPageAsked; }
  /// When the page, its player ready, came for the movie; none if it hasn't yet.
  [[nodiscard]] std::optional<Clock::time_point> GetMovieAsked() const { return movieAsked; }

  /// Lets the page have its next request. Only after its answer to the one before.
  void Ask(const std::string& request);
  /// Serves until the page answers. Empty if `goesOn`, which is asked ten times a second, says no before.
  [[nodiscard]] std::optional<std::string> WaitForAnswer(const std::function<bool()>& goesOn);

 private:
  void ServeOnce(int milliseconds);
  void Accept();
  void Handle(TzHttpConnection& connection);
  void HandleGet(TzHttpConnection& connection, const std::string& name);
  static void ServeFile(TzHttpConnection& connection, const TzPath& file, const char* type);
  [[nodiscard]] std::optional<std::string> GetServedName(const std::string& target) const;

  TzPath movie;
  TzPath player;
  TzFileDescriptor listener;
  std::uint16_t port = 0;
  std::string token;
  bool wasPageAsked = false;
  std::optional<Clock::time_point> movieAsked;
  std::list<TzHttpConnection> connections;
  /// The page's post that waits for a request; one of `connections`.
  TzHttpConnection* waiting = nullptr;
  std::optional<std::string> answer;
};
