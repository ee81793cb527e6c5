// SPDX-License-Identifier: Apache-2.0
//
// SCORM 1.2 content in a course of SCORM 2004.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { contentOf, openLaunchPage } from './support/load-launch.mjs';
import { StandInLms2004 } from './support/stand-in-lms.mjs';

const settings = { content: 'a.htm', contentEdition: '1.2', courseEdition: '2004' };

// One visit: the content acts and finishes, unless `finishes` is false, and the page is left.
function visit(lms, act, more = {}, { finishes = true, ...options } = {}) {
  const page = openLaunchPage({ ...settings, ...more }, lms.api, options);
  const content = contentOf(page.api);
  assert.equal(content.open(), 'true');
  act(content, page);
  if (finishes) content.close();
  page.leave();
  assert.equal(lms.terminations, 1);
  assert.deepEqual(content.refused, []);
  return page;
}

const setting = (values) => (content) => content.set(values);
const outcome = (lms) => ['completion_status',
  'success_status'].map((name) => lms.values.get(`cmi.${name}`)).join();

test('each status of 1.2 becomes two of 2004, and is found again while the visit is suspended', () => {
  const cases = [
    ['passed', 'completed,passed', 'passed'],
    ['completed', 'completed,unknown', 'completed'],
    ['failed', 'completed,failed', 'failed'],
    ['incomplete', 'incomplete,unknown', 'incomplete'],
    ['browsed', 'incomplete,unknown', 'incomplete'],
  ];
  for (const [status, expected, again] of cases) {
    const lms = new StandInLms2004();
    visit(lms, setting({ 'cmi.core.lesson_status': status, 'cmi.core.exit': 'suspend' }));
    assert.equal(outcome(lms), expected, status);
    assert.deepEqual(lms.refused, []);
    lms.relaunch();
    visit(lms, (content) => {
      assert.equal(content.get('cmi.core.lesson_status'), again);
      assert.equal(content.get('cmi.core.entry'), 'resume');
      content.set({ 'cmi.core.lesson_status': 'incomplete' });
    });
    assert.equal(outcome(lms), 'incomplete,unknown', `${status}, taken back`);
  }
});

test('a visit ends as an LMS of 1.2 would end it', () => {
  const score = (raw, status) => ({ 'cmi.core.score.raw': raw,
    ...(status && { 'cmi.core.lesson_status': status }) });
  const cases = [
    ['no status is a completion', {}, {}, {}, 'completed,unknown'],
    ['no status while browsing', { 'cmi.mode': 'browse' }, {}, {}, 'incomplete,unknown'],
    ['an earlier status stays', { 'cmi.completion_status': 'incomplete' }, {}, {}, 'incomplete,unknown'],
    ['the mastery score is reached', {}, { masteryScore: '80' }, score('80', 'completed'), 'completed,passed'],
    ['the mastery score is missed', {}, { masteryScore: '80' }, score('79.9', 'passed'), 'completed,failed'],
    ['a score without a status', {}, { masteryScore: '80' }, score('90'), 'completed,passed'],
    ['no score', {}, { masteryScore: '80' }, { 'cmi.core.lesson_status': 'incomplete' }, 'incomplete,unknown'],
    ['a blank score', {}, { masteryScore: '80' }, score('', 'completed'), 'completed,unknown'],
    ['the score of an earlier visit', { 'cmi.score.raw': '90', 'cmi.completion_status': 'incomplete' },
      { masteryScore: '80' }, { 'cmi.core.lesson_status': 'incomplete' }, 'incomplete,unknown'],
    ['no credit', { 'cmi.credit': 'no-credit' }, { masteryScore: '80' }, score('90', 'incomplete'),
      'incomplete,unknown'],
    ['a damaged mastery score', {}, { masteryScore: 'high' }, score('90', 'completed'), 'completed,unknown'],
    ['the pass mark of the course', { 'cmi.scaled_passing_score': '0.6' }, {}, score('60'), 'completed,passed'],
    ['its own before that of the course', { 'cmi.scaled_passing_score': '0.6' }, { masteryScore: '70' },
      score('65'),
      'completed,failed'],
    ['a low score before a break', {}, { masteryScore: '80' },
      { ...score('20', 'incomplete'), 'cmi.core.exit': 'suspend' }, 'incomplete,unknown'],
    ['a high score before a break', {}, { masteryScore: '80' },
      { ...score('90', 'incomplete'), 'cmi.core.exit': 'logout' }, 'incomplete,unknown'],
    ['a score at the end of an incomplete visit', {}, { masteryScore: '80' }, score('90', 'incomplete'),
      'completed,passed'],
  ];
  for (const [name, values, more, set, expected] of cases) {
    const lms = new StandInLms2004(values);
    visit(lms, setting(set), more);
    assert.equal(outcome(lms), expected, name);
    assert.deepEqual(lms.refused, [], name);
  }
});

test('a page that is left before the content finishes completes nothing', () => {
  const cases = [
    [{}, 'unknown,unknown'], [{ 'cmi.core.score.raw': '20' }, 'unknown,unknown'],
    [{ 'cmi.core.score.raw': '20', 'cmi.core.lesson_status': 'incomplete' }, 'incomplete,unknown'],
    [{ 'cmi.core.score.raw': '90', 'cmi.core.lesson_status': 'completed' }, 'completed,passed'],
    [{ 'cmi.core.score.raw': '20', 'cmi.core.lesson_status': 'completed' }, 'completed,failed'],
  ];
  for (const [set, expected] of cases) {
    for (const commits of [false, true]) {
      const lms = new StandInLms2004();
      visit(lms, (content) => {
        content.set(set);
        if (commits) content.save();
      }, { completionPasses: true, masteryScore: '80' }, { finishes: false });
      assert.equal(outcome(lms), expected, JSON.stringify(set));
      assert.equal(lms.values.get('cmi.exit'), 'suspend');
      lms.relaunch();
      visit(lms, () => {}, { completionPasses: true });
      const later = expected === 'unknown,unknown' ? 'completed,passed' : expected;
      assert.equal(outcome(lms), later, `${JSON.stringify(set)}, finished later`);
    }
  }
});

test('where the author asks for it, completing passes, unless the content knows better', () => {
  const status = (...words) => (content) => {
    for (const word of words) content.set({ 'cmi.core.lesson_status': word });
  };
  const cases = [
    [status('completed'), 'completed,passed'], [status(), 'completed,passed'],
    [status('incomplete'), 'incomplete,unknown'], [status('failed'), 'completed,failed'],
    [status('completed', 'failed'), 'completed,failed'],
    [setting({ 'cmi.core.lesson_status': 'completed', 'cmi.core.score.raw': '10' }), 'completed,failed', '50'],
  ];
  for (const [act, expected, masteryScore] of cases) {
    const lms = new StandInLms2004();
    visit(lms, act, { completionPasses: true, masteryScore });
    assert.equal(outcome(lms), expected, String(act));
  }
  const lms = new StandInLms2004();
  visit(lms, (content) => {
    content.set({ 'cmi.core.lesson_status': 'completed', 'cmi.core.exit': 'suspend' });
    assert.equal(content.save(), 'true');
    assert.equal(outcome(lms), 'completed,passed');
    assert.equal(content.get('cmi.core.lesson_status'), 'completed');
  }, { completionPasses: true });
  lms.relaunch();
  visit(lms, (content) => assert.equal(content.get('cmi.core.lesson_status'), 'completed'),
    { completionPasses: true });
  assert.equal(outcome(lms), 'completed,passed');
});

test('a score is reported raw and scaled', () => {
  const cases = [
    [{ raw: '66.67' }, '0.6667'], [{ raw: '8', min: '0', max: '10' }, '0.8'], [{ raw: '60', min: '20',
      max: '100' }, '0.5'],
    [{ raw: '50', min: '0', max: '0' }, '0.5'], [{ raw: '90', max: '50' }, '1'], [{ raw: '10', min: '60',
      max: '70' }, '-1'],
    [{ raw: '33', max: '99' }, '0.3333333'], [{ raw: '0.000001' }, '0'], [{ max: '100' }, undefined],
  ];
  for (const [score, scaled] of cases) {
    const lms = new StandInLms2004();
    const values = Object.fromEntries(Object.entries(score).map(([part,
      value]) => [`cmi.core.score.${part}`, value]));
    visit(lms, setting(values));
    assert.equal(lms.values.get('cmi.score.scaled'), scaled, JSON.stringify(score));
    assert.equal(lms.values.get('cmi.score.raw'), score.raw);
    assert.deepEqual(lms.refused, []);
  }
});

test('a score that is withdrawn no longer counts', () => {
  for (const commits of [false, true]) {
    const lms = new StandInLms2004();
    const { warnings } = visit(lms, (content) => {
      content.set({ 'cmi.core.score.raw': '80', 'cmi.core.lesson_status': 'completed' });
      if (commits) content.save();
      content.set({ 'cmi.core.score.raw': '' });
      assert.equal(content.get('cmi.core.score.raw'), '');
    }, { masteryScore: '50' });
    const scores = ['raw', 'scaled'].map((part) => lms.values.get(`cmi.score.${part}`));
    assert.deepEqual(scores, commits ? ['0', '0'] : [undefined, undefined]);
    assert.deepEqual([outcome(lms), warnings.length], ['completed,unknown', commits ? 1 : 0]);
    assert.deepEqual(lms.refused, []);
  }
});

test('bookmark, data, time and preferences last from visit to visit', () => {
  const lms = new StandInLms2004({ 'cmi.total_time': 'P1DT1H2M3.5S', 'cmi.launch_data': 'x=1' });
  visit(lms, (content) => {
    assert.equal(content.get('cmi.core.student_name'), 'Doe, Jane');
    assert.equal(content.get('cmi.core.total_time'), '0025:02:03.50');
    assert.equal(content.get('cmi.launch_data'), 'x=1');
    assert.equal(content.get('cmi.student_preference.audio'), '0');
    content.set({
      'cmi.core.lesson_location': 'page 3', 'cmi.suspend_data': 'a;b', 'cmi.core.session_time': '0100:61:00.05',
      'cmi.student_preference.audio': '50', 'cmi.student_preference.speed': '-50',
        'cmi.student_preference.text': '1',
      'cmi.student_preference.language': 'en-GB',
    });
    content.set({ 'cmi.student_preference.language': 'English (UK)', 'cmi.core.lesson_status': 'incomplete' });
  });
  assert.deepEqual(lms.refused, []);
  assert.deepEqual(lms.log, [
    'cmi.location=page 3', 'cmi.suspend_data=a;b', 'cmi.learner_preference.audio_level=0.5',
    'cmi.learner_preference.delivery_speed=0.5', 'cmi.learner_preference.audio_captioning=1',
    'cmi.learner_preference.language=en-GB', 'cmi.completion_status=incomplete',
    'cmi.session_time=PT101H1M0.05S', 'cmi.exit=suspend', 'Commit', 'Terminate',
  ]);
  lms.relaunch();
  visit(lms, (content) => {
    assert.equal(content.get('cmi.core.lesson_location') + content.get('cmi.suspend_data'), 'page 3a;b');
    assert.equal(content.get('cmi.student_preference.audio') + content.get('cmi.student_preference.speed'),
      '50-50');
  });
});

test('a result and the data beside it outlast the visit, whatever the content calls its end', () => {
  for (const status of ['incomplete', 'completed', 'passed', 'failed']) {
    for (const exit of ['', 'suspend', 'time-out', 'logout']) {
      const lms = new StandInLms2004();
      visit(lms, setting({ 'cmi.core.lesson_status': status, 'cmi.core.exit': exit,
        'cmi.core.lesson_location': 'page 3', 'cmi.suspend_data': 'a;b' }));
      lms.relaunch();
      const seen = [];
      visit(lms, (content) => seen.push(...['core.lesson_status', 'core.lesson_location', 'suspend_data']
        .map((name) => content.get(`cmi.${name}`))), {}, { finishes: false });
      assert.deepEqual(seen, [status, 'page 3', 'a;b'], `${status}, '${exit}'`);
    }
  }
});

test('each commit tells what has changed, with the time, and marks the visit as suspended', () => {
  const lms = new StandInLms2004();
  visit(lms, (content) => {
    for (const second of ['01', '02', '02']) {
      content.set({ 'cmi.core.session_time': `00:00:${second}`, 'cmi.core.lesson_status': 'completed' });
      content.get('cmi.core.lesson_location');
      content.save();
    }
    assert.ok(lms.reads < 8, `${lms.reads} reads`);
    content.close();
    assert.equal(content.close(), 'false');
  });
  assert.deepEqual(lms.log, ['cmi.completion_status=completed', 'cmi.session_time=PT0H0M1S',
    'cmi.exit=suspend', 'Commit', 'cmi.session_time=PT0H0M2S', 'Commit', 'Terminate']);
});

test('what the learning platform refuses, the content hears in codes of 1.2', () => {
  const lms = new StandInLms2004({}, { limits: { 'cmi.suspend_data': 4000 }, mute: ['cmi.score'] });
  const page = openLaunchPage(settings, lms.api);
  const content = contentOf(page.api);
  content.open();
  content.set({ 'cmi.suspend_data': 'kept' });
  content.set({ 'cmi.suspend_data': 'a'.repeat(4001) });
  assert.deepEqual(content.refused, ['cmi.suspend_data 405']);
  assert.match(content.why(), /^Incorrect Data Type: the learning platform refused it: 406 error 406/);
  assert.equal(content.get('cmi.suspend_data'), 'kept');
  content.set({ 'cmi.core.score.raw': '50' });
  assert.deepEqual([content.save(), content.error()], ['false', '101']);
  assert.equal(page.warnings.filter((text) => text.startsWith('cmi.score.raw: ')).length, 1);
});

test('a result that was refused is told again, and a commit or the end is true only if it was taken', () => {
  const cases = [[0, 'true true true'], [1, 'false true true'], [2, 'false false true'],
    [99, 'false false false']];
  for (const [tries, answers] of cases) {
    const lms = new StandInLms2004();
    const { SetValue } = lms.api;
    let refusals = 0;
    lms.api.SetValue = (name, value) => {
      if (!name.startsWith('cmi.success') || refusals === tries) return SetValue(name, value);
      refusals += 1;
      lms.error = '391';
      return 'false';
    };
    const content = contentOf(openLaunchPage(settings, lms.api).api);
    content.open();
    content.set({ 'cmi.core.lesson_status': 'passed' });
    const heard = [content.save(), content.save(), content.close()].join(' ');
    assert.equal(heard, answers, `refused ${tries} times`);
    assert.equal(outcome(lms), tries < 99 ? 'completed,passed' : 'completed,unknown');
    assert.deepEqual([lms.terminations, content.close(), content.error()], [1, 'false', '301']);
  }
});

test('longer suspend data than 1.2 allows is for the learning platform to take or refuse', () => {
  const lms = new StandInLms2004();
  const page = visit(lms, setting({ 'cmi.suspend_data': 'a'.repeat(4096) }));
  assert.deepEqual(page.warnings, []);
  const { warnings } = visit(new StandInLms2004(), (content) => {
    content.set({ 'cmi.suspend_data': 'a'.repeat(64000) });
    content.set({ 'cmi.suspend_data': 'b'.repeat(60000) });
    assert.equal(content.get('cmi.suspend_data').length, 60000);
  });
  assert.equal(warnings.length, 1);
  assert.match(warnings[0], /^cmi\.suspend_data: 64000 characters, more than the 4096 of SCORM 1\.2/);
});

test('a learning platform that fails or throws leaves the content running', () => {
  const broken = () => { throw new Error('gone'); };
  const silent = { Initialize: () => 'false', GetLastError: () => 102, GetErrorString: broken };
  for (const api of [silent, { Initialize: broken, GetLastError: broken, GetErrorString: broken }]) {
    const content = contentOf(openLaunchPage(settings, api).api);
    assert.deepEqual([content.open(), content.error()], ['false', '101']);
    assert.deepEqual([content.get('cmi.core.entry'), content.error()], ['', '301']);
  }
  const lms = new StandInLms2004();
  const page = openLaunchPage(settings, { ...lms.api, GetValue: broken, SetValue: broken, Terminate: broken });
  const content = contentOf(page.api);
  assert.equal(content.open(), 'true');
  assert.equal(content.get('cmi.core.lesson_status'), 'not attempted');
  assert.deepEqual([content.close(), content.error()], ['false', '101']);
});

test('objectives stand behind those of the course, under ids that 2004 allows', () => {
  const lms = new StandInLms2004({ 'cmi.objectives.0.id': 'obj-Item_1',
    'cmi.objectives.0.success_status': 'unknown' });
  visit(lms, (content) => {
    assert.equal(content.get('cmi.objectives._count'), '0');
    content.set({
      'cmi.objectives.0.id': 'Käse"50%"', 'cmi.objectives.0.score.raw': '40',
      'cmi.objectives.0.score.max': '80',
      'cmi.objectives.1.status': 'failed', 'cmi.core.exit': 'suspend',
    });
  });
  assert.deepEqual(lms.refused, []);
  assert.equal(lms.values.get('cmi.objectives.0.id'), 'obj-Item_1');
  assert.equal(lms.values.get('cmi.objectives.1.id'), 'K%C3%A4se%2250%25%22');
  assert.equal(lms.values.get('cmi.objectives.1.score.scaled'), '0.5');
  assert.equal(lms.values.get('cmi.objectives.2.id'), 'objective-1');
  lms.relaunch();
  visit(lms, (content) => {
    const seen = ['_count', '0.id', '0.score.raw', '0.status',
      '1.status'].map((leaf) => content.get(`cmi.objectives.${leaf}`));
    assert.deepEqual(seen, ['2', 'Käse"50%"', '40', '', 'failed']);
    content.set({ 'cmi.objectives.0.id': 'another', 'cmi.objectives.0.status': 'passed' });
  });
  assert.deepEqual(lms.refused, []);
  assert.equal(lms.values.get('cmi.objectives.3.id'), 'another');
  assert.equal(lms.values.get('cmi.objectives.3.success_status'), 'passed');
});

test('an objective that is renamed leaves no result under its earlier name', () => {
  const lms = new StandInLms2004();
  const statuses = () => [0, 1, 2].map((n) => lms.values.get(`cmi.objectives.${n}.success_status`)).join();
  const listed = (content) => Array.from({ length: Number(content.get('cmi.objectives._count')) },
    (unused, n) => `${content.get(`cmi.objectives.${n}.id`)}=${content.get(`cmi.objectives.${n}.status`)}`);
  visit(lms, (content) => {
    content.set({ 'cmi.objectives.0.id': 'a', 'cmi.objectives.0.status': 'passed',
      'cmi.objectives.0.score.raw': '80', 'cmi.objectives.1.id': 'b', 'cmi.objectives.1.status': 'failed' });
    content.save();
    content.set({ 'cmi.objectives.0.id': 'c' });
    content.save();
    assert.equal(statuses(), 'unknown,failed,passed');
    assert.deepEqual(['0', '2'].map((n) => lms.values.get(`cmi.objectives.${n}.score.scaled`)), ['0', '0.8']);
  });
  lms.relaunch();
  visit(lms, (content) => {
    assert.deepEqual(listed(content), ['b=failed', 'c=passed']);
    content.set({ 'cmi.objectives.0.id': 'c', 'cmi.objectives.1.id': 'b' });  // exchanged
  });
  assert.equal(statuses(), 'unknown,passed,failed');
  lms.relaunch();
  visit(lms, (content) => content.set({ 'cmi.objectives.0.id': 'a' }));
  lms.relaunch();
  visit(lms, (content) => assert.deepEqual(listed(content), ['a=passed', 'c=failed']));
  assert.deepEqual(lms.refused, []);
});

test('an objective of the content stays apart from one of the course with the same id', () => {
  const lms = new StandInLms2004({ 'cmi.objectives.0.id': 'obj-primary' });
  visit(lms, setting({ 'cmi.objectives.0.id': 'obj-primary', 'cmi.objectives.0.status': 'failed' }));
  assert.equal(lms.values.get('cmi.objectives.0.success_status'), undefined);
  assert.equal(lms.values.get('cmi.objectives.1.success_status'), 'failed');
  lms.relaunch();
  visit(lms, (content) => {
    const seen = ['_count', '0.id', '0.status'].map((leaf) => content.get(`cmi.objectives.${leaf}`));
    assert.deepEqual(seen, ['1', 'obj-primary', 'failed']);
    content.set({ 'cmi.objectives.0.status': 'passed' });
  });
  assert.equal(lms.values.get('cmi.objectives.1.success_status'), 'passed');
  assert.equal(lms.count('cmi.objectives'), 2);
  assert.deepEqual(lms.refused, []);
});

test('an interaction arrives in the formats of 2004', () => {
  const cases = [
    ['true-false', 't', 'f', 'true', 'false'], ['choice', 'a,c', '{a,b}', 'a[,]c', 'a[,]b'],
    ['choice', 'The door, the left one', 'a', 'The%20door[,]the%20left%20one', 'a'], ['choice', '', 'a', '',
      'a'],
    ['fill-in', 'a, b', 'x', 'a, b', 'x'], ['matching', '1.a,2.b', '1.c', '1[.]a[,]2[.]b', '1[.]c'],
    ['performance', 'cut, pour', 'pour', '[.]cut, pour', '[.]pour'], ['sequencing', 'c,a', 'a,c', 'c[,]a',
      'a[,]c'],
    ['likert', '3', '5', '3', '5'], ['likert', '3', '', '3', undefined], ['likert', '', '', undefined, undefined],
    ['matching', '', '1.a', undefined, '1[.]a'], ['numeric', '4.5', '5', '4.5', '5[:]5'],
    ['numeric', 'four', '4', 'four', '4', 'other'], ['matching', 'a', '1.a', 'a', '1.a', 'other'],
    ['fill-in', 'x'.repeat(255), 'x', 'x'.repeat(255), 'x', 'other'], [undefined, 'a', 'b', 'a', 'b', 'other'],
  ];
  for (const [type, response, pattern, response2004, pattern2004, type2004 = type] of cases) {
    const lms = new StandInLms2004();
    const at = 'cmi.interactions.0';
    // The type after the answers: 1.2 has no order.
    visit(lms, setting({
      [`${at}.student_response`]: response, [`${at}.correct_responses.0.pattern`]: pattern, [`${at}.id`]: 'Q#1',
      ...(type && { [`${at}.type`]: type }),
    }));
    assert.deepEqual(lms.refused, [], `${type} ${response}`);
    const kept = ['id', 'type', 'learner_response',
      'correct_responses.0.pattern'].map((leaf) => lms.values.get(`${at}.${leaf}`));
    assert.deepEqual(kept, ['Q%231', type2004, response2004, pattern2004], `${type} ${response}`);
  }
});

test('the other parts of an interaction, and one more after those of an earlier visit', () => {
  const lms = new StandInLms2004({ 'cmi.interactions.0.id': 'old' });
  visit(lms, (content) => {
    assert.equal(content.get('cmi.interactions._count'), '1');
    content.set({
      'cmi.interactions.1.id': 'q', 'cmi.interactions.1.objectives.0.id': 'o 1'.replace(' ', '_'),
      'cmi.interactions.1.time': '23:59:58', 'cmi.interactions.1.result': 'wrong',
        'cmi.interactions.1.weighting': '2',
      'cmi.interactions.1.latency': '00:00:07.5', 'cmi.interactions.1.type': 'numeric',
      'cmi.interactions.1.correct_responses.0.pattern': '4',
        'cmi.interactions.1.correct_responses.1.pattern': '5',
      'cmi.interactions.2.time': '00:00:30',
    });
  }, {}, { now: new Date(2024, 2, 1, 0, 1, 0).getTime() });
  assert.deepEqual(lms.refused, []);
  const kept = Object.fromEntries([...lms.values].filter(([name]) => /^cmi\.interactions\.[12]/.test(name)));
  assert.deepEqual(kept, {
    'cmi.interactions.1.id': 'q', 'cmi.interactions.1.objectives.0.id': 'o_1',
      'cmi.interactions.1.type': 'other',
    'cmi.interactions.1.correct_responses.0.pattern': '4[,]5', 'cmi.interactions.1.result': 'incorrect',
    'cmi.interactions.1.weighting': '2', 'cmi.interactions.1.latency': 'PT0H0M7.5S',
    'cmi.interactions.1.timestamp': '2024-02-29T23:59:58',
    'cmi.interactions.2.id': 'interaction-2', 'cmi.interactions.2.timestamp': '2024-03-01T00:00:30',
  });
});

test('a comment is added to those before it, and nothing of it is lost', () => {
  const lms = new StandInLms2004({
    'cmi.comments_from_learner.0.comment': '{lang=en}earlier ', 'cmi.comments_from_lms.0.comment': 'read this',
    'cmi.comments_from_lms.1.comment': 'and that',
  });
  visit(lms, (content) => {
    content.set({ 'cmi.comments': 'first ' });
    content.set({ 'cmi.comments': 'second' });
    assert.equal(content.get('cmi.comments'), 'earlier first second');
    assert.equal(content.get('cmi.comments_from_lms'), 'read this\nand that');
    content.set({ 'cmi.comments': 'z'.repeat(4096) });
  });
  assert.deepEqual(lms.refused, []);
  const lengths = [1, 2, 3, 4].map((at) => lms.values.get(`cmi.comments_from_learner.${at}.comment`).length);
  assert.deepEqual(lengths, [6, 6, 4000, 96]);
});
