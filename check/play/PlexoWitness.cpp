// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoWitness.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "sequencer/PlexoTrackingView.h"

namespace {

using Kind = PlexoClaim::Kind;

std::string_view GetWord(PlexoNavigation request) {
  switch (request) {
    case PlexoNavigation::Start:
      return "start";
    case PlexoNavigation::ResumeAll:
      return "resumeall";
    case PlexoNavigation::Continue:
      return "continue";
    case PlexoNavigation::Previous:
      return "previous";
    case PlexoNavigation::Choice:
      return "choice";
    case PlexoNavigation::Jump:
      return "jump";
    case PlexoNavigation::Exit:
      return "exit";
    case PlexoNavigation::Abandon:
      return "abandon";
    case PlexoNavigation::SuspendAll:
      return "suspendall";
    default:
      return "exitall";
  }
}

std::string_view GetWord(PlexoTruth truth) {
  if (!truth.IsKnown()) return "unknown";
  return truth.IsTrue() ? "true" : "false";
}

/// Writes the lines of one script.
class ScriptWriting {
 public:
  explicit ScriptWriting(const PlexoPlayedCourse& played) : course(played) {}

  void AddRemark(std::string_view remark) {
    text += "# ";
    // A line break would end the comment.
    for (const char byte : remark) text += static_cast<unsigned char>(byte) < ' ' ? ' ' : byte;
    text += '\n';
  }

  void AddStep(const PlexoLearnerStep& step) {
    text += GetWord(step.request.kind);
    if (step.request.target != kPlexoNone) text += " " + Name(step.request.target);
    text += "\nexpect deliver ";
    if (step.delivered == kPlexoNone) {
      text += step.hasEnded ? "end\n" : "none\n";
      return;
    }
    text += Name(step.delivered) + "\n";
    AddReport(course.GetReport(step.delivered, step.visit).whole);
  }

  void AddClaim(const PlexoClaim& claim) {
    text += "expect ";
    switch (claim.kind) {
      case Kind::Completed:
        AddStatus("completed", claim);
        break;
      case Kind::Satisfied:
        AddStatus("satisfied", claim);
        break;
      case Kind::Attempted:
        AddStatus("attempted", claim);
        break;
      case Kind::Continue:
        text += Can(claim) + "continue\n";
        break;
      case Kind::Previous:
        text += Can(claim) + "previous\n";
        break;
      case Kind::Choice:
        text += Can(claim) + "choice " + Name(claim.activity) + "\n";
        break;
    }
  }

  std::string text;

 private:
  void AddReport(const PlexoObjectiveData& data) {
    if (data.completed) text += data.completed->IsTrue() ? "status completed\n" : "status incomplete\n";
    if (data.progress) text += "progress 1\n";
    // A script's lines are reported one by one: the score comes before the success, which then has the last
    // word where no measure decides.
    if (data.measure) text += data.measure->GetValue() > 0 ? "score 1\n" : "score 0\n";
    if (data.satisfied) text += data.satisfied->IsTrue() ? "success passed\n" : "success failed\n";
  }

  void AddStatus(std::string_view word, const PlexoClaim& claim) {
    text.append(word).append(" ").append(Name(claim.activity)).append(" ");
    text.append(GetWord(claim.truth)).append("\n");
  }

  static std::string Can(const PlexoClaim& claim) { return claim.truth.IsTrue() ? "can " : "cannot "; }

  [[nodiscard]] std::string Name(PlexoIndex activity) const {
    const std::string& identifier = course.GetDefinition().GetRules(activity).identifier;
    const bool isPlain = !identifier.empty() && identifier.find_first_of(" \t\r#") == std::string::npos;
    return isPlain ? identifier : '"' + identifier + '"';
  }

  const PlexoPlayedCourse& course;
};

}  // namespace

void PlexoWitness::ClaimCompleted(const PlexoLearner& learner, PlexoIndex activity) {
  const PlexoTrackingView view(learner.GetCourse().GetDefinition(), learner.GetState());
  claims.push_back({Kind::Completed, activity, view.GetCompleted(activity)});
}

void PlexoWitness::ClaimSatisfied(const PlexoLearner& learner, PlexoIndex activity) {
  const PlexoTrackingView view(learner.GetCourse().GetDefinition(), learner.GetState());
  claims.push_back({Kind::Satisfied, activity, view.GetSatisfied(activity)});
}

void PlexoWitness::ClaimUnseen(PlexoIndex activity) {
  claims.push_back({Kind::Attempted, activity, PlexoTruth::False()});
}

void PlexoWitness::ClaimSeen(PlexoIndex activity) {
  claims.push_back({Kind::Attempted, activity, PlexoTruth::True()});
}

void PlexoWitness::ClaimClosed(PlexoClaim::Kind request, PlexoIndex target) {
  claims.push_back({request, target, PlexoTruth::False()});
}

void PlexoWitness::ClaimOpen(PlexoClaim::Kind request, PlexoIndex target) {
  claims.push_back({request, target, PlexoTruth::True()});
}

PlexoIndex PlexoWitness::GetLastLaunched() const {
  const auto found = std::find_if(steps.rbegin(), steps.rend(),
                                  [](const PlexoLearnerStep& step) { return step.delivered != kPlexoNone; });
  return found == steps.rend() ? kPlexoNone : found->delivered;
}

bool PlexoWitness::DoClaimsHold(const PlexoLearner& learner) const {
  const PlexoTrackingView view(learner.GetCourse().GetDefinition(), learner.GetState());
  std::optional<PlexoOutlook> outlook;
  const auto look = [&]() -> const PlexoOutlook& {
    if (!outlook) outlook = learner.Look();
    return *outlook;
  };
  return std::all_of(claims.begin(), claims.end(), [&](const PlexoClaim& claim) {
    switch (claim.kind) {
      case Kind::Completed:
        return view.GetCompleted(claim.activity) == claim.truth;
      case Kind::Satisfied:
        return view.GetSatisfied(claim.activity) == claim.truth;
      case Kind::Attempted:
        return view.IsAttempted(claim.activity) == claim.truth.IsTrue();
      case Kind::Continue:
        return look().onContinue.IsOpen() == claim.truth.IsTrue();
      case Kind::Previous:
        return look().onPrevious.IsOpen() == claim.truth.IsTrue();
      default:
        return look().choices[claim.activity].IsOpen() == claim.truth.IsTrue();
    }
  });
}

bool PlexoWitness::IsTrueOf(const PlexoPlayedCourse& course) const {
  PlexoLearner learner(course);
  for (const PlexoLearnerStep& step : steps) {
    learner.Ask(step.request, step.visit);
    const PlexoLearnerStep& made = learner.GetSteps().back();
    if (made.delivered != step.delivered || made.hasEnded != step.hasEnded) return false;
  }
  return DoClaimsHold(learner);
}

bool PlexoWitness::IsWithoutTrueOf(const PlexoPlayedCourse& course, std::size_t first, std::size_t count,
                                   std::vector<PlexoLearnerStep>& kept) const {
  PlexoLearner learner(course);
  for (std::size_t index = 0; index < steps.size(); ++index) {
    if (index >= first && index < first + count) continue;
    // What launched something must still do so: a step that only fails proves nothing.
    const bool launches = learner.Ask(steps[index].request, steps[index].visit);
    const bool hasEnded = learner.GetSteps().back().hasEnded;
    if (launches != (steps[index].delivered != kPlexoNone) || hasEnded != steps[index].hasEnded) return false;
  }
  const PlexoLearnerStep& last = learner.GetSteps().back();
  if (last.delivered != steps.back().delivered || last.hasEnded != steps.back().hasEnded) return false;
  if (!DoClaimsHold(learner)) return false;
  kept = learner.GetSteps();
  return true;
}

void PlexoWitness::Shorten(const PlexoPlayedCourse& course, std::size_t lastKept) {
  // In requests times activities, which is what a request may take.
  constexpr std::uint64_t kMostWork = 2'000'000;
  std::uint64_t work = 0;
  for (std::size_t count = std::max<std::size_t>(steps.size() / 2, 1); count > 0; count /= 2) {
    for (std::size_t first = 0; first + count + lastKept <= steps.size();) {
      work += static_cast<std::uint64_t>(steps.size()) * course.GetDefinition().GetCount();
      if (work > kMostWork) return;
      std::vector<PlexoLearnerStep> kept;
      if (IsWithoutTrueOf(course, first, count, kept)) {
        steps = std::move(kept);
      } else {
        first += count;
      }
    }
  }
}

std::string PlexoWitness::WriteScript(const PlexoPlayedCourse& course, std::string_view remark) const {
  ScriptWriting script(course);
  script.AddRemark(remark);
  for (const PlexoLearnerStep& step : steps) script.AddStep(step);
  for (const PlexoClaim& claim : claims) script.AddClaim(claim);
  return std::move(script.text);
}
