// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopProgress.h"

#include <QScopedValueRollback>
#include <string>

#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

namespace {

struct Activity {
  std::string_view verb;
  const char* key;
};

constexpr Activity kActivities[] = {
    {"adding ", "kDesktopAddingFiles"},
    {"unpacking ", "kDesktopAddingFiles"},
    {"packing ", "kDesktopPublishing"},
};

/// "Adding files: intro.zip" for "adding intro.zip".
std::string Translate(std::string_view activity) {
  const ITzStringDictionary* words = GetStringDictionary();
  for (const auto& [verb, key] : kActivities) {
    if (words == nullptr || !activity.starts_with(verb)) continue;
    return words->GetString(key).GetUTF8String() + ": " + std::string(activity.substr(verb.size()));
  }
  return std::string(activity);
}

}  // namespace

bool DesktopProgress::Report(std::string_view activity, std::uint64_t done, std::uint64_t total) {
  const QScopedValueRollback<bool> reporting(isReporting, true);
  const bool goesOn = shown.Report(Translate(activity), done, total);
  if (!goesOn) problems.Report({kTzCancelled, std::string(activity), "cancelled"});
  return goesOn;
}
