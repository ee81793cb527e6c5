// SPDX-License-Identifier: Apache-2.0
import { readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import path from 'node:path';

const types = { '.html': 'text/html', '.htm': 'text/html', '.js': 'text/javascript', '.mjs': 'text/javascript',
  '.css': 'text/css', '.pdf': 'application/pdf', '.swf': 'application/x-shockwave-flash', '.wasm': 'application/wasm' };

// Serves files on a free port of this machine. `roots` maps the start of an address to the folder (a URL) that
// it stands for; the first that fits counts. `made` maps whole addresses to functions that give their content.
export class PageServer {
  constructor(roots, made = {}) {
    this.server = createServer((request, response) => {
      const pathname = decodeURIComponent(new URL(request.url, 'http://localhost').pathname);
      const root = Object.keys(roots).find((prefix) => pathname.startsWith(prefix));
      response.setHeader('Content-Type', types[path.extname(pathname)] ?? 'text/plain');
      response.setHeader('Permissions-Policy', 'unload=*');  // old content relies on the event
      try {
        response.end(made[pathname]?.() ?? readFileSync(new URL(pathname.slice(root.length), roots[root])));
      } catch {
        response.writeHead(404).end();
      }
    });
  }

  async start() {
    await new Promise((resolve) => { this.server.listen(0, '127.0.0.1', resolve); });
    return this;
  }

  address(page) { return `http://127.0.0.1:${this.server.address().port}/${page}`; }

  stop() {
    this.server.closeAllConnections();
    this.server.close();
  }
}
