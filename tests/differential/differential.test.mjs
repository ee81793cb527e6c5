// SPDX-License-Identifier: Apache-2.0
// Random courses and sessions, played by "plexo play" and by the sequencing of the npm package scorm-again. Where
// the two differ, the text of SCORM 2004 Sequencing and Navigation (4th Edition) decides; the decisions are below.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { existsSync, mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { fileURLToPath } from "node:url";

import { Peer } from "./peer.mjs";
import { RandomCourse, writeManifest, writeScript } from "./random-course.mjs";
import { zip } from "./zip.mjs";

const root = fileURLToPath(new URL("../../", import.meta.url));
const plexo = join(root, "build/bin/plexo");
const library = join(root, "build/peers/scorm-again.mjs");

/**
 * What the peer is known to do otherwise, and what the standard says. A session that meets one of these isn't
 * compared any further, for the two learners are in different places from there on.
 */
const decisions = [
  {
    // NB.2.1, 7 and 6: a choice or Previous is checked against control modes alone. Rules and ways forward are
    // looked at by the sequencing request (SB.2.4, SB.2.9), after the end of the attempt, whose results they see.
    name: "the navigation request refuses what rules or a choiceExit elsewhere might",
    holds: ({ step, theirs, code }) => ["choice", "previous"].includes(step.request) && theirs === "none" && ["NB.2.1-8", "NB.2.1-11"].includes(code),
  },
  {
    // SB.2.9 checks "hidden from choice" on the path, UP.5 "disabled". "skip" belongs to flow, SB.2.2.
    name: "a skipped activity can't be chosen",
    holds: ({ step, theirs, code }) => step.request === "choice" && theirs === "none" && code === "SB.2.9-5",
  },
  {
    // SB.2.9, siblings: the list from the current activity up to the target, without the target, is traversed
    // (SB.2.4), so the current activity's own "stop forward traversal" counts.
    name: "the current activity's stopForwardTraversal doesn't stop a choice",
    holds: ({ step, theirs, answer }) => step.request === "choice" && answer.code === "SB.2.4-1" && theirs === step.target,
  },
  {
    // SB.2.10 names the activity that is retried, and DB.1.1, 4 checks it like any other: its rules see what the
    // attempt that has just ended recorded.
    name: "a disabled activity can be retried",
    holds: ({ theirs, answer }) => answer.code === "DB.1.1-3" && theirs !== "none" && theirs === answer.redirectedBy,
  },
  {
    // TB.2.3, 4: Exit All ends the session from wherever the learner is; NB.2.1, 10 asks for a current activity only.
    name: "there is no Exit All behind a failed retry of the whole course",
    holds: ({ step, ours, theirs, code }) => step.request === "exitall" && ours === "end" && theirs === "none" && code === "NB.2.1-14",
  },
];
// Kept out of random courses, because they would end most sessions:
// - The peer counts the attempts of an active cluster against its limit. UP.1, 2: the limit is looked at for new
//   attempts only.
// - It delivers below a disabled cluster that is active. DB.1.1, 4: every activity on the path is checked.
// - It flows into a chosen cluster whose flow is off. SB.2.2, 1 and SB.2.9, 12: that is SB.2.9-9.
// - "not" of an unknown status applies. UP.2.1: unknown stays unknown.
// - A rollup counts children of unknown status as failed and incomplete, and clears a status that no rule decides.
//   RB.1.4.1 leaves the child out, RB.1.2.b and RB.1.3.b the status as it was.
// - Progress and results of an earlier attempt on the parent count. useCurrentAttempt... says whether they do.
// - "exitParent" below the root goes on with the learner's request. TB.2.3, 3.5: at the root it is an Exit.

let folder;
let scorm;
before(async () => {
  assert.ok(existsSync(library), "packaging/fetch-peers brings the peer");
  folder = mkdtempSync(join(tmpdir(), "plexo-differential-"));
  scorm = await import(library);
  // The peer reports every step.
  for (const name of ["log", "info", "warn", "error", "debug"]) console[name] = () => {};
});
after(() => rmSync(folder, { recursive: true, force: true }));

function play(course, steps) {
  const packageFile = join(folder, "course.zip");
  writeFileSync(packageFile, zip("imsmanifest.xml", writeManifest(course)));
  const out = execFileSync(plexo, ["play", packageFile, "--json"], { input: writeScript(steps), encoding: "utf8" });
  const objects = out.trim().split("\n").map((line) => JSON.parse(line));
  return { answers: objects.filter((object) => "delivered" in object), trees: objects.filter((object) => "tree" in object) };
}

const name = ({ delivered, ended }) => delivered ?? (ended ? "end" : "none");

test("random walks deliver the same activities", () => {
  const count = 300;
  const met = new Map(decisions.map((decision) => [decision, 0]));
  let requests = 0;
  for (let seed = 0; seed < count; ++seed) {
    const course = new RandomCourse(seed, "walks");
    const steps = [...course.makeSession(12), { request: "exit" }, { request: "exitall" }];
    const { answers } = play(course, steps);
    const peer = new Peer(scorm, course);
    for (const [at, step] of steps.entries()) {
      const answer = answers[at];
      const ours = name(answer);
      const theirs = peer.ask(step);
      const decision = ours === theirs ? undefined : decisions.find(({ holds }) => holds({ step, ours, theirs, answer, code: peer.exception }));
      if (decision) {
        met.set(decision, met.get(decision) + 1);
        break;
      }
      assert.equal(ours, theirs, `seed ${seed}, request ${at}: ${JSON.stringify(step)}: ${answer.reason} (${peer.exception})`);
      ++requests;
      // The peer keeps a current activity after an end.
      if (ours === "end") break;
    }
  }
  const cut = [...met.values()].reduce((sum, value) => sum + value, 0);
  assert.ok(cut < count * 0.1, `${cut} of ${count} sessions were cut short`);
  assert.ok(requests > count * 5, `${requests} requests were compared`);
  for (const [decision, times] of met) assert.ok(times > 0, `never met any more: ${decision.name}`);
});

test("random rollups give the same statuses when all contents have reported", () => {
  const count = 200;
  let compared = 0;
  for (let seed = 0; seed < count; ++seed) {
    const course = new RandomCourse(seed, "rollups");
    const steps = course.makeVisits();
    const { trees } = play(course, steps);
    const peer = new Peer(scorm, course);
    for (const step of steps) peer.ask(step);
    const statuses = trees.at(-1).tree;
    // A cluster without a contributing child knows nothing, which the peer takes as false.
    if (statuses.some(({ completed, satisfied }) => completed === null || satisfied === null)) continue;
    ++compared;
    for (const { id, completed, satisfied } of statuses) {
      assert.deepEqual(peer.getStatus(id), { completed, satisfied }, `seed ${seed}, ${id}`);
    }
  }
  assert.ok(compared > count / 2, `${compared} of ${count} courses were compared`);
});
