// SPDX-License-Identifier: Apache-2.0
#include "host/movie/TzMoviePage.h"

namespace {

constexpr std::string_view kPage = R"html(<!DOCTYPE html>
<html lang="en">
<head><meta charset="utf-8"><title>Movie</title></head>
<body><script src="page.js"></script></body>
</html>
)html";

constexpr std::string_view kScript = R"js('use strict';

// A movie offers its functions when its first frames have run, which may be after a preloader.
const graceForFunctions = 5000;

const pause = (milliseconds) => new Promise((resolve) => { setTimeout(resolve, milliseconds); });

function addPlayer() {
  return new Promise((resolve, reject) => {
    window.RufflePlayer = { config: { polyfills: false } };
    const script = document.createElement('script');
    script.src = 'player/ruffle.js';
    script.onload = () => {
      const element = window.RufflePlayer.newest().createPlayer();
      document.body.append(element);
      resolve(element);
    };
    script.onerror = reject;
    document.body.append(script);
  });
}

async function load(element) {
  const loaded = new Promise((resolve) => { element.addEventListener('loadedmetadata', () => resolve('loaded')); });
  // The player tells of a file that it can't play on the screen only.
  const refused = (async () => {
    while (!element.shadowRoot.querySelector('#panic')) await pause(50);
    return 'failed';
  })();
  element.ruffle().load({
    url: 'movie.swf', allowScriptAccess: true, autoplay: 'on', unmuteOverlay: 'hidden', splashScreen: false,
    contextMenu: 'off', openUrlMode: 'deny', preferredRenderer: 'canvas', maxExecutionDuration: 10,
    warnOnUnsupportedContent: false,
  }).catch(() => {});
  return Promise.race([loaded, refused]);
}

const readers = {
  string: (node) => node.textContent,
  number: (node) => Number(node.textContent),
  true: () => true,
  false: () => false,
  null: () => null,
};

function readRequest(text) {
  const root = new DOMParser().parseFromString(text, 'application/xml').documentElement;
  const name = root.getAttribute('name');
  const nodes = [...root.querySelectorAll(':scope > arguments > *')];
  if (root.nodeName !== 'invoke' || !name || !nodes.every((node) => readers[node.nodeName])) return null;
  return { name, values: nodes.map((node) => readers[node.nodeName](node)) };
}

function describe(value) {
  if (typeof value === 'string') return `string ${value.slice(0, 10000)}`;
  if (typeof value === 'boolean' || typeof value === 'number') return `${typeof value} ${value}`;
  return 'null';
}

async function answer(element, text, loadedAt) {
  const request = readRequest(text);
  if (!request) return 'malformed';
  while (typeof element[request.name] !== 'function') {
    if (performance.now() - loadedAt > graceForFunctions) return 'missing';
    await pause(20);
  }
  try {
    return describe(element.ruffle().callExternalInterface(request.name, ...request.values));
  } catch {
    return 'null';
  }
}

async function run() {
  const element = await addPlayer();
  let said = await load(element);
  const loadedAt = performance.now();
  for (;;) {
    const response = await fetch('next', { method: 'POST', body: said });
    if (!response.ok) return;
    said = await answer(element, await response.text(), loadedAt);
  }
}

run().catch(() => fetch('next', { method: 'POST', body: 'failed' }));
)js";

constexpr std::string_view kFields =
    "Content-Security-Policy: default-src 'none'; script-src 'self' 'wasm-unsafe-eval' 'unsafe-eval'; "
    "connect-src 'self'; style-src 'unsafe-inline'; img-src 'self' data: blob:; media-src data: blob:; "
    "font-src data: blob:; form-action 'none'; base-uri 'none'; frame-ancestors 'none'\r\n"
    "Referrer-Policy: no-referrer\r\n"
    "X-Content-Type-Options: nosniff\r\n"
    "Cache-Control: no-store\r\n";

}  // namespace

std::string_view TzMoviePage::GetPage() { return kPage; }
std::string_view TzMoviePage::GetScript() { return kScript; }
std::string_view TzMoviePage::GetHeaderFields() { return kFields; }
