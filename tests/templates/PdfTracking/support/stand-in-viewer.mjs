// SPDX-License-Identifier: Apache-2.0
//
// A PDF viewer as far as the tracking scripts see it, and an LMS that it submits forms to.

import { readFileSync } from 'node:fs';
import vm from 'node:vm';

const folder = new URL('../../../../templates/Publish/Plexo/PDF_Tracking/', import.meta.url);
const script = (name) => readFileSync(new URL(name, folder), 'utf8');
const fieldNames = ['aicc_url', 'aicc_sid', 'session_id', 'command', 'version', 'aicc_data', 'connectresponse', 'isfdf'];

// Keeps what each session puts, and gives it back. With `latency` null it never answers.
export class HacpServer {
  constructor({ latency = 300, extra = [] } = {}) {
    Object.assign(this, { latency, extra, sessions: new Map(), requests: [], interactions: [] });
  }

  answer({ command, session_id: session, aicc_data: data }) {
    this.requests.push(command);
    const kept = ['error=0', 'error_text=Successful', 'version=2.0'];
    if (command === 'putParam') this.sessions.set(session, data);
    if (command === 'putInteractions') this.interactions.push(data);
    if (command === 'getParam') kept.push('aicc_data=[CORE]', ...(this.sessions.get(session) ?? '').split('\r\n'));
    return [...kept, ...this.extra].join('\r\n');
  }

  value(session, name) {
    return new RegExp(`^${name}=(.*)$`, 'm').exec(this.sessions.get(session).replaceAll('\r', ''))?.[1];
  }
}

export class Viewer {
  constructor(pages, { path = '/lessons/guide.pdf?aicc_sid=s-1&AICC_URL=https%3A%2F%2Flms%2Fhacp', fields = fieldNames,
    server = new HacpServer() } = {}) {
    Object.assign(this, { now: 0, timers: new Map(), handles: 0, server, submissions: [], alerts: [], page: 0 });
    this.fields = new Map(fields.map((name) => [name, { value: '' }]));
    this.context = vm.createContext(this.makeDocument(pages, path));
    this.run(script('DocumentLevel.js'));
    this.open(0);
  }

  makeDocument(pages, path) {
    const viewer = this;
    const timer = (repeats) => (expression, delay) => {
      this.timers.set(++this.handles, { expression, delay, at: this.now + delay, repeats });
      return this.handles;
    };
    const clear = (handle) => {
      if (!(handle >= 1 && handle <= this.handles)) throw new Error('the viewer knows no such timer');
      this.timers.delete(handle);
    };
    return {
      path,
      numPages: pages,
      get pageNum() { return viewer.page; },
      set pageNum(page) { if (page !== viewer.page) viewer.open(page); },
      getField: (name) => this.fields.get(name) ?? null,
      submitForm: (form) => this.submit(form),
      app: { setTimeOut: timer(false), setInterval: timer(true), clearTimeOut: clear, clearInterval: clear,
        alert: (text) => this.alerts.push(text) },
      Date: class { getTime() { return viewer.now; } },
    };
  }

  run(text) { return vm.runInContext(text, this.context); }

  open(page) {
    this.page = page;
    this.run(script(page === 0 ? 'FirstPage.js' : 'OtherPages.js'));
  }

  submit({ cURL, cSubmitAs, aFields }) {
    const form = Object.fromEntries(aFields.map((name) => [name, this.fields.get(name).value]));
    this.submissions.push({ cURL, cSubmitAs, ...form });
    const answer = this.server.answer(form);
    if (this.server.latency === null) return;
    const deliver = () => { this.fields.get('connectresponse').value = answer; };
    this.timers.set(++this.handles, { deliver, at: this.now + this.server.latency });
  }

  // Lets time pass and runs what is due, in its order.
  wait(milliseconds) {
    const end = this.now + milliseconds;
    for (;;) {
      const next = [...this.timers].reduce((a, b) => (a && a[1].at <= b[1].at ? a : b), null);
      if (!next || next[1].at > end) break;
      const [handle, due] = next;
      this.now = due.at;
      if (due.repeats) due.at += due.delay; else this.timers.delete(handle);
      if (due.deliver) due.deliver(); else this.run(due.expression);
    }
    this.now = end;
  }

  view(pages) {
    for (const page of pages) {
      this.open(page);
      this.wait(2_000);
    }
  }
}
