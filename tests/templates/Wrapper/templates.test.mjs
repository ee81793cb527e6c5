// SPDX-License-Identifier: Apache-2.0

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';

const folder = new URL('../../../templates/Publish/Plexo/SCORM/', import.meta.url);

const templates = [
  ['Default.htm', '@MOVIENAME', ['@STROBEPLAYER_CLASSID', '@STROBEPLAYER_CODEBASE', '@MOVIETITLE', '@MOVIEDESCRIPTION',
    '@SKINCOLOR', '@MOVIEWIDTH', '@MOVIEHEIGHT', '@MOVIELOOP', '@WMODEVALUE']],
  ['DefaultPDF.htm', '@PDFNAME', []],
];

test('every "@" of a page begins a known placeholder, and a file\'s name stands where it can\'t become markup', () => {
  for (const [name, fileName, others] of templates) {
    const [text, twin] = ['1_2', '2004'].map((edition) => readFileSync(new URL(`${edition}/${name}`, folder), 'utf8'));
    assert.equal(text, twin, `${name} of both editions`);
    const tokens = new Set(text.match(/@[^<\r" >'\n]*/g));
    assert.deepEqual([...tokens].sort(), [fileName, ...others].sort(), name);
    const lines = text.split('\n').filter((line) => line.includes(fileName));
    assert.deepEqual(lines.map((line) => line.replace(/ id="[^"]*"/, '')),
      [`<style type="text/plain">${fileName}</style>`], name);
  }
});
