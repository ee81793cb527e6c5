// SPDX-License-Identifier: Apache-2.0
const PlexoPresetObjectives = (function () {
  'use strict';

  // The objectives that the content's own manifest declares: an LMS lists them before the content sets any
  // (SCORM 2004 3rd Edition RTE 4.2.17). In a course the LMS's list begins with the objectives of the course.
  // Those of the content follow, and the content sees the list from there on.
  return class PlexoPresetObjectives {
    // Their ids, that of the primary objective first.
    static ids(settings) {
      const others = (settings.objectives || '').split(' ');
      return Array.from(new Set([settings.primaryObjective].concat(others))).filter(Boolean);
    }

    constructor(lms, settings) {
      this.lms = lms;
      this.ids = PlexoPresetObjectives.ids(settings);
      this.first = 0;  // where the content's list begins in that of the LMS
    }

    // Begins the visit: adds what the LMS lacks.
    open() {
      if (this.ids.length === 0) return;
      const count = this.lms.count('cmi.objectives');
      if (isNaN(count)) {
        console.warn('cmi.objectives: the learning platform does not keep them');
        return;
      }
      const listed = [];
      for (let at = 0; at < count; ++at) listed.push(this.lms.get(`cmi.objectives.${at}.id`));
      const found = listed.indexOf(this.ids[0]);
      this.first = found < 0 ? count : found;
      const own = new Set(listed.slice(this.first));
      let next = count;
      for (const id of this.ids) {
        if (own.has(id)) continue;
        if (this.lms.set(`cmi.objectives.${next}.id`, id)) next += 1;
        else console.warn(`objective ${id}: ${this.lms.refusal().why}`);
      }
    }

    // The LMS's name of an element.
    inLms(name) {
      return name.replace(/^(cmi\.objectives\.)(0|[1-9]\d*)(?=\.)/,
          (whole, array, index) => array + (Number(index) + this.first));
    }

    // The content's value of an element.
    value(name, value) {
      const isCount = name === 'cmi.objectives._count' && value !== '';
      return isCount ? String(Math.max(0, Number(value) - this.first)) : value;
    }
  };
})();
