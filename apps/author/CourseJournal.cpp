// SPDX-License-Identifier: Apache-2.0
#include "apps/author/CourseJournal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <span>
#include <system_error>
#include <vector>

#include "host/files/TzFileUtil.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kJournalSuffix = ".journal.yaml";
constexpr std::string_view kLockSuffix = ".lock";

std::string MakePath(const TzPath& folder, const std::string& name, std::string_view suffix) {
  return (fs::path(folder.GetNative()) / (name + std::string(suffix))).native();
}

/// Not open if another program holds it.
TzFileDescriptor TakeLock(const std::string& path) {
  TzFileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
  if (file.IsOpen() && flock(file.Get(), LOCK_EX | LOCK_NB) != 0) return {};
  return file;
}

void Remove(const std::string& path) {
  std::error_code ignored;
  fs::remove(path, ignored);
}

std::vector<std::string> ListJournals(const TzPath& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator each(folder.GetNative(), error); !error && each != fs::directory_iterator();
       each.increment(error)) {
    const std::string name = each->path().filename().native();
    if (name.ends_with(kJournalSuffix)) names.push_back(name.substr(0, name.size() - kJournalSuffix.size()));
  }
  return names;
}

}  // namespace

CourseJournal::CourseJournal(TzPath journalFolder) : folder(std::move(journalFolder)) {
  constexpr int kMostNames = 100;
  if (!TzFileUtil::CreateDirectory(folder, true)) {
    problem = TzProblem{kTzMachineFailure, folder.GetNative(), "the folder can't be made"};
    return;
  }
  // Another program may have the same number: on another machine that shares the folder, or in a sandbox of
  // its own. What one that crashed has left under the name must stay.
  const std::string process = std::to_string(getpid());
  for (int number = 0; number < kMostNames; ++number) {
    const std::string name = number == 0 ? process : process + "-" + std::to_string(number);
    std::error_code ignored;
    if (fs::exists(MakePath(folder, name, kJournalSuffix), ignored)) continue;
    if (TakeName(name)) return;
    if (errno != EWOULDBLOCK) break;
  }
  problem = TzProblem{kTzMachineFailure, folder.GetNative(),
                      "no lock can be had in it: " + std::generic_category().message(errno)};
}

bool CourseJournal::TakeName(const std::string& name) {
  errno = 0;
  lock = TakeLock(MakePath(folder, name, kLockSuffix));
  if (!lock.IsOpen()) return false;
  ownName = name;
  const std::string line = std::to_string(getpid()) + "\n";
  return ftruncate(lock.Get(), 0) == 0 && lock.WriteAt(0, std::as_bytes(std::span(line)));
}

CourseJournal::~CourseJournal() {
  if (!lock.IsOpen()) return;
  Remove(MakePath(folder, ownName, kLockSuffix));
}

TzPath CourseJournal::GetFile() const {
  return TzPath::FromNative(MakePath(folder, ownName, kJournalSuffix));
}

std::optional<CourseJournalEntry> CourseJournal::Find() {
  if (problem) return std::nullopt;
  struct Left {
    std::string name;
    TzFileDescriptor lock;
    CourseJournalEntry entry;
  };
  std::optional<Left> latest;
  for (const std::string& name : ListJournals(folder)) {
    TzFileDescriptor taken = TakeLock(MakePath(folder, name, kLockSuffix));
    if (!taken.IsOpen()) continue;
    CourseJournalResult read = ReadCourseJournal(MakePath(folder, name, kJournalSuffix));
    Remove(MakePath(folder, name, kLockSuffix));
    const bool isLatest = read.errors.empty() && (!latest || read.entry.time > latest->entry.time);
    if (isLatest) latest = Left{name, std::move(taken), std::move(read.entry)};
  }
  if (!latest) return std::nullopt;
  std::error_code ignored;
  fs::rename(MakePath(folder, latest->name, kJournalSuffix), GetFile().GetNative(), ignored);
  return std::move(latest->entry);
}

std::optional<TzProblem> CourseJournal::NoteChange(const CourseDocument& course,
                                                   const std::optional<std::string>& courseFile) {
  if (problem) return problem;
  if (noted && noted->course == course && noted->courseFile == courseFile) return std::nullopt;
  CourseJournalEntry entry{course, courseFile, std::time(nullptr)};
  if (auto failure = WriteCourseJournal(GetFile().GetNative(), entry)) return failure;
  noted = std::move(entry);
  return std::nullopt;
}

void CourseJournal::Clear() {
  noted.reset();
  if (!problem) Remove(GetFile().GetNative());
}
