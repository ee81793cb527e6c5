// SPDX-License-Identifier: Apache-2.0
//
// The document viewer's parts that need no screen.

import assert from 'node:assert/strict';
import { cpSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { pathToFileURL } from 'node:url';

// Browsers take the modules as they are; Node wants to be told.
const folder = mkdtempSync(path.join(tmpdir(), 'viewer-'));
cpSync(new URL('../../../templates/Publish/Plexo/Players/pdfjs/viewer/', import.meta.url), folder, { recursive: true });
writeFileSync(path.join(folder, 'package.json'), '{"type": "module"}');
after(() => rmSync(folder, { recursive: true }));
const load = (name) => import(pathToFileURL(path.join(folder, name)));
const { PlexoSeenPages } = await load('seen-pages.js');
const { PlexoPageLayout } = await load('page-layout.js');
const { PlexoReading } = await load('reading.js');

test('seen pages come back from their text, which is short enough for every edition', () => {
  let random = 12345;
  const chance = () => { random = (random * 1103515245 + 12345) % 2147483648; return random / 2147483648; };
  for (const pages of [1, 5, 6, 7, 159, 2000, 23900]) {
    for (const share of [0, 0.03, 0.5, 1]) {
      const seen = new PlexoSeenPages(pages);
      for (let index = 0; index < pages; index += 1) if (chance() < share) seen.add(index);
      const text = seen.toString();
      const back = PlexoSeenPages.parse(text, pages);
      assert.deepEqual([back.count, back.seen], [seen.count, seen.seen], `${pages} pages, ${share}`);
      assert.equal(back.isAll, share === 1, `${pages} pages, ${share}`);
      assert.ok(text.length <= 4000 && /^[\w:-]*$/.test(text), `${pages} pages: ${text.length} characters`);
    }
  }
});

test('what was kept of another document, or by another page, counts for nothing', () => {
  for (const text of ['', 'nonsense', '1:11:_', '1:10', '2:10:_', '1:10:__ ', '01', '1:10:*']) {
    assert.equal(PlexoSeenPages.parse(text, 10).count, 0, text);
  }
  assert.equal(PlexoSeenPages.parse('1:10:______', 10).count, 10);
});

test('pages lie one below the other, and those in view are found', () => {
  const layout = new PlexoPageLayout(2000, { width: 800, height: 1000 });
  layout.setSize(1, { width: 1600, height: 1000 });
  layout.arrange(400);
  assert.deepEqual([layout.pageWidth(0), layout.pageHeight(0), layout.pageHeight(1)], [400, 500, 250]);
  assert.deepEqual([layout.tops[0], layout.tops[1], layout.tops[2]], [14, 528, 792]);
  const cases = [[0, 0], [513, 0], [514, 1], [527, 1], [792, 2], [-50, 0], [1e9, 1999]];
  for (const [y, index] of cases) assert.equal(layout.indexAt(y), index, `${y}`);
  assert.deepEqual(layout.between(500, 800), [0, 1, 2]);
  assert.deepEqual(layout.mostlyVisible(400, 300), [1], 'little of the first');
  assert.deepEqual(layout.mostlyVisible(250, 520), [0, 1], 'half of the first');
  layout.arrange(400, 2);
  assert.deepEqual(layout.mostlyVisible(700, 300), [0], 'a page larger than the view');
  layout.arrange(5000, 'auto');
  assert.equal(layout.pageWidth(0), 1000, 'not enlarged beyond comfort');
});

function visitOf(location = '', suspendData = '') {
  const told = {};
  return { told, location: () => location, suspendData: () => suspendData, complete: () => { told.complete = true; },
    setLocation: (text) => { told.location = text; }, setSuspendData: (text) => { told.data = text; },
    setProgress: (fraction) => { told.progress = fraction; } };
}

// Puts a clock in the place of the process's timers; `tick` lets time go by.
function withClock() {
  const real = { setTimeout: globalThis.setTimeout, clearTimeout: globalThis.clearTimeout };
  const timers = new Map();
  let now = 0;
  let last = 0;
  globalThis.setTimeout = (action, delay) => { timers.set(++last, { action, due: now + delay }); return last; };
  globalThis.clearTimeout = (id) => timers.delete(id);
  const tick = (time) => {
    now += time;
    for (const [id, { action, due }] of [...timers]) if (due <= now && timers.delete(id)) action();
  };
  return { tick, reset: () => Object.assign(globalThis, real) };
}

test('a page counts as seen when it was in view for a moment, the document when all were', () => {
  const clock = withClock();
  const visit = visitOf();
  let changes = 0;
  const reading = new PlexoReading(visit, 3, () => { changes += 1; });
  reading.isAt(0);
  reading.show([0, 1]);
  clock.tick(900);
  reading.show([1, 2]);
  clock.tick(100);
  assert.deepEqual(visit.told, { location: '1', data: '1:3:C', progress: 1 / 3 });
  reading.show([]);
  clock.tick(5000);
  reading.show([0, 1, 2]);
  clock.tick(1000);
  assert.deepEqual(visit.told, { location: '1', data: '1:3:H', progress: 1, complete: true });
  assert.equal(changes, 3);
  clock.reset();
});

test('the learner comes back to the place, unless the document has no such page', () => {
  const cases = [['', 0], ['2', 1], ['3', 2], ['4', 0], ['0', 0], ['-1', 0], ['2.5', 0], ['two', 0]];
  for (const [location, start] of cases) {
    assert.equal(new PlexoReading(visitOf(location), 3).start, start, location);
  }
  const done = visitOf('3', '1:3:H');
  assert.deepEqual([new PlexoReading(done, 3).seen.count, done.told], [3, { progress: 1, complete: true }]);
});
