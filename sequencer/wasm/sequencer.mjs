// SPDX-License-Identifier: Apache-2.0
// sequencer.wasm as JavaScript classes. A page gives the module's bytes and a course in the form of
// PlexoDefinitionFormat; activities are indices in preorder, "none" is NONE.

export const NONE = 0xffffffff;
export const NAVIGATION = ["start", "resumeAll", "continue", "previous", "forward", "backward", "choice", "jump",
  "exit", "exitAll", "abandon", "abandonAll", "suspendAll"];
export const REQUESTS = ["none", "start", "resumeAll", "continue", "previous", "choice", "jump", "retry", "exit"];
const MEASURES = ["measure", "rawScore", "minScore", "maxScore", "progress"];

const truthOf = (digit) => [null, false, true][digit];
const digitOf = (truth) => (truth === null ? 0 : truth ? 2 : 1);

/** The engine, started once from the bytes of sequencer.wasm. */
export class Engine {
  static async start(bytes) {
    const {instance} = await WebAssembly.instantiate(bytes, {});
    instance.exports._initialize();
    return new Engine(instance.exports);
  }

  constructor(exports) {
    this.exports = exports;
  }

  /** The course of a definition, or null if the bytes aren't one. */
  openCourse(bytes) {
    const pointer = this.withBytes(bytes, (at, size) => this.exports.plexo_open_course(at, size));
    return pointer === 0 ? null : new Course(this, pointer);
  }

  withBytes(bytes, use) {
    const at = this.exports.plexo_allocate(bytes.length || 1);
    new Uint8Array(this.exports.memory.buffer, at, bytes.length).set(bytes);
    try {
      return use(at, bytes.length);
    } finally {
      this.exports.plexo_release(at);
    }
  }
}

/** One course. Close it, and its states before it, to free its memory. */
export class Course {
  constructor(engine, pointer) {
    this.engine = engine;
    this.exports = engine.exports;
    this.pointer = pointer;
    this.count = this.exports.plexo_count(pointer);
  }

  close() {
    this.exports.plexo_close_course(this.pointer);
  }

  find(identifier) {
    return this.engine.withBytes(new TextEncoder().encode(identifier),
      (at, size) => this.exports.plexo_find(this.pointer, at, size) >>> 0);
  }

  activity(index) {
    const [parent, isLeaf, isVisible, hiddenControls] = this.numbers(this.exports.plexo_activity(this.pointer, index));
    return {
      identifier: this.text(this.exports.plexo_identifier(this.pointer, index)),
      title: this.text(this.exports.plexo_title(this.pointer, index)),
      parent, isLeaf: isLeaf === 1, isVisible: isVisible === 1, hiddenControls,
    };
  }

  newState(seed = 0n) {
    return new State(this, this.exports.plexo_new_state(this.pointer, Number(seed & 0xffffffffn), Number(seed >> 32n)));
  }

  /** A stored state, or null if the bytes aren't one of this course. */
  restoreState(bytes) {
    const pointer = this.engine.withBytes(bytes, (at, size) => this.exports.plexo_restore(this.pointer, at, size));
    return pointer === 0 ? null : new State(this, pointer);
  }

  exceptionCode(exception) {
    return this.text(this.exports.plexo_exception(this.pointer, exception));
  }

  answer(at) {
    return this.exports.memory.buffer.slice(at, at + this.exports.plexo_answer_size(this.pointer));
  }

  numbers(at) {
    return [...new Uint32Array(this.answer(at))];
  }

  text(at) {
    return new TextDecoder().decode(this.answer(at));
  }
}

/** Where one learner is in a course. */
export class State {
  constructor(course, pointer) {
    this.course = course;
    this.exports = course.exports;
    this.pointer = pointer;
  }

  close() {
    this.exports.plexo_close_state(this.pointer);
  }

  copy() {
    return new State(this.course, this.exports.plexo_copy_state(this.pointer));
  }

  save() {
    return new Uint8Array(this.course.answer(this.exports.plexo_save(this.course.pointer, this.pointer)));
  }

  /** Asks for a navigation by its name, of NAVIGATION. */
  request(name, target = NONE) {
    const kind = NAVIGATION.indexOf(name);
    if (kind < 0) throw new RangeError(`there is no request '${name}'`);
    const [delivered, hasEnded, exception, reason, activity, rule, sequencing, redirectedBy] =
      this.course.numbers(this.exports.plexo_request(this.course.pointer, this.pointer, kind, target));
    return {delivered, hasEnded: hasEnded === 1, exception, reason: {kind: reason, activity, rule}, sequencing,
      redirectedBy};
  }

  /**
   * Records what content reports: {whole, objectives: [{identifier, ...}], isSuspended}, with satisfied and completed
   * as true, false or null for unknown, and measure, rawScore, minScore, maxScore and progress as numbers or null.
   * What is left out stays as it is.
   */
  record({whole = {}, objectives = [], isSuspended} = {}) {
    const {exports, course} = this;
    const report = (values) => {
      for (const [isCompletion, name] of [[0, "satisfied"], [1, "completed"]]) {
        if (values[name] !== undefined) exports.plexo_report_truth(course.pointer, isCompletion, digitOf(values[name]));
      }
      MEASURES.forEach((name, which) => {
        if (values[name] !== undefined) exports.plexo_report_measure(course.pointer, which, values[name] ?? NaN);
      });
    };
    exports.plexo_report(course.pointer);
    report(whole);
    if (isSuspended !== undefined) exports.plexo_report_suspended(course.pointer, isSuspended ? 1 : 0);
    for (const objective of objectives) {
      course.engine.withBytes(new TextEncoder().encode(objective.identifier),
        (at, size) => exports.plexo_report_objective(course.pointer, at, size));
      report(objective);
    }
    return exports.plexo_record(course.pointer, this.pointer) === 1;
  }

  rollUp() {
    this.exports.plexo_roll_up(this.course.pointer, this.pointer);
  }

  /** What may be done next, as PlexoOutlook tells it. */
  look() {
    const numbers = this.lookNumbers();
    const prospect = (at) => {
      const [delivers, exception, kind, activity, rule] = numbers.slice(at, at + 5);
      return {isOpen: delivers !== NONE, delivers, exception, reason: {kind, activity, rule}};
    };
    const choices = Array.from({length: this.course.count}, (_, index) => prospect(12 + 5 * index));
    return {current: numbers[0], redirect: numbers[1], onContinue: prospect(2), onPrevious: prospect(7), choices};
  }

  lookNumbers() {
    return this.course.numbers(this.exports.plexo_look(this.course.pointer, this.pointer));
  }

  reasonText({kind, activity, rule}) {
    return this.course.text(this.exports.plexo_reason(this.course.pointer, this.pointer, kind, activity, rule));
  }

  status(activity, objective = 0) {
    const [satisfied, completed, attemptCount, isActive, isSuspended] =
      this.course.numbers(this.exports.plexo_status(this.course.pointer, this.pointer, activity, objective));
    const measures = MEASURES.map((name, which) => {
      const number = this.exports.plexo_measure(this.course.pointer, this.pointer, activity, objective, which);
      return [name, Number.isNaN(number) ? null : number];
    });
    return {satisfied: truthOf(satisfied), completed: truthOf(completed), attemptCount, isActive: isActive === 1,
      isSuspended: isSuspended === 1, ...Object.fromEntries(measures)};
  }

  children(cluster) {
    return this.course.numbers(this.exports.plexo_children(this.course.pointer, this.pointer, cluster));
  }
}
