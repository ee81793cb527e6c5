// SPDX-License-Identifier: Apache-2.0
#include "support/ProgramRun.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace {

std::string TakeContent(int file) {
  std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
  const ssize_t count = pread(file, text.data(), text.size(), 0);
  text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
  close(file);
  return text;
}

}  // namespace

ProgramRun::ProgramRun(const std::string& program, const std::vector<std::string>& programArguments)
    : arguments(programArguments) {
  arguments.insert(arguments.begin(), program);
}

ProgramRun& ProgramRun::In(const TzPath& workingFolder) {
  folder = workingFolder.GetNative();
  return *this;
}

ProgramRun& ProgramRun::With(const std::string& variable, const std::string& value) {
  variables[variable] = value;
  return *this;
}

ProgramRun& ProgramRun::Prepare(std::function<void()> action) {
  preparation = std::move(action);
  return *this;
}

ProgramResult ProgramRun::Run() {
  Start();
  return Wait();
}

void ProgramRun::Start() {
  std::vector<char*> words;
  for (std::string& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  out = memfd_create("out", MFD_CLOEXEC);
  err = memfd_create("err", MFD_CLOEXEC);
  process = fork();
  if (process < 0) throw std::runtime_error("no new process");
  if (process > 0) return;
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  if (chdir(folder.c_str()) != 0) _exit(126);
  for (const auto& [name, value] : variables) setenv(name.c_str(), value.c_str(), 1);
  if (preparation) preparation();
  execv(words[0], words.data());
  _exit(127);
}

bool ProgramRun::HasEnded() {
  if (!hasEnded) hasEnded = waitpid(process, &waitStatus, WNOHANG) == process;
  return hasEnded;
}

void ProgramRun::Signal(int signal) const {
  if (!hasEnded) kill(process, signal);
}

ProgramResult ProgramRun::Wait() {
  if (!hasEnded) waitpid(process, &waitStatus, 0);
  hasEnded = true;
  ProgramResult result;
  if (WIFEXITED(waitStatus)) result.status = WEXITSTATUS(waitStatus);
  if (WIFSIGNALED(waitStatus)) result.signal = WTERMSIG(waitStatus);
  result.out = TakeContent(out);
  result.err = TakeContent(err);
  return result;
}
