// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzMovieBrowser.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <vector>

#include "host/files/TzFileSystem.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzScratch.h"
#include "host/files/TzStreamUtil.h"
#include "host/session/TzProblem.h"

namespace {

constexpr std::string_view kPrograms[] = {
    "chromium",       "chromium-browser", "google-chrome", "google-chrome-stable",
    "microsoft-edge", "firefox",          "firefox-esr"};

/// Runs a program as another user; part of every Linux system.
constexpr const char* kSetUser = "/usr/bin/setpriv";

std::string FindBrowser() {
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

bool CanBePassedByAll(const TzPath& folder) {
  const std::string& path = folder.GetNative();
  for (std::size_t end = path.size(); end != std::string::npos && end > 0; end = path.rfind('/', end - 1)) {
    struct stat status = {};
    if (stat(path.substr(0, end).c_str(), &status) != 0 || (status.st_mode & S_IXOTH) == 0) return false;
  }
  return true;
}

/// The user who owns nothing; none if the system has none.
const passwd* FindNobody() { return getpwnam("nobody"); }

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

}  // namespace

TzMovieBrowser::~TzMovieBrowser() {
  group.End();
  if (folder.IsEmpty()) return;
  // What the browser started isn't ours to wait for, and may write into the folder until it is gone.
  constexpr std::chrono::milliseconds kStep(10);
  for (int step = 0; step < 100 && TzFileSystem::Current().Delete(folder) != kTzSuccess; ++step) {
    std::this_thread::sleep_for(kStep);
  }
}

bool TzMovieBrowser::Start(const std::string& address, std::uint16_t port) {
  program = FindBrowser();
  proxyPort = port;
  if (program.empty()) {
    TzReportProblem(
        kTzMachineFailure, "the movie player",
        "no browser was found to play a movie in; install Chromium, Google Chrome, Microsoft Edge "
        "or Firefox");
    return false;
  }
  if (!MakeFolder(address)) return false;
  // The sandbox refuses to run for root.
  if (geteuid() == 0 && !isOtherUser) sandbox = Sandbox::Off;
  return Run();
}

bool TzMovieBrowser::RunWithoutSandbox() {
  if (!isOtherUser || sandbox == Sandbox::Off || IsFirefox(program)) return false;
  sandbox = Sandbox::Off;
  return Run();
}

std::string TzMovieBrowser::DescribeRisk() const {
  if (geteuid() == 0 && !isOtherUser) {
    return "ran the movie as root, without a sandbox: no other user can work in '" +
           folder.GetParentTzPath(-2).GetNative() +
           "'; build as another user, or set TMPDIR to a folder that all users can enter";
  }
  if (sandbox == Sandbox::On) return {};
  return "ran the movie as the user 'nobody', but without its sandbox, which doesn't start on this machine";
}

/// The folder with the page and the settings, given to the user who owns nothing if this process is root's.
bool TzMovieBrowser::MakeFolder(const std::string& address) {
  const passwd* nobody = geteuid() == 0 ? FindNobody() : nullptr;
  folder = nobody != nullptr
               ? TzScratch::Instance().MakeDiskFolderFor("movie", nobody->pw_uid, nobody->pw_gid)
               : TzFileUtil::CreateTempDiskDir("movie");
  if (folder.IsEmpty()) return false;
  isOtherUser =
      nobody != nullptr && access(kSetUser, X_OK) == 0 && CanBePassedByAll(folder.GetParentTzPath());
  // The address is a secret, and other users of the machine can read a program's arguments.
  const std::string start = "<meta http-equiv=\"refresh\" content=\"0; url=" + address + "\">\n";
  const TzPath profile = folder / "profile";
  if (!TzFileUtil::CreateDirectory(profile, false) || !WriteText(folder / "start.html", start) ||
      !WriteText(profile / "user.js", MakeFirefoxSettings(proxyPort))) {
    return false;
  }
  if (!isOtherUser) return true;
  for (const TzPath& path : {profile, folder / "start.html", profile / "user.js"}) {
    if (chown(path.GetNative().c_str(), nobody->pw_uid, nobody->pw_gid) != 0) return false;
  }
  return true;
}

bool TzMovieBrowser::Run() {
  std::vector<std::string> command;
  if (isOtherUser) {
    const passwd* nobody = FindNobody();
    command = {kSetUser, "--reuid=" + std::to_string(nobody->pw_uid),
               "--regid=" + std::to_string(nobody->pw_gid), "--clear-groups"};
  }
  command.push_back(program);
  const std::vector<std::string> options =
      IsFirefox(program)
          ? MakeFirefoxArguments(folder.GetNative())
          : MakeChromiumArguments(folder.GetNative(), "http://127.0.0.1:" + std::to_string(proxyPort));
  command.insert(command.end(), options.begin(), options.end());
  if (sandbox == Sandbox::Off && !IsFirefox(program)) command.emplace_back("--no-sandbox");
  command.push_back("file://" + (folder / "start.html").GetNative());
  const int error = group.Start(command, MakeEnvironment(folder.GetNative()));
  if (error != 0) TzReportSystemProblem(error, program, "can't be started");
  return error == 0;
}
