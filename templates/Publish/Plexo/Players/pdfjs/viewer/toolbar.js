// SPDX-License-Identifier: Apache-2.0

const icons = {
  previous: 'M15 5 8 12l7 7',
  next: 'm9 5 7 7-7 7',
  out: 'M5 12h14',
  in: 'M5 12h14M12 5v14',
  fit: 'M3 5v14M21 5v14M7 12h10M10 9l-3 3 3 3M14 9l3 3-3 3',
};

function button(name, label, act) {
  const result = document.createElement('button');
  result.type = 'button';
  result.title = label;
  result.setAttribute('aria-label', label);
  result.innerHTML = `<svg viewBox="0 0 24 24" aria-hidden="true"><path d="${icons[name]}"/></svg>`;
  result.addEventListener('click', act);
  return result;
}

function element(name, className, ...content) {
  const result = document.createElement(name);
  result.className = className;
  result.append(...content);
  return result;
}

// The bar above a document. `acts` are what it can do: goTo(index), step(pages), zoom(steps), fit().
export class PlexoToolbar {
  constructor(title, pages, acts) {
    this.pages = pages;
    this.acts = acts;
    this.field = element('input', 'number');
    Object.assign(this.field, { type: 'text', inputMode: 'numeric', value: '1', autocomplete: 'off' });
    this.field.style.width = `${String(pages).length + 2}ch`;
    this.field.setAttribute('aria-label', `Page, of ${pages}`);
    this.field.addEventListener('change', () => this.enter());
    this.field.addEventListener('focus', () => this.field.select());
    this.previous = button('previous', 'Previous page', () => acts.step(-1));
    this.next = button('next', 'Next page', () => acts.step(1));
    this.scale = element('output', 'scale');
    this.seen = element('span', 'seen');
    this.bar = element('div', 'progress', element('i', ''));
    this.bar.setAttribute('role', 'progressbar');
    this.bar.setAttribute('aria-label', 'Pages read');
    const zoom = element('span', 'group zoom', button('out', 'Zoom out', () => acts.zoom(-1)), this.scale,
      button('in', 'Zoom in', () => acts.zoom(1)), button('fit', 'Fit width', acts.fit));
    this.element = element('header', 'toolbar',
      element('span', 'group title', element('b', '', title), this.seen),
      element('span', 'group turn', this.previous, this.field, element('span', 'of', `/ ${pages}`), this.next),
      zoom, this.bar);
  }

  enter() {
    const number = Number(this.field.value);
    if (Number.isInteger(number) && number >= 1 && number <= this.pages) this.acts.goTo(number - 1);
    else this.field.value = this.shown;
    this.field.blur();
  }

  showPage(index, scale) {
    this.shown = String(index + 1);
    if (document.activeElement !== this.field) this.field.value = this.shown;
    this.previous.disabled = index === 0;
    this.next.disabled = index === this.pages - 1;
    this.scale.textContent = `${Math.round(scale * 100)}%`;
  }

  showSeen(count) {
    const percent = Math.floor((100 * count) / this.pages);
    this.seen.textContent = count === this.pages ? 'All pages read' : `${count} of ${this.pages} pages read`;
    this.bar.classList.toggle('all', count === this.pages);
    this.bar.firstChild.style.width = `${percent}%`;
    this.bar.setAttribute('aria-valuenow', String(percent));
  }
}
