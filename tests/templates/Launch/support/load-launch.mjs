// SPDX-License-Identifier: Apache-2.0
//
// Loads the launch page's scripts, in the page's order, without a browser.

import { readFileSync } from 'node:fs';
import vm from 'node:vm';

const folder = new URL('../../../../templates/Launch/', import.meta.url);

// A window inside a frame whose parent offers `lms` under this name; elements are looked up by id.
export function windowUnder(name, lms, settings) {
  const handlers = {};
  const listen = (event, handler) => { (handlers[event] ??= []).push(handler); };
  const element = () => ({
    hidden: true,
    addEventListener() {},
    remove() {
      this.removed?.();
      this.removed = undefined;
    },
  });
  const elements = { content: element(), message: element() };
  const parent = lms ? { [name]: lms } : {};
  parent.parent = parent;
  const window = { parent, opener: null, top: parent, plexoLaunch: settings, addEventListener: listen };
  const document = { title: '', addEventListener: listen, getElementById: (id) => elements[id] };
  const fire = (event, about = {}) => (handlers[event] ?? []).forEach((handler) => handler(about));
  return { window, document, elements, fire };
}

// Opens the launch page. What it warns of is in `warnings`; `api` is what the content finds.
export function openLaunchPage(settings, lms, { now } = {}) {
  const page = windowUnder(settings.courseEdition === '1.2' ? 'API' : 'API_1484_11', lms, settings);
  const warnings = [];
  const clock = now === undefined ? Date : class extends Date {
    constructor(...parts) { super(...(parts.length ? parts : [now])); }
  };
  const context = vm.createContext({
    window: page.window, document: page.document, Date: clock, console: { warn: (text) => warnings.push(text) },
  });
  const html = readFileSync(new URL('launch.html', folder), 'utf8');
  for (const [, script] of html.matchAll(/<script src="([^"]+)">/g)) {
    if (script === 'settings.js') continue;
    vm.runInContext(readFileSync(new URL(script, folder), 'utf8'), context, { filename: script });
  }
  const api = page.window[settings.contentEdition === '1.2' ? 'API' : 'API_1484_11'];
  return { ...page, api, warnings, leave: () => page.fire('pagehide') };
}

// The content's calls in short, whichever its edition; `log` pairs what was refused with its error code.
export function contentOf(api) {
  const is12 = Boolean(api.LMSInitialize);
  const name = (call) => (is12 ? `LMS${call}` : call);
  const refused = [];
  const error = () => api[name('GetLastError')]();
  return {
    refused,
    error,
    open: () => api[name('Initialize')](''),
    close: () => api[is12 ? 'LMSFinish' : 'Terminate'](''),
    save: () => api[name('Commit')](''),
    get: (element) => api[name('GetValue')](element),
    why: () => api[name('GetDiagnostic')](''),
    set(values) {
      for (const [element, value] of Object.entries(values)) {
        if (api[name('SetValue')](element, value) !== 'true') refused.push(`${element} ${error()}`);
      }
    },
  };
}
