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

const quiz = `<?xml version="1.0"?>
<manifest identifier="QUIZ" version="1.1.1" xmlns="http://www.imsproject.org/xsd/imscp_rootv1p1p2"
  xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_rootv1p2">
<metadata><schema>ADL SCORM</schema><schemaversion>1.2</schemaversion></metadata>
<organizations default="O"><organization identifier="O"><title>Quiz</title>
<item identifier="I" identifierref="R" parameters="?ends=pagehide"><title>Doors</title>
<adlcp:masteryscore>80</adlcp:masteryscore></item></organization></organizations>
<resources><resource identifier="R" type="webcontent" adlcp:scormtype="sco" href="quiz/start page.html">
<file href="quiz/start page.html"/></resource></resources></manifest>`;

const lesson = `<?xml version="1.0"?>
<manifest identifier="LESSON" version="1.3" xmlns="http://www.imsglobal.org/xsd/imscp_v1p1"
  xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3" xmlns:imsss="http://www.imsglobal.org/xsd/imsss">
<metadata><schema>ADL SCORM</schema><schemaversion>2004 3rd Edition</schemaversion></metadata>
<organizations default="O"><organization identifier="O"><title>Lesson</title>
<item identifier="I" identifierref="R"><title>Exits</title><imsss:sequencing><imsss:objectives>
<imsss:primaryObjective objectiveID="main"/><imsss:objective objectiveID="first"/>
<imsss:objective objectiveID="second"/></imsss:objectives></imsss:sequencing></item></organization></organizations>
<resources><resource identifier="R" type="webcontent" adlcp:scormType="sco" href="page.html">
<file href="page.html"/></resource></resources></manifest>`;

function run(command, words, folder) {
  const { status, stdout, stderr } = spawnSync(command, words, { cwd: folder, encoding: 'utf8' });
  assert.equal(status, 0, `${command} ${words.join(' ')}: ${stdout}${stderr}`);
}

// Makes a package of a SCO, whose page is one beside this file.
function pack(folder, name, manifest, page, content) {
  const place = path.join(folder, name);
  mkdirSync(path.join(place, path.dirname(page)), { recursive: true });
  writeFileSync(path.join(place, 'imsmanifest.xml'), manifest);
  copyFileSync(new URL(content, here), path.join(place, page));
  run('zip', ['-q', '-r', `../${name}.zip`, '.'], place);
}

// Builds the course, unpacks its package, and returns the address of each SCO's page.
function publish(folder, course) {
  pack(folder, 'quiz', quiz, 'quiz/start page.html', 'content-12.html');
  pack(folder, 'lesson', lesson, 'page.html', 'content-opened.html');
  writeFileSync(path.join(folder, 'course.yaml'), `identifier: Course\n${course}`);
  run(program, ['build', 'course.yaml', '-o', 'course.zip'], folder);
  run(program, ['check', 'course.zip'], folder);
  run('unzip', ['-q', 'course.zip', '-d', 'course'], folder);
  const text = readFileSync(path.join(folder, 'course/imsmanifest.xml'), 'utf8');
  return [...text.matchAll(/<resource [^>]*href="([^"]+)"/g)].map(([, href]) => href);
}

// What the learning platform has heard from each SCO of the course when the learner has gone on.
async function launchAll(course) {
  const folder = mkdtempSync(path.join(tmpdir(), 'course-'));
  const browser = await new Chromium().start();
  let server;
  try {
    const pages = publish(folder, course);
    server = await new PageServer({ '/course/': pathToFileURL(`${folder}/course/`),
      '/support/': new URL('../support/', here), '/': here }).start();
    const results = [];
    for (const launched of pages) {
      const address = `lms.html?course=2004&way=next&page=${encodeURIComponent(`/course/${launched}`)}`;
      const page = await browser.open(server.address(address));
      const result = JSON.parse(await page.until('document.getElementById("result")?.textContent'));
      await page.close();
      results.push({ ...result, values: Object.fromEntries(result.values) });
    }
    return results;
  } finally {
    await browser.stop();
    server?.stop();
    rmSync(folder, { recursive: true, force: true });
  }
}

const skip = isReady ? false : 'Chromium (apt-get install chromium) or build/bin/plexo is missing';

test('content of SCORM 1.2 in a course of modules is launched from the package and its pass arrives', { skip },
  async () => {
  const results = await launchAll('template: test-rollup\nmodules:\n' +
      '  - {title: Doors, pretest: quiz.zip, content: [quiz.zip], post-test: quiz.zip}\n');
  assert.equal(results.length, 3);
  for (const { values, terminations, refused } of results) {
    const names = ['completion_status', 'success_status', 'score.scaled'];
    assert.deepEqual(names.map((name) => values[`cmi.${name}`]), ['completed', 'passed', '0.9']);
    assert.deepEqual([terminations, refused], [1, []]);
  }
});

test('content of SCORM 2004 finds the objectives of its manifest in a course of SCORM 2004', { skip },
  async () => {
  const results = await launchAll('template: multiple-scos\n' +
      'files: [lesson.zip, quiz.zip]\n');
  assert.equal(results.length, 2);
  assert.equal(results[0].values['cmi.suspend_data'], 'objectives: main,first,second');
});
