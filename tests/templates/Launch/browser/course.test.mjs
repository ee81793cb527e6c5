// SPDX-License-Identifier: Apache-2.0
//
// The whole road of old content into a new course: a SCO of SCORM 1.2 is built into a course of modules, which
// only SCORM 2004 has, and launched from the package in a real browser.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { copyFileSync, existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { Chromium } from './chromium.mjs';
import { PageServer } from './page-server.mjs';

const here = new URL('./', import.meta.url);
const program = fileURLToPath(new URL('../../../../build/bin/plexo', here));
const isReady = Chromium.isInstalled && existsSync(program);

const manifest = `<?xml version="1.0"?>
<manifest identifier="QUIZ" version="1.1.1" xmlns="http://www.imsproject.org/xsd/imscp_rootv1p1p2"
  xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_rootv1p2">
<metadata><schema>ADL SCORM</schema><schemaversion>1.2</schemaversion></metadata>
<organizations default="O"><organization identifier="O"><title>Quiz</title>
<item identifier="I" identifierref="R" parameters="?ends=pagehide"><title>Doors</title>
<adlcp:masteryscore>80</adlcp:masteryscore></item></organization></organizations>
<resources><resource identifier="R" type="webcontent" adlcp:scormtype="sco" href="quiz/start page.html">
<file href="quiz/start page.html"/></resource></resources></manifest>`;

function run(command, words, folder) {
  const { status, stdout, stderr } = spawnSync(command, words, { cwd: folder, encoding: 'utf8' });
  assert.equal(status, 0, `${command} ${words.join(' ')}: ${stdout}${stderr}`);
}

// Builds the course, unpacks its package, and returns the address of each SCO's page.
function publish(folder) {
  mkdirSync(path.join(folder, 'quiz'));
  writeFileSync(path.join(folder, 'imsmanifest.xml'), manifest);
  copyFileSync(new URL('content-12.html', here), path.join(folder, 'quiz/start page.html'));
  run('zip', ['-q', '-r', 'quiz.zip', 'imsmanifest.xml', 'quiz'], folder);
  writeFileSync(path.join(folder, 'course.yaml'), 'template: test-rollup\nidentifier: Course\nmodules:\n' +
      '  - {title: Doors, pretest: quiz.zip, content: [quiz.zip], post-test: quiz.zip}\n');
  run(program, ['build', 'course.yaml', '-o', 'course.zip'], folder);
  run(program, ['check', 'course.zip'], folder);
  run('unzip', ['-q', 'course.zip', '-d', 'course'], folder);
  const text = readFileSync(path.join(folder, 'course/imsmanifest.xml'), 'utf8');
  return [...text.matchAll(/<resource [^>]*href="([^"]+)"/g)].map(([, href]) => href);
}

test('content of SCORM 1.2 in a course of modules is launched from the package and its pass arrives',
  { skip: isReady ? false : 'Chromium (apt-get install chromium) or build/bin/plexo is missing' }, async () => {
  const folder = mkdtempSync(path.join(tmpdir(), 'course-'));
  const browser = await new Chromium().start();
  let server;
  try {
    const pages = publish(folder);
    assert.equal(pages.length, 3);
    server = await new PageServer({ '/course/': pathToFileURL(`${folder}/course/`),
      '/support/': new URL('../support/', here), '/': here }).start();
    for (const launched of pages) {
      const address = `lms.html?course=2004&way=next&page=${encodeURIComponent(`/course/${launched}`)}`;
      const page = await browser.open(server.address(address));
      const result = JSON.parse(await page.until('document.getElementById("result")?.textContent'));
      await page.close();
      const values = Object.fromEntries(result.values);
      const names = ['completion_status', 'success_status', 'score.scaled'];
      assert.deepEqual(names.map((name) => values[`cmi.${name}`]), ['completed', 'passed', '0.9'], launched);
      assert.deepEqual([result.terminations, result.refused], [1, []], launched);
    }
  } finally {
    await browser.stop();
    server?.stop();
    rmSync(folder, { recursive: true, force: true });
  }
});
