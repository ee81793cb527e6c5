// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The page in which a movie runs that is to be asked something, as texts.
///
/// Its script loads the player and the movie, then goes in a circle: it posts an answer to "next" and gets
/// the next request as the response, when there is one. Answers are one word and a value behind a blank:
///
/// | Answer | When |
/// |---|---|
/// | `loaded`, `failed` | once, at first |
/// | `string TEXT`, `boolean true`, `number 640`, `null` | what the movie returned; null for anything else |
/// | `missing` | the movie offers no function of that name, some seconds after it was loaded |
/// | `malformed` | the request isn't one |
///
/// A request is an `invoke` element, as `TzStrobePlayer` tells.
///
/// The movie is a stranger's program, and may call whatever the page can. So the page can't do anything but
/// talk to the server that it came from.
class TzMoviePage {
 public:
  static std::string_view GetPage();
  static std::string_view GetScript();
  /// Header lines for everything that is served: where the page may load from, and nothing else.
  static std::string_view GetHeaderFields();
};
