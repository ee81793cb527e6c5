// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

#include "host/files/TzPath.h"
#include "host/movie/TzMovieBrowser.h"
#include "host/movie/TzMovieServer.h"
#include "host/text/TzString.h"
#include "host/text/TzVariant.h"

/// Runs one movie, unseen, and asks it things: the movie plays in a browser of this machine, in a player that
/// is part of the installation.
///
/// A movie can be asked for what it offers: the functions that it registers with its external interface.
///
/// Guarantees: all calls block. Browser and player have `kStartPatience` to get ready, and all that is done
/// for one movie takes at most `kPatience` from then on; what isn't answered by then is no answer. The
/// progress sink is told meanwhile and can stop it. The movie reaches neither the network nor the user's
/// files, is held to limits of memory, and nothing of it outlives this object.
/// Why something failed goes to the session's problem sink.
class TzStrobePlayer {
 public:
  static constexpr std::chrono::seconds kPatience{20};
  static constexpr std::chrono::seconds kStartPatience{60};

  /// `kind` matters in hosts that have several players; there is one here.
  explicit TzStrobePlayer(int kind);
  ~TzStrobePlayer();
  TzStrobePlayer(const TzStrobePlayer&) = delete;
  TzStrobePlayer& operator=(const TzStrobePlayer&) = delete;

  /// Loads a movie and lets it run. 0 if it can't be: not a movie, no browser, no player. Called once;
  /// `layer` and `isVisible` matter in hosts that show movies.
  [[nodiscard]] std::uint8_t LoadMovie(const TzString& path, int layer, std::uint8_t isVisible);

  /// Calls a function that the movie offers. The request is the XML of the player's external interface:
  /// `<invoke name="FUNCTION" returntype="xml"><arguments>...</arguments></invoke>`, with arguments that are
  /// `<string>`, `<number>`, `<true/>`, `<false/>` or `<null/>`. A text, a flag or a number comes back as
  /// such, everything else as a null variant, as does a movie that doesn't answer, has no such function some
  /// seconds after it was loaded, or isn't loaded.
  [[nodiscard]] TzVariant CallActionScriptFunction(const TzString& request);

 private:
  /// Why waiting for an answer ended without one.
  enum class Stop { No, Asked, Ended, Excess, NotReady, Late };

  bool IsMovie(const TzPath& file) const;
  std::optional<std::string> WaitForPage();
  Stop FindStop();
  bool ReportProgress();
  void ReportStop(Stop stop) const;

  std::string name;
  std::chrono::steady_clock::time_point start;
  std::string excess;
  std::unique_ptr<TzMovieServer> server;
  TzMovieBrowser browser;
  bool isLoaded = false;
};
