// SPDX-License-Identifier: Apache-2.0
// Installs what is built, into a folder of its own, and looks at it as a desktop and its user do.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { cpSync, existsSync, mkdtempSync, readFileSync, readdirSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';

const source = path.resolve(import.meta.dirname ?? path.dirname(new URL(import.meta.url).pathname), '../..');
let scratch;
let installed;

// What the command says, on both its outputs; fails if the command does.
function run(command, ...args) {
  return execFileSync('sh', ['-c', '"$0" "$@" 2>&1', command, ...args], {cwd: scratch, encoding: 'utf8'});
}

function share(...names) {
  return path.join(installed, 'share', ...names);
}

function valueOf(entry, key) {
  return entry.match(new RegExp(`^${key}=(.*)$`, 'm'))?.[1];
}

before(() => {
  scratch = mkdtempSync(path.join(tmpdir(), 'plexo-install-'));
  // The folder is moved after the installation: nothing may hang on where it was.
  run('cmake', '--install', path.join(source, 'build'), '--prefix', path.join(scratch, 'before'));
  installed = path.join(scratch, 'after moving');
  cpSync(path.join(scratch, 'before'), installed, {recursive: true, verbatimSymlinks: true});
  rmSync(path.join(scratch, 'before'), {recursive: true});
});

after(() => rmSync(scratch, {recursive: true}));

test('every built program is installed, with a link in bin', () => {
  const programs = ['plexo', 'plexo-desktop'].filter((name) => existsSync(path.join(source, 'build/bin', name)));
  assert.deepEqual(readdirSync(path.join(installed, 'bin')).sort(), programs);
  for (const file of [...programs, 'libplexo.so', 'libplexohost.so']) {
    assert.doesNotMatch(run('ldd', path.join(installed, 'lib/plexo', file)), /not found/);
  }
});

test('the installed command line builds a course with the schema documents beside it', () => {
  const example = path.join(source, 'examples/fire-safety');
  run(path.join(example, 'build-packages'), path.join(scratch, 'packages'));
  cpSync(path.join(example, 'forced.yaml'), path.join(scratch, 'forced.yaml'));
  const plexo = path.join(installed, 'bin/plexo');
  run(plexo, 'build', 'forced.yaml', '-o', 'course.zip');
  assert.doesNotMatch(run(plexo, 'check', 'course.zip'), /^(error|warning) /m);
});

test('the translations lie where the programs look for them', () => {
  const names = (folder) => readdirSync(folder).sort();
  const translations = names(path.join(source, 'resources/translations'));
  assert.deepEqual(names(path.join(installed, 'lib/plexo/translations')), translations);
});

test('the menu entry and the catalogue entry are valid and name what is installed', () => {
  assert.equal(run('desktop-file-validate', share('applications/plexo-desktop.desktop')), '');
  run('appstreamcli', 'validate', '--no-net', share('metainfo/plexo.desktop.plexo.metainfo.xml'));

  const entry = readFileSync(share('applications/plexo-desktop.desktop'), 'utf8');
  const catalogue = readFileSync(share('metainfo/plexo.desktop.plexo.metainfo.xml'), 'utf8');
  const type = valueOf(entry, 'MimeType').replace(';', '');
  assert.match(catalogue, /<launchable type="desktop-id">plexo-desktop.desktop</);
  assert.ok(catalogue.includes(`<mediatype>${type}</mediatype>`));
  assert.equal(valueOf(entry, 'Exec'), 'plexo-desktop %f');
  const icon = valueOf(entry, 'Icon');
  assert.ok(existsSync(share('icons/hicolor/scalable/apps', `${icon}.svg`)));
  for (const size of [16, 22, 24, 32, 48, 64, 128, 256, 512]) {
    const png = readFileSync(share(`icons/hicolor/${size}x${size}/apps`, `${icon}.png`));
    assert.deepEqual([png.readUInt32BE(16), png.readUInt32BE(20)], [size, size]);
  }
});

test('a course file is known by its name, before YAML is', () => {
  const mime = share('mime');
  const type = 'application/x-plexo-course+yaml';
  run('update-mime-database', mime);
  const globsOf = (folder) => readFileSync(path.join(folder, 'globs2'), 'utf8').split('\n');
  const globs = globsOf(mime);
  const yaml = globsOf('/usr/share/mime').find((line) => line.endsWith(':*.yaml'));
  for (const pattern of ['*.plexo', '*.plexo.yaml']) {
    const own = globs.find((line) => line.endsWith(`:${pattern}`));
    assert.equal(own?.split(':')[1], type);
    assert.ok(parseInt(own) > parseInt(yaml), `${own} against ${yaml}`);
  }
  const parents = readFileSync(path.join(mime, 'subclasses'), 'utf8').split('\n');
  assert.ok(parents.includes(`${type} application/x-yaml`));
  assert.match(readFileSync(path.join(mime, `${type}.xml`), 'utf8'), /xml:lang="ja"/);
});
