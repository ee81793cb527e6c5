// SPDX-License-Identifier: Apache-2.0
// Small courses and sessions at random, the same for the same seed, as a manifest for our player and as settings
// for the peer.

/** Numbers from 0 to 1 (mulberry32). */
export function makeRandom(seed) {
  let state = seed >>> 0;
  return () => {
    state = (state + 0x6d2b79f5) >>> 0;
    let mixed = Math.imul(state ^ (state >>> 15), state | 1);
    mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 4294967296;
  };
}

const leafActions = ["skip", "disabled", "hiddenFromChoice", "stopForwardTraversal"];
const clusterActions = ["skip", "hiddenFromChoice"];
const postActions = ["exitParent", "exitAll", "retry", "retryAll", "continue", "previous"];
const leafConditions = ["satisfied", "objectiveStatusKnown", "completed", "attempted", "attemptLimitExceeded"];

/**
 * A course for walks has rules of all kinds; one for rollups has rollup rules, and every leaf can be chosen. What
 * the peer is known to decide otherwise than the standard stays out; differential.test.mjs has a case for each.
 */
export class RandomCourse {
  constructor(seed, kind) {
    this.random = makeRandom(seed);
    this.kind = kind;
    this.leaves = [];
    this.all = [];
    this.root = this.makeActivity("root", 0);
  }

  chance(share) { return this.random() < share; }
  whole(count) { return Math.floor(this.random() * count); }
  pick(list) { return list[this.whole(list.length)]; }

  makeActivity(id, depth) {
    const isForRollups = this.kind === "rollups";
    const activity = { id, children: [], pre: [], post: [], exit: [], rollupRules: [], objectives: [] };
    this.all.push(activity);
    const isCluster = depth === 0 || (depth < 3 && this.chance(0.35));
    if (isCluster) {
      const count = 2 + this.whole(2);
      for (let at = 0; at < count; ++at) activity.children.push(this.makeActivity(`${id}${at}`, depth + 1));
    } else {
      this.leaves.push(activity);
      activity.byContent = isForRollups || this.chance(0.7);
    }
    activity.flow = isCluster && this.chance(0.8);
    activity.choice = !isCluster || isForRollups || this.chance(0.85);
    activity.choiceExit = !isCluster || isForRollups || this.chance(0.9);
    activity.forwardOnly = isCluster && !isForRollups && this.chance(0.1);
    activity.rollsUpObjective = this.chance(0.9);
    activity.rollsUpProgress = this.chance(0.9);
    activity.attemptLimit = !isCluster && !isForRollups && this.chance(0.1) ? 1 + this.whole(2) : undefined;
    this.makeObjectives(activity, isCluster);
    if (isForRollups) this.makeRollupRules(activity, isCluster);
    else this.makeRules(activity, isCluster, depth);
    return activity;
  }

  makeObjectives(activity, isCluster) {
    activity.primary = { id: `${activity.id}-p`, maps: [] };
    if (!isCluster && this.chance(0.4)) activity.primary.maps.push({ target: `g${this.whole(3)}`, reads: false, writes: true });
    if (this.chance(0.25)) {
      activity.objectives.push({ id: `${activity.id}-o`, maps: [{ target: `g${this.whole(3)}`, reads: true, writes: false }] });
    }
  }

  makeRule(activity, isCluster, actions) {
    const makeCondition = () => {
      const name = isCluster ? "attempted" : this.pick(leafConditions);
      const objective = activity.objectives.length > 0 && name === "satisfied" && this.chance(0.6) ? activity.objectives[0].id : undefined;
      return { name, not: name !== "satisfied" && name !== "completed" && this.chance(0.5), objective };
    };
    const list = this.chance(0.3) ? [makeCondition(), makeCondition()] : [makeCondition()];
    return { action: this.pick(actions), any: this.chance(0.5), conditions: list };
  }

  makeRules(activity, isCluster, depth) {
    if (depth === 0) return;
    if (this.chance(0.25)) activity.pre.push(this.makeRule(activity, isCluster, isCluster ? clusterActions : leafActions));
    if (this.chance(0.12)) activity.post.push(this.makeRule(activity, isCluster, depth > 1 ? postActions : postActions.slice(1)));
  }

  makeRollupRules(activity, isCluster) {
    if (!isCluster || !this.chance(0.6)) return;
    for (const [good, bad] of [["satisfied", "notSatisfied"], ["completed", "incomplete"]]) {
      if (!this.chance(0.6)) continue;
      const condition = { name: this.pick(["satisfied", "completed"]), not: this.chance(0.4) };
      activity.rollupRules.push({ set: "any", count: 1, percent: 0, any: false, conditions: [{ name: "attempted", not: false }], action: bad });
      activity.rollupRules.push({
        set: this.pick(["all", "any", "none", "atLeastCount", "atLeastPercent"]), count: 1 + this.whole(2), percent: 0.5, any: this.chance(0.5),
        conditions: [condition], action: good,
      });
    }
  }

  /** Requests with what content reports before them. */
  makeSession(length) {
    const skips = ({ pre }) => pre.some(({ action }) => action === "skip");
    const targets = this.leaves.filter((leaf) => !skips(leaf));
    const navigation = ["continue", "continue", "continue", "previous", "choice", "choice", "exit", "start", "suspendall", "resumeall"];
    const requests = targets.length > 0 ? navigation : navigation.filter((request) => request !== "choice");
    const steps = [{ request: "start" }];
    for (let at = 1; at < length; ++at) {
      const step = { request: this.pick(requests) };
      if (step.request === "choice") step.target = this.pick(targets).id;
      if (this.chance(0.7)) step.success = this.pick(["passed", "failed"]);
      if (this.chance(0.7)) step.status = this.pick(["completed", "incomplete"]);
      steps.push(step);
    }
    return steps;
  }

  /** Every leaf is chosen, once or twice, and reports both statuses. */
  makeVisits() {
    const visits = [...this.leaves, this.pick(this.leaves)].map((leaf) => [this.random(), leaf]).sort(([left], [right]) => left - right);
    const steps = visits.map(([, { id }], at) => ({ request: "choice", target: id, ...(at > 0 ? this.makeReport() : {}) }));
    return [...steps, { request: "exitall", ...this.makeReport() }];
  }
  makeReport() {
    return { success: this.pick(["passed", "passed", "failed"]), status: this.pick(["completed", "completed", "incomplete"]) };
  }
}

const flags = (values) => Object.entries(values).map(([name, value]) => ` ${name}="${value}"`).join("");

function writeRule(element, rule) {
  const list = rule.conditions.map(({ name, not, objective }) =>
    `<imsss:ruleCondition condition="${name}" operator="${not ? "not" : "noOp"}"${objective ? ` referencedObjective="${objective}"` : ""}/>`);
  return `<imsss:${element}><imsss:ruleConditions conditionCombination="${rule.any ? "any" : "all"}">${list.join("")}` +
    `</imsss:ruleConditions><imsss:ruleAction action="${rule.action}"/></imsss:${element}>`;
}

function writeObjective(element, { id, maps }) {
  const list = maps.map(({ target, reads, writes }) => `<imsss:mapInfo targetObjectiveID="${target}"` +
    flags({ readSatisfiedStatus: reads, readNormalizedMeasure: reads, writeSatisfiedStatus: writes, writeNormalizedMeasure: writes }) + "/>");
  return `<imsss:${element} objectiveID="${id}">${list.join("")}</imsss:${element}>`;
}

function writeSequencing(activity) {
  const rollup = activity.rollupRules.map((rule) =>
    `<imsss:rollupRule childActivitySet="${rule.set}" minimumCount="${rule.count}" minimumPercent="${rule.percent}">` +
    `<imsss:rollupConditions conditionCombination="${rule.any ? "any" : "all"}">` +
    rule.conditions.map(({ name, not }) => `<imsss:rollupCondition condition="${name}" operator="${not ? "not" : "noOp"}"/>`).join("") +
    `</imsss:rollupConditions><imsss:rollupAction action="${rule.action}"/></imsss:rollupRule>`);
  const { flow, choice, choiceExit, forwardOnly } = activity;
  return `<imsss:sequencing><imsss:controlMode${flags({ flow, choice, choiceExit, forwardOnly,
    useCurrentAttemptObjectiveInfo: false, useCurrentAttemptProgressInfo: false })}/><imsss:sequencingRules>` +
    activity.pre.map((rule) => writeRule("preConditionRule", rule)).join("") +
    activity.exit.map((rule) => writeRule("exitConditionRule", rule)).join("") +
    activity.post.map((rule) => writeRule("postConditionRule", rule)).join("") + "</imsss:sequencingRules>" +
    (activity.attemptLimit === undefined ? "" : `<imsss:limitConditions attemptLimit="${activity.attemptLimit}"/>`) +
    `<imsss:rollupRules${flags({ rollupObjectiveSatisfied: activity.rollsUpObjective, rollupProgressCompletion: activity.rollsUpProgress })}>` +
    `${rollup.join("")}</imsss:rollupRules><imsss:objectives>${writeObjective("primaryObjective", activity.primary)}` +
    activity.objectives.map((objective) => writeObjective("objective", objective)).join("") + "</imsss:objectives>" +
    `<imsss:deliveryControls${flags({ completionSetByContent: !!activity.byContent, objectiveSetByContent: !!activity.byContent })}/></imsss:sequencing>`;
}

function writeItem(activity) {
  const reference = activity.children.length > 0 ? "" : ' identifierref="sco"';
  return `<item identifier="${activity.id}"${reference}><title>${activity.id}</title>${activity.children.map(writeItem).join("")}${writeSequencing(activity)}</item>`;
}

export function writeManifest({ root }) {
  return `<?xml version="1.0" encoding="UTF-8"?>
<manifest identifier="M" version="1.3" xmlns="http://www.imsglobal.org/xsd/imscp_v1p1" xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3" xmlns:imsss="http://www.imsglobal.org/xsd/imsss">
<metadata><schema>ADL SCORM</schema><schemaversion>2004 4th Edition</schemaversion></metadata>
<organizations default="root"><organization identifier="root"><title>root</title>${root.children.map(writeItem).join("")}${writeSequencing(root)}</organization></organizations>
<resources><resource identifier="sco" type="webcontent" adlcp:scormType="sco" href="index.htm"><file href="index.htm"/></resource></resources></manifest>`;
}

export function writeScript(steps) {
  return steps.flatMap(({ request, target, success, status }) => [
    ...(success ? [`success ${success}`] : []), ...(status ? [`status ${status}`] : []), target ? `${request} ${target}` : request, "tree",
  ]).join("\n") + "\n";
}
