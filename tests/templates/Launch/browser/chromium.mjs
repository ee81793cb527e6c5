// SPDX-License-Identifier: Apache-2.0
//
// A headless Chromium, told what to do over pipes (--remote-debugging-pipe).

import { spawn, spawnSync } from 'node:child_process';
import { mkdtemp, rm } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import path from 'node:path';

const program = ['chromium', 'chromium-browser'].find((name) => spawnSync(name, ['--version']).status === 0);

export class Chromium {
  static get isInstalled() { return program !== undefined; }

  // The browser is a process group of its own, which ends with this process at the latest.
  async start() {
    this.profile = await mkdtemp(path.join(tmpdir(), 'launch-page-'));
    this.process = spawn(program, ['--headless', '--no-sandbox', '--disable-gpu', '--no-first-run',
      '--disable-background-networking', '--disable-component-update', '--disable-sync',
        '--disable-dev-shm-usage',
      `--user-data-dir=${this.profile}`, '--remote-debugging-pipe', 'about:blank'],
    { detached: true, stdio: ['ignore', 'ignore', 'ignore', 'pipe', 'pipe'] });
    this.kill = () => { try { process.kill(-this.process.pid, 'SIGKILL'); } catch { /* it has ended */ } };
    process.once('exit', this.kill);
    this.ended = new Promise((resolve) => { this.process.once('exit', resolve); });
    this.waiting = new Map();
    this.last = 0;
    let text = '';
    this.process.stdio[4].on('data', (piece) => {
      const messages = (text + piece).split('\0');
      text = messages.pop();
      for (const message of messages.map((json) => JSON.parse(json))) this.waiting.get(message.id)?.(message);
    });
    return this;
  }

  async stop() {
    this.send('Browser.close').catch(() => {});
    const timer = setTimeout(this.kill, 5000);
    await this.ended;
    clearTimeout(timer);
    this.kill();
    process.removeListener('exit', this.kill);
    await rm(this.profile, { recursive: true, force: true, maxRetries: 20, retryDelay: 100 });
  }

  async send(method, params = {}, sessionId = undefined) {
    const id = this.last += 1;
    const answer = new Promise((resolve) => { this.waiting.set(id, resolve); });
    this.process.stdio[3].write(`${JSON.stringify({ id, method, params, sessionId })}\0`);
    const { result, error } = await answer;
    this.waiting.delete(id);
    if (error) throw new Error(`${method}: ${error.message}`);
    return result;
  }

  // Opens a page; `look` evaluates an expression in its uppermost document, `until` waits for one that holds, `tell`
  // sends the page any other command.
  async open(url) {
    const { targetId } = await this.send('Target.createTarget', { url });
    const { sessionId } = await this.send('Target.attachToTarget', { targetId, flatten: true });
    const look = async (expression) => {
      const { result, exceptionDetails: fault } =
        await this.send('Runtime.evaluate', { expression, returnByValue: true }, sessionId);
      if (fault) throw new Error(`${expression}: ${fault.exception?.description ?? fault.text}`);
      return result.value;
    };
    const until = async (expression, seconds = 60) => {
      for (const end = Date.now() + seconds * 1000; Date.now() < end;) {
        const value = await look(expression).catch(() => null);
        if (value) return value;
        await new Promise((resolve) => { setTimeout(resolve, 50); });
      }
      throw new Error(`${url}: not after ${seconds} seconds: ${expression}`);
    };
    const tell = (method, params) => this.send(method, params, sessionId);
    return { look, until, tell, close: () => this.send('Target.closeTarget', { targetId }) };
  }
}
