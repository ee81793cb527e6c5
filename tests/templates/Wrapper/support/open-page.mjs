// SPDX-License-Identifier: Apache-2.0
//
// Runs the scripts of a wrapped file's page without a browser.

import { readFileSync } from 'node:fs';
import vm from 'node:vm';

const folder = new URL('../../../../templates/Publish/Plexo/', import.meta.url);

// A window of its own, or in the frame `parent`.
export function windowIn(parent = null, properties = {}) {
  const window = { opener: null, ...properties };
  window.parent = parent ?? window;
  window.top ??= parent?.top ?? window;
  return window;
}

// Opens a page of a course in this edition in this window. `clock.now` is the time, in milliseconds; `pass` lets the
// page's timers run; `fire` is the browser's voice.
export function openPage(edition, window) {
  const clock = { now: 0 };
  const handlers = {};
  const timers = [];
  const listen = (event, handler) => { (handlers[event] ??= []).push(handler); };
  const page = Object.assign(window, { addEventListener: listen, document: { addEventListener: listen, hidden: false },
    setTimeout: (act) => timers.push(act), location: { reload: () => { page.reloads = (page.reloads ?? 0) + 1; } } });
  const said = [];
  const say = (...words) => said.push(words.join(' '));
  const context = vm.createContext({ window: page, document: page.document, Date: { now: () => clock.now },
    console: { log: say, warn: say, error: say } });
  for (const script of ['standard.js', `SCORM/${edition === '1.2' ? '1_2' : '2004'}/SCORM_support/scorm_support.js`]) {
    vm.runInContext(readFileSync(new URL(script, folder), 'utf8'), context, { filename: script });
  }
  const fire = (event, about = {}) => (handlers[event] ?? []).forEach((handler) => handler(about));
  return { page, clock, said, fire, visit: context.plexoVisit, tracking: context.PlexoDocument.tracking,
    pass: () => timers.splice(0).forEach((act) => act()) };
}

// Opens a page in a frame of the platform, which offers its API there.
export function openUnder(edition, lms) {
  const name = lms.api.LMSInitialize ? 'API' : 'API_1484_11';
  return openPage(edition, windowIn(windowIn(null, { [name]: lms.api })));
}
