// SPDX-License-Identifier: Apache-2.0
//
// A package with wrapped movies and documents, as a learning platform serves it: /package/plexo_players/, and SCOs in
// /package/Linear/NAME/ and /package/MODULE/Content/NAME/.

import { existsSync, readFileSync } from 'node:fs';
import path from 'node:path';
import { Chromium } from '../../Launch/browser/chromium.mjs';
import { PageServer } from '../../Launch/browser/page-server.mjs';

const here = new URL('./', import.meta.url);
const root = new URL('../../../../', here);
const templates = new URL('templates/Publish/Plexo/', root);
const players = new URL('build/players/', root);

export const skip = Chromium.isInstalled && existsSync(players) ? false :
  'Chromium (apt-get install chromium) or build/players (packaging/fetch-players) is missing';

const read = (file) => readFileSync(new URL(file, templates));

// A template with its placeholders filled in.
export function fill(template, values) {
  return read(template).toString().replace(/@[^<\r" >'\n]*/g, (token) => values[token] ?? '');
}

export class Package {
  // `roots` adds folders to serve, such as a published course's, as PageServer takes them.
  constructor(roots = {}) {
    this.files = {};
    this.server = new PageServer({
      ...roots,
      '/package/plexo_players/pdfjs/viewer/': new URL('Players/pdfjs/viewer/', templates),
      '/package/plexo_players/': players,
      '/support/': new URL('../../Launch/support/', here),
      '/': here,
    }, this.files);
  }

  // Adds a SCO around the file, `movie` or `document`, and returns its page's address.
  add(folder, edition, fileName, content, size = [550, 400]) {
    const place = `/package/${folder}/`;
    const name = path.parse(fileName).name;
    const version = `SCORM/${edition === '1.2' ? '1_2' : '2004'}`;
    const template = fileName.endsWith('.swf') ? 'Default' : 'DefaultPDF';
    const [width, height] = size;
    const values = { '@PDFNAME': fileName, '@MOVIENAME': fileName, '@FILENAME': `${name}.htm`,
      '@STROBEPLAYER_CLASSID': 'clsid:d27cdb6e-ae6d-11cf-96b8-444553540000', '@SKINCOLOR': '#ffffff',
      '@MOVIEWIDTH': String(width), '@MOVIEHEIGHT': String(height), '@MOVIELOOP': 'false', '@WMODEVALUE': 'window' };
    Object.assign(this.files, {
      [`${place}${name}.htm`]: () => fill(`${version}/${template}.htm`, values),
      [`${place}${fileName}`]: () => content,
      [`${place}standard.js`]: () => read('standard.js'),
      [`${place}SCORM_support/scorm_support.js`]: () => read(`${version}/SCORM_support/scorm_support.js`),
      [`${place}SCORM_support/scorm_support.htm`]: () => read(`${version}/SCORM_support/scorm_support.htm`),
      [`${place}SCORM_support/scorm_support.swf`]: () => content,
    });
    return `${place}${encodeURIComponent(name)}.htm`;
  }

  async start() {
    await this.server.start();
    return this;
  }

  platform(edition) { return this.server.address(`platform.html?edition=${edition}`); }
  stop() { this.server.stop(); }
}
