// SPDX-License-Identifier: Apache-2.0
const PlexoObjectivesOn2004 = (function () {
  'use strict';

  const longestDescription = 250;  // of SCORM 2004
  // An identifier of 1.2 has no blanks, so that no objective is described in this way.
  const renamed = 'renamed by the content';

  // Where an LMS of SCORM 2004 keeps the objectives of SCORM 1.2 content. Its list begins with objectives of
  // the course's manifest, which aren't the content's; the content's have a description. In 2004 ids are
  // permanent: an objective that the content has renamed stays in the list, and says so.
  return class PlexoObjectivesOn2004 {
    constructor(lms) {
      this.lms = lms;
      this.places = new Map();  // of the content's objectives by name, renamed ones too
      this.names = [];          // in the content's order
      this.courseIds = new Set();
      this.count = lms.count('cmi.objectives') || 0;
      for (let at = 0; at < this.count; ++at) this.load(at);
    }

    load(at) {
      const id = this.lms.get(`cmi.objectives.${at}.id`);
      const description = this.lms.get(`cmi.objectives.${at}.description`);
      if (description === '') {
        this.courseIds.add(id);
        return;
      }
      const name = PlexoInteractions.nameOfIdentifier(id);
      this.places.set(name, at);
      if (description !== renamed) this.names.push(name);
    }

    // The name of the content's n-th objective, as the LMS knows it; undefined if it doesn't.
    nameAt(n) {
      return this.names[n];
    }

    // "cmi.objectives.3" for an objective that the LMS has.
    entryOf(name) {
      return `cmi.objectives.${this.places.get(name)}`;
    }

    // Has the LMS keep the content's n-th objective under this name. Null if the LMS refuses it.
    add(n, name, tell) {
      const isNew = !this.places.has(name);
      const entry = isNew ? `cmi.objectives.${this.count}` : this.entryOf(name);
      if (isNew && !tell(`${entry}.id`, this.freeIdentifier(name))) return null;
      if (isNew) this.places.set(name, this.count++);
      this.names[n] = name;
      tell(`${entry}.description`, name.slice(0, longestDescription));
      return entry;
    }

    // The content has renamed the objective: results under its earlier name no longer count.
    withdraw(name, tell) {
      const entry = this.entryOf(name);
      tell(`${entry}.success_status`, 'unknown');
      tell(`${entry}.completion_status`, 'unknown');
      tell(`${entry}.description`, renamed);
    }

    // The content must not set an objective of the course: an id that the course uses gets its first letter
    // escaped, and is read back as the same name.
    freeIdentifier(name) {
      const id = PlexoInteractions.identifier(name);
      if (!this.courseIds.has(id)) return id;
      return `%${id.charCodeAt(0).toString(16).toUpperCase()}${id.slice(1)}`;
    }
  };
})();
