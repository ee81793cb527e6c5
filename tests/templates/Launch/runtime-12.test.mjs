// SPDX-License-Identifier: Apache-2.0
//
// The API that SCORM 1.2 content meets, against the rules of the SCORM 1.2 Run-Time Environment.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { contentOf, openLaunchPage } from './support/load-launch.mjs';

const settings = { content: 'a.htm', contentEdition: '1.2', courseEdition: '2004' };

function openContent(more = {}) {
  const { api } = openLaunchPage({ ...settings, ...more });
  const content = contentOf(api);
  content.open();
  return { api, content };
}

test('a value is taken or refused by its data type', () => {
  const taken = [
    ['cmi.core.lesson_location', '', 'a'.repeat(255)],
    ['cmi.core.lesson_status', 'passed', 'completed', 'failed', 'incomplete', 'browsed'],
    ['cmi.core.exit', 'time-out', 'suspend', 'logout', ''],
    ['cmi.core.score.raw', '', '0', '100', '66.67', '.5'],
    ['cmi.core.session_time', '00:00:00', '0000:00:00.0', '9999:59:59.99'],
    ['cmi.suspend_data', 'ä'.repeat(4096), 'a'.repeat(64001)],
    ['cmi.comments', 'a'.repeat(4096)],
    ['cmi.objectives.0.id', 'urn:a-b_c', 'a'.repeat(255)],
    ['cmi.objectives.0.status', 'not attempted'],
    ['cmi.student_preference.audio', '-1', '100'],
    ['cmi.student_preference.speed', '-100', '100'],
    ['cmi.student_preference.text', '-1', '0', '1'],
    ['cmi.interactions.0.time', '00:00:00', '23:59:59.99'],
    ['cmi.interactions.0.type', 'true-false', 'choice', 'fill-in', 'matching', 'performance', 'sequencing',
      'likert', 'numeric'],
    ['cmi.interactions.0.result', 'correct', 'wrong', 'unanticipated', 'neutral', '-1.5'],
    ['cmi.interactions.0.weighting', '-1', '2.5'],
  ];
  const refused = [
    ['cmi.core.lesson_location', 'a'.repeat(256)],
    ['cmi.core.lesson_status', '', 'Passed', 'not attempted', 'unknown'],
    ['cmi.core.exit', 'normal'],
    ['cmi.core.score.raw', 'ten', '-1', '100.1', '1e1', ' 5', '5%'],
    ['cmi.core.session_time', '', '1:02:03', '00:00', '00:00:00.123', '00000:00:00', 'PT1H'],
    ['cmi.comments', 'a'.repeat(4097)],
    ['cmi.objectives.0.id', '', 'a b', 'a\tb', 'a'.repeat(256)],
    ['cmi.student_preference.audio', '-2', '101', '1.5', ''],
    ['cmi.student_preference.speed', '-101', 'fast'],
    ['cmi.interactions.0.time', '24:00:00', '1:00:00', '2020-01-01T00:00:00'],
    ['cmi.interactions.0.type', 'other', 'long-fill-in'],
    ['cmi.interactions.0.result', 'incorrect', ''],
    ['cmi.interactions.0.latency', '1.5'],
  ];
  const { api } = openContent();
  for (const [rows, answer, error] of [[taken, 'true', '0'], [refused, 'false', '405']]) {
    for (const [element, ...values] of rows) {
      for (const value of values) {
        const subject = `${element} = '${value.slice(0, 30)}'`;
        assert.equal(api.LMSSetValue(element, value), answer, subject);
        assert.equal(api.LMSGetLastError(), error, subject);
      }
    }
  }
});

test('elements are read, written, counted and listed as the data model says', () => {
  const { api, content } = openContent();
  content.set({ 'cmi.interactions.0.id': 'q1', 'cmi.interactions.0.objectives.0.id': 'o1',
    'cmi.objectives.0.id': 'o1' });
  const reads = [
    ['cmi._version', '3.4', '0'],
    ['cmi.core._children',
      'student_id,student_name,lesson_location,credit,lesson_status,entry,score,total_time,lesson_mode,exit,' +
      'session_time', '0'],
    ['cmi.core.score._children', 'raw,min,max', '0'],
    ['cmi.objectives._children', 'id,score,status', '0'],
    ['cmi.objectives.0.score._children', 'raw,min,max', '0'],
    ['cmi.objectives._count', '1', '0'],
    ['cmi.objectives.0.score.raw', '', '0'],
    ['cmi.student_data._children', 'mastery_score,max_time_allowed,time_limit_action', '0'],
    ['cmi.interactions._children',
      'id,objectives,time,type,correct_responses,weighting,student_response,result,latency', '0'],
    ['cmi.interactions._count', '1', '0'],
    ['cmi.interactions.0.objectives._count', '1', '0'],
    ['cmi.interactions.0.correct_responses._count', '0', '0'],
    ['cmi.core.lesson_location', '', '0'],
    ['cmi.core.lesson_status', 'not attempted', '0'],
    ['cmi.core.entry', 'ab-initio', '0'],
    ['', '', '201'],
    ['cmi.objectives.1.id', '', '201'],
    ['cmi.core.student_id._children', '', '202'],
    ['cmi.core._count', '', '203'],
    ['cmi.core.score.raw._count', '', '203'],
    ['cmi.core.scaled', '', '401'],
    ['cmi.objectives.n.id', '', '401'],
    ['cmi.constructor', '', '401'],
    ['cmi..core', '', '401'],
    ['cmi.interactions.0.id', '', '404'],
    ['cmi.core.exit', '', '404'],
    ['cmi.core.session_time', '', '404'],
  ];
  for (const [element, value, error] of reads) {
    assert.deepEqual([api.LMSGetValue(element), api.LMSGetLastError()], [value, error], element);
  }
  const writes = [
    ['', '201'], ['cmi.objectives.2.id', '201'], ['cmi.interactions.0.objectives.3.id', '201'],
    ['cmi.location', '401'], ['cmi.core', '401'], ['cmi.core._children', '402'], ['cmi.objectives._count',
      '402'],
    ['cmi._version', '402'], ['cmi.core.student_id', '403'], ['cmi.launch_data', '403'],
      ['cmi.core.total_time', '403'],
  ];
  for (const [element, error] of writes) {
    assert.deepEqual([api.LMSSetValue(element, 'x'), api.LMSGetLastError()], ['false', error], element);
  }
  assert.equal(api.LMSGetValue('cmi.objectives._count'), '1');
});

test('calls are answered by the state of the session', () => {
  const { api } = openLaunchPage(settings);
  const others = () => [api.LMSGetValue('cmi.core.entry'), api.LMSGetLastError(),
    api.LMSSetValue('cmi.core.exit', ''), api.LMSGetLastError(), api.LMSCommit(''), api.LMSGetLastError(),
    api.LMSFinish(''), api.LMSGetLastError()];
  const notRunning = ['', '301', 'false', '301', 'false', '301', 'false', '301'];
  assert.deepEqual(others(), notRunning);
  assert.deepEqual([api.LMSInitialize('x'), api.LMSGetLastError()], ['false', '201']);
  assert.deepEqual([api.LMSInitialize(''), api.LMSGetLastError()], ['true', '0']);
  assert.deepEqual([api.LMSInitialize(''), api.LMSGetLastError()], ['false', '101']);
  assert.deepEqual([api.LMSCommit('x'), api.LMSGetLastError()], ['false', '201']);
  assert.deepEqual([api.LMSGetLastError(), api.LMSGetErrorString('201')], ['201', 'Invalid argument error']);
  assert.match(api.LMSGetDiagnostic(''), /^Invalid argument error: /);
  assert.deepEqual([api.LMSGetErrorString('999'), api.LMSGetErrorString('constructor')], ['', '']);
  assert.deepEqual([api.LMSFinish(''), api.LMSGetLastError()], ['true', '0']);
  assert.deepEqual(others(), notRunning);
  assert.deepEqual([api.LMSInitialize(''), api.LMSGetLastError()], ['false', '101']);
});

test('without a learning platform the content has an LMS without memory', () => {
  const given = { masteryScore: '70', maxTimeAllowed: '00:30:00', timeLimitAction: 'exit,message',
    dataFromLms: 'a=1' };
  const { api, warnings } = openLaunchPage({ ...settings, ...given });
  const content = contentOf(api);
  assert.equal(content.open(), 'true');
  content.set({ 'cmi.core.lesson_location': '3', 'cmi.core.score.raw': 50, 'cmi.comments': 'a' });
  content.set({ 'cmi.comments': 'b' });
  assert.deepEqual(content.refused, []);
  assert.equal(content.get('cmi.core.lesson_location') + content.get('cmi.core.score.raw'), '350');
  assert.equal(content.get('cmi.comments'), 'ab');
  assert.equal(content.get('cmi.student_data.mastery_score'), '70');
  assert.equal(content.get('cmi.student_data.max_time_allowed'), '00:30:00');
  assert.equal(content.get('cmi.student_data.time_limit_action'), 'exit,message');
  assert.equal(content.get('cmi.launch_data'), 'a=1');
  assert.equal(content.save() + content.close(), 'truetrue');
  assert.equal(warnings.length, 1);
  assert.match(warnings[0], /nothing of this visit is kept/);
});
