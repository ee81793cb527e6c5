// SPDX-License-Identifier: Apache-2.0

const digits = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_';

// Which pages of a document were seen, and the short text in which a learning platform keeps that: "1:", the number
// of pages, ":", and six pages to a character: 23,900 pages in the 4,000 characters that every platform takes.
export class PlexoSeenPages {
  constructor(pages) {
    this.seen = new Uint8Array(pages);
    this.count = 0;
  }

  // What was kept of a document with this number of pages; nothing, where the text is another document's or damaged.
  static parse(text, pages) {
    const result = new PlexoSeenPages(pages);
    const [, count, packed] = /^1:(\d+):([\w-]*)$/.exec(text) ?? [];
    if (Number(count) !== pages) return result;
    for (let at = 0; at < packed.length; at += 1) {
      const six = digits.indexOf(packed[at]);
      for (let bit = 0; bit < 6; bit += 1) if (six & (1 << bit)) result.add(at * 6 + bit);
    }
    return result;
  }

  get isAll() { return this.count === this.seen.length; }

  // False if it was there.
  add(index) {
    if (index < 0 || index >= this.seen.length || this.seen[index]) return false;
    this.seen[index] = 1;
    this.count += 1;
    return true;
  }

  has(index) { return this.seen[index] === 1; }

  toString() {
    let packed = '';
    for (let at = 0; at < this.seen.length; at += 6) {
      let six = 0;
      for (let bit = 0; bit < 6; bit += 1) six |= (this.seen[at + bit] ?? 0) << bit;
      packed += digits[six];
    }
    return `1:${this.seen.length}:${packed.replace(/A+$/, '')}`;
  }
}
