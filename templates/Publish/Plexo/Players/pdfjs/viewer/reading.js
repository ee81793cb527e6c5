// SPDX-License-Identifier: Apache-2.0

import { PlexoSeenPages } from './seen-pages.js';

const lookedAt = 1000;  // milliseconds for which a page is in view until it counts as seen
const arrived = 300;    // and until the learner counts as being there

// What the learner reads, told to the visit: the place, the pages seen, and that all were seen.
export class PlexoReading {
  // `changed` is called when a page was seen.
  constructor(visit, pages, changed) {
    Object.assign(this, { visit, changed, waiting: new Map(), seen: PlexoSeenPages.parse(visit.suspendData(), pages) });
    const place = /^\d{1,7}$/.test(visit.location()) ? Number(visit.location()) : 1;
    this.start = place >= 1 && place <= pages ? place - 1 : 0;
    // All was seen, but the platform doesn't know: an earlier visit ended badly, or it has begun a new attempt.
    if (this.seen.isAll) this.finish();
  }

  // The learner is at this page.
  isAt(index) {
    if (index === this.place) return;
    this.place = index;
    clearTimeout(this.arrival);
    this.arrival = setTimeout(() => this.visit.setLocation(String(index + 1)), arrived);
  }

  // These pages are in view, and no other.
  show(indexes) {
    for (const [index, timer] of this.waiting) {
      if (indexes.includes(index)) continue;
      clearTimeout(timer);
      this.waiting.delete(index);
    }
    for (const index of indexes) {
      if (this.seen.has(index) || this.waiting.has(index)) continue;
      this.waiting.set(index, setTimeout(() => this.see(index), lookedAt));
    }
  }

  see(index) {
    this.waiting.delete(index);
    if (!this.seen.add(index)) return;
    this.visit.setSuspendData(this.seen.toString());
    this.visit.setProgress(this.seen.count / this.seen.seen.length);
    if (this.seen.isAll) this.finish();
    this.changed();
  }

  finish() {
    this.visit.setProgress(1);
    this.visit.complete();
  }
}
