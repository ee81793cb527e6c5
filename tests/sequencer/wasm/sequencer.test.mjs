// SPDX-License-Identifier: Apache-2.0
// sequencer.wasm does what the native sequencer does: in all cases and in random walks, every answer, every outlook
// and every state, byte by byte.
import assert from "node:assert";
import {execFileSync} from "node:child_process";
import {readFileSync} from "node:fs";
import {dirname, join} from "node:path";
import test from "node:test";
import {fileURLToPath} from "node:url";

import {Engine, NAVIGATION} from "../../../sequencer/wasm/sequencer.mjs";

const build = join(dirname(fileURLToPath(import.meta.url)), "../../../build");
const module = readFileSync(join(build, "bin/sequencer.wasm"));
const fromHex = (text) => Uint8Array.from(Buffer.from(text, "hex"));
const toHex = (bytes) => Buffer.from(bytes).toString("hex");
const hash = (numbers) => numbers.reduce((sum, number) => Math.imul(sum ^ number, 0x01000193), 0x811c9dc5) >>> 0;

test("the module imports nothing", () => {
  assert.deepEqual(WebAssembly.Module.imports(new WebAssembly.Module(module)), []);
});

test("it goes the native sequencer's way, state by state", async () => {
  const engine = await Engine.start(module);
  const lines = execFileSync(join(build, "tests/sequencer/sequencer-steps"), {maxBuffer: 1 << 30, encoding: "utf8"});
  let course;
  let state;
  let steps = 0;
  for (const line of lines.split("\n")) {
    if (!line.startsWith("{")) continue;
    const step = JSON.parse(line);
    if (step.do === "course") {
      state?.close();
      course?.close();
      course = engine.openCourse(fromHex(step.definition));
      state = course.newState(1n);
    } else if (step.do === "request") {
      const outcome = state.request(NAVIGATION[step.kind], step.target);
      const {kind, activity, rule} = outcome.reason;
      assert.deepEqual([outcome.delivered, outcome.hasEnded ? 1 : 0, outcome.exception, kind, activity, rule,
        outcome.sequencing, outcome.redirectedBy], step.outcome, line);
    } else if (step.do === "record") {
      state.record(step.data);
    } else {
      state.rollUp();
    }
    assert.equal(toHex(state.save()), step.state, line);
    if (step.look !== undefined) assert.equal(hash(state.lookNumbers()), step.look, line);
    const restored = course.restoreState(fromHex(step.state));
    assert.equal(toHex(restored.save()), step.state);
    restored.close();
    ++steps;
  }
  assert.ok(steps > 5000, `${steps} steps`);
});

test("a page asks it by names and gets words", async () => {
  const engine = await Engine.start(module);
  const first = execFileSync(join(build, "tests/sequencer/sequencer-steps"), ["0"], {maxBuffer: 1 << 30, encoding: "utf8"});
  const {definition} = JSON.parse(first.slice(0, first.indexOf("\n")));
  const course = engine.openCourse(fromHex(definition));
  const state = course.newState();
  const root = course.activity(0);
  assert.equal(root.isLeaf, false);
  assert.equal(course.find(root.identifier), 0);
  const target = state.look().choices.findIndex((prospect) => !prospect.isOpen);
  const refused = state.request("choice", target);
  assert.match(course.exceptionCode(refused.exception), /^[NTSD]B\.[\d.]+-\d+$/);
  assert.notEqual(state.reasonText(refused.reason), "");
  assert.equal(engine.openCourse(new Uint8Array([1, 2, 3])), null);
  assert.equal(course.restoreState(new Uint8Array([1, 2, 3])), null);
});
