// SPDX-License-Identifier: Apache-2.0
//
// SCORM 2004 content in a course of SCORM 1.2.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { contentOf, openLaunchPage } from './support/load-launch.mjs';
import { StandInLms12 } from './support/stand-in-lms.mjs';

const settings = { content: 'a.htm', contentEdition: '2004', courseEdition: '1.2' };

function visit(lms, act, more = {}) {
  const page = openLaunchPage({ ...settings, ...more }, lms.api);
  const content = contentOf(page.api);
  assert.equal(content.open(), 'true');
  act(content);
  content.close();
  page.leave();
  assert.equal(lms.terminations, 1);
  return { page, content };
}

const setting = (values) => (content) => content.set(values);
const kept = (lms, ...names) => names.map((name) => lms.values.get(name));

test('two statuses of 2004 become one of 1.2', () => {
  const cases = [
    ['completed', 'passed', 'passed', 'completed,passed'], ['incomplete', 'passed', 'passed',
      'completed,passed'],
    ['completed', 'failed', 'failed', 'completed,failed'], ['incomplete', 'failed', 'failed',
      'completed,failed'],
    ['completed', 'unknown', 'completed', 'completed,unknown'], ['incomplete', 'unknown', 'incomplete',
      'incomplete,unknown'],
    // LMSFinish would complete what has no status.
    ['unknown', 'unknown', 'incomplete', 'incomplete,unknown'], ['not attempted', 'unknown',
      'incomplete', 'incomplete,unknown'],
  ];
  for (const [completion, success, expected, again] of cases) {
    const lms = new StandInLms12();
    visit(lms, setting({ 'cmi.completion_status': completion, 'cmi.success_status': success,
      'cmi.exit': 'suspend' }));
    assert.equal(lms.values.get('cmi.core.lesson_status'), expected, `${completion} ${success}`);
    assert.deepEqual(lms.refused, []);
    lms.relaunch();
    visit(lms, (content) => {
      assert.equal(content.get('cmi.entry'), 'resume');
      assert.equal(`${content.get('cmi.completion_status')},${content.get('cmi.success_status')}`, again);
    });
    assert.equal(lms.values.get('cmi.core.lesson_status'), expected, 'a second look changes nothing');
  }
});

test('the content is judged by its own manifest, and completing passes where the author asks for it', () => {
  const passing = { scaledPassingScore: '0.8' };
  const cases = [
    [passing, { 'cmi.score.scaled': '0.8', 'cmi.completion_status': 'completed' }, 'passed', 'completed,passed'],
    [passing, { 'cmi.score.scaled': '0.79', 'cmi.success_status': 'passed' }, 'failed', 'unknown,failed'],
    [passing, { 'cmi.success_status': 'passed' }, 'passed', 'unknown,passed'],
    [{ minNormalizedMeasure: '-0.5' }, { 'cmi.score.scaled': '-0.4' }, 'passed', 'unknown,passed'],
    [passing, { 'cmi.score.scaled': '0.2', 'cmi.completion_status': 'incomplete' }, 'incomplete',
      'incomplete,failed'],
    [passing, { 'cmi.score.scaled': '0.9', 'cmi.completion_status': 'incomplete' }, 'passed',
      'incomplete,passed'],
    [{ completionThreshold: '0.5' }, { 'cmi.progress_measure': '0.5' }, 'completed', 'completed,unknown'],
    [{ completionThreshold: '0.5' }, { 'cmi.progress_measure': '0.4', 'cmi.completion_status': 'completed' },
      'incomplete', 'incomplete,unknown'],
    [{ completionPasses: true }, { 'cmi.completion_status': 'completed' }, 'passed', 'completed,unknown'],
    [{ completionPasses: true }, { 'cmi.completion_status': 'incomplete' }, 'incomplete', 'incomplete,unknown'],
    [{ completionPasses: true }, { 'cmi.completion_status': 'completed', 'cmi.success_status': 'failed' },
      'failed',
      'completed,failed'],
    [{ completionPasses: true, ...passing }, { 'cmi.completion_status': 'completed',
      'cmi.score.scaled': '0.1' }, 'failed',
      'completed,failed'],
  ];
  for (const [more, set, expected, seen] of cases) {
    const lms = new StandInLms12();
    visit(lms, (content) => {
      content.set(set);
      assert.equal(`${content.get('cmi.completion_status')},${content.get('cmi.success_status')}`, seen);
    }, more);
    assert.equal(lms.values.get('cmi.core.lesson_status'), expected, JSON.stringify([more, set]));
    assert.deepEqual(lms.refused, []);
  }
});

test('a score lies between 0 and 100', () => {
  const cases = [
    [{ scaled: '0.825' }, '82.5', '0', '100'], [{ scaled: '-0.5' }, '0', '0', '100'],
    [{ raw: '70', scaled: '0.7' }, '70', undefined, undefined], [{ raw: '70', min: '0', max: '100' }, '70',
      '0', '100'],
    [{ raw: '8', max: '10', scaled: '0.8' }, '80', '0', '100'], [{ raw: '150', min: '100', max: '200' },
      '50', '0', '100'],
    [{ raw: '150' }, undefined, undefined, undefined],
  ];
  for (const [score, ...expected] of cases) {
    const lms = new StandInLms12();
    const { content } = visit(lms, setting(Object.fromEntries(
      Object.entries(score).map(([part, value]) => [`cmi.score.${part}`, value]))));
    assert.deepEqual(content.refused, []);
    assert.deepEqual(kept(lms, 'cmi.core.score.raw', 'cmi.core.score.min', 'cmi.core.score.max'), expected,
      JSON.stringify(score));
    assert.deepEqual(lms.refused, []);
  }
});

test('bookmark, data, times and preferences last from visit to visit', () => {
  const lms = new StandInLms12({
    'cmi.core.total_time': '0012:30:00', 'cmi.launch_data': '.', 'cmi.student_data.mastery_score': '80',
    'cmi.student_data.max_time_allowed': '00:30:00', 'cmi.student_data.time_limit_action': 'exit,message',
    'cmi.student_preference.audio': '-1', 'cmi.student_preference.speed': '50',
  });
  visit(lms, (content) => {
    const seen = ['learner_id', 'learner_name', 'credit', 'mode', 'entry', 'total_time', 'launch_data',
      'scaled_passing_score',
      'max_time_allowed', 'time_limit_action', 'learner_preference.audio_level',
        'learner_preference.delivery_speed']
      .map((name) => content.get(`cmi.${name}`));
    assert.deepEqual(seen, ['jdoe', 'Doe, Jane', 'credit', 'normal', 'ab-initio', 'PT12H30M0S', '', '0.8',
      'PT0H30M0S',
      'exit,message', '0', '1.5']);
    content.set({
      'cmi.location': 'a'.repeat(255), 'cmi.suspend_data': 'b'.repeat(4096), 'cmi.session_time': 'P1DT1H1M1.25S',
      'cmi.learner_preference.audio_level': '0.4', 'cmi.learner_preference.delivery_speed': '3',
      'cmi.learner_preference.audio_captioning': '-1', 'cmi.learner_preference.language': 'de',
        'cmi.exit': 'normal',
    });
    assert.deepEqual(content.refused, []);
  });
  assert.deepEqual(lms.refused, []);
  assert.deepEqual(kept(lms, 'cmi.core.session_time', 'cmi.core.exit', 'cmi.student_preference.audio',
    'cmi.student_preference.speed', 'cmi.student_preference.text', 'cmi.student_preference.language'),
  ['0025:01:01.25', '', '40', '100', '-1', 'de']);
  lms.relaunch();
  visit(lms, (content) => {
    assert.deepEqual([content.get('cmi.suspend_data').length, content.get('cmi.location').length], [4096, 255]);
    content.set({ 'cmi.session_time': 'P2Y' });
  });
  assert.equal(lms.values.get('cmi.core.session_time'), '9999:59:59.99');
});

test('what is too long for the learning platform is refused with the reason, and what was kept stays', () => {
  const lms = new StandInLms12();
  const { page, content } = visit(lms, (content) => {
    content.set({ 'cmi.location': 'p1', 'cmi.suspend_data': 'kept' });
    content.set({ 'cmi.location': 'a'.repeat(256) });
    assert.equal(content.why(),
      'General Set Failure: cmi.location has 256 characters; the course\'s SCORM 1.2 holds 255');
    content.set({ 'cmi.suspend_data': 'b'.repeat(4097) });
    assert.equal(content.why(), 'General Set Failure: the learning platform refused it: 405 error 405');
    assert.equal(content.get('cmi.location') + content.get('cmi.suspend_data'), 'p1kept');
  });
  assert.deepEqual(content.refused, ['cmi.location 351', 'cmi.suspend_data 351']);
  assert.deepEqual(kept(lms, 'cmi.core.lesson_location', 'cmi.suspend_data'), ['p1', 'kept']);
  assert.equal(page.warnings.length, 2);
  const roomy = new StandInLms12({}, { limits: { 'cmi.suspend_data': 64000 } });
  visit(roomy, setting({ 'cmi.suspend_data': 'b'.repeat(64000) }));
  assert.equal(roomy.values.get('cmi.suspend_data').length, 64000);
});

test('a commit tells exit and time, and a page that is left before the content ends finishes nothing', () => {
  const cases = [[{}, 'not attempted'], [{ 'cmi.completion_status': 'incomplete' }, 'incomplete'],
    [{ 'cmi.completion_status': 'completed' }, 'completed']];
  for (const [set, expected] of cases) {
    const lms = new StandInLms12();
    const page = openLaunchPage(settings, lms.api);
    const content = contentOf(page.api);
    content.open();
    content.set({ ...set, 'cmi.exit': 'suspend', 'cmi.session_time': 'PT1M', 'cmi.location': 'p1' });
    assert.equal(content.save(), 'true');
    const told = kept(lms, 'cmi.core.exit', 'cmi.core.session_time', 'cmi.core.lesson_status');
    assert.deepEqual(told, ['suspend', '0000:01:00', expected]);
    content.set({ 'cmi.location': 'p2' });
    page.leave();
    assert.deepEqual([lms.terminations, lms.commits, ...kept(lms, 'cmi.core.lesson_status',
      'cmi.core.lesson_location')], [0, 2, expected, 'p2']);
  }
});

test('a status that is taken back, and one of the primary objective, reach the platform', () => {
  const cases = [
    [{ 'cmi.completion_status': 'completed' }, { 'cmi.completion_status': 'unknown' }, 'incomplete'],
    [{ 'cmi.objectives.0.success_status': 'passed' }, {}, 'passed'],
    [{ 'cmi.objectives.0.score.scaled': '0.9' }, {}, 'passed', { scaledPassingScore: '0.8' }],
    [{ 'cmi.objectives.1.success_status': 'passed', 'cmi.completion_status': 'incomplete' }, {}, 'incomplete'],
    [{ 'cmi.objectives.0.success_status': 'passed' }, { 'cmi.success_status': 'failed' }, 'failed'],
  ];
  for (const [first, then, expected, more] of cases) {
    const lms = new StandInLms12();
    const { content } = visit(lms, (one) => {
      one.set(first);
      one.save();
      one.set(then);
    }, { primaryObjective: 'main', objectives: 'other', ...more });
    assert.equal(lms.values.get('cmi.core.lesson_status'), expected, JSON.stringify([first, then]));
    assert.deepEqual([content.refused, lms.refused], [[], []]);
  }
});

test('content finds the objectives of its manifest, in their order, with or without a platform that keeps them',
  () => {
  for (const options of [{}, { mute: ['cmi.objectives'] }]) {
    const lms = new StandInLms12({}, options);
    const declared = { primaryObjective: 'main', objectives: 'first second' };
    const ids = (content) => Array.from({ length: Number(content.get('cmi.objectives._count')) },
      (unused, n) => content.get(`cmi.objectives.${n}.id`)).join();
    const { content } = visit(lms, (one) => {
      assert.equal(ids(one), 'main,first,second');
      assert.deepEqual([one.get('cmi.objectives.2.success_status'), one.error()], ['unknown', '0']);
      one.set({ 'cmi.objectives.2.success_status': 'passed', 'cmi.objectives.3.id': 'mine' });
    }, declared);
    assert.deepEqual([content.refused, lms.refused], [[], []]);
    if (options.mute) continue;
    assert.deepEqual(kept(lms, ...[0, 1, 2, 3].map((n) => `cmi.objectives.${n}.id`), 'cmi.objectives.2.status'),
      ['main', 'first', 'second', 'mine', 'passed']);
    lms.relaunch();
    visit(lms, (again) => {
      assert.equal(ids(again), 'main,first,second,mine');
      assert.equal(again.get('cmi.objectives.2.success_status'), 'passed');
    }, declared);
  }
});

test('what 1.2 has no place for is kept for the visit', () => {
  const values = {
    'cmi.progress_measure': '0.5', 'adl.nav.request': 'continue', 'cmi.objectives.0.id': 'o',
    'cmi.objectives.0.description': 'an objective', 'cmi.comments_from_learner.0.comment': 'nice',
    'cmi.comments_from_learner.0.location': 'page 2', 'cmi.interactions.0.id': 'q',
      'cmi.interactions.0.description': 'why?',
  };
  const lms = new StandInLms12();
  visit(lms, (content) => {
    content.set(values);
    assert.equal(content.save(), 'true');
    for (const [element, value] of Object.entries(values)) assert.equal(content.get(element), value);
  });
  assert.deepEqual(lms.refused, []);
});

test('objectives and interactions arrive in the words of 1.2', () => {
  const lms = new StandInLms12();
  const at = (leaf) => `cmi.interactions.0.${leaf}`;
  const act = setting({
    'cmi.objectives.0.id': 'o1', 'cmi.objectives.0.score.scaled': '0.5',
      'cmi.objectives.0.completion_status': 'not attempted',
    'cmi.objectives.1.id': 'o2', 'cmi.objectives.1.success_status': 'failed', [at('id')]: 'q1',
      [at('type')]: 'choice',
    [at('objectives.0.id')]: 'o1', [at('timestamp')]: '2024-05-06T07:08:09', [at('learner_response')]: 'a[,]b',
    [at('correct_responses.0.pattern')]: 'a', [at('correct_responses.1.pattern')]: 'b',
      [at('result')]: 'incorrect',
    [at('weighting')]: '1.5', [at('latency')]: 'PT1M2.5S', 'cmi.interactions.1.id': 'x'.repeat(300),
  });
  const { page, content } = visit(lms, act);
  assert.deepEqual([content.refused, lms.refused], [[], []]);
  assert.equal(page.warnings.filter((text) => text.includes('300 characters')).length, 1);
  const isEntry = ([name]) => /^cmi\.(objectives|interactions)/.test(name);
  const seen = Object.fromEntries([...lms.values].filter(isEntry));
  assert.deepEqual(seen, {
    'cmi.objectives.0.id': 'o1', 'cmi.objectives.0.score.raw': '50', 'cmi.objectives.0.score.min': '0',
    'cmi.objectives.0.score.max': '100', 'cmi.objectives.0.status': 'not attempted', 'cmi.objectives.1.id': 'o2',
    'cmi.objectives.1.status': 'failed', [at('id')]: 'q1', [at('type')]: 'choice', [at('objectives.0.id')]: 'o1',
    [at('time')]: '07:08:09', [at('student_response')]: 'a,b', [at('correct_responses.0.pattern')]: 'a',
    [at('correct_responses.1.pattern')]: 'b', [at('result')]: 'wrong', [at('weighting')]: '1.5',
      [at('latency')]: '0000:01:02.50',
  });
  lms.relaunch();
  visit(lms, (again) => {
    assert.deepEqual([again.get('cmi.objectives._count'), again.get('cmi.objectives.1.success_status'),
      again.get('cmi.objectives.0.score.scaled'), again.get('cmi.interactions._count')], ['2', 'failed',
        '0.5', '1']);
    assert.equal(again.get(at('id')), '');
  });
});

test('each type of answer has its format in 1.2', () => {
  const cases = [
    ['true-false', 'true', 'false', 'true-false', 't', 'f'], ['sequencing', 'a[,]b', 'b[,]a', 'sequencing',
      'a,b', 'b,a'],
    ['matching', '1[.]a[,]2[.]b', '1[.]b', 'matching', '1.a,2.b', '1.b'], ['likert', '3', '4', 'likert',
      '3', '4'],
    ['numeric', '5', '5[:]5', 'numeric', '5', '5'],
    ['fill-in', '{lang=en}a[,]b', '{case_matters=false}{lang=en}a', 'fill-in', 'a,b', 'a'],
    ['long-fill-in', 'x'.repeat(300), 'y', 'fill-in', 'x'.repeat(255), 'y'], ['other', 'z', 'z', 'fill-in',
      'z', 'z'],
    ['performance', 'cut[.]1[,][.]2', '{order_matters=true}cut[.]1', 'performance', 'cut.1,2', 'cut.1'],
  ];
  for (const [type, response, pattern, ...expected] of cases) {
    const lms = new StandInLms12();
    const at = 'cmi.interactions.0';
    const { page, content } = visit(lms, setting({
      [`${at}.id`]: 'q', [`${at}.type`]: type, [`${at}.learner_response`]: response,
        [`${at}.correct_responses.0.pattern`]: pattern,
    }));
    assert.deepEqual([content.refused, lms.refused], [[], []], type);
    assert.deepEqual(kept(lms, `${at}.type`, `${at}.student_response`, `${at}.correct_responses.0.pattern`),
      expected);
    assert.equal(page.warnings.length, response.length > 255 ? 1 : 0, type);
  }
});

test('a learning platform without objectives and interactions is not told of them', () => {
  const lms = new StandInLms12({}, { mute: ['cmi.objectives', 'cmi.interactions'] });
  const { page } = visit(lms, (content) => {
    assert.equal(content.get('cmi.objectives._count'), '0');
    content.set({ 'cmi.objectives.0.id': 'o', 'cmi.interactions.0.id': 'q' });
    assert.equal(content.save(), 'true');
    assert.equal(content.get('cmi.objectives.0.id'), 'o');
  });
  assert.deepEqual([lms.refused, page.warnings.length], [[], 2]);
});

test('comments are put behind earlier ones, once, whether the learning platform adds or replaces', () => {
  for (const addsComments of [false, true]) {
    const lms = new StandInLms12({ 'cmi.comments': 'earlier', 'cmi.comments_from_lms': 'read this' },
      { addsComments });
    const finish = lms.api.LMSFinish;
    lms.api.LMSFinish = () => {
      lms.api.LMSFinish = finish;
      return 'false';
    };
    visit(lms, (content) => {
      assert.equal(content.get('cmi.comments_from_lms.0.comment'), 'read this');
      assert.equal(content.get('cmi.comments_from_learner.0.comment'), 'earlier');
      content.set({ 'cmi.comments_from_learner.1.comment': 'one',
        'cmi.comments_from_learner.2.comment': 'two' });
      content.save();
      assert.deepEqual([content.close(), content.error()], ['false', '111']);
    });
    assert.equal(lms.values.get('cmi.comments'), addsComments ? 'earlierone\ntwo' : 'earlier\none\ntwo');
    assert.deepEqual(lms.refused, []);
  }
});
