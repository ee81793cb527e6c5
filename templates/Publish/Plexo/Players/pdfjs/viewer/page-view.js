// SPDX-License-Identifier: Apache-2.0

import { TextLayer } from '../pdf.min.js';

export const pixelsPerPoint = 96 / 72;

// Some browsers draw nothing on a larger canvas.
const mostPixels = 16777216;
const longestSide = 16384;

// A page on the screen: its picture, its text for selection and screen readers, its links.
export class PlexoPageView {
  // `follow` is called with the destination of a link inside the document.
  constructor(index, follow) {
    Object.assign(this, { index, follow, drawnScale: 0, isGone: false });
    this.element = document.createElement('section');
    this.element.className = 'page';
    this.element.setAttribute('aria-label', `Page ${index + 1}`);
  }

  place(layout) {
    const { style } = this.element;
    const width = layout.pageWidth(this.index);
    this.scale = layout.scale(this.index);
    style.transform = `translateY(${layout.tops[this.index]}px)`;
    style.width = `${width}px`;
    style.height = `${layout.pageHeight(this.index)}px`;
    style.setProperty('--total-scale-factor', this.scale * pixelsPerPoint);
  }

  // What can be seen of the page is on the screen: its picture, or the message that there is none.
  get isShown() { return this.drawnScale !== 0 || Boolean(this.failed); }
  get needsDrawing() { return !this.isGone && !this.failed && this.drawnScale !== this.scale; }

  // Draws the page as large as it is placed; the earlier picture stays until the new one is there.
  async draw(page) {
    const { scale } = this;
    const full = page.getViewport({ scale: scale * pixelsPerPoint * (window.devicePixelRatio || 1) });
    const shrink = Math.min(1, Math.sqrt(mostPixels / (full.width * full.height)),
      longestSide / Math.max(full.width, full.height));
    const viewport = shrink === 1 ? full : page.getViewport({ scale: full.scale * shrink });
    const canvas = document.createElement('canvas');
    canvas.width = Math.max(1, Math.floor(viewport.width));
    canvas.height = Math.max(1, Math.floor(viewport.height));
    canvas.setAttribute('aria-hidden', 'true');
    this.task = page.render({ canvas, viewport });
    await this.task.promise;
    if (this.isGone) return;
    this.canvas?.remove();
    this.canvas = canvas;
    this.element.prepend(canvas);
    this.drawnScale = scale;
    // A page whose text can't be told is still a page.
    if (!this.text) await this.addText(page).catch(() => {});
  }

  async addText(page) {
    this.text = document.createElement('div');
    this.text.className = 'textLayer';
    this.element.append(this.text);
    const viewport = page.getViewport({ scale: this.scale * pixelsPerPoint });
    this.layer = new TextLayer({ textContentSource: page.streamTextContent(), container: this.text, viewport });
    const [, annotations] = await Promise.all([this.layer.render(), page.getAnnotations()]);
    if (this.isGone) return;
    const base = page.getViewport({ scale: 1 });
    annotations.filter(({ subtype, url, dest }) => subtype === 'Link' && (url || dest))
      .forEach((annotation) => this.addLink(annotation, base));
  }

  addLink({ rect, url, dest, contentsObj }, viewport) {
    const [x1, y1] = viewport.convertToViewportPoint(rect[0], rect[1]);
    const [x2, y2] = viewport.convertToViewportPoint(rect[2], rect[3]);
    const link = document.createElement('a');
    const part = (length, whole) => `${(100 * length) / whole}%`;
    link.style.left = part(Math.min(x1, x2), viewport.width);
    link.style.top = part(Math.min(y1, y2), viewport.height);
    link.style.width = part(Math.abs(x2 - x1), viewport.width);
    link.style.height = part(Math.abs(y2 - y1), viewport.height);
    link.setAttribute('aria-label', contentsObj?.str || url || 'Go to another page');
    if (url && !/^(https?|mailto):/i.test(url)) return;
    Object.assign(link, url ? { href: url, target: '_blank', rel: 'noopener noreferrer' } : { href: '#' });
    if (!url) {
      link.addEventListener('click', (event) => {
        event.preventDefault();
        this.follow(dest);
      });
    }
    this.element.append(link);
  }

  fail() {
    this.failed = true;
    this.element.classList.add('failed');
    this.element.textContent = 'This page can\'t be shown.';
  }

  remove() {
    this.isGone = true;
    this.task?.cancel();
    this.layer?.cancel();
    // Without a size a canvas gives its memory back at once.
    if (this.canvas) this.canvas.width = this.canvas.height = 0;
    this.element.remove();
  }
}
