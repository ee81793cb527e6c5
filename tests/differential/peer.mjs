// SPDX-License-Identifier: Apache-2.0
// The sequencing of the npm package scorm-again, which plays the same courses as a second opinion.

const requests = {
  start: "start", continue: "continue", previous: "previous", choice: "choice", exit: "exit", exitall: "exitAll", suspendall: "suspendAll", resumeall: "resumeAll",
};

const toRule = (rule) => ({
  action: rule.action,
  conditionCombination: rule.any ? "any" : "all",
  conditions: rule.conditions.map(({ name, not, objective }) =>
    ({ condition: name, ...(not ? { operator: "not" } : {}), ...(objective ? { referencedObjective: objective } : {}) })),
});

const toObjective = ({ id, maps }, isPrimary) => ({
  objectiveID: id, isPrimary,
  mapInfo: maps.map(({ target, reads, writes }) => ({
    targetObjectiveID: target, readSatisfiedStatus: reads, readNormalizedMeasure: reads, writeSatisfiedStatus: writes, writeNormalizedMeasure: writes,
  })),
});

const toSettings = (activity) => ({
  id: activity.id,
  title: activity.id,
  children: activity.children.map(toSettings),
  ...(activity.attemptLimit === undefined ? {} : { attemptLimit: activity.attemptLimit }),
  primaryObjective: toObjective(activity.primary, true),
  objectives: activity.objectives.map((objective) => toObjective(objective, false)),
  sequencingRules: { preConditionRules: activity.pre.map(toRule), exitConditionRules: activity.exit.map(toRule), postConditionRules: activity.post.map(toRule) },
  sequencingControls: {
    choice: activity.choice, choiceExit: activity.choiceExit, flow: activity.flow, forwardOnly: activity.forwardOnly,
    useCurrentAttemptObjectiveInfo: false, useCurrentAttemptProgressInfo: false,
    rollupObjectiveSatisfied: activity.rollsUpObjective, rollupProgressCompletion: activity.rollsUpProgress,
  },
  deliveryControls: { completionSetByContent: !!activity.byContent, objectiveSetByContent: !!activity.byContent },
  rollupRules: {
    rules: activity.rollupRules.map((rule) => ({
      action: rule.action, conditionCombination: rule.any ? "any" : "all", consideration: rule.set, minimumCount: rule.count, minimumPercent: rule.percent * 100,
      conditions: rule.conditions.map(({ name, not }) =>
        ({ condition: name === "activityProgressKnown" ? "progressKnown" : name, operator: not ? "not" : "noOp" })),
    })),
  },
});

export class Peer {
  constructor({ Scorm2004API }, course) {
    this.api = new Scorm2004API({ autocommit: false, logLevel: 5, sequencing: { activityTree: toSettings(course.root) } });
    const sequencing = this.api._sequencing;
    this.tree = sequencing.activityTree;
    this.process = sequencing.overallSequencingProcess;
    this.service = this.api._sequencingService;
    this.data = {};
    this.service.getCMIDataForTransfer = () => ({
      completion_status: this.data.status ?? "unknown", completion_status_was_set: this.data.status !== undefined,
      success_status: this.data.success ?? "unknown", success_status_was_set: this.data.success !== undefined,
      score_was_set: false, progress_measure: "", score: { scaled: "", raw: "", min: "", max: "" }, objectives: [],
    });
    // Content is "initialized" as long as the session runs, so that its data is looked at.
    Object.defineProperty(this.api.cmi, "initialized", { get: () => true });
    this.hasEnded = false;
    const fire = this.service.handleSequencingProcessEvent.bind(this.service);
    this.process.eventCallback = (name, data) => {
      if (name === "onSequencingSessionEnd") this.hasEnded = true;
      fire(name, data);
    };
  }

  /** What a request delivers: an identifier, "end" or "none". */
  ask({ request, target, success, status }) {
    if (success !== undefined) this.data.success = success;
    if (status !== undefined) this.data.status = status;
    this.hasEnded = false;
    const result = this.process.processNavigationRequest(requests[request], target ?? null);
    this.exception = result.exception;
    if (result.valid && result.targetActivity) {
      this.data = {};
      return result.targetActivity.id;
    }
    return this.hasEnded ? "end" : "none";
  }

  getStatus(id) {
    const activity = this.tree.getActivity(id);
    return {
      completed: activity.completionStatus === "unknown" ? null : activity.completionStatus === "completed",
      satisfied: activity.objectiveSatisfiedStatusKnown ? activity.objectiveSatisfiedStatus : null,
    };
  }
}
