// SPDX-License-Identifier: Apache-2.0
//
// A wrapped document in a real browser, from a package as a learning platform serves it.

import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { Chromium } from '../../Launch/browser/chromium.mjs';
import { comeTo } from './learner.mjs';
import { Package, skip } from './package.mjs';
import { pdfFile } from './pdf-file.mjs';

let browser;
let pack;

before(async () => {
  if (skip) return;
  pack = await new Package().start();
  browser = await new Chromium().start();
});

after(async () => {
  if (skip) return;
  await browser.stop();
  pack.stop();
});

const width = 1000;
const learner = (edition) => comeTo(pack.platform(edition), browser, width, 700);

const elements = {
  1.2: { location: 'cmi.core.lesson_location', done: ['cmi.core.lesson_status', 'completed'] },
  2004: { location: 'cmi.location', done: ['cmi.completion_status', 'completed'] },
};

test('pages, progress and completion arrive, and the learner comes back to the place', { skip }, async () => {
  const name = 'Fire & "exits" 100% <!--<script> #1';
  for (const [edition, folder] of [['1.2', 'Linear/Plan'], ['2004', 'Module_1/Content/Plan']]) {
    const { location, done: [status, done] } = elements[edition];
    const address = pack.add(folder, edition, `${name}.pdf`, pdfFile(3, { sizes: [[595, 842], [842, 595]] }));
    const { go, leave, press, at, until, look, shown, close } = await learner(edition);
    await go(address);
    await until(`${shown('.seen')}?.textContent === '1 of 3 pages read'`);
    assert.equal(await look('content.document.title'), name);
    await press('ArrowRight');
    await at(2);
    await until(`record.values['${location}'] === '2'`);
    await until(`${shown('.seen')}.textContent === '2 of 3 pages read'`);
    assert.equal(await look(`record.values['${status}']`), 'incomplete');
    await leave();
    assert.equal(await look('record.terminations'), 1);

    await go(address);
    await at(2);
    await press('End');
    await until(`${shown('.seen')}?.textContent === 'All pages read'`);
    await leave();
    const { values, refused, terminations } = await look('record');
    assert.deepEqual([values[status], values[location], refused, terminations], [done, '3', [], 1], edition);
    assert.match(values['cmi.core.session_time'] ?? values['cmi.session_time'], /^(0000:00:|PT0H0M)\d/);
    const more = [values['cmi.progress_measure'], values['cmi.success_status']];
    assert.deepEqual(more, edition === '2004' ? ['1', 'passed'] : [undefined, undefined]);
    await close();
  }
});

test('of a long document only what is near is on the screen, and its scripts never run', { skip }, async () => {
  const address = pack.add('Linear/Long', '1.2', 'Long.pdf', pdfFile(2000, { scripts: true, link: true }));
  const { go, press, at, until, look, shown, close } = await learner('1.2');
  await go(address);
  await until(`Boolean(${shown('.page a')})`);
  for (let times = 0; times < 5; times += 1) await press('PageDown');
  await press('Home');
  await at(1);
  await until(`Boolean(${shown('.page a')})`);
  await look(`${shown('.page a')}.click()`);
  await at(2000);
  await until(`Boolean(${shown('[aria-label="Page 2000"] canvas')})`);
  await until(`${shown('[aria-label="Page 2000"] .textLayer')}?.textContent.includes('Line 1 of page 2000')`);
  assert.ok(await look('content.document.querySelectorAll(".page").length') <= 5);
  await until('record.values["cmi.core.lesson_location"] === "2000"');
  assert.equal(await look('content.document.title'), 'Long');
  assert.deepEqual(await look('record.refused'), []);
  await close();
});

test('the learner zooms, the place stays, and the picture is as sharp as the screen', { skip }, async () => {
  const address = pack.add('Linear/Zoom', '2004', 'Zoom.pdf', pdfFile(5));
  const { go, press, at, until, look, shown, tell, close } = await learner('2004');
  const widthOf = `Math.round(${shown('[aria-label="Page 3"]')}.getBoundingClientRect().width)`;
  const drawn = (pixels) => until(`Math.abs(${shown('[aria-label="Page 3"] canvas')}?.width - ${pixels}) < 3`);
  await go(address);
  await until(`Boolean(${shown('.page canvas')})`);
  for (const number of [2, 3]) {
    await press('ArrowRight');
    await at(number);
  }
  const page = await look(widthOf);
  assert.ok(page > 900 && page < width, `${page} pixels`);
  await press('-');
  await at(3);
  assert.ok(await look(widthOf) < page);
  for (const key of ['+', '+', '+', '+']) await press(key);
  const large = await look(widthOf);
  assert.ok(large > width);
  await drawn(large);
  await press('w');
  await at(3);
  await tell('Emulation.setDeviceMetricsOverride', { width: 390, height: 760, deviceScaleFactor: 2, mobile: true });
  await until(`${widthOf} < 390`);
  await at(3);
  await press('+');
  await press('w');
  await drawn(2 * await look(widthOf));
  assert.ok(await look('content.document.documentElement.scrollWidth') <= 390, 'nothing sticks out');
  await close();
});

test('a page that can\'t be drawn counts as seen once that is said', { skip }, async () => {
  const address = pack.add('Linear/Gap', '2004', 'Gap.pdf', pdfFile(5));
  const { go, press, until, look, shown, close } = await learner('2004');
  await go(address);
  await until(`${shown('.seen')}?.textContent === '1 of 5 pages read'`);
  await look('void (content.HTMLCanvasElement.prototype.getContext = () => null)');
  await press('End');
  await until(`${shown('[aria-label="Page 5"].failed')}?.textContent.includes('be shown')`);
  await until(`${shown('.seen')}.textContent === '2 of 5 pages read'`, 10);
  assert.deepEqual(await look('record.refused'), []);
  await close();
});

test('where our viewer can\'t run, the browser shows the document and the learner says when it is read', { skip },
  async () => {
  const unpacked = pack.add('far/from/the/players/Plan', '2004', 'Plan.pdf', pdfFile(2));
  const damaged = pack.add('Linear/Damaged', '1.2', 'Damaged.pdf', Buffer.from('%PDF-1.7 and nothing else'));
  delete pack.files['/package/Linear/Damaged/SCORM_support/scorm_support.js'];
  // Its one page asks the learner to wait for what only a viewer of forms shows.
  const form = pack.add('Linear/Form', '2004', 'Form.pdf', pdfFile(1, { form: '/NeedsRendering true /AcroForm << ' +
    '/Fields [<< /FT /Tx /T (command) >>] /XFA [(config) 3 0 R] >>' }));
  for (const [edition, address] of [['2004', unpacked], ['1.2', damaged], ['2004', form]]) {
    const { done: [status] } = elements[edition];
    const { go, until, look, shown, close } = await learner(edition);
    await go(`${address}?AICC_URL=http%3A%2F%2Fplatform%2F&aicc_sid=a%26b`);
    const data = await until(`${shown('object')}?.data`);
    assert.match(data, /\.pdf\?aicc_url=http%3A%2F%2Fplatform%2F&aicc_sid=a%26b$/);
    assert.equal(await look(`record.values['${status}']`), 'incomplete');
    await look(`${shown('#confirm button')}.click()`);
    await until(`record.values['${status}'] === 'completed'`);
    assert.deepEqual(await look('record.refused'), []);
    await close();
  }
});
