// SPDX-License-Identifier: Apache-2.0
//
// The viewer of a document's page. What stays in memory doesn't depend on the document's length: only pages in view
// and their neighbours are on the screen and drawn. Scripts inside a document never run.

import { getDocument, GlobalWorkerOptions } from '../pdf.min.js';
import { PlexoPageLayout } from './page-layout.js';
import { pixelsPerPoint, PlexoPageView } from './page-view.js';
import { PlexoReading } from './reading.js';
import { PlexoToolbar } from './toolbar.js';

const player = new URL('../', import.meta.url).href;
const scales = [0.25, 0.33, 0.5, 0.67, 0.8, 0.9, 1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3, 4];
const mostHeight = 15000000;  // pixels; browsers can't scroll much further
const line = 60;

GlobalWorkerOptions.workerSrc = `${player}pdf.worker.min.js`;

// The hidden fields that tracking adds to every document.
const ownFields = new Set(['aicc_url', 'aicc_sid', 'session_id', 'command', 'version', 'aicc_data', 'connectresponse',
  'isfdf']);

// A form of which the pages hold a request to wait only: its content is XML that a viewer of forms lays out.
async function isDynamicForm(file) {
  const { info } = await file.getMetadata();
  if (!info?.IsXFAPresent) return false;
  const fields = await file.getFieldObjects();
  return Object.keys(fields ?? {}).every((name) => ownFields.has(name));
}

const sizeOf = (page) => {
  const { width, height } = page.getViewport({ scale: pixelsPerPoint });
  return { width, height };
};

window.PlexoPdfViewer = class PlexoPdfViewer {
  constructor(place, visit) {
    Object.assign(this, { place, visit, views: new Map() });
  }

  // Fails where the document can't be shown: the caller then has another way.
  async open(address) {
    const style = document.createElement('link');
    Object.assign(style, { rel: 'stylesheet', href: `${player}viewer/viewer.css` });
    document.head.append(style);
    const styled = new Promise((resolve) => { style.onload = style.onerror = resolve; });
    const note = document.createElement('p');
    note.className = 'opening';
    note.textContent = 'Opening the document ...';
    this.place.replaceChildren(note);
    const loading = getDocument({ url: address, cMapUrl: `${player}cmaps/`, iccUrl: `${player}iccs/`,
      standardFontDataUrl: `${player}standard_fonts/`, useSystemFonts: false, wasmUrl: `${player}wasm/`,
      verbosity: 0 });
    loading.onPassword = () => loading.destroy();
    this.document = await loading.promise;
    // The browser's viewer may show such a form; whether it did, only the learner can say.
    if (await isDynamicForm(this.document)) throw new Error('a dynamic form');
    const first = await this.document.getPage(1);
    await styled;
    this.build(sizeOf(first));
  }

  build(size) {
    const pages = this.document.numPages;
    this.reading = new PlexoReading(this.visit, pages, () => this.toolbar.showSeen(this.reading.seen.count));
    this.toolbar = new PlexoToolbar(document.title, pages, { goTo: (index) => this.goTo(index),
      step: (by) => this.goTo(this.current + by), zoom: (steps) => this.zoom(steps), fit: () => this.setZoom('fit') });
    this.scroller = document.createElement('div');
    this.scroller.className = 'scroller';
    this.scroller.tabIndex = 0;
    this.scroller.setAttribute('role', 'document');
    this.scroller.setAttribute('aria-label', document.title);
    this.sheet = document.createElement('div');
    this.sheet.className = 'sheet';
    this.scroller.append(this.sheet);
    this.place.replaceChildren(this.toolbar.element, this.scroller);
    this.layout = new PlexoPageLayout(pages, size);
    this.current = this.reading.start;
    this.layout.arrange(this.available());
    this.toolbar.showSeen(this.reading.seen.count);
    this.arrange(this.current, 0);
    this.listen();
    this.scroller.focus({ preventScroll: true });
  }

  listen() {
    this.scroller.addEventListener('scroll', () => this.updateSoon(), { passive: true });
    this.scroller.addEventListener('wheel', (event) => {
      if (!event.ctrlKey) return;
      event.preventDefault();
      this.zoom(event.deltaY < 0 ? 1 : -1);
    }, { passive: false });
    document.addEventListener('keydown', (event) => this.press(event));
    document.addEventListener('visibilitychange', () => this.update());
    new ResizeObserver(() => {
      if (this.available() !== this.layout.available) this.keepPlace(() => this.layout.arrange(this.available()));
      else this.updateSoon();
    }).observe(this.scroller);
  }

  available() {
    const { clientWidth } = this.scroller;
    return Math.max(100, clientWidth - (clientWidth < 600 ? 12 : 48));
  }

  press(event) {
    if (event.ctrlKey || event.metaKey || event.altKey || event.target.tagName === 'INPUT') return;
    const view = this.scroller.clientHeight * 0.9;
    const acts = {
      ArrowLeft: () => this.turn(-1), ArrowRight: () => this.turn(1),
      ArrowUp: () => this.scroller.scrollBy(0, -line), ArrowDown: () => this.scroller.scrollBy(0, line),
      PageUp: () => this.scroller.scrollBy(0, -view), PageDown: () => this.scroller.scrollBy(0, view),
      Home: () => this.goTo(0), End: () => this.goTo(this.layout.pages - 1),
      '+': () => this.zoom(1), '=': () => this.zoom(1), '-': () => this.zoom(-1),
      0: () => this.setZoom('auto'), w: () => this.setZoom('fit'),
    };
    if (!acts[event.key]) return;
    event.preventDefault();
    acts[event.key]();
  }

  // A page that is wider than the view is moved over first.
  turn(by) {
    const { scrollLeft, scrollWidth, clientWidth } = this.scroller;
    const isAtEdge = by < 0 ? scrollLeft <= 1 : scrollLeft + clientWidth >= scrollWidth - 1;
    if (isAtEdge) this.goTo(this.current + by);
    else this.scroller.scrollBy(by * line, 0);
  }

  goTo(index) {
    if (index < 0 || index >= this.layout.pages) return;
    this.scroller.scrollTop = this.layout.tops[index] - 8;
    this.update();
  }

  async follow(dest) {
    try {
      const explicit = typeof dest === 'string' ? await this.document.getDestination(dest) : dest;
      const [target] = explicit ?? [];
      this.goTo(Number.isInteger(target) ? target : await this.document.getPageIndex(target));
    } catch {
      // A link to nowhere.
    }
  }

  zoom(steps) {
    const scale = this.layout.scale(this.current);
    const next = steps > 0 ? scales.find((other) => other > scale * 1.01) :
      scales.filter((other) => other < scale * 0.99).pop();
    const height = this.layout.height * (next / scale);
    if (next && (steps < 0 || height < mostHeight)) this.setZoom(next);
  }

  setZoom(zoom) {
    this.keepPlace(() => this.layout.arrange(this.available(), zoom));
  }

  // Has the same part of the page in the view after a change of the layout.
  keepPlace(change) {
    const { scrollLeft, scrollTop, scrollWidth, clientWidth } = this.scroller;
    const middle = (scrollLeft + clientWidth / 2) / scrollWidth;
    const index = this.layout.indexAt(scrollTop);
    const part = (scrollTop - this.layout.tops[index]) / this.layout.pageHeight(index);
    change();
    this.arrange(index, part);
    this.scroller.scrollLeft = middle * this.scroller.scrollWidth - clientWidth / 2;
  }

  arrange(index, part) {
    this.sheet.style.height = `${this.layout.height}px`;
    const offset = index === this.current && part === 0 ? -8 : part * this.layout.pageHeight(index);
    for (const view of this.views.values()) view.place(this.layout);
    this.scroller.scrollTop = this.layout.tops[index] + offset;
    this.update();
  }

  updateSoon() {
    this.frame ??= requestAnimationFrame(() => this.update());
  }

  // Brings everything into line with what is in view.
  update() {
    cancelAnimationFrame(this.frame);
    this.frame = undefined;
    const { scrollTop, clientHeight } = this.scroller;
    const isAtEnd = scrollTop + clientHeight >= this.layout.height - 2;
    this.current = isAtEnd && scrollTop > 0 ? this.layout.pages - 1 : this.layout.indexAt(scrollTop + clientHeight / 3);
    this.keepViews(this.layout.between(scrollTop - clientHeight, scrollTop + 2 * clientHeight));
    this.toolbar.showPage(this.current, this.layout.scale(this.current));
    this.reading.isAt(this.current);
    const seen = document.hidden ? [] : this.layout.mostlyVisible(scrollTop, clientHeight);
    this.reading.show(seen.filter((index) => this.views.get(index).isShown));
    this.drawNext();
  }

  keepViews(indexes) {
    for (const [index, view] of this.views) {
      if (indexes.includes(index)) continue;
      view.remove();
      this.views.delete(index);
    }
    for (const index of indexes) {
      if (this.views.has(index)) continue;
      const view = new PlexoPageView(index, (dest) => this.follow(dest));
      view.place(this.layout);
      this.views.set(index, view);
      const after = [...this.sheet.children].find((other) => Number(other.dataset.index) > index);
      view.element.dataset.index = index;
      this.sheet.insertBefore(view.element, after ?? null);
    }
  }

  // One page after the other, the nearest first.
  async drawNext() {
    if (this.isDrawing) return;
    const waiting = [...this.views.values()].filter((view) => view.needsDrawing)
      .sort((one, other) => Math.abs(one.index - this.current) - Math.abs(other.index - this.current));
    if (waiting.length === 0) return;
    const [view] = waiting;
    this.isDrawing = true;
    try {
      const page = await this.document.getPage(view.index + 1);
      const isNews = this.layout.setSize(view.index, sizeOf(page));
      if (isNews) this.keepPlace(() => this.layout.arrange(this.layout.available));
      if (!view.isGone) await view.draw(page);
      if (view.isGone) page.cleanup();
    } catch {
      if (!view.isGone) view.fail();
    }
    this.isDrawing = false;
    this.updateSoon();
  }
};
