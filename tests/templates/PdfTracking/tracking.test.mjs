// SPDX-License-Identifier: Apache-2.0
//
// The scripts of a tracked document, in a stand-in for the viewer and against a small LMS.

import assert from 'node:assert/strict';
import { readFileSync, statSync } from 'node:fs';
import { test } from 'node:test';
import { HacpServer, Viewer } from './support/stand-in-viewer.mjs';

const session = 's-1';
const range = (from, to) => Array.from({ length: to - from }, (_, index) => from + index);

test('a visit is restored, told page by page, and completed by the last page', () => {
  const server = new HacpServer();
  const first = new Viewer(3, { server });
  first.wait(2_000);
  first.view([2]);
  assert.equal(server.value(session, 'lesson_status'), 'incomplete');
  assert.equal(server.value(session, 'lesson_location'), '2');
  assert.equal(first.fields.get('session_id').value, session);
  assert.deepEqual(first.submissions[0], { cURL: 'https://lms/hacp#FDF', cSubmitAs: 'HTML', command: 'getParam',
    version: '2.0', session_id: session, aicc_data: '\r\n', isfdf: 'true' });

  const second = new Viewer(3, { server });
  second.wait(2_000);
  assert.equal(second.page, 2);
  second.view([1]);
  assert.equal(server.value(session, 'lesson_status'), 'completed');
  assert.match(server.sessions.get(session), new RegExp('^\\[CORE\\]\r\nlesson_location=1\r\nlesson_status=completed\r\n' +
    'time=00:00:02\r\n\\[CORE_LESSON\\]\r\npageString=[a-r01]+\r\npageLast=1\r\n$'));
  assert.equal(server.interactions.at(-1),
    '"course_id","student_id","date","time","interaction_id","objective_id","type_interaction","correct_response",' +
    '"student_response","result","weighting","latency"\r\n' +
    '"0","0","06/25/2007","00:00:00","lantern-slide-1","0","slide-view","1","1","correct","1","00:00:00"\r\n');
});

test('only the pages make a document complete', () => {
  const cases = [
    [1, [], 'completed'],
    [2, ['lesson_status=completed'], 'incomplete'],
    [2, ['lesson_status=not attempted', 'pageArray=-1,1'], 'incomplete'],
    [2, ['LESSON_STATUS=incomplete', 'pageArray=1,1'], 'completed'],
  ];
  for (const [pages, extra, expected] of cases) {
    const server = new HacpServer({ extra });
    const viewer = new Viewer(pages, { server });
    viewer.wait(3_000);
    assert.equal(server.value(session, 'lesson_status'), expected, `${pages} ${extra}`);
  }
});

test('an answer leads to the page that it names, or to the first, and sets nothing but its own names', () => {
  const cases = [
    [['pageLast=2'], 2],
    [['pageLast = 3 '], 3],
    [['pageLast=1=2'], 1],
    [[], 0],
    [['pageLast=99'], 0],
    [['pageLast=x', 'numPages_int=1', 'removeFromQueue=0', 'pageNum=3'], 0],
  ];
  for (const [extra, expected] of cases) {
    const viewer = new Viewer(5, { server: new HacpServer({ extra }) });
    viewer.wait(400);
    assert.equal(viewer.page, expected, String(extra));
    assert.equal(viewer.run('numPages_int'), 5);
  }
});

test('while a request is on its way, one further putParam waits and tells the latest', () => {
  const server = new HacpServer();
  const viewer = new Viewer(4, { server });
  viewer.open(1);
  viewer.open(3);
  assert.deepEqual(Array.from(viewer.run('lmsQueue'), (entry) => entry[1]),
    ['getParam', 'putInteractions', 'putParam', 'putInteractions', 'putInteractions']);
  viewer.wait(5_000);
  assert.deepEqual(server.requests.slice(0, 4), ['getParam', 'putInteractions', 'putParam', 'putInteractions']);
  assert.equal(viewer.run('lmsQueue.length'), 0);
});

test('a request without an answer is given up after 15 seconds', () => {
  const viewer = new Viewer(2, { server: new HacpServer({ latency: null }) });
  viewer.wait(14_900);
  assert.deepEqual(viewer.server.requests, ['getParam']);
  viewer.wait(200);
  assert.deepEqual(viewer.server.requests, ['getParam', 'putInteractions', 'putParam']);
  viewer.wait(15_000);
  assert.equal(viewer.run('lmsQueue.length'), 0);
  assert.equal(viewer.timers.size, 0);
});

test('without an LMS, or without its fields, the document reads as any other', () => {
  for (const options of [{ path: '/guide.pdf' }, { path: '/guide.pdf?aicc_url=x' }, { fields: [] }]) {
    const viewer = new Viewer(2, options);
    viewer.view([1]);
    viewer.wait(60_000);
    assert.deepEqual([viewer.submissions, viewer.alerts, viewer.run('lmsQueue.length')], [[], [], 0], options.path);
  }
  const plain = new Viewer(2, { path: '/guide.pdf' });
  plain.run('getLastError()');
  assert.deepEqual(plain.alerts, ['an error occurred: Tracking URL or SID is not available']);
});

test('a document of 160 pages reports a limited number of interactions, one of 159 does not', () => {
  for (const [pages, expected] of [[159, 159 + 2], [160, 159], [170, 159]]) {
    const server = new HacpServer();
    const viewer = new Viewer(pages, { server });
    viewer.wait(2_000);
    viewer.view([...range(1, pages), 0, 1]);
    assert.equal(server.interactions.length, expected, String(pages));
    assert.equal(server.value(session, 'lesson_status'), 'completed');
    const again = new Viewer(pages, { server });
    again.wait(2_000);
    assert.equal(again.run('pageDataSent_int'), pages < 160 ? 0 : pages);
  }
});

test('any set of pages survives packing, and runs of like pages shrink', () => {
  const viewer = new Viewer(1);
  let seed = 1;
  const random = (below) => { seed = (seed * 48_271) % 2_147_483_647; return seed % below; };
  for (let round = 0; round < 300; round++) {
    const pages = range(0, random(400) + 1).map(() => [1, -1, 0][random(round % 2 ? 3 : 2)]);
    viewer.context.pages = pages;
    const text = viewer.run('convertDataAryToStr(pages)');
    viewer.context.packed = viewer.run('compressData(convertDataAryToStr(pages))');
    assert.ok(viewer.context.packed.length <= text.length);
    assert.deepEqual(Array.from(viewer.run('convertDataStrToAry(decompressData(packed))')), pages);
  }
  // Letters but the first two are two of the letter two before them: 'q' is 256 pages. What isn't viewed packs
  // from its second character on, since '01' goes first.
  const packed = (value) => viewer.run(`compressData(convertDataAryToStr(Array(512).fill(${value})))`);
  assert.deepEqual([packed(1), packed(-1)], ['qq', '1qomkigeca0']);
});

test('the time is that of the visit, its days dropped', () => {
  const viewer = new Viewer(1);
  const cases = [[0, '00:00:00'], [3_661, '01:01:01'], [86_399, '23:59:59'], [86_400, '00:00:00'], [90_061, '01:01:01']];
  for (const [seconds, expected] of cases) assert.equal(viewer.run(`formatTime(${seconds})`), expected);
});

test('the scripts fit their buffer and stay within the language of an old engine', () => {
  for (const name of ['DocumentLevel.js', 'FirstPage.js', 'OtherPages.js']) {
    const file = new URL(`../../../templates/Publish/Plexo/PDF_Tracking/${name}`, import.meta.url);
    assert.ok(statSync(file).size < 39_936);
    const text = readFileSync(file, 'utf8').replace(/\/\/.*$/gm, '');
    assert.doesNotMatch(text, /=>|\b(let|const|class|for each|of)\b|`|\.(forEach|map|includes|indexOf\([^)]*,)\(/);
    assert.doesNotMatch(text, /[^\x00-\x7f]/);
  }
});
