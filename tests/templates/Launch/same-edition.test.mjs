// SPDX-License-Identifier: Apache-2.0
//
// Content in a course of its own edition: the learning platform's API is passed on.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { contentOf, openLaunchPage } from './support/load-launch.mjs';
import { StandInLms12, StandInLms2004 } from './support/stand-in-lms.mjs';

const platforms = { '1.2': StandInLms12, 2004: StandInLms2004 };

function visit(edition, lms, act, more, finishes = true) {
  const page = openLaunchPage({ content: 'a.htm', contentEdition: edition, courseEdition: edition,
    ...more }, lms.api);
  const content = contentOf(page.api);
  assert.equal(content.open(), 'true');
  act(content, page);
  if (finishes) content.close();
  page.leave();
  page.leave();
  assert.equal(lms.terminations, finishes ? 1 : 0);
  return page;
}

const setting = (values) => (content) => content.set(values);

test('who has passed is settled before the visit ends, if the content has come to an end', () => {
  const completed = { 'cmi.completion_status': 'completed' };
  const asked = { completionPasses: true };
  const cases = [
    ['1.2', asked, { 'cmi.core.lesson_status': 'completed' }, 'passed'],
    ['1.2', asked, { 'cmi.core.lesson_status': 'failed' }, 'failed'],
    ['1.2', asked, { 'cmi.core.lesson_status': 'incomplete' }, 'incomplete'],
    ['1.2', asked, {}, 'passed', 'not attempted'],
    ['1.2', {}, { 'cmi.core.lesson_status': 'completed' }, 'completed'],
    ['1.2', { ...asked, masteryScore: '60' }, { 'cmi.core.lesson_status': 'completed',
      'cmi.core.score.raw': '50' }, 'failed'],
    ['1.2', { masteryScore: '60' }, { 'cmi.core.score.raw': '60' }, 'passed', 'not attempted'],
    ['1.2', { masteryScore: '60' }, { 'cmi.core.score.raw': '20', 'cmi.core.lesson_status': 'incomplete',
      'cmi.core.exit': 'suspend' }, 'incomplete'],
    ['2004', asked, completed, 'completed,passed'],
    ['2004', asked, { ...completed, 'cmi.success_status': 'failed' }, 'completed,failed'],
    ['2004', asked, { 'cmi.completion_status': 'incomplete' }, 'incomplete,unknown'],
    ['2004', asked, {}, 'unknown,unknown'],
    ['2004', {}, completed, 'completed,unknown'],
    ['2004', { ...asked, scaledPassingScore: '0.5' }, { ...completed, 'cmi.score.scaled': '0.4' },
      'completed,failed'],
    ['2004', { ...asked, completionThreshold: '0.9' }, { 'cmi.progress_measure': '0.9' }, 'completed,passed'],
  ];
  for (const [edition, more, set, atFinish, whenLeft = atFinish] of cases) {
    for (const [finishes, expected] of [[true, atFinish], [false, whenLeft]]) {
      const lms = new platforms[edition]();
      visit(edition, lms, setting(set), more, finishes);
      const outcome = edition === '1.2' ? lms.values.get('cmi.core.lesson_status') :
        `${lms.values.get('cmi.completion_status')},${lms.values.get('cmi.success_status')}`;
      assert.equal(outcome, expected, `${edition} ${JSON.stringify([more, set, finishes])}`);
      const isSaved = Object.keys(set).length === 0 || lms.commits > 0;
      assert.deepEqual([lms.refused, isSaved], [[], true]);
    }
  }
});

test('content finds the objectives of its manifest, apart from those of the course', () => {
  const declared = { primaryObjective: 'main', objectives: 'first second' };
  const ofCourse = { 'cmi.objectives.0.id': 'obj-primary', 'cmi.objectives.1.id': 'obj-prior',
    'cmi.objectives.1.success_status': 'passed' };
  const at = (leaf) => `cmi.objectives.${leaf}`;
  const lms = new StandInLms2004(ofCourse);
  visit('2004', lms, (content) => {
    assert.deepEqual(['_count', '0.id', '1.id', '2.id'].map((leaf) => content.get(at(leaf))),
      ['3', 'main', 'first', 'second']);
    content.set({ [at('1.success_status')]: 'failed', [at('3.id')]: 'mine', 'cmi.exit': 'suspend' });
    assert.deepEqual([content.refused, content.get(at('1.success_status')), content.get(at('4.id'))],
      [[], 'failed', '']);
  }, declared);
  assert.deepEqual(['0', '1', '2', '3', '4', '5'].map((n) => lms.values.get(at(`${n}.id`))),
    ['obj-primary', 'obj-prior', 'main', 'first', 'second', 'mine']);
  lms.relaunch();
  const { warnings } = visit('2004', lms, (content) => {
    assert.deepEqual(['_count', '1.success_status', '3.id'].map((leaf) => content.get(at(leaf))),
      ['4', 'failed', 'mine']);
    content.set({ [at('0.success_status')]: 'passed' });
  }, declared);
  assert.deepEqual([lms.refused, lms.values.get('cmi.success_status'), warnings], [[], 'passed', []],
    'the primary objective is the content\'s status');
  const without = visit('2004', new StandInLms2004({}, { mute: ['cmi.objectives'] }), (content) => {
    assert.equal(content.get(at('_count')), '');
  }, declared);
  assert.equal(without.warnings.length, 1);
});

test('a pass is told at a commit, once, and the content still finds its own word', () => {
  const lms = new StandInLms12();
  visit('1.2', lms, (content) => {
    content.set({ 'cmi.core.lesson_status': 'completed' });
    assert.equal(content.save() + content.save(), 'truetrue');
    assert.equal(content.get('cmi.core.lesson_status'), 'completed');
    assert.equal(content.error(), '0');
  }, { completionPasses: true });
  assert.deepEqual(lms.log, ['cmi.core.lesson_status=completed', 'cmi.core.lesson_status=passed', 'Commit',
    'Commit', 'Terminate']);
  lms.relaunch();
  visit('1.2', lms, (content) => {
    for (const repeat of [content.save, content.close]) {
      content.set({ 'cmi.core.lesson_status': 'completed' });
      repeat();
      assert.equal(lms.values.get('cmi.core.lesson_status'), 'passed');
    }
  }, { completionPasses: true });
  lms.relaunch();
  visit('1.2', lms, (content) => assert.equal(content.get('cmi.core.lesson_status'), 'completed'),
    { completionPasses: true });
  assert.equal(lms.values.get('cmi.core.lesson_status'), 'passed');
});

test('everything else is the learning platform\'s own word', () => {
  for (const edition of ['1.2', '2004']) {
    const lms = new platforms[edition]();
    visit(edition, lms, (content, page) => {
      assert.equal(content.get('cmi.no_such_thing'), '');
      assert.equal(content.error(), '401');
      assert.equal(page.api[edition === '1.2' ? 'LMSGetErrorString' : 'GetErrorString']('401'), 'error 401');
      content.set({ 'cmi.suspend_data': 'x', 'cmi.made_up': 'y' });
      assert.deepEqual(content.refused, ['cmi.made_up 401']);
    }, {});
    assert.deepEqual(lms.log, ['cmi.suspend_data=x', 'Commit', 'Terminate']);
  }
});

test('what the content\'s manifest gave is found where the course\'s manifest gives something else', () => {
  const given = { masteryScore: '60', maxTimeAllowed: '00:10:00', timeLimitAction: 'exit,no message',
    dataFromLms: 'lesson=3' };
  visit('1.2', new StandInLms12({ 'cmi.student_data.mastery_score': '80', 'cmi.launch_data': '.' }),
    (content) => {
    assert.deepEqual([content.get('cmi.no_such_thing'), content.error()], ['', '401']);
    assert.deepEqual([content.get('cmi.student_data.mastery_score'), content.error()], ['60', '0']);
    const seen = ['student_data.mastery_score', 'student_data.max_time_allowed',
      'student_data.time_limit_action', 'launch_data']
      .map((name) => content.get(`cmi.${name}`));
    assert.deepEqual([seen, content.error()], [Object.values(given), '0']);
  }, given);
  visit('2004', new StandInLms2004(), (content) => {
    assert.equal(content.get('cmi.scaled_passing_score') + content.get('cmi.completion_threshold'), '0.70.9');
    assert.equal(content.error(), '0');
    assert.equal(content.get('cmi.launch_data') + content.error(), '403');
  }, { minNormalizedMeasure: '0.7', completionThreshold: '0.9' });
});
