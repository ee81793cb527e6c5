// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "host/files/TzPath.h"
#include "host/movie/TzProcessGroup.h"

/// A browser of this machine that shows one page, without a window, for as long as this object lives.
///
/// Guarantees: the first that is found on PATH of Chromium, Google Chrome, Microsoft Edge and Firefox. It
/// knows nothing of the user's: profile, settings and temporary files are in a folder of its own, which goes
/// with it. All its traffic, that to this machine included, goes to the proxy named. Its processes are one
/// group with limits, which ends with this object, and as well if this process is killed. A process of root
/// runs it as the user "nobody", where that can enter the folder.
class TzMovieBrowser {
 public:
  TzMovieBrowser() = default;
  ~TzMovieBrowser();
  TzMovieBrowser(const TzMovieBrowser&) = delete;
  TzMovieBrowser& operator=(const TzMovieBrowser&) = delete;

  /// False, with a problem reported that says what to install, if there is none or it can't be started.
  [[nodiscard]] bool Start(const std::string& address, std::uint16_t port);
  /// Starts it once more, for one that ended before it showed the page: it may have found no way to run its
  /// sandbox. False if that isn't worth a try: only a user who owns nothing may do without.
  [[nodiscard]] bool RunWithoutSandbox();
  /// What protects the machine less than it should, in words; empty if nothing does.
  [[nodiscard]] std::string DescribeRisk() const;
  /// False once it ended by itself.
  [[nodiscard]] bool IsRunning() const { return group.IsRunning(); }
  /// Which limit it is over, in words; empty if it is over none.
  [[nodiscard]] std::string FindExcess() const { return group.FindExcess(); }
  /// The program's path, for messages.
  [[nodiscard]] const std::string& GetProgram() const { return program; }

 private:
  enum class Sandbox { On, Off };
  /// Several times what a browser takes with a large movie.
  static constexpr TzProcessGroup::Limits kLimits{.bytes = std::uint64_t{1536} << 20U, .processes = 64};

  bool MakeFolder(const std::string& address);
  bool Run();

  std::string program;
  std::uint16_t proxyPort = 0;
  TzPath folder;
  bool isOtherUser = false;
  Sandbox sandbox = Sandbox::On;
  TzProcessGroup group{kLimits};
};
