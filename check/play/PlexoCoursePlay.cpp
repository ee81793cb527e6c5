// SPDX-License-Identifier: Apache-2.0
#include "check/play/PlexoCoursePlay.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "check/play/PlexoPretests.h"
#include "check/play/PlexoSilence.h"
#include "check/play/PlexoStandstill.h"
#include "check/play/PlexoStateExploration.h"
#include "check/play/PlexoWalker.h"
#include "sequencer/PlexoSequencingReason.h"

namespace {

using enum PlexoPlayedKind;
using Order = PlexoWalker::Order;

PlexoVisit PassAlways(const PlexoWalker& /*learner*/) { return PlexoVisit::Best; }

class CoursePlay {
 public:
  explicit CoursePlay(const PlexoPlayedCourse& played)
      : course(played), sightings(played.GetDefinition().GetCount()), pretests(played) {}

  PlexoPlayResult Run() {
    PassEverything();
    if (hasStarted) {
      ChooseInEveryOrder();
      SuspendEverywhere();
    }
    FailEverything();
    // Learners who fail are held to those who pass.
    if (hasPassed) {
      FailAtFirst();
      FailPretests();
    }
    Explore();
    Judge();
    result.requests = sightings.requests;
    result.isWalkStopped = sightings.isStopped;
    return std::move(result);
  }

 private:
  PlexoPlayedFinding& Add(PlexoPlayedKind kind, PlexoIndex activity, PlexoWitness witness) {
    PlexoPlayedFinding& finding = result.findings.emplace_back();
    finding.kind = kind;
    finding.activities = {activity};
    finding.witness = std::move(witness);
    return finding;
  }

  [[nodiscard]] bool Has(PlexoPlayedKind kind) const {
    return std::any_of(result.findings.begin(), result.findings.end(),
                       [kind](const PlexoPlayedFinding& finding) { return finding.kind == kind; });
  }

  [[nodiscard]] std::string Explain(const PlexoOutlook& outlook, const PlexoSequencingReason& reason) const {
    return reason.kind == PlexoReasonKind::None
               ? std::string()
               : PlexoReasonText::Write(course.GetDefinition(), outlook.seen, reason);
  }

  /// By Continue to the end, and what Continue left out from the contents list.
  void PassEverything() {
    ++result.learners;
    PlexoWalker walker(course, sightings, [this](const PlexoWalker& at) { return PassAndProbe(at); });
    hasStarted = walker.Start();
    if (hasStarted) {
      walker.Continue();
      CheckContinue(walker);
    } else {
      CheckStart(walker);
    }
    if (hasStarted) completedByContinue = WouldComplete(walker.GetLearner());
    walker.Choose(Order::Forward);
    best.emplace(walker.GetLearner());
    walker.Leave();
    bestAtEnd.emplace(walker.GetLearner());
    hasPassed = sightings.isPassed;
  }

  static bool WouldComplete(PlexoLearner learner) {
    learner.Ask({PlexoNavigation::ExitAll});
    return learner.HasCompleted();
  }

  void CheckStart(const PlexoWalker& walker) {
    // The only activity of a course is started by every LMS.
    PlexoLearner learner = walker.GetLearner();
    learner.Ask({PlexoNavigation::Start});
    const PlexoOutlook outlook = learner.Look();
    if (PlexoStandstill::IsListClosed(outlook)) return;  // Nothing can be reached, which is told instead.
    Add(StartLaunchesNothing, 0, PlexoWitness(learner));
  }

  void CheckContinue(const PlexoWalker& walker) {
    const PlexoOutlook outlook = walker.GetLearner().Look();
    if (outlook.onContinue.IsOpen() || outlook.onContinue.reason.kind == PlexoReasonKind::EndOfCourse) return;
    if (!walker.HasUnseen() || WouldComplete(walker.GetLearner())) return;
    PlexoWitness witness(walker.GetLearner());
    witness.ClaimClosed(PlexoClaim::Kind::Continue);
    PlexoPlayedFinding& finding = Add(ContinueStops, walker.GetLaunched(), std::move(witness));
    finding.reason = Explain(outlook, outlook.onContinue.reason);
    for (PlexoIndex activity = 0; activity < course.GetDefinition().GetCount(); ++activity) {
      if (!course.IsContent(activity) || walker.GetVisits(activity) > 0) continue;
      finding.activities.push_back(activity);
      finding.witness.ClaimUnseen(activity);
      break;
    }
    finding.witness.Shorten(course);
  }

  PlexoVisit PassAndProbe(const PlexoWalker& at) {
    ProbePretest(at);
    ProbeCompletion(at);
    ProbeRestart(at, PlexoVisit::Best);
    if (!course.abilities[at.GetLaunched()].fails) return PlexoVisit::Best;
    ProbeStandstill(at);
    ProbeRestart(at, PlexoVisit::Failing);
    return PlexoVisit::Best;
  }

  void ProbePretest(const PlexoWalker& at) {
    const bool isByContinue = at.GetLearner().GetSteps().back().request.kind == PlexoNavigation::Continue;
    if (!isByContinue || pretests.IsEmpty() || Has(PretestInVain)) return;
    const PlexoIndex content = at.GetLaunched();
    for (const PlexoIndex pretest : pretests.GetSparing(content)) {
      const bool hasPassedIt = at.GetVisits(pretest) > 0 && course.abilities[pretest].passes;
      if (!hasPassedIt || pretest == content) continue;
      PlexoPlayedFinding& finding = Add(PretestInVain, pretest, PlexoWitness(at.GetLearner()));
      finding.activities.push_back(content);
      finding.witness.ClaimSeen(pretest);
      finding.witness.Shorten(course);
      return;
    }
  }

  /// Whether the course was complete before this content was launched, with nothing that spares it.
  void ProbeCompletion(const PlexoWalker& at) {
    if (hasCompleted || !at.GetLearner().HasCompleted()) return;
    hasCompleted = true;
    const PlexoIndex content = at.GetLaunched();
    const std::vector<PlexoIndex> sparing = pretests.GetSparing(content);
    const bool isSpared = std::any_of(sparing.begin(), sparing.end(),
                                      [&](PlexoIndex pretest) { return at.GetVisits(pretest) > 0; });
    if (isSpared || at.GetVisits(content) > 1) return;
    PlexoLearner leaving(course);
    const std::vector<PlexoLearnerStep>& steps = at.GetLearner().GetSteps();
    for (std::size_t step = 0; step + 1 < steps.size(); ++step)
      leaving.Ask(steps[step].request, steps[step].visit);
    leaving.Ask({PlexoNavigation::ExitAll});
    if (!leaving.HasCompleted()) return;
    PlexoWitness witness(leaving);
    witness.ClaimCompleted(leaving, 0);
    witness.ClaimUnseen(content);
    witness.Shorten(course);
    Add(CompletedUnseen, content, std::move(witness));
  }

  /// Whether failing what was launched closes everything.
  void ProbeStandstill(const PlexoWalker& at) {
    if (Has(Lost) && Has(LostInSession)) return;
    PlexoLearner learner = at.GetLearner();
    learner.Visit(PlexoVisit::Failing);
    if (PlexoLearner(learner).Try({PlexoNavigation::Continue})) return;
    NoteStandstill(learner, learner.Look());
  }

  void NoteStandstill(const PlexoLearner& learner, const PlexoOutlook& outlook) {
    if (!PlexoStandstill::IsIn(outlook) || learner.GetLaunched() == kPlexoNone) return;
    PlexoLearner leaving = learner;
    leaving.Ask({PlexoNavigation::ExitAll});
    if (leaving.HasCompleted()) return;
    const bool isLost =
        PlexoStandstill::IsListClosed(leaving.Look()) && !PlexoLearner(leaving).Try({PlexoNavigation::Start});
    NoteLost(learner, isLost ? Lost : LostInSession);
  }

  /// The witness says of every activity that it is closed, before and behind the end of the session.
  void NoteLost(const PlexoLearner& learner, PlexoPlayedKind kind) {
    if (Has(kind)) return;
    const PlexoIndex content = PlexoWitness(learner).GetLastLaunched();
    if (content == kPlexoNone) return;
    PlexoLearner end = learner;
    if (kind != LostInSession) {
      if (end.GetState().IsSessionOpen()) end.Ask({PlexoNavigation::ExitAll});
      end.Ask({PlexoNavigation::Start});
    }
    PlexoWitness witness(end);
    if (kind == LostInSession) {
      witness.ClaimClosed(PlexoClaim::Kind::Continue);
      witness.ClaimClosed(PlexoClaim::Kind::Previous);
    } else {
      witness.ClaimCompleted(end, 0);
    }
    for (PlexoIndex activity = 0; activity < course.GetDefinition().GetCount(); ++activity) {
      if (course.IsContent(activity)) witness.ClaimClosed(PlexoClaim::Kind::Choice, activity);
    }
    // What was launched last, the end of its session and the start of another stay.
    witness.Shorten(course, kind == LostInSession ? 1 : 3);
    PlexoPlayedFinding& finding = Add(kind, content, std::move(witness));
    finding.visit = learner.GetLaunched() == kPlexoNone ? PlexoVisit::Idle : learner.GetSteps().back().visit;
  }

  /// Everywhere in a course of usual length, here and there in a very long one.
  [[nodiscard]] bool IsProbed(const PlexoLearner& learner) const {
    constexpr std::size_t kMostProbes = 64;
    const std::size_t stride = course.GetDefinition().GetCount() / kMostProbes + 1;
    return learner.GetSteps().size() <= kMostProbes || learner.GetSteps().size() % stride == 0;
  }

  /// Whether the course can be started anew, or resumed, by who leaves it after this visit.
  void ProbeRestart(const PlexoWalker& at, PlexoVisit visit) {
    const bool isStarted = at.GetLearner().GetSteps().front().request.kind == PlexoNavigation::Start;
    if (!isStarted || Has(RestartLaunchesNothing)) return;
    if (!IsProbed(at.GetLearner())) return;
    PlexoLearner learner = at.GetLearner();
    learner.Visit(visit);
    learner.Ask({PlexoNavigation::ExitAll});
    if (learner.HasCompleted() || learner.Ask({PlexoNavigation::Start})) return;
    if (PlexoStandstill::IsListClosed(learner.Look())) {
      PlexoLearner leaving = at.GetLearner();
      leaving.Visit(visit);
      NoteLost(leaving, LostLater);
      return;
    }
    PlexoWitness witness(learner);
    witness.ClaimCompleted(learner, 0);
    witness.Shorten(course, 3);
    PlexoPlayedFinding& finding = Add(RestartLaunchesNothing, at.GetLaunched(), std::move(witness));
    PlexoLearner suspending = at.GetLearner();
    suspending.Visit(visit);
    suspending.Ask({PlexoNavigation::SuspendAll});
    finding.keepsFromResuming = !suspending.Ask({PlexoNavigation::ResumeAll});
  }

  void ChooseInEveryOrder() {
    for (const Order order : {Order::Forward, Order::Backward, Order::Mixed}) {
      ++result.learners;
      PlexoWalker walker(course, sightings, PassAlways);
      walker.Choose(order);
      walker.Leave();
    }
  }

  /// Goes by Continue as the first learner did, but suspends the course in every content.
  void SuspendEverywhere() {
    ++result.learners;
    bool isFailed = false;
    PlexoLearner learner(course);
    learner.Ask({PlexoNavigation::Start});
    for (std::size_t steps = 0; steps < PlexoWalker::kStepsAnActivity * course.GetDefinition().GetCount();
         ++steps) {
      if (!IsProbed(learner)) {
        ++sightings.requests;
        if (!learner.Try({PlexoNavigation::Continue})) break;
        continue;
      }
      PlexoLearner suspending = learner;
      suspending.Ask({PlexoNavigation::SuspendAll});
      sightings.requests += 3;
      if (suspending.Ask({PlexoNavigation::ResumeAll}, PlexoVisit::Idle)) {
        learner = std::move(suspending);
      } else if (!Has(RestartLaunchesNothing)) {
        learner = std::move(suspending);
        isFailed = !learner.HasCompleted();
        break;
      }
      if (isFailed || !learner.Try({PlexoNavigation::Continue})) break;
    }
    if (!isFailed) {
      learner.Ask({PlexoNavigation::ExitAll});
      isFailed = completedByContinue && !learner.HasCompleted();
    }
    if (!isFailed) return;
    PlexoWitness witness(learner);
    witness.ClaimCompleted(learner, 0);
    const PlexoIndex content = witness.GetLastLaunched();
    Add(SuspensionLoses, content, std::move(witness));
  }

  /// Everything that can fail does, until attempt limits are used up.
  void FailEverything() {
    ++result.learners;
    PlexoWalker walker(course, sightings, [](const PlexoWalker&) { return PlexoVisit::Failing; });
    if (hasStarted) {
      walker.Start();
      walker.Continue();
    }
    walker.Choose(Order::Forward, PlexoWalker::Wanted::Limited);
    NoteStandstill(walker.GetLearner(), walker.GetLearner().Look());
    walker.Leave();
  }

  void FailAtFirst() {
    HoldToPassing([](const PlexoWalker& at) {
      return at.GetVisits(at.GetLaunched()) == 1 ? PlexoVisit::Failing : PlexoVisit::Best;
    });
  }

  void FailPretests() {
    if (pretests.IsEmpty()) return;
    HoldToPassing([this](const PlexoWalker& at) {
      const bool isFirst = pretests.IsPretest(at.GetLaunched()) && at.GetVisits(at.GetLaunched()) == 1;
      return isFirst ? PlexoVisit::Failing : PlexoVisit::Best;
    });
  }

  /// Goes through the course, repeats what was failed, and passes everything in a new session.
  void HoldToPassing(const PlexoWalker::Policy& policy) {
    if (Has(FailureSticks)) return;
    ++result.learners;
    PlexoIndex failed = kPlexoNone;
    int session = 0;
    PlexoSightings own(course.GetDefinition().GetCount());
    PlexoWalker walker(course, own, [&](const PlexoWalker& at) {
      const PlexoVisit visit = session == 0 ? policy(at) : PlexoVisit::Best;
      const bool fails = visit == PlexoVisit::Failing && course.abilities[at.GetLaunched()].fails;
      if (fails && failed == kPlexoNone) failed = at.GetLaunched();
      return visit;
    });
    for (; session < 2 && !own.isPassed; ++session) {
      if (hasStarted && walker.Start()) walker.Continue();
      walker.Choose(Order::Forward, PlexoWalker::Wanted::Failed);
      walker.Leave();
    }
    sightings.requests += own.requests;
    sightings.isStopped = sightings.isStopped || own.isStopped;
    if (failed == kPlexoNone || own.isPassed) return;
    PlexoWitness witness(walker.GetLearner());
    witness.ClaimSatisfied(walker.GetLearner(), 0);
    Add(FailureSticks, failed, std::move(witness));
  }

  void Explore() {
    PlexoStateExploration exploration(course, sightings);
    exploration.Run();
    result.states = exploration.GetCount();
    result.areAllStatesSeen = exploration.IsComplete();
    if (exploration.GetLost()) NoteLost(*exploration.GetLost(), Lost);
    if (exploration.GetLostLater() && !Has(Lost)) NoteLost(*exploration.GetLostLater(), LostLater);
  }

  /// What no learner has seen or reached.
  void Judge() {
    if (Has(Lost)) std::erase_if(result.findings, [](const auto& other) { return other.kind == LostLater; });
    std::vector<PlexoIndex> unreached;
    for (PlexoIndex activity = 0; activity < course.GetDefinition().GetCount(); ++activity) {
      if (course.IsContent(activity) && !sightings.isReached[activity] && !IsSelected(activity))
        unreached.push_back(activity);
    }
    if (!unreached.empty()) {
      JudgeUnreached(std::move(unreached));
    } else if (!sightings.isCompleted) {
      Add(NeverCompleted, 0, ProveStatus(&PlexoWitness::ClaimCompleted)).silent = PlexoSilence::FindCause(
          course, sightings, [](const PlexoSightings& seen) { return seen.isCompleted; });
    } else if (!sightings.isPassed) {
      Add(NeverPassed, 0, ProveStatus(&PlexoWitness::ClaimSatisfied)).silent = PlexoSilence::FindCause(
          course, sightings, [](const PlexoSightings& seen) { return seen.isPassed; });
    }
  }

  [[nodiscard]] PlexoWitness ProveStatus(void (PlexoWitness::*claim)(const PlexoLearner&, PlexoIndex)) const {
    PlexoWitness witness(*bestAtEnd);
    (witness.*claim)(*bestAtEnd, 0);
    return witness;
  }

  void JudgeUnreached(std::vector<PlexoIndex> unreached) {
    const PlexoOutlook outlook = best->Look();
    PlexoWitness witness(*best);
    for (const PlexoIndex activity : unreached) {
      witness.ClaimUnseen(activity);
      witness.ClaimClosed(PlexoClaim::Kind::Choice, activity);
    }
    PlexoPlayedFinding& finding = Add(NeverReached, unreached.front(), std::move(witness));
    finding.keepsFromCompleting = !sightings.isCompleted;
    finding.silent = PlexoSilence::FindCause(
        course, sightings,
        [first = unreached.front()](const PlexoSightings& seen) -> bool { return seen.isReached[first]; });
    finding.reason = Explain(outlook, outlook.choices[unreached.front()].reason);
    finding.activities = std::move(unreached);
    // The rest mostly comes of it.
    std::erase_if(result.findings, [](const auto& other) {
      return other.kind != NeverReached && other.kind != Lost && other.kind != LostInSession &&
             other.kind != CompletedUnseen;
    });
  }

  /// True for what another choice of children at random may launch.
  [[nodiscard]] bool IsSelected(PlexoIndex activity) const {
    for (PlexoIndex at = activity; at != kPlexoNone; at = course.GetDefinition().Get(at).parent) {
      if (course.GetDefinition().GetRules(at).randomization.selectionTiming != PlexoTiming::Never)
        return true;
    }
    return false;
  }

  const PlexoPlayedCourse& course;
  PlexoSightings sightings;
  PlexoPretests pretests;
  PlexoPlayResult result;
  /// The learner who passes everything, before and after the end of the session.
  std::optional<PlexoLearner> best;
  std::optional<PlexoLearner> bestAtEnd;
  bool hasStarted = false;
  bool hasCompleted = false;
  bool hasPassed = false;
  bool completedByContinue = false;
};

}  // namespace

PlexoPlayResult PlexoCoursePlay::Run(const PlexoPlayedCourse& course) { return CoursePlay(course).Run(); }
