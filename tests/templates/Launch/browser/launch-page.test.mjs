// SPDX-License-Identifier: Apache-2.0
//
// The launch page in a real browser: headless Chromium shows a learning platform of ours with the page in a
// frame and the content in a frame of that.

import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { Chromium } from './chromium.mjs';
import { PageServer } from './page-server.mjs';

const here = new URL('./', import.meta.url);
const roots = {
  '/course/launch/': new URL('../../../../templates/Launch/', here),
  '/course/content/': here,
  '/support/': new URL('../support/', here),
  '/': here,
};
const skip = Chromium.isInstalled ? false : 'no Chromium is installed (apt-get install chromium)';
const quiz = { content: '../content/content-12.html', contentEdition: '1.2', courseEdition: '2004',
  title: 'Doors & exits' };

let browser;
let server;
let settings;

before(async () => {
  if (skip) return;
  server = await new PageServer(roots, { '/course/launch/settings.js': () => settings }).start();
  browser = await new Chromium().start();
});

after(async () => {
  if (skip) return;
  await browser.stop();
  server.stop();
});

const open = (page) => browser.open(server.address(page));

// What the learning platform knows after the learner has been in the content and gone on in this way.
async function visit(launch, way) {
  settings = `var plexoLaunch = ${JSON.stringify(launch)};`;
  const page = await open(`lms.html?course=${launch.courseEdition}&way=${way}`);
  const result = JSON.parse(await page.until('document.getElementById("result")?.textContent'));
  await page.close();
  return { ...result, values: Object.fromEntries(result.values) };
}

test('a pass of 1.2 content arrives in a course of 2004, and leaving ends the visit once', { skip },
  async () => {
  const cases = [
    ['content-12.html', 'remove'], ['content-12.html', 'next'], ['content-12.html', 'leave'],
    ['content-12.html?ends=pagehide', 'remove'], ['content-12.html?ends=pagehide', 'next'],
    ['content-12.html?ends=pagehide', 'leave'], ['content-12.html?ends=beforeunload', 'next'],
    ['content-12.html?ends=unload', 'remove'], ['content-12.html?ends=unload', 'leave'],
    ['content-frames.html', 'remove'], ['content-frames.html', 'next'], ['content-frames.html', 'leave'],
  ];
  for (const [content, way] of cases) {
    const subject = `${content}, ${way}`;
    const { values, refused, terminations, log } = await visit({ ...quiz,
      content: `../content/${content}` }, way);
    const results = ['completion_status', 'success_status', 'score.raw',
      'score.scaled'].map((name) => values[`cmi.${name}`]);
    assert.deepEqual(results, ['completed', 'passed', '90', '0.9'], subject);
    assert.deepEqual([terminations, refused, log.at(-1)], [1, [], 'Terminate'], subject);
  }
});

test('completing 2004 content passes in a course of 1.2 where the author asks for it', { skip }, async () => {
  for (const [ends, expected] of [['', 0], ['?ends=pagehide', 1]]) {
    const { values, refused, terminations } = await visit(
      { content: `../content/content-2004.html${ends}`, contentEdition: '2004', courseEdition: '1.2',
        completionPasses: true }, 'next');
    assert.deepEqual([terminations, refused], [expected, []]);
    assert.deepEqual(['lesson_status', 'score.raw', 'session_time'].map((name) => values[`cmi.core.${name}`]),
      ['passed', '90', '0000:01:00']);
  }
});

test('content that is opened and left is not completed, and finds the objectives of its manifest', { skip },
  async () => {
  const editions = [['1.2', '2004', 'cmi.completion_status', 'unknown', 1],
    ['1.2', '1.2', 'cmi.core.lesson_status', 'not attempted', 0],
    ['2004', '1.2', 'cmi.core.lesson_status', 'not attempted', 0],
    ['2004', '2004', 'cmi.completion_status', 'unknown', 0]];
  for (const [contentEdition, courseEdition, status, expected, terminations] of editions) {
    const result = await visit({ content: '../content/content-opened.html', contentEdition, courseEdition,
      completionPasses: true, primaryObjective: 'main', objectives: 'first second' }, 'remove');
    const subject = `${contentEdition} in ${courseEdition}`;
    assert.deepEqual([result.values[status], result.terminations], [expected, terminations], subject);
    const found = contentEdition === '2004' ? 'main,first,second' : '';
    assert.equal(result.values['cmi.suspend_data'], `objectives: ${found}`, subject);
  }
});

test('the content fills the window, without a platform too, and a lack of settings is said', { skip },
  async () => {
  settings = `var plexoLaunch = ${JSON.stringify(quiz)};`;
  const page = await open('course/launch/launch.html');
  const content = 'document.getElementById("content").contentDocument';
  const status = await page.until(`${content}.getElementById("status")?.textContent`);
  assert.equal(status, ', not attempted / Doors & exits');
  assert.deepEqual(await page.look(`(() => {
    const { x, y, width, height } = document.getElementById('content').getBoundingClientRect();
    return [x, y, width === innerWidth, height === innerHeight,
      document.documentElement.scrollHeight <= innerHeight];
  })()`), [0, 0, true, true, true]);
  await page.close();
  settings = 'var plexoLaunch = ;';
  const broken = await open('course/launch/launch.html');
  const message = await broken.until('document.getElementById("message").innerText');
  assert.match(message, /its settings \(settings\.js\) are missing or damaged/);
  await broken.close();
});
