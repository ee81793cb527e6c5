// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzProcessGroup.h"

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <memory>

namespace {

// The shell stands between, for it notices when this process is gone, and ends the whole group then. The
// limits are those of the whole group: of a file and of memory in KB (for files, half of it), and no dumps.
constexpr const char* kWatch =
    R"(ulimit -c 0; ulimit -f 1048576; ulimit -d "$1"; shift; ("$@" </dev/null; kill -KILL 0) & )"
    "read -r line; kill -KILL 0";

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

struct Usage {
  std::size_t processes = 0;
  std::uint64_t bytes = 0;
};

/// The group of a process, from the line that the system keeps of it; -1 if it is gone.
pid_t ReadGroup(const std::string& folder) {
  std::ifstream file(folder + "/stat");
  std::string line;
  std::getline(file, line);
  // The program's name stands in brackets and may hold anything; state, parent and group follow.
  const std::size_t nameEnd = line.rfind(')');
  if (nameEnd == std::string::npos || nameEnd + 4 > line.size()) return -1;
  char* end = nullptr;
  static_cast<void>(std::strtol(line.c_str() + nameEnd + 4, &end, 10));
  return static_cast<pid_t>(std::strtol(end, nullptr, 10));
}

/// Memory that the process shares with nothing.
std::uint64_t ReadOwnBytes(const std::string& folder) {
  std::ifstream file(folder + "/statm");
  std::uint64_t size = 0;
  std::uint64_t resident = 0;
  std::uint64_t shared = 0;
  file >> size >> resident >> shared;
  const auto pageBytes = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
  return resident > shared ? (resident - shared) * pageBytes : 0;
}

Usage Measure(pid_t group) {
  Usage usage;
  const std::unique_ptr<DIR, int (*)(DIR*)> processes(opendir("/proc"), closedir);
  while (const dirent* entry = processes != nullptr ? readdir(processes.get()) : nullptr) {
    const char* name = &entry->d_name[0];
    const std::string folder = std::string("/proc/") + name;
    if (*name < '0' || *name > '9' || ReadGroup(folder) != group) continue;
    ++usage.processes;
    usage.bytes += ReadOwnBytes(folder);
  }
  return usage;
}

}  // namespace

int TzProcessGroup::Start(const std::vector<std::string>& command, std::vector<std::string> environment) {
  End();
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return errno;
  const TzFileDescriptor input(ends[0]);
  lifeline = TzFileDescriptor(ends[1]);
  std::vector<std::string> watched{"/bin/sh", "-c", kWatch, "movie", std::to_string(limits.bytes >> 10U)};
  watched.insert(watched.end(), command.begin(), command.end());
  const SpawnSettings settings(input.Get());
  const int error = posix_spawn(&process, watched.front().c_str(), &settings.actions, &settings.attributes,
                                PointersTo(watched).data(), PointersTo(environment).data());
  if (error != 0) process = -1;
  return error;
}

bool TzProcessGroup::IsRunning() const {
  if (process < 0) return false;
  // Who has ended keeps the number until `End`: the group bears it too, and may be there still.
  siginfo_t ended{};
  return waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         ended.si_pid == 0;
}

std::string TzProcessGroup::FindExcess() const {
  if (process < 0) return {};
  const Usage usage = Measure(process);
  if (usage.bytes > limits.bytes) return "more than " + std::to_string(limits.bytes >> 20U) + " MB of memory";
  if (usage.processes > limits.processes)
    return "more than " + std::to_string(limits.processes) + " processes";
  return {};
}

void TzProcessGroup::End() {
  if (process >= 0) {
    kill(-process, SIGKILL);
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) continue;
    process = -1;
  }
  lifeline = TzFileDescriptor();
}
