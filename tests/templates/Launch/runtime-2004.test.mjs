// SPDX-License-Identifier: Apache-2.0
//
// The API that SCORM 2004 content meets, against the rules of the SCORM 2004 3rd Edition Run-Time Environment.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { contentOf, openLaunchPage } from './support/load-launch.mjs';

const settings = { content: 'a.htm', contentEdition: '2004', courseEdition: '1.2' };

function openContent(more = {}) {
  const { api } = openLaunchPage({ ...settings, ...more });
  const content = contentOf(api);
  content.open();
  return { api, content };
}

const q = (leaf) => `cmi.interactions.0.${leaf}`;

test('a value is taken or refused by its data type and range', () => {
  const { api, content } = openContent();
  content.set({ [q('id')]: 'q1', 'cmi.objectives.0.id': 'o1' });
  const cases = [
    ['0', ['cmi.completion_status', 'completed', 'incomplete', 'not attempted', 'unknown']],
    ['0', ['cmi.success_status', 'passed', 'failed', 'unknown']],
    ['0', ['cmi.exit', 'time-out', 'suspend', 'logout', 'normal', '']],
    ['0', ['cmi.score.scaled', '-1', '1', '0.3333333333333333']],
    ['0', ['cmi.score.raw', '-5', '1000.5']],
    ['0', ['cmi.session_time', 'P1Y2M3DT4H5M6.78S', 'PT0S']],
    ['0', ['cmi.learner_preference.language', '', 'en', 'fr-CA', 'i-klingon']],
    ['0', ['adl.nav.request', 'continue', 'suspendAll', '{target=item.1}choice', '_none_']],
    ['0', [q('timestamp'), '2024', '2024-02-29T10:00', '2024-02-29T10:00:00.5+01:00']],
    ['0', [q('description'), 'plain', '{lang=de}Frage']],
    ['0', ['cmi.comments_from_learner.0.location', 'here']],
    ['406', ['cmi.completion_status', '', 'passed']],
    ['406', ['cmi.score.scaled', '', 'one', '1e-1']],
    ['406', ['cmi.session_time', 'P', 'PT', '00:01:00', 'PT1.234S']],
    ['406', ['cmi.exit', 'done']],
    ['406', ['adl.nav.request', 'next', '{target=}choice']],
    ['406', [q('timestamp'), '1969', '2024-13-01', '10:00:00']],
    ['406', [q('description'), '{lang=no such language}x']],
    ['406', [q('id'), '', 'a b', 'urn:x']],
    ['407', ['cmi.score.scaled', '1.01', '-2']],
    ['407', ['cmi.progress_measure', '-0.1', '1.1']],
    ['407', ['cmi.learner_preference.audio_level', '-1']],
  ];
  for (const [error, [element, ...values]] of cases) {
    for (const value of values) {
      assert.equal(api.SetValue(element, value), String(error === '0'), `${element} = '${value}'`);
      assert.equal(api.GetLastError(), error, `${element} = '${value}'`);
    }
  }
});

test('an answer has the format of its interaction\'s type', () => {
  const cases = [
    ['true-false', ['true', 'false'], ['t', ''], 'true', 'maybe'],
    ['choice', ['', 'a', 'a[,]b'], ['a b', 'a[,]a', 'x'.repeat(251)], 'a[,]b', ' '],
    ['fill-in', ['any text', '{lang=en}one[,]two'], ['{lang=?}one'],
      '{case_matters=true}{order_matters=false}one', '{lang=?}'],
    ['long-fill-in', ['x'.repeat(4000)], ['{lang=?}x'], '{case_matters=true}x', '{lang=?}'],
    ['likert', ['3', ''], ['3 4'], '', '3 4'],
    ['matching', ['1[.]a[,]2[.]b'], ['1.a', '1[.]'], '1[.]a', '1'],
    ['performance', ['cut[.]1[,][.]2'], ['cut', '[.]'], '{order_matters=false}cut[.]', 'cut'],
    ['sequencing', ['b[,]a'], [''], 'a[,]b', ''],
    ['numeric', ['-1.5'], ['', 'x'], '1[:]2', '1'],
    ['other', ['', 'anything'], [], 'anything', null],
  ];
  for (const [type, taken, refused, pattern, wrongPattern] of cases) {
    const { api, content } = openContent();
    content.set({ [q('id')]: 'q', [q('type')]: type });
    for (const value of taken) assert.equal(api.SetValue(q('learner_response'), value), 'true',
      `${type} '${value}'`);
    for (const value of refused) {
      assert.equal(api.SetValue(q('learner_response'), value), 'false', `${type} '${value}'`);
      assert.equal(api.GetLastError(), '406');
    }
    assert.equal(api.SetValue(q('correct_responses.0.pattern'), pattern), 'true', type);
    if (wrongPattern !== null) assert.equal(api.SetValue(q('correct_responses.0.pattern'), wrongPattern),
      'false', type);
    const single = ['true-false', 'likert', 'numeric', 'other'].includes(type);
    const repeated = ['choice', 'sequencing'].includes(type);
    api.SetValue(q('correct_responses.1.pattern'), pattern);
    assert.equal(api.GetLastError(), single || repeated ? '351' : '0', type);
  }
});

test('elements depend on each other as the data model says', () => {
  const { api } = openContent();
  const steps = [
    ['cmi.objectives.0.success_status', 'passed', '408'], ['cmi.objectives.1.id', 'o', '351'],
    ['cmi.objectives.0.id', 'o', '0'], ['cmi.objectives.0.id', 'o', '0'], ['cmi.objectives.0.id', 'p', '351'],
    ['cmi.objectives.1.id', 'o', '351'], ['cmi.objectives.1.id', 'p', '0'],
    [q('type'), 'choice', '408'], [q('objectives.0.id'), 'o', '408'], [q('id'), 'q', '0'],
    [q('learner_response'), 'a', '408'], [q('correct_responses.0.pattern'), 'a', '408'], [q('type'),
      'choice', '0'],
    [q('learner_response'), 'a', '0'], [q('objectives.0.id'), 'o', '0'], [q('objectives.1.id'), 'o', '351'],
    [q('correct_responses.1.pattern'), 'a', '351'],
    ['cmi.comments_from_learner.0.timestamp', '2024', '0'], ['cmi.comments_from_learner.2.comment', 'x', '351'],
    ['', 'x', '351'], ['cmi.mode', 'review', '404'], ['cmi.objectives._count', '5', '404'], ['cmi._version',
      '2', '404'],
    ['cmi.core.exit', '', '401'], ['cmi.objectives.n.id', 'x', '401'], ['adl.nav.request_valid.continue',
      'true', '404'],
  ];
  for (const [element, value, error] of steps) {
    api.SetValue(element, value);
    assert.equal(api.GetLastError(), error, `${element} = '${value}'`);
  }
  const reads = [
    ['cmi._version', '1.0', '0'], ['cmi.completion_status', 'unknown', '0'], ['cmi.mode', 'normal', '0'],
    ['cmi.score._children', 'scaled,raw,min,max', '0'], ['cmi.objectives._count', '2', '0'],
    ['cmi.objectives._children', 'id,score,success_status,completion_status,description', '0'],
    [q('objectives._count'), '1', '0'], [q('learner_response'), 'a', '0'], [q('objectives._children'), '',
      '301'],
    ['cmi.comments_from_learner._children', 'comment,location,timestamp', '0'],
    ['adl.nav.request', '_none_', '0'], ['adl.nav.request_valid.choice.{target=a.b}', 'unknown', '0'],
    ['cmi.location', '', '403'], ['cmi.score.scaled', '', '403'], ['cmi.launch_data', '', '403'],
    ['cmi.session_time', '', '405'], ['cmi.objectives.2.id', '', '301'], ['cmi.mode._children', '', '301'],
    ['cmi.score._count', '', '301'], ['', '', '301'], ['cmi.nothing', '', '401'],
  ];
  for (const [element, value, error] of reads) {
    assert.deepEqual([api.GetValue(element), api.GetLastError()], [value, error], element);
  }
});

test('calls are answered by the state of the session', () => {
  const { api } = openLaunchPage(settings);
  const answers = () => {
    const errors = [];
    for (const call of [['GetValue', 'cmi.mode'], ['SetValue', 'cmi.exit', ''], ['Commit', ''],
      ['Terminate', '']]) {
      api[call[0]](...call.slice(1));
      errors.push(api.GetLastError());
    }
    return errors.join();
  };
  assert.equal(answers(), '122,132,142,112');
  assert.deepEqual([api.Initialize('x'), api.GetLastError()], ['false', '201']);
  assert.deepEqual([api.Initialize(''), api.Initialize(''), api.GetLastError()], ['true', 'false', '103']);
  assert.deepEqual([api.GetErrorString('103'), api.GetErrorString('7')], ['Already Initialized', '']);
  assert.equal(answers(), '0,0,0,0');
  assert.equal(answers(), '123,133,143,113');
  assert.deepEqual([api.Initialize(''), api.GetLastError()], ['false', '104']);
});
