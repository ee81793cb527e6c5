// SPDX-License-Identifier: Apache-2.0
//
// A wrapped movie in a real browser, from a package as a learning platform serves it.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Chromium } from '../../Launch/browser/chromium.mjs';
import { comeTo } from './learner.mjs';
import { Package, skip as packageSkip } from './package.mjs';

const movies = fileURLToPath(new URL('../../../movies/', import.meta.url));
const skip = packageSkip || (spawnSync('haxe', ['--version']).status === 0 ? false :
  'haxe (apt-get install haxe) is missing');

// Compiles a movie of 550 by 400 pixels.
function compile(name) {
  const folder = mkdtempSync(path.join(tmpdir(), 'movie-'));
  try {
    const file = path.join(folder, 'movie.swf');
    const { status, stderr } = spawnSync('haxe', ['-swf', file, '-main', name, '-swf-version', '9',
      '-swf-header', '550:400:24:ffffff'], { cwd: movies, encoding: 'utf8' });
    assert.equal(status, 0, stderr);
    return readFileSync(file);
  } finally {
    rmSync(folder, { recursive: true });
  }
}

let browser;
let pack;
let reporting;

before(async () => {
  if (skip) return;
  reporting = compile('Reporting');
  pack = await new Package().start();
  browser = await new Chromium().start();
});

after(async () => {
  if (skip) return;
  await browser?.stop();
  pack?.stop();
});

const learner = (edition) => comeTo(pack.platform(edition), browser, 1000, 500);

const cases = [
  ['1.2', 'Linear/Doors', { 'cmi.core.lesson_status': 'passed', 'cmi.core.score.raw': '80',
    'cmi.core.lesson_location': 'door 3' }, 'cmi.core.lesson_location'],
  ['2004', 'Module_1/Content/Doors', { 'cmi.completion_status': 'completed', 'cmi.success_status': 'passed',
    'cmi.score.scaled': '0.8', 'cmi.score.raw': '8', 'cmi.location': 'door 3' }, 'cmi.location'],
];

test('a movie\'s score, status and place arrive, and it finds its place again', { skip }, async () => {
  for (const [edition, folder, results, location] of cases) {
    const address = pack.add(folder, edition, 'Doors & exits.swf', reporting);
    const page = await learner(edition);
    await page.go(address);
    await page.until(`record.values['${location}'] === 'door 3'`, 60);
    assert.deepEqual(await page.look(`(() => { const { x, y, width, height } =
      content.document.getElementById('stage').getBoundingClientRect(); return [x, y, width, height]; })()`),
    [156.5, 0, 687, 500], 'it fits the window');
    await page.leave();
    const { values, refused, terminations } = await page.look('record');
    for (const [name, value] of Object.entries(results)) assert.equal(values[name], value, name);
    assert.deepEqual([refused, terminations], [[], 1], edition);

    await page.go(address);
    await page.until(`record.values['${location}'] === 'from door 3' && record.state === 'after'`, 60);
    assert.deepEqual(await page.look('[record.refused, record.terminations]'), [[], 1], 'the movie has finished');
    await page.close();
  }
});

test('where the movie can\'t be played the learner is told, and nothing is reported as done', { skip }, async () => {
  const cases = [
    ['far/from/the/players/Doors', ''],
    ['Linear/Old', 'WebAssembly.validate = () => false;'],  // a browser older than the player
  ];
  for (const [folder, source] of cases) {
    const page = await learner('1.2');
    await page.tell('Page.enable');
    await page.tell('Page.addScriptToEvaluateOnNewDocument', { source });
    await page.go(pack.add(folder, '1.2', 'Doors.swf', reporting));
    assert.match(await page.until(`${page.shown('#message')}?.innerText`), /can't be played in this browser/, folder);
    assert.equal(await page.look('record.values["cmi.core.lesson_status"]'), 'incomplete');
    await page.close();
  }
});

test('the support page tells whether the platform and the player are there', { skip }, async () => {
  pack.add('Module_1/Content/Support', '2004', 'Support.swf', reporting);
  const page = await learner('2004');
  await page.go('/package/Module_1/Content/Support/SCORM_support/scorm_support.htm');
  await page.until(`${page.shown('#player')}?.textContent === 'plays'`, 60);
  assert.equal(await page.look(`${page.shown('#platform')}.textContent`), 'found, for SCORM 2004');
  assert.equal(await page.look('record.state'), 'before', 'it begins no visit');
  await page.close();
});
