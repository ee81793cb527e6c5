// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoSilence.h"

#include <algorithm>
#include <vector>

namespace {

/// What a learner sees who passes everything, by Continue and then by choice.
PlexoSightings Pass(const PlexoPlayedCourse& course, PlexoSightings& all) {
  PlexoSightings own(course.GetDefinition().GetCount());
  PlexoWalker walker(course, own, [](const PlexoWalker&) { return PlexoVisit::Best; });
  if (walker.Start()) walker.Continue();
  walker.Choose(PlexoWalker::Order::Forward);
  walker.Leave();
  all.requests += own.requests;
  return own;
}

}  // namespace

PlexoIndex PlexoSilence::FindCause(const PlexoPlayedCourse& course, PlexoSightings& all,
                                   const IsSeen& isSeen) {
  std::vector<PlexoIndex> silent;
  PlexoPlayedCourse talkative = course;
  for (PlexoIndex activity = 0; activity < talkative.abilities.size(); ++activity) {
    if (!course.IsContent(activity) || !course.abilities[activity].LacksResult()) continue;
    silent.push_back(activity);
    talkative.abilities[activity] = PlexoContentAbility();
  }
  if (silent.empty() || !isSeen(Pass(talkative, all))) return kPlexoNone;
  // With several to blame, the first one that alone is enough; else the first of all.
  constexpr std::size_t kMostTried = 8;
  for (std::size_t index = 0; index < std::min(silent.size(), kMostTried); ++index) {
    talkative.abilities = course.abilities;
    talkative.abilities[silent[index]] = PlexoContentAbility();
    if (isSeen(Pass(talkative, all))) return silent[index];
  }
  return silent.front();
}
