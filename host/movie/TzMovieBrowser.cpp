// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzMovieBrowser.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <vector>

#include "host/files/TzFileSystem.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzStreamUtil.h"
#include "host/session/TzProblem.h"

namespace {

constexpr std::string_view kPrograms[] = {
    "chromium",       "chromium-browser", "google-chrome", "google-chrome-stable",
    "microsoft-edge", "firefox",          "firefox-esr"};

// The shell stands between, for it hears when this process is gone, and ends the whole group then.
constexpr const char* kWatch = R"(("$@" </dev/null; kill -KILL 0) & read -r line; kill -KILL 0)";

std::string FindProgram() {
  const char* variable = std::getenv("PATH");
  std::string_view folders = variable != nullptr ? variable : "";
  for (const std::string_view program : kPrograms) {
    for (std::string_view rest = folders; !rest.empty();) {
      const std::size_t end = std::min(rest.find(':'), rest.size());
      std::string path = std::string(rest.substr(0, end)).append("/").append(program);
      if (path.starts_with('/') && access(path.c_str(), X_OK) == 0) return path;
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
  }
  return {};
}

bool IsFirefox(std::string_view program) { return program.find("firefox") != std::string_view::npos; }

std::vector<std::string> MakeChromiumArguments(const std::string& folder, const std::string& proxy) {
  std::vector<std::string> arguments{
      "--headless", "--disable-gpu", "--mute-audio", "--no-first-run", "--no-default-browser-check",
      "--disable-extensions", "--disable-sync", "--disable-default-apps", "--disable-component-update",
      "--disable-background-networking", "--disable-breakpad", "--disable-dev-shm-usage",
      "--password-store=basic", "--use-mock-keychain", "--autoplay-policy=no-user-gesture-required",
      // A headless page may count as hidden, and a hidden one hardly runs.
      "--disable-backgrounding-occluded-windows", "--disable-renderer-backgrounding",
      "--disable-background-timer-throttling",
      // The loopback address needs the proxy too, and nothing is to go around it.
      "--proxy-server=" + proxy, "--proxy-bypass-list=<-loopback>",
      "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
      "--webrtc-ip-handling-policy=disable_non_proxied_udp", "--force-webrtc-ip-handling-policy",
      "--user-data-dir=" + folder + "/profile"};
  // Its sandbox refuses to run for root.
  if (geteuid() == 0) arguments.emplace_back("--no-sandbox");
  return arguments;
}

std::vector<std::string> MakeFirefoxArguments(const std::string& folder) {
  return {"--headless", "--no-remote", "--profile", folder + "/profile"};
}

std::string MakeFirefoxSettings(std::uint16_t proxyPort) {
  std::string settings;
  const auto set = [&](std::string_view name, std::string_view value) {
    settings.append("user_pref(\"").append(name).append("\", ").append(value).append(");\n");
  };
  const std::string port = std::to_string(proxyPort);
  set("network.proxy.type", "1");
  for (const char* protocol : {"http", "ssl"}) {
    set(std::string("network.proxy.") + protocol, "\"127.0.0.1\"");
    set(std::string("network.proxy.") + protocol + "_port", port);
  }
  set("network.proxy.no_proxies_on", "\"\"");
  set("network.proxy.allow_hijacking_localhost", "true");
  set("network.dns.disabled", "true");
  set("media.peerconnection.enabled", "false");
  set("media.volume_scale", "\"0.0\"");
  set("media.autoplay.default", "0");
  set("security.fileuri.strict_origin_policy", "true");
  set("browser.shell.checkDefaultBrowser", "false");
  set("browser.startup.homepage_override.mstone", "\"ignore\"");
  set("datareporting.policy.dataSubmissionEnabled", "false");
  set("toolkit.telemetry.reportingpolicy.firstRun", "false");
  set("app.update.enabled", "false");
  return settings;
}

/// A file of the disk.
bool WriteText(const TzPath& file, std::string_view text) {
  const auto stream = TzStreamUtil::CreateFileStreamWrite(TzFile(file), 0, 0, 0);
  return stream != nullptr && stream->Write(std::as_bytes(std::span(text))) == kTzSuccess &&
         stream->Close() == kTzSuccess;
}

/// Those of this process, but whatever a browser keeps goes into the folder.
std::vector<std::string> MakeEnvironment(const std::string& folder) {
  constexpr std::string_view kOwn[] = {
      "HOME=", "TMPDIR=", "XDG_CONFIG_HOME=", "XDG_CACHE_HOME=", "XDG_DATA_HOME="};
  std::vector<std::string> environment;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    bool isOwn = false;
    for (const std::string_view name : kOwn) isOwn = isOwn || std::string_view(*variable).starts_with(name);
    if (!isOwn) environment.emplace_back(*variable);
  }
  for (const std::string_view name : kOwn) environment.push_back(std::string(name) + folder);
  return environment;
}

std::vector<char*> PointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// How a process is started: in a group of its own, with its input from a descriptor, its output nowhere, and
/// nothing else of ours open.
class SpawnSettings {
 public:
  explicit SpawnSettings(int input) {
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_init(&actions);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    for (const int signal : {SIGPIPE, SIGINT, SIGTERM, SIGHUP, SIGCHLD}) sigaddset(&signals, signal);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  }
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  posix_spawnattr_t attributes{};
  posix_spawn_file_actions_t actions{};
};

}  // namespace

TzMovieBrowser::~TzMovieBrowser() { End(); }

bool TzMovieBrowser::Start(const std::string& address, std::uint16_t proxyPort) {
  program = FindProgram();
  if (program.empty()) {
    TzReportProblem(
        kTzMachineFailure, "the movie player",
        "no browser was found to play a movie in; install Chromium, Google Chrome, Microsoft Edge "
        "or Firefox");
    return false;
  }
  folder = TzFileUtil::CreateTempDiskDir("movie");
  if (folder.IsEmpty()) return false;
  // The address is a secret, and other users of the machine can read a program's arguments.
  const TzPath page = folder / "start.html";
  const std::string start = "<meta http-equiv=\"refresh\" content=\"0; url=" + address + "\">\n";
  if (!TzFileUtil::CreateDirectory(folder / "profile", false) || !WriteText(page, start) ||
      !WriteText(folder / "profile/user.js", MakeFirefoxSettings(proxyPort))) {
    return false;
  }
  return Spawn("file://" + page.GetNative(), proxyPort);
}

bool TzMovieBrowser::Spawn(const std::string& page, std::uint16_t proxyPort) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    TzReportSystemProblem(errno, program, "can't be started");
    return false;
  }
  const TzFileDescriptor input(ends[0]);
  lifeline = TzFileDescriptor(ends[1]);
  std::vector<std::string> command{"/bin/sh", "-c", kWatch, "movie", program};
  const std::vector<std::string> options =
      IsFirefox(program)
          ? MakeFirefoxArguments(folder.GetNative())
          : MakeChromiumArguments(folder.GetNative(), "http://127.0.0.1:" + std::to_string(proxyPort));
  command.insert(command.end(), options.begin(), options.end());
  command.push_back(page);
  std::vector<std::string> environment = MakeEnvironment(folder.GetNative());
  const SpawnSettings settings(input.Get());
  const int error = posix_spawn(&process, command.front().c_str(), &settings.actions, &settings.attributes,
                                PointersTo(command).data(), PointersTo(environment).data());
  if (error == 0) return true;
  process = -1;
  TzReportSystemProblem(error, program, "can't be started");
  return false;
}

bool TzMovieBrowser::IsRunning() const {
  if (process < 0) return false;
  // Who has ended keeps the number until `End`: the group bears it too, and may be there still.
  siginfo_t ended{};
  return waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         ended.si_pid == 0;
}

void TzMovieBrowser::End() {
  if (process >= 0) {
    kill(-process, SIGKILL);
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) continue;
    process = -1;
  }
  lifeline = TzFileDescriptor();
  if (folder.IsEmpty()) return;
  // What the browser started isn't ours to wait for, and may write into the folder until it is gone.
  constexpr std::chrono::milliseconds kStep(10);
  for (int step = 0; step < 100 && TzFileSystem::Current().Delete(folder) != kTzSuccess; ++step) {
    std::this_thread::sleep_for(kStep);
  }
}
