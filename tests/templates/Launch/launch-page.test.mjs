// SPDX-License-Identifier: Apache-2.0
//
// The launch page itself: what it shows, how it finds the learning platform, how it is left.

import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import { test } from 'node:test';
import vm from 'node:vm';
import { contentOf, openLaunchPage } from './support/load-launch.mjs';
import { StandInLms2004 } from './support/stand-in-lms.mjs';

const folder = new URL('../../../templates/Launch/', import.meta.url);
const settings = { content: '../content/a.htm?x=1#y', contentEdition: '1.2', courseEdition: '2004',
  title: 'Doors & <exits>' };

test('the page loads every script of its folder, once', () => {
  const html = readFileSync(new URL('launch.html', folder), 'utf8');
  const loaded = [...html.matchAll(/<script src="([^"]+)">/g)].map(([, name]) => name);
  const there = readdirSync(folder).filter((name) => name.endsWith('.js'));
  assert.deepEqual([...loaded].sort(), [...there, 'settings.js'].sort());
  assert.equal(loaded[0], 'settings.js');
});

test('the content is shown under its title, with the API of its edition only', () => {
  for (const [contentEdition, offered, other] of [['1.2', 'API', 'API_1484_11'], ['2004', 'API_1484_11',
    'API']]) {
    const { window, document, elements } = openLaunchPage({ ...settings, contentEdition },
      new StandInLms2004().api);
    assert.deepEqual([elements.content.src, elements.content.hidden], [settings.content, false]);
    assert.deepEqual([document.title, elements.content.title], [settings.title, settings.title]);
    assert.ok(window[offered]);
    assert.equal(window[other], undefined);
    assert.equal(elements.message.hidden, true);
  }
});

test('settings that cannot be used are said so in the page', () => {
  const wrong = [
    [{}, 'no known edition'], [{ ...settings, courseEdition: '1.3' }, 'no known edition'],
    [{ ...settings, content: '' }, 'no page'], [{ ...settings, content: 'javascript:alert(1)' }, 'no page'],
  ];
  for (const [damaged, words] of wrong) {
    const { elements, api } = openLaunchPage(damaged);
    assert.ok(elements.message.textContent.includes(words), elements.message.textContent);
    assert.deepEqual([elements.message.hidden, elements.content.hidden, elements.content.src, api], [false,
      true, undefined, undefined]);
  }
});

test('the learning platform is found around the page and around its openers, never in the page', () => {
  const frame = (properties = {}) => {
    const self = { opener: null, ...properties };
    self.parent ??= self;
    self.top ??= self.parent.top ?? self;
    return self;
  };
  const foreign = (parent) => new Proxy({}, {
    get: (target, name) => { if (name === 'parent' && parent) return parent; throw new Error('SecurityError'); },
  });
  const context = vm.createContext({});
  vm.runInContext(readFileSync(new URL('api-finder.js', folder), 'utf8'), context);
  const find = vm.runInContext('(page) => PlexoApiFinder.find(page, "API")', context);
  const lms = frame({ API: 'theirs' });
  const chain = (length) => (length ? frame({ parent: chain(length - 1) }) : lms);
  const circle = frame();
  circle.opener = circle;
  const cases = [
    ['the frame around it', frame({ parent: lms, API: 'ours' }), 'theirs'],
    ['forty frames up', chain(40), 'theirs'],
    ['too far up', chain(60), null],
    ['a frame around its opener', frame({ opener: frame({ parent: lms }) }), 'theirs'],
    ['the opener of the outermost frame', frame({ parent: frame({ opener: lms }) }), 'theirs'],
    ['beyond a foreign frame', frame({ parent: foreign(lms), top: {} }), 'theirs'],
    ['only foreign frames', frame({ parent: foreign(), top: foreign() }), null],
    ['the page itself', frame({ API: 'ours' }), null],
    ['a circle of openers', Object.assign(circle, { API: 'ours' }), null],
  ];
  for (const [place, page, expected] of cases) assert.equal(find(page), expected, place);
});

test('a page that is left lets the content end first, and ends the visit once', () => {
  const late = (page, content) => { page.elements.content.removed = () => {
    content.set({ 'cmi.core.lesson_status': 'passed' });
    content.close();
  }; };
  for (const [act, expected] of [[late, 'passed'], [() => {}, 'unknown']]) {
    const lms = new StandInLms2004();
    const page = openLaunchPage(settings, lms.api);
    const content = contentOf(page.api);
    content.open();
    act(page, content);
    page.leave();
    page.leave();
    assert.deepEqual([lms.terminations, lms.values.get('cmi.success_status')], [1, expected]);
    assert.deepEqual([content.refused, lms.refused], [[], []]);
  }
});

test('content that never begins a visit has none to end', () => {
  const lms = new StandInLms2004();
  openLaunchPage(settings, lms.api).leave();
  assert.deepEqual([lms.state, lms.log, lms.refused], ['before', [], []]);
});

test('what is unsaved is saved when the page may be gone, and nothing otherwise', () => {
  for (const [contentEdition, bookmark] of [['1.2', 'cmi.core.lesson_location'], ['2004', 'cmi.location']]) {
    const lms = new StandInLms2004();
    const page = openLaunchPage({ ...settings, contentEdition }, lms.api);
    const content = contentOf(page.api);
    page.fire('beforeunload');
    content.open();
    page.fire('beforeunload');
    assert.equal(lms.commits, 0);
    content.set({ [bookmark]: '3' });
    page.fire('beforeunload');
    page.document.hidden = true;
    page.fire('visibilitychange');
    assert.equal(lms.commits, 1, contentEdition);
    assert.equal(content.close(), 'true');
  }
});

test('a page that the browser brings back begins anew', () => {
  const { window, fire } = openLaunchPage(settings, new StandInLms2004().api);
  let reloads = 0;
  window.location = { reload: () => { reloads += 1; } };
  fire('pageshow', { persisted: false });
  assert.equal(reloads, 0);
  fire('pageshow', { persisted: true });
  assert.equal(reloads, 1);
});
