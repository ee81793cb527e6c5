// SPDX-License-Identifier: Apache-2.0
//
// Learning platforms that hold their content to the letter of SCORM. Each keeps one learner's record over
// several visits; whatever it refuses stands in `refused`, every call that changes something in `log`.

const matches = (expression) => (value) => expression.test(value);
const oneOf = (...words) => (value) => words.includes(value);
const upTo = (limit) => (value) => value.length <= limit;
const listOf = (test) => (value) => value.split('[,]').every(test);
const real = matches(/^-?\d+(\.\d{1,7})?$/);
const between = (least, most) => (value) => real(value) && Number(value) >= least && Number(value) <= most;

class StandInLms {
  constructor(elements, values, { limits = {}, mute = [] } = {}) {
    Object.assign(this, { elements, limits, mute, values: new Map(Object.entries(values)) });
    Object.assign(this, { refused: [], log: [], error: '0', state: 'before', commits: 0, terminations: 0,
      reads: 0 });
  }

  // A record's pattern and test for an element, or undefined.
  row(name) {
    if (this.mute.some((prefix) => name.startsWith(prefix))) return undefined;
    return this.elements.find(([pattern]) =>
      new RegExp(`^${pattern.replaceAll('.', '\\.').replaceAll('#', '(0|[1-9]\\d*)')}$`).test(name));
  }

  count(array) {
    const numbers = [...this.values.keys()].filter((name) => name.startsWith(`${array}.`))
      .map((name) => Number(name.slice(array.length + 1).split('.')[0]));
    return numbers.length ? Math.max(...numbers) + 1 : 0;
  }

  // Every index must be that of an entry or the next one.
  isInOrder(name) {
    const parts = name.split('.');
    return parts.every((part, at) => !/^\d+$/.test(part) || Number(part) <= this.count(parts.slice(0,
      at).join('.')));
  }

  fail(code, subject) {
    this.error = code;
    if (subject) this.refused.push(`${subject} ${code}`);
    return 'false';
  }

  open() {
    if (this.state !== 'before') return this.fail('103', 'Initialize');
    this.state = 'running';
    this.error = '0';
    return 'true';
  }

  close() {
    if (this.state !== 'running') return this.fail('112', 'Terminate');
    this.state = 'after';
    this.terminations += 1;
    this.log.push('Terminate');
    return 'true';
  }

  save() {
    if (this.state !== 'running') return this.fail('142', 'Commit');
    this.commits += 1;
    this.log.push('Commit');
    this.error = '0';
    return 'true';
  }

  get(name) {
    this.reads += 1;
    this.error = '0';
    if (this.state !== 'running') { this.fail(this.codes.notRunning, `Get ${name}`); return ''; }
    if (name.endsWith('._count') && !this.mute.some((prefix) => name.startsWith(prefix))) {
      return String(this.count(name.slice(0, -7)));
    }
    const row = this.row(name);
    if (!row || row[1] === 'w') { this.fail(row ? this.codes.writeOnly : '401'); return ''; }
    if (!this.values.has(name)) this.fail(this.codes.unset);
    return this.values.get(name) ?? '';
  }

  set(name, value) {
    if (typeof value !== 'string') throw new Error(`${name} is no text`);
    if (this.state !== 'running') return this.fail(this.codes.notRunning, name);
    const row = this.row(name);
    if (!row) return this.fail('401', name);
    if (row[1] === 'r') return this.fail(this.codes.readOnly, name);
    if (!this.isInOrder(name)) return this.fail(this.codes.order, name);
    const limit = this.limits[name];
    if (limit !== undefined && value.length > limit) return this.fail(this.codes.type, name);
    const fault = this.fault(name, value);
    if (fault) return this.fail(fault, name);
    if (!row[2](value, (leaf) => this.values.get(name.replace(/(\.\d+)\..*$/, `$1.${leaf}`)))) {
      return this.fail(this.codes.type, `${name}='${value.slice(0, 40)}'`);
    }
    this.values.set(name, value);
    this.log.push(`${name}=${value}`);
    this.error = '0';
    return 'true';
  }

  fault() { return null; }

  start() {
    Object.assign(this, { state: 'before', error: '0', refused: [], log: [], commits: 0, terminations: 0,
      reads: 0 });
  }
}

const score12 = (value) => value === '' || between(0, 100)(value);
const decimal = matches(/^-?\d+(\.\d+)?$/);
const id12 = matches(/^[\x21-\x7e]{1,255}$/);
const timespan = matches(/^\d{2,4}:\d\d:\d\d(\.\d{1,2})?$/);
const status12 = ['passed', 'completed', 'failed', 'incomplete', 'browsed'];
const feedback = (value, peer) => value.length <= 255 && {
  'true-false': matches(/^[01tf]/),
  choice: matches(/^\{?[0-9a-z](,[0-9a-z])*\}?$/),
  matching: matches(/^\{?[0-9a-z]\.[0-9a-z](,[0-9a-z]\.[0-9a-z])*\}?$/),
  sequencing: matches(/^[0-9a-z](,[0-9a-z])*$/),
  likert: matches(/^[0-9a-z]?$/),
  numeric: decimal,
}[peer('type')]?.(value) !== false;

const elements12 = [
  ...['student_id', 'student_name', 'credit', 'entry', 'total_time',
    'lesson_mode'].map((name) => [`cmi.core.${name}`, 'r']),
  ['cmi.core.lesson_location', 'rw', upTo(255)],
  ['cmi.core.lesson_status', 'rw', oneOf(...status12)],
  ['cmi.core.score.(raw|min|max)', 'rw', score12],
  ['cmi.core.exit', 'w', oneOf('time-out', 'suspend', 'logout', '')],
  ['cmi.core.session_time', 'w', timespan],
  ['cmi.suspend_data', 'rw', upTo(64000)],  // the limit is the platform's
  ['cmi.launch_data', 'r'],
  ['cmi.comments', 'rw', upTo(4096)],
  ['cmi.comments_from_lms', 'r'],
  ['cmi.student_data.(mastery_score|max_time_allowed|time_limit_action)', 'r'],
  ['cmi.student_preference.audio', 'rw', between(-1, 100)],
  ['cmi.student_preference.language', 'rw', upTo(255)],
  ['cmi.student_preference.speed', 'rw', between(-100, 100)],
  ['cmi.student_preference.text', 'rw', between(-1, 1)],
  ['cmi.objectives.#.id', 'rw', id12],
  ['cmi.objectives.#.score.(raw|min|max)', 'rw', score12],
  ['cmi.objectives.#.status', 'rw', oneOf(...status12, 'not attempted')],
  ['cmi.interactions.#.id', 'w', id12],
  ['cmi.interactions.#.objectives.#.id', 'w', id12],
  ['cmi.interactions.#.time', 'w', matches(/^([01]\d|2[0-3]):[0-5]\d:[0-5]\d(\.\d{1,2})?$/)],
  ['cmi.interactions.#.type', 'w', oneOf('true-false', 'choice', 'fill-in', 'matching', 'performance',
    'sequencing',
    'likert', 'numeric')],
  ['cmi.interactions.#.correct_responses.#.pattern', 'w', feedback],
  ['cmi.interactions.#.weighting', 'w', decimal],
  ['cmi.interactions.#.student_response', 'w', feedback],
  ['cmi.interactions.#.result', 'w', (value) =>
    oneOf('correct', 'wrong', 'unanticipated', 'neutral')(value) || decimal(value)],
  ['cmi.interactions.#.latency', 'w', timespan],
];

const firstVisit12 = {
  'cmi.core.student_id': 'jdoe', 'cmi.core.student_name': 'Doe, Jane', 'cmi.core.credit': 'credit',
  'cmi.core.entry': 'ab-initio', 'cmi.core.lesson_mode': 'normal', 'cmi.core.lesson_status': 'not attempted',
  'cmi.core.total_time': '0000:00:00', 'cmi.student_data.mastery_score': '',
};

export class StandInLms12 extends StandInLms {
  constructor(values = {}, options = {}) {
    super(elements12, { ...firstVisit12, ...values }, { limits: { 'cmi.suspend_data': 4096 }, ...options });
    this.codes = { notRunning: '301', writeOnly: '404', readOnly: '403', order: '201', type: '405', unset: '0' };
    this.addsComments = options.addsComments === true;
    this.api = {
      LMSInitialize: () => this.open(), LMSFinish: () => this.close(), LMSCommit: () => this.save(),
      LMSGetValue: (name) => this.get(name), LMSSetValue: (name, value) => this.set(name, value),
      LMSGetLastError: () => this.error, LMSGetErrorString: (code) => `error ${code}`,
        LMSGetDiagnostic: () => '',
    };
  }

  set(name, value) {
    const earlier = this.values.get('cmi.comments') ?? '';
    const answer = super.set(name, value);
    if (name === 'cmi.comments' && answer === 'true' && this.addsComments) this.values.set(name,
      earlier + value);
    return answer;
  }

  // The learner comes again: 1.2 keeps everything.
  relaunch() {
    this.start();
    this.values.set('cmi.core.entry', this.values.get('cmi.core.exit') === 'suspend' ? 'resume' : '');
    this.values.delete('cmi.core.exit');
  }
}

const shortId = matches(/^[A-Za-z0-9\-._~:/?#[\]@!$&'()*+;=%]{1,250}$/);
const longId = (value) => matches(/^[A-Za-z0-9\-._~:/?#[\]@!$&'()*+,;=%]{1,4000}$/)(value);
const duration = matches(/^P(?=.)(\d+Y)?(\d+M)?(\d+D)?(T(?=\d)(\d+H)?(\d+M)?(\d+(\.\d{1,2})?S)?)?$/);
const timestamp = matches(/^\d{4}-\d\d-\d\d(T\d\d:\d\d:\d\d(\.\d{1,2})?)?$/);
const pairOf = (test) => (value) => value.split('[.]').length === 2 && value.split('[.]').every(test);
const formats2004 = {
  'true-false': oneOf('true', 'false'), choice: (value) => value === '' || listOf(shortId)(value),
  'fill-in': listOf(upTo(250)), 'long-fill-in': upTo(4000), likert: shortId, matching: listOf(pairOf(shortId)),
  performance: listOf(pairOf(upTo(250))), sequencing: listOf(shortId), numeric: real, other: upTo(4000),
};
const statuses = ['completed', 'incomplete', 'not attempted', 'unknown'];

const elements2004 = [
  ...['learner_id', 'learner_name', 'credit', 'entry', 'total_time', 'mode', 'launch_data', 'max_time_allowed',
    'time_limit_action', 'scaled_passing_score', 'completion_threshold'].map((name) => [`cmi.${name}`, 'r']),
  ['cmi.completion_status', 'rw', oneOf(...statuses)],
  ['cmi.success_status', 'rw', oneOf('passed', 'failed', 'unknown')],
  ['cmi.progress_measure', 'rw', between(0, 1)],
  ['cmi.score.scaled', 'rw', between(-1, 1)],
  ['cmi.score.(raw|min|max)', 'rw', real],
  ['cmi.exit', 'w', oneOf('time-out', 'suspend', 'logout', 'normal', '')],
  ['cmi.location', 'rw', upTo(1000)],
  ['cmi.suspend_data', 'rw', upTo(64000)],
  ['cmi.session_time', 'w', duration],
  ['cmi.learner_preference.(audio_level|delivery_speed)', 'rw', between(0, 1e9)],
  ['cmi.learner_preference.language', 'rw', matches(/^([A-Za-z]{2,3}(-[A-Za-z0-9]{2,8})*)?$/)],
  ['cmi.learner_preference.audio_captioning', 'rw', oneOf('-1', '0', '1')],
  ['cmi.comments_from_learner.#.comment', 'rw', upTo(4000)],
  ['cmi.comments_from_learner.#.timestamp', 'rw', timestamp],
  ['cmi.comments_from_lms.#.comment', 'r'],
  ['cmi.objectives.#.id', 'rw', longId],
  ['cmi.objectives.#.description', 'rw', upTo(250)],
  ['cmi.objectives.#.score.scaled', 'rw', between(-1, 1)],
  ['cmi.objectives.#.score.(raw|min|max)', 'rw', real],
  ['cmi.objectives.#.completion_status', 'rw', oneOf(...statuses)],
  ['cmi.objectives.#.success_status', 'rw', oneOf('passed', 'failed', 'unknown')],
  ['cmi.interactions.#.id', 'rw', longId],
  ['cmi.interactions.#.type', 'rw', oneOf(...Object.keys(formats2004))],
  ['cmi.interactions.#.objectives.#.id', 'rw', longId],
  ['cmi.interactions.#.timestamp', 'rw', timestamp],
  ['cmi.interactions.#.correct_responses.#.pattern', 'rw', (value, peer) =>
    (peer('type') === 'numeric' ? matches(/^[^:]*\[:\][^:]*$/)(value) : formats2004[peer('type')](value))],
  ['cmi.interactions.#.learner_response', 'rw', (value, peer) => formats2004[peer('type')](value)],
  ['cmi.interactions.#.weighting', 'rw', real],
  ['cmi.interactions.#.result', 'rw', (value) =>
    oneOf('correct', 'incorrect', 'unanticipated', 'neutral')(value) || real(value)],
  ['cmi.interactions.#.latency', 'rw', duration],
];

const firstVisit2004 = {
  'cmi.learner_id': 'jdoe', 'cmi.learner_name': 'Doe, Jane', 'cmi.credit': 'credit', 'cmi.entry': 'ab-initio',
  'cmi.mode': 'normal', 'cmi.completion_status': 'unknown', 'cmi.success_status': 'unknown',
  'cmi.total_time': 'PT0S', 'cmi.time_limit_action': 'continue,no message',
  'cmi.learner_preference.audio_level': '1', 'cmi.learner_preference.delivery_speed': '1',
  'cmi.learner_preference.audio_captioning': '0', 'cmi.learner_preference.language': '',
};

export class StandInLms2004 extends StandInLms {
  constructor(values = {}, options = {}) {
    super(elements2004, { ...firstVisit2004, ...values }, options);
    this.codes = { notRunning: '132', writeOnly: '405', readOnly: '404', order: '351', type: '406',
      unset: '403' };
    this.api = {
      Initialize: () => this.open(), Terminate: () => this.close(), Commit: () => this.save(),
      GetValue: (name) => this.get(name), SetValue: (name, value) => this.set(name, value),
      GetLastError: () => this.error, GetErrorString: (code) => `error ${code}`, GetDiagnostic: () => '',
    };
  }

  // An entry begins with its id, a type precedes its answers, an objective's id is for good.
  fault(name, value) {
    const [, array, index, leaf] = /^cmi\.(objectives|interactions)\.(\d+)\.(.*)$/.exec(name) ?? [];
    if (!array) return null;
    const known = this.values.get(`cmi.${array}.${index}.id`);
    if (known === undefined && leaf !== 'id') return '408';
    if (array === 'objectives' && leaf === 'id') {
      const isOther = ([other]) => /^cmi\.objectives\.\d+\.id$/.test(other) && other !== name;
      const isTaken = [...this.values].filter(isOther).some(([, id]) => id === value);
      return (known ?? value) !== value || isTaken ? '351' : null;
    }
    const isAnswer = /learner_response|correct_responses/.test(leaf);
    const type = this.values.get(`cmi.${array}.${index}.type`);
    if (isAnswer && type === undefined) return '408';
    const isSecond = /^correct_responses\.[1-9]/.test(leaf);
    return isSecond && ['true-false', 'likert', 'numeric', 'other'].includes(type) ? '351' : null;
  }

  // The learner comes again: only a suspended visit is kept.
  relaunch() {
    this.start();
    const isSuspended = this.values.get('cmi.exit') === 'suspend';
    if (!isSuspended) this.values = new Map(Object.entries(firstVisit2004));
    this.values.set('cmi.entry', isSuspended ? 'resume' : 'ab-initio');
    this.values.delete('cmi.exit');
  }
}
