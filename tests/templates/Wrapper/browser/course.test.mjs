// SPDX-License-Identifier: Apache-2.0
//
// Courses of a package, a document and a movie, built by the program and launched from their package in a real
// browser. PLEXO_SCREENSHOTS names a folder for pictures of what the learner sees.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { copyFileSync, existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { Chromium } from '../../Launch/browser/chromium.mjs';
import { comeTo } from './learner.mjs';
import { Package, skip as packageSkip } from './package.mjs';
import { pdfFile } from './pdf-file.mjs';

const root = new URL('../../../../', import.meta.url);
const program = fileURLToPath(new URL('build/bin/plexo', root));
const movie = fileURLToPath(new URL('build/tests/movies/interaction.swf', root));
const packer = fileURLToPath(new URL('examples/fire-safety/build-packages', root));
const skip = packageSkip || (existsSync(program) && existsSync(movie) ? false :
  'build/bin/plexo or build/tests/movies (cmake --build build) is missing');

let folder;
let browser;
let pack;

function run(command, ...words) {
  const { status, stdout, stderr } = spawnSync(command, words, { cwd: folder, encoding: 'utf8' });
  assert.equal(status, 0, `${command} ${words.join(' ')}: ${stdout}${stderr}`);
  return stdout;
}

before(async () => {
  if (skip) return;
  folder = mkdtempSync(path.join(tmpdir(), 'course-'));
  run(packer, folder);
  copyFileSync(movie, path.join(folder, 'Doors & exits #2.swf'));
  writeFileSync(path.join(folder, 'Plan é 100% [a]{b}?.pdf'), pdfFile(3));
  pack = await new Package({ '/unpacked/': pathToFileURL(`${folder}/unpacked/`) }).start();
  browser = await new Chromium().start();
});

after(async () => {
  if (skip) return;
  await browser?.stop();
  pack?.stop();
  rmSync(folder, { recursive: true, force: true });
});

// Builds a course and unpacks its package; returns the addresses of the SCOs' pages, and the ids of what the checker
// finds.
function publish(name, courseFile) {
  writeFileSync(path.join(folder, `${name}.yaml`), `identifier: Course\n${courseFile}`);
  run(program, 'build', `${name}.yaml`, '-o', `${name}.zip`);
  mkdirSync(path.join(folder, 'unpacked', name), { recursive: true });
  run('unzip', '-q', `${name}.zip`, '-d', `unpacked/${name}`);
  const manifest = readFileSync(path.join(folder, `unpacked/${name}/imsmanifest.xml`), 'utf8');
  const pages = [...manifest.matchAll(/<resource [^>]*href="([^"]+)"/g)].map(([, href]) =>
    `/unpacked/${name}/${href.replaceAll('&amp;', '&')}`);
  const { findings } = JSON.parse(run(program, 'check', `${name}.zip`, '--json'));
  return { pages, found: findings.map(({ id }) => id) };
}

const names = {
  1.2: { location: 'cmi.core.lesson_location', status: 'cmi.core.lesson_status', score: 'cmi.core.score.raw' },
  2004: { location: 'cmi.location', status: 'cmi.completion_status', score: 'cmi.score.raw',
    success: 'cmi.success_status', progress: 'cmi.progress_measure' },
};

// What a learner does with each kind of content, and what the platform then has. Where there is a place, the learner
// leaves there, and comes back to it.
const lessons = {
  htm: {
    place: '2',
    async begin({ until, look, shown }) {
      await until(`${shown('#next')}?.disabled === false`);
      await look(`${shown('#next')}.click()`);
    },
    async end({ until, look, shown }) {
      await until(`${shown('#place')}?.textContent === '2 of 3'`);
      await look(`${shown('#next')}.click()`);
    },
    results: { location: '3', status: 'completed', success: 'passed' },
  },
  pdf: {
    place: '2',
    async begin({ until, press, shown }) {
      await until(`${shown('.seen')}?.textContent === '1 of 3 pages read'`);
      await press('ArrowRight');
      await until(`${shown('.seen')}.textContent === '2 of 3 pages read'`);
    },
    async end({ until, press, at, shown }) {
      await at(2);
      await press('End');
      await until(`${shown('.seen')}.textContent === 'All pages read'`);
    },
    results: { location: '3', status: 'completed', success: 'passed', progress: '1' },
  },
  swf: {
    begin: ({ until }, { score, status }) =>
      until(`record.values['${score}'] === '80' && record.values['${status}'] !== 'incomplete'`, 60),
    results: { score: '80', status: 'completed', success: 'passed' },
  },
};

async function photograph(page, name) {
  if (!process.env.PLEXO_SCREENSHOTS) return;
  const { data } = await page.tell('Page.captureScreenshot', {});
  writeFileSync(path.join(process.env.PLEXO_SCREENSHOTS, `${name}.png`), data, 'base64');
}

async function study(kind, address, edition, picture) {
  const element = names[edition];
  const { place, begin, end, results } = lessons[kind];
  const page = await comeTo(pack.platform(edition), browser, 1000, 700);
  await page.go(address);
  await begin(page, element);
  await photograph(page, picture);
  await page.leave();
  if (place) {
    const visit = await page.look(`[record.values['${element.location}'], record.refused, record.terminations]`);
    assert.deepEqual(visit, [place, [], 1], address);
    await page.go(address);
    await end(page);
    await page.leave();
  }
  const { values, refused, terminations } = await page.look('record');
  // SCORM 1.2 has one status for both.
  const wanted = element.success || kind !== 'swf' ? results : { ...results, status: results.success };
  for (const [what, value] of Object.entries(wanted)) {
    if (element[what]) assert.equal(values[element[what]], value, `${address}: ${what}`);
  }
  assert.deepEqual([refused, terminations], [[], 1], address);
  await page.close();
}

const kindOf = (address) => (/Plan/.test(address) ? 'pdf' : /Doors/.test(address) ? 'swf' : 'htm');

test('a package, a document and a movie report from a flat course, in both editions', { skip }, async () => {
  for (const edition of ['1.2', '2004']) {
    const { pages, found } = publish(`flat-${edition}`, `template: multiple-scos\nscorm: "${edition}"\n` +
      `force-sequence: true\nfiles: [${edition}/intro.zip, "Plan é 100% [a]{b}?.pdf", "Doors & exits #2.swf"]\n`);
    // A document and a movie bring no title.
    assert.deepEqual(found, ['PLX-216', 'PLX-216']);
    assert.deepEqual(pages.map(kindOf), ['htm', 'pdf', 'swf']);
    for (const address of pages) await study(kindOf(address), address, edition, `flat-${edition}-${kindOf(address)}`);
  }
});

test('movies as tests around a document report from a module', { skip }, async () => {
  const { pages, found } = publish('modules', 'template: test-rollup\nforce-sequence: true\nmodules:\n' +
    '  - {title: Doors, pretest: "Doors & exits #2.swf", content: ["Plan é 100% [a]{b}?.pdf"], ' +
    'post-test: "Doors & exits #2.swf"}\n');
  assert.deepEqual(found, []);
  assert.deepEqual(pages.map(kindOf), ['swf', 'pdf', 'swf']);
  for (const [at, address] of pages.entries()) await study(kindOf(address), address, '2004', `module-${at}`);
});
