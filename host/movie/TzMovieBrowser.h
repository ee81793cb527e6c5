// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "host/files/TzFileDescriptor.h"
#include "host/files/TzPath.h"

/// A browser of this machine that shows one page, without a window, for as long as this object lives.
///
/// Guarantees: the first that is found on PATH of Chromium, Google Chrome, Microsoft Edge and Firefox. It
/// knows nothing of the user's: profile, settings and temporary files are in a folder of its own, which goes
/// with it. All its traffic, that to this machine included, goes to the proxy named. Its processes are one
/// group, which ends with this object, and as well if this process is killed.
class TzMovieBrowser {
 public:
  TzMovieBrowser() = default;
  ~TzMovieBrowser();
  TzMovieBrowser(const TzMovieBrowser&) = delete;
  TzMovieBrowser& operator=(const TzMovieBrowser&) = delete;

  /// False, with a problem reported that says what to install, if there is none or it can't be started.
  [[nodiscard]] bool Start(const std::string& address, std::uint16_t proxyPort);
  /// False once it ended by itself.
  [[nodiscard]] bool IsRunning() const;
  /// The program's path, for messages.
  [[nodiscard]] const std::string& GetProgram() const { return program; }

 private:
  bool Spawn(const std::string& page, std::uint16_t proxyPort);
  void End();

  std::string program;
  TzPath folder;
  pid_t process = -1;
  /// The group ends itself when this closes.
  TzFileDescriptor lifeline;
};
