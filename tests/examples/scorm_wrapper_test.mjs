// SPDX-License-Identifier: Apache-2.0
//
// The example course's wrapper against a learning platform that records what it is told.
// Run with: node --test tests/examples/scorm_wrapper_test.mjs

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import vm from 'node:vm';

const shared = new URL('../../examples/fire-safety/sources/shared/', import.meta.url);

const versions = {
  2004: { script: 'scorm-2004.js', api: 'API_1484_11', prefix: '' },
  '1.2': { script: 'scorm-12.js', api: 'API', prefix: 'LMS' },
};

// An API object that logs every call but the reads, in the words of the version.
function platform({ prefix }, values = {}, initialized = 'true') {
  const log = [];
  const call = (name, answer) => (...words) => {
    log.push([name, ...words.filter((word) => word !== '')].join(' '));
    return answer;
  };
  const api = {
    [`${prefix}Initialize`]: call('Initialize', initialized),
    [`${prefix}SetValue`]: call('Set', 'true'),
    [`${prefix}Commit`]: call('Commit', 'true'),
    [`${prefix}GetValue`]: (element) => values[element] ?? '',
    [prefix ? 'LMSFinish' : 'Terminate']: call('Terminate', 'true'),
  };
  return { api, log };
}

function frame(properties = {}) {
  const self = { opener: null, ...properties };
  self.parent ??= self;
  self.top ??= self.parent.top ?? self;
  return self;
}

// A window that may not be looked into.
function foreign() {
  return new Proxy({}, { get: () => { throw new Error('SecurityError'); } });
}

// Loads the page's two scripts into this window; the clock stands still unless it is moved.
function open(version, window) {
  const clock = { now: 0 };
  const handlers = {};
  window.addEventListener = (event, handler) => { handlers[event] = handler; };
  const context = vm.createContext({ window, Date: { now: () => clock.now } });
  for (const script of [versions[version].script, 'lms.js']) {
    vm.runInContext(readFileSync(new URL(script, shared), 'utf8'), context);
  }
  return { lms: window.lms, clock, leave: () => handlers.pagehide() };
}

function visit(version, values, act, seconds = 0) {
  const { api, log } = platform(versions[version], values);
  const page = open(version, frame({ parent: frame({ [versions[version].api]: api }) }));
  act(page.lms);
  page.clock.now += seconds * 1000;
  page.leave();
  page.leave();
  return log;
}

test('the platform is found around the window and around its openers', () => {
  for (const version of Object.keys(versions)) {
    const { api: name } = versions[version];
    const withApi = (api) => frame({ [name]: api });
    const places = {
      'the window itself': withApi,
      'two frames up': (api) => frame({ parent: frame({ parent: withApi(api) }) }),
      'the opener': (api) => frame({ opener: withApi(api) }),
      'a frame around the opener': (api) => frame({ opener: frame({ parent: withApi(api) }) }),
      'the opener of the outermost frame': (api) => frame({ parent: frame({ opener: withApi(api) }) }),
      'the opener, behind a foreign frame': (api) => frame({ parent: foreign(), top: {}, opener: withApi(api) }),
    };
    for (const [place, build] of Object.entries(places)) {
      const { api, log } = platform(versions[version]);
      assert.equal(open(version, build(api)).lms.connected, true, `${version}: ${place}`);
      assert.equal(log[0], 'Initialize', `${version}: ${place}`);
    }
  }
});

test('a page without a platform works and stays unconnected', () => {
  const endless = frame();
  endless.opener = endless;
  const other = { 2004: '1.2', '1.2': '2004' };
  for (const version of Object.keys(versions)) {
    const { api, log } = platform(versions[other[version]]);
    const windows = [frame(), frame({ parent: foreign(), top: foreign() }), frame(endless),
      frame({ [versions[other[version]].api]: api })];
    for (const window of windows) {
      const { lms, leave } = open(version, window);
      lms.location = '2';
      lms.grade(1, true);
      leave();
      assert.equal(lms.connected, false);
      assert.equal(lms.passMark(0.7), 0.7);
      assert.equal(lms.location + lms.launchData, '');
    }
    assert.deepEqual(log, []);
  }
});

test('nothing is said to a platform that refuses to initialize', () => {
  for (const version of Object.keys(versions)) {
    const { api, log } = platform(versions[version], {}, 'false');
    const { lms, leave } = open(version, frame({ [versions[version].api]: api }));
    lms.complete();
    leave();
    assert.deepEqual(log, ['Initialize'], version);
  }
});

test('a visit that is read to the end', () => {
  const read = (lms) => { lms.location = '3'; lms.complete(); };
  assert.deepEqual(visit('2004', {}, read, 3723), [
    'Initialize', 'Set cmi.completion_status incomplete', 'Set cmi.location 3',
    'Set cmi.success_status passed', 'Set cmi.completion_status completed', 'Commit',
    'Set cmi.session_time PT3723S', 'Set cmi.exit normal', 'Commit', 'Terminate',
  ]);
  assert.deepEqual(visit('1.2', {}, read, 3723), [
    'Initialize', 'Set cmi.core.lesson_status incomplete', 'Set cmi.core.lesson_location 3',
    'Set cmi.core.lesson_status completed', 'Commit',
    'Set cmi.core.session_time 01:02:03', 'Set cmi.core.exit', 'Commit', 'Terminate',
  ]);
});

test('a visit that is broken off is kept for later', () => {
  const leave = () => {};
  assert.equal(visit('2004', {}, leave).at(-3), 'Set cmi.exit suspend');
  assert.equal(visit('1.2', {}, leave).at(-3), 'Set cmi.core.exit suspend');
});

test('a quiz reports its score and its result before the session ends', () => {
  const failed = visit('2004', {}, (lms) => lms.grade(1 / 3, false));
  assert.deepEqual(failed.slice(2, 9), [
    'Set cmi.score.min 0', 'Set cmi.score.max 100', 'Set cmi.score.raw 33', 'Set cmi.score.scaled 0.33',
    'Set cmi.success_status failed', 'Set cmi.completion_status completed', 'Commit',
  ]);
  const passed = visit('1.2', {}, (lms) => lms.grade(0.75, true));
  assert.deepEqual(passed.slice(2, 7), [
    'Set cmi.core.score.min 0', 'Set cmi.core.score.max 100', 'Set cmi.core.score.raw 75',
    'Set cmi.core.lesson_status passed', 'Commit',
  ]);
  assert.equal(failed.at(-1), 'Terminate');
  assert.equal(passed.at(-1), 'Terminate');
});

test('an earlier result outlasts a second look', () => {
  const earlier = [
    ['2004', { 'cmi.completion_status': 'completed' }],
    ['1.2', { 'cmi.core.lesson_status': 'completed' }],
    ['1.2', { 'cmi.core.lesson_status': 'passed' }],
    ['1.2', { 'cmi.core.lesson_status': 'failed' }],
  ];
  for (const [version, values] of earlier) {
    const log = visit(version, values, (lms) => assert.equal(lms.done, true));
    assert.equal(log.some((line) => line.includes('status')), false, JSON.stringify(values));
  }
  const again = visit('1.2', { 'cmi.core.lesson_status': 'failed' }, (lms) => lms.complete());
  assert.equal(again.some((line) => line.includes('lesson_status')), false);
});

test('the pass mark and the bookmark are the platform\'s', () => {
  const kept = {
    2004: { 'cmi.scaled_passing_score': '0.8', 'cmi.location': '2' },
    '1.2': { 'cmi.student_data.mastery_score': '80', 'cmi.core.lesson_location': '2' },
  };
  for (const version of Object.keys(versions)) {
    visit(version, kept[version], (lms) => {
      assert.equal(lms.passMark(0.7), 0.8);
      assert.equal(lms.location, '2');
    });
    visit(version, {}, (lms) => assert.equal(lms.passMark(0.7), 0.7));
  }
});
