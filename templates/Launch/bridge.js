// SPDX-License-Identifier: Apache-2.0
const PlexoBridge = (function () {
  'use strict';

  const longestData = 4096;  // of suspend data, in SCORM 1.2

  const clamp = (value, least, most) => Math.max(least, Math.min(most, value));

  // What the learner prefers. 1.2 counts loudness from 1 to 100 and speed as a change in percent, with 0 for
  // "as it is" and -1 for silence; 2004 multiplies both.
  const preferences = [
    {
      of12: 'cmi.student_preference.audio',
      of2004: 'cmi.learner_preference.audio_level',
      in12: (value) => (value === 0 ? -1 : value === 1 ? 0 : clamp(Math.round(value * 100), 1, 100)),
      in2004: (value) => (value < 0 ? 0 : value === 0 ? 1 : value / 100),
    },
    {
      of12: 'cmi.student_preference.speed',
      of2004: 'cmi.learner_preference.delivery_speed',
      in12: (value) => clamp(Math.round((value - 1) * 100), -100, 100),
      in2004: (value) => 1 + value / 100,
    },
  ];

  // completion_status and success_status for each status of 1.2. Who browses has looked and not done the
  // work; who failed has worked to the end.
  const statuses = {
    passed: ['completed', 'passed'],
    completed: ['completed', 'unknown'],
    failed: ['completed', 'failed'],
    incomplete: ['incomplete', 'unknown'],
    browsed: ['incomplete', 'unknown'],
    'not attempted': ['not attempted', 'unknown'],
  };

  // A visit of content of one edition to an LMS of the other: keeps the content's record and tells the
  // LMS what it can hold. Short texts that an LMS may refuse are told at once, so that the content hears of
  // it; the rest is told at a commit and at the end, in the order that the LMS wants. Session time and exit
  // are told at each commit too: after a crash of the browser an LMS may discard the bookmark of a visit
  // that isn't marked as suspended.
  //
  // A subclass has read(name) and fill(array) as the record's source; tellNow(name, value), which returns
  // a refusal or null; tellChanges(); tellEnd(isFinished); and leave().
  return class PlexoBridge {
    constructor(model, lms, settings) {
      this.lms = lms;
      this.settings = settings;
      this.passing = new PlexoPassing(settings);
      this.record = new PlexoDataRecord(model, this);
      this.set = new Set();      // what the content has set in this visit
      this.changed = new Set();  // what the LMS hasn't been told
      this.told = new Map();
      this.warned = new Set();
      this.unsaved = false;
      this.isOver = false;
      this.pending = new Map();  // results that the LMS has refused so far, by element
      this.tried = new Set();    // elements told since the last commit
    }

    open() {
      return this.lms.open() ? null : this.lms.refusal();
    }

    // { value } or { fault }.
    get(name) {
      return this.record.get(name);
    }

    // Null, or the { fault }; "refused" comes with the LMS's code and why.
    put(name, value) {
      const fault = this.record.check(name, value);
      if (fault) return { fault };
      const refusal = this.tellNow(name, value);
      if (refusal) return Object.assign({ fault: 'refused' }, refusal);
      this.keep(name, value);
      return null;
    }

    keep(name, value) {
      this.record.put(name, value);
      this.set.add(name);
      this.changed.add(name);
    }

    hasUnsaved() {
      return this.unsaved || this.changed.size > 0;
    }

    // Null, or why not everything is saved. What the LMS need not keep is no reason.
    save() {
      this.tellChanges();
      this.changed.clear();
      this.tellPendingAgain();
      if (this.unsaved) {
        if (!this.lms.save()) return this.lms.refusal();
        this.unsaved = false;
      }
      const refusals = Array.from(this.pending.values());
      return refusals.length > 0 ? refusals[0].refusal : null;
    }

    // The content has finished. Null, or why not everything is saved; `isOver` says whether the LMS has ended
    // the visit all the same.
    close() {
      return this.end(true);
    }

    end(isFinished) {
      this.tellEnd(isFinished);
      const refusal = this.save();
      this.isOver = this.lms.close();
      return this.isOver ? refusal : this.lms.refusal();
    }

    // Tells the LMS a value, unless it has been told the same already. Null or the refusal.
    tell(element, value) {
      if (this.told.get(element) === value) return null;
      if (!this.lms.set(element, value)) return this.lms.refusal();
      this.told.set(element, value);
      this.unsaved = true;
      return null;
    }

    // Tells the LMS what the content should hear of if it is refused: every commit tries it again, and fails
    // until the LMS takes it.
    tellResult(element, value) {
      const refusal = this.tell(element, value);
      this.tried.add(element);
      this.pending.delete(element);
      if (!refusal) return;
      this.pending.set(element, { value, refusal });
      this.warn(element, refusal.why);
    }

    tellPendingAgain() {
      Array.from(this.pending).filter(([element]) => !this.tried.has(element))
          .forEach(([element, { value }]) => this.tellResult(element, value));
      this.tried.clear();
    }

    // Tells the LMS what it need not keep. False if it was refused.
    tellDetail(element, value) {
      const refusal = this.tell(element, value);
      if (refusal) this.warn(element, refusal.why);
      return !refusal;
    }

    warn(subject, why) {
      if (this.warned.has(subject)) return;
      this.warned.add(subject);
      console.warn(`${subject}: ${why}`);
    }

    // An LMS of 1.2 need not hold more, and many do.
    warnOfLongData(data) {
      if (data.length <= longestData) return;
      this.warn('cmi.suspend_data', `${data.length} characters, more than the ${longestData} of SCORM 1.2: ` +
          'the learning platform decides whether it keeps them');
    }

    hasChanged(names) {
      return names.some((name) => this.changed.has(name));
    }

    // The indexes of the array's entries that the content has changed; none if the LMS doesn't keep them.
    changedEntries(array) {
      const found = new Set();
      this.changed.forEach((name) => {
        if (name.startsWith(`${array}.`)) found.add(Number(name.slice(array.length + 1).split('.')[0]));
      });
      if (found.size > 0 && isNaN(this.lms.count(array))) {
        this.warn(array, 'the learning platform does not keep them');
        return [];
      }
      return Array.from(found).sort((one, other) => one - other);
    }

    static get preferences() { return preferences; }
    static get statuses() { return statuses; }

    // A number with up to seven decimals, never in exponents.
    static decimal(number) {
      const text = number.toFixed(7);
      return text.indexOf('e') < 0 ? text.replace(/\.?0+$/, '') : text;
    }

    // A raw score as a part of 1. A score without usable limits lies between 0 and 100.
    static scaled(raw, min, max) {
      let least = Number(min || 0);
      let most = max === undefined || max === '' ? 100 : Number(max);
      if (most <= least) [least, most] = [0, 100];
      return clamp((Number(raw) - least) / (most - least), -1, 1);
    }
  };
})();
