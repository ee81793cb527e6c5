// SPDX-License-Identifier: Apache-2.0
const PlexoDataModel = (function () {
  'use strict';

  const keywords = ['_children', '_count', '_version'];

  // Splits an element's name. "cmi.objectives.3.id" has the pattern "cmi.objectives.n.id" and one level:
  // the array "cmi.objectives" at index 3. A "{target=...}" may hold dots. Null if it isn't well formed.
  function parse(name) {
    const levels = [];
    const parts = [];
    const path = [];
    for (const part of name.replace(/\.\{target=[^}]*\}$/, '.{target}').split('.')) {
      if (part === '' || part === 'n') return null;
      const isIndex = /^(0|[1-9]\d{0,8})$/.test(part);
      if (isIndex) levels.push({ array: path.join('.'), index: Number(part) });
      parts.push(isIndex ? 'n' : part);
      path.push(part);
    }
    return { pattern: parts.join('.'), levels };
  }

  // Groups of elements and their children, in the table's order. An array of an array has no _children.
  function groupsOf(table) {
    const groups = {};
    for (const pattern of Object.keys(table)) {
      const parts = pattern.split('.');
      for (let depth = 1; depth < parts.length; ++depth) {
        const path = parts.slice(0, depth).join('.');
        const isArray = parts[depth] === 'n';
        const group = groups[path] || (groups[path] = { children: [], isArray });
        const child = parts[depth + (isArray ? 1 : 0)];
        const hidden = depth === 1 || (isArray && path.indexOf('.n.') > 0);
        if (!hidden && group.children.indexOf(child) < 0) group.children.push(child);
      }
    }
    return groups;
  }

  // The elements of an edition: a table by pattern of { access: "r", "w" or "rw", type, value }.
  // `type` takes a value, the element's name and the record, and returns null, "type" or "range";
  // `value` is what an element has that nobody has set. `rule`, where given, tells a fault of order.
  return class PlexoDataModel {
    constructor(table, rule) {
      this.table = table;
      this.groups = groupsOf(table);
      this.rule = rule || (() => null);
    }

    static parse(name) { return parse(name); }

    // The keyword at a name's end and the name before it, or null.
    static keyword(name) {
      const dot = name.lastIndexOf('.');
      const word = name.slice(dot + 1);
      return keywords.indexOf(word) < 0 ? null : { word, base: name.slice(0, dot) };
    }

    element(pattern) {
      return Object.prototype.hasOwnProperty.call(this.table, pattern) ? this.table[pattern] : null;
    }

    group(pattern) {
      return Object.prototype.hasOwnProperty.call(this.groups, pattern) ? this.groups[pattern] : null;
    }
  };
})();

const PlexoDataRecord = (function () {
  'use strict';

  // The values of one visit, in the content's edition. What the record lacks it asks its source for, once:
  // source.read(name) gives a value or undefined, source.fill(array) seeds the entries of an array.
  //
  // Faults: "unknown" element, "noChildren", "noCount", "noEntry" (an index beyond the count), "unset",
  // "keyword", "readOnly", "writeOnly", "type", "range", "dependency", "rule".
  return class PlexoDataRecord {
    constructor(model, source) {
      this.model = model;
      this.source = source;
      this.values = new Map();
      this.counts = new Map();
    }

    // { value } or { fault }.
    get(name) {
      const element = this.find(name);
      if (!element) {
        const keyword = PlexoDataModel.keyword(name);
        return keyword ? this.getKeyword(keyword) : { fault: 'unknown' };
      }
      if (element.access === 'w') return { fault: 'writeOnly' };
      if (!this.hasEntries(PlexoDataModel.parse(name).levels)) return { fault: 'noEntry' };
      const value = this.peek(name);
      return value === undefined ? { fault: 'unset' } : { value };
    }

    // The fault that keeps the content from setting this value, or null.
    check(name, value) {
      const element = this.find(name);
      if (!element) return this.isKeyword(name) ? 'keyword' : 'unknown';
      if (element.access === 'r') return PlexoDataModel.keyword(name) ? 'keyword' : 'readOnly';
      const levels = PlexoDataModel.parse(name).levels;
      if (levels.some((level) => level.index > this.count(level.array))) return 'noEntry';
      return this.model.rule(this, name, value) || element.type(value, name, this);
    }

    put(name, value) {
      this.values.set(name, value);
      for (const level of PlexoDataModel.parse(name).levels) {
        this.counts.set(level.array, Math.max(this.count(level.array), level.index + 1));
      }
    }

    // The value, the element's own if nobody has set one, or undefined.
    peek(name) {
      const levels = PlexoDataModel.parse(name).levels;
      if (levels.length > 0) this.count(levels[0].array);
      if (!this.values.has(name) && levels.length === 0) this.values.set(name, this.source.read(name));
      const value = this.values.get(name);
      return value === undefined ? this.find(name).value : value;
    }

    // The value that was set or found, or undefined.
    stored(name) {
      this.peek(name);
      return this.values.get(name);
    }

    // The number of entries.
    count(array) {
      if (!this.counts.has(array)) {
        this.counts.set(array, 0);
        if (PlexoDataModel.parse(array).levels.length === 0) this.source.fill(array);
      }
      return this.counts.get(array);
    }

    // An array begins with this many entries of which nothing is known.
    setCount(array, count) {
      this.counts.set(array, count);
    }

    find(name) {
      const parsed = PlexoDataModel.parse(name);
      return parsed && this.model.element(parsed.pattern);
    }

    hasEntries(levels) {
      return levels.every((level) => level.index < this.count(level.array));
    }

    getKeyword(keyword) {
      const parsed = PlexoDataModel.parse(keyword.base);
      const group = parsed && this.model.group(parsed.pattern);
      if (keyword.word === '_version' || (!group && !this.find(keyword.base))) return { fault: 'unknown' };
      if (keyword.word === '_children') {
        const children = group ? group.children.join(',') : '';
        return children !== '' ? { value: children } : { fault: 'noChildren' };
      }
      if (!group || !group.isArray) return { fault: 'noCount' };
      return this.hasEntries(parsed.levels) ? { value: String(this.count(keyword.base)) } : { fault: 'noEntry' };
    }

    isKeyword(name) {
      const keyword = PlexoDataModel.keyword(name);
      const parsed = keyword && PlexoDataModel.parse(keyword.base);
      return Boolean(parsed && (this.model.group(parsed.pattern) || this.model.element(parsed.pattern)));
    }
  };
})();
