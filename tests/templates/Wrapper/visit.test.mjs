// SPDX-License-Identifier: Apache-2.0
//
// What a wrapped movie or document tells the learning platform, in both editions.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { StandInLms12, StandInLms2004 } from '../Launch/support/stand-in-lms.mjs';
import { openPage, openUnder, windowIn } from './support/open-page.mjs';

const editions = [['1.2', StandInLms12], ['2004', StandInLms2004]];

const valuesOf = (lms, names) => names.map((name) => lms.values.get(`cmi.${name}`));

test('the platform is found around the page and its openers, the course\'s own edition first', () => {
  const api = (name, lms, properties = {}) => ({ [name]: lms.api, ...properties });
  const frames = (count, outermost) => (count ? windowIn(frames(count - 1, outermost)) : outermost);
  const foreign = (parent) => new Proxy({}, {
    get: (target, name) => { if (name === 'parent' && parent) return parent; throw new Error('SecurityError'); },
  });
  const cases = [
    ['the frame around it', (one) => windowIn(windowIn(null, one))],
    ['forty frames up', (one) => frames(40, windowIn(null, one))],
    ['its opener', (one) => windowIn(null, { opener: windowIn(null, one) })],
    ['a frame around its opener', (one) => windowIn(null, { opener: windowIn(windowIn(null, one)) })],
    ['the opener of the outermost frame', (one) => windowIn(windowIn(null, { opener: windowIn(null, one) }))],
    ['beyond a foreign frame', (one) => windowIn(foreign(windowIn(null, one)), { top: {} })],
  ];
  for (const [place, around] of cases) {
    for (const edition of ['1.2', '2004']) {
      const [old, young] = [new StandInLms12(), new StandInLms2004()];
      openPage(edition, around({ API: old.api, API_1484_11: young.api }));
      const expected = edition === '1.2' ? ['running', 'before'] : ['before', 'running'];
      assert.deepEqual([old.state, young.state], expected, place);
      for (const [name, Lms] of [['API', StandInLms12], ['API_1484_11', StandInLms2004]]) {
        const only = new Lms();
        openPage(edition, around(api(name, only)));
        assert.equal(only.state, 'running', `${place}, ${name} for ${edition}`);
      }
    }
  }
});

test('without a platform all works, nothing is kept and not a word is said', () => {
  const circle = windowIn();
  circle.opener = circle;
  const broken = () => { throw new Error('gone'); };
  const alone = [
    ['no frame', windowIn()], ['a circle of openers', circle],
    ['a platform that refuses', windowIn(null, { API: { LMSInitialize: () => 'false' } })],
    ['a platform that fails', windowIn(null, { API_1484_11: { Initialize: broken, Terminate: broken } })],
    ['an object of that name', windowIn(null, { API: {} })],
  ];
  for (const [place, window] of alone) {
    const { visit, said, fire, pass } = openPage('1.2', window);
    assert.equal(visit.setStatus('passed'), true, place);
    visit.setScore(3, 0, 4);
    visit.setLocation('7');
    assert.deepEqual([visit.location(), visit.isRecorded()], ['7', false], place);
    pass();
    fire('pagehide');
    assert.deepEqual(said, [], place);
  }
});

test('status, score, place and time arrive in the words of the edition', () => {
  const words = {
    1.2: [['core.lesson_status', 'passed'], ['core.score.raw', '75'], ['core.score.min', '0'],
      ['core.score.max', '100'], ['core.lesson_location', 'door 3'], ['core.session_time', '0001:02:03']],
    2004: [['completion_status', 'completed'], ['success_status', 'passed'], ['score.raw', '9'], ['score.min', '6'],
      ['score.max', '10'], ['score.scaled', '0.75'], ['location', 'door 3'], ['session_time', 'PT1H2M3S'],
      ['progress_measure', '0.3333']],
  };
  for (const [edition, Lms] of editions) {
    const lms = new Lms();
    const { visit, clock, fire } = openUnder(edition, lms);
    visit.setScore('9', '6', '10');
    visit.setStatus('passed');
    visit.setLocation('door 3');
    visit.setProgress(1 / 3);
    clock.now = 3723000;
    fire('pagehide');
    assert.deepEqual(valuesOf(lms, words[edition].map(([name]) => name)), words[edition].map(([, value]) => value));
    assert.deepEqual([lms.refused, lms.terminations], [[], 1], edition);
  }
});

test('what the learner has completed or passed is not taken back, in this visit or the next', () => {
  const cases = [  // statuses in turn; 1.2's status; 2004's completion and success
    [[], 'incomplete', 'incomplete unknown'],
    [['completed', 'incomplete'], 'completed', 'completed unknown'],
    [['passed', 'completed'], 'passed', 'completed passed'],
    [['failed', 'completed', 'incomplete'], 'failed', 'completed failed'],
    [['failed', 'passed'], 'passed', 'completed passed'],
    [['failed', 'again', 'incomplete', 'completed'], 'failed', 'completed failed'],
    [['completed', 'again'], 'completed', 'completed unknown'],
    [['nonsense', ''], 'incomplete', 'incomplete unknown'],
  ];
  for (const [statuses, status12, status2004] of cases) {
    for (const [edition, Lms] of editions) {
      const lms = new Lms();
      let opened = openUnder(edition, lms);
      for (const status of statuses) {
        if (status === 'again') {
          opened.fire('pagehide');
          lms.relaunch();
          opened = openUnder(edition, lms);
        } else {
          opened.visit.setStatus(status);
        }
      }
      const result = edition === '1.2' ? valuesOf(lms, ['core.lesson_status']) :
        valuesOf(lms, ['completion_status', 'success_status']);
      assert.deepEqual([result.join(' '), lms.refused], [edition === '1.2' ? status12 : status2004, []], `${statuses}`);
    }
  }
});

test('scores fit what an edition takes', () => {
  const cases = [  // raw, min, max; 1.2: raw; 2004: raw, scaled
    [[80, undefined, undefined], '80', ['80', '0.8']], [['8', '0', '10'], '80', ['8', '0.8']],
    [[0, -50, 50], '50', ['0', '0.5']], [[120, 0, 100], '100', ['120', '1']], [[-3, 0, 10], '0', ['-3', '0']],
    [[1, 0, 3], '33.3333333', ['1', '0.3333333']], [[1e-9, 0, 1], '0.0000001', ['0', '0']],
    [['much', 0, 1], undefined, [undefined, undefined]], [[1, 5, 5], undefined, [undefined, undefined]],
    [[NaN, 0, 1], undefined, [undefined, undefined]],
  ];
  for (const [score, raw12, raw2004] of cases) {
    const [old, young] = [new StandInLms12(), new StandInLms2004()];
    openUnder('1.2', old).visit.setScore(...score);
    openUnder('2004', young).visit.setScore(...score);
    assert.deepEqual(valuesOf(old, ['core.score.raw']), [raw12], `${score}`);
    assert.deepEqual(valuesOf(young, ['score.raw', 'score.scaled']), raw2004, `${score}`);
    assert.deepEqual([old.refused, young.refused], [[], []], `${score}`);
  }
});

test('place and suspend data come back; what is too long is refused whole', () => {
  for (const [edition, Lms, longest] of [['1.2', StandInLms12, [255, 4096]], ['2004', StandInLms2004, [1000, 4000]]]) {
    const lms = new Lms();
    const { visit, fire } = openUnder(edition, lms);
    const [place, data] = longest.map((length) => 'x'.repeat(length));
    assert.deepEqual([visit.setLocation(place), visit.setSuspendData(data)], [true, true]);
    assert.deepEqual([visit.setLocation(`${place}x`), visit.setSuspendData(`${data}x`)], [false, false]);
    fire('pagehide');
    lms.relaunch();
    const again = openUnder(edition, lms).visit;
    assert.deepEqual([again.location(), again.suspendData(), lms.refused], [place, data, []], edition);
  }
});

test('changes are saved soon, when the page may be gone, and once at its end', () => {
  for (const [edition, Lms] of editions) {
    const lms = new Lms();
    const { visit, page, fire, pass } = openUnder(edition, lms);
    pass();
    assert.equal(lms.commits, 1, 'the beginning');
    fire('beforeunload');
    visit.setLocation('2');
    visit.setLocation('3');
    assert.equal(lms.commits, 1);
    pass();
    visit.setLocation('4');
    page.document.hidden = true;
    fire('visibilitychange');
    visit.setLocation('4');
    fire('beforeunload');
    assert.equal(lms.commits, 3);
    fire('pagehide');
    fire('pagehide');
    fire('visibilitychange');
    visit.setLocation('5');
    pass();
    assert.deepEqual([lms.commits, lms.terminations, lms.refused, lms.log.at(-1)], [4, 1, [], 'Terminate'], edition);
    fire('pageshow', { persisted: true });
    assert.equal(page.reloads, 1);
  }
});

test('a movie that says it is finished ends the visit at once, and the next begins anew', () => {
  for (const [edition, Lms, exit] of [['1.2', StandInLms12, 'core.exit'], ['2004', StandInLms2004, 'exit']]) {
    const lms = new Lms();
    const { visit, fire } = openUnder(edition, lms);
    assert.deepEqual(valuesOf(lms, [exit]), ['suspend']);
    visit.finish();
    fire('pagehide');
    const normal = edition === '1.2' ? '' : 'normal';
    assert.deepEqual([...valuesOf(lms, [exit]), lms.terminations, lms.refused], [normal, 1, []]);
  }
});

test('a visit that doesn\'t count reports neither status nor score', () => {
  const [old, young] = [new StandInLms12({ 'cmi.core.lesson_mode': 'review', 'cmi.core.lesson_status': 'passed' }),
    new StandInLms2004({ 'cmi.mode': 'review' })];
  const browsed = new StandInLms12({ 'cmi.core.lesson_mode': 'browse' });
  for (const [edition, lms] of [['1.2', old], ['2004', young], ['1.2', browsed]]) {
    const { visit } = openUnder(edition, lms);
    visit.setStatus('failed');
    visit.setScore(1, 0, 2);
    visit.complete();
  }
  assert.deepEqual(valuesOf(old, ['core.lesson_status', 'core.score.raw']), ['passed', undefined]);
  assert.deepEqual(valuesOf(young, ['completion_status', 'success_status']), ['unknown', 'unknown']);
  assert.deepEqual(valuesOf(browsed, ['core.lesson_status', 'core.score.raw']), ['browsed', undefined]);
});

test('content that was seen whole is completed, and passed where sequencing asks for that', () => {
  for (const [edition, Lms] of editions) {
    const lms = new Lms();
    openUnder(edition, lms).visit.complete();
    const names = edition === '1.2' ? ['core.lesson_status'] : ['completion_status', 'success_status'];
    assert.deepEqual(valuesOf(lms, names), edition === '1.2' ? ['completed'] : ['completed', 'passed']);
  }
});

test('the platform\'s tracking address is passed on to the document', () => {
  const { tracking } = openPage('1.2', windowIn());
  const cases = [
    ['', ''], ['?x=1', ''], ['?my_aicc_sid=1&aicc_sid=', '?aicc_sid='],
    ['?AICC_SID=7&aicc_url=http%3A%2F%2Flms%2F%3Fa%26b', '?aicc_url=http%3A%2F%2Flms%2F%3Fa%26b&aicc_sid=7'],
  ];
  for (const [query, expected] of cases) assert.equal(tracking(query), expected, query);
});
