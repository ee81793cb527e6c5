// SPDX-License-Identifier: Apache-2.0
//
// The page's session with the learning management system (LMS). The pages call window.lms; what
// differs between SCORM versions is in scorm.js, which is loaded first. Without an LMS every call
// is harmless and window.lms.connected is false.
(function () {
  'use strict';

  const maxHops = 50;

  // The object of this name in this window or in one around it. A window of another origin may not
  // be looked into; the LMS is not there then.
  function findAround(start, name) {
    try {
      for (let at = start, hops = 0; at && hops < maxHops; at = at.parent, ++hops) {
        if (at[name]) return at[name];
        if (at.parent === at) return null;
      }
    } catch (notOurs) {
      return null;
    }
    return null;
  }

  function openerOf(start) {
    try {
      return start.opener || start.top.opener;
    } catch (notOurs) {
      return null;
    }
  }

  // The LMS is in a frame around this window, or around the window that opened it, and so on.
  function findApi(start, name) {
    for (let at = start, hops = 0; at && hops < maxHops; at = openerOf(at), ++hops) {
      const api = findAround(at, name);
      if (api) return api;
    }
    return null;
  }

  class Session {
    constructor(Binding) {
      const api = findApi(window, Binding.apiName);
      this.binding = api ? new Binding(api) : null;
      this.connected = this.binding !== null && this.binding.initialize();
      this.startedAt = Date.now();
      this.done = false;
      if (this.connected) this.done = this.binding.begin();
    }

    // The place kept by an earlier visit, or "".
    get location() {
      return this.connected ? this.binding.location() : '';
    }

    set location(place) {
      if (this.connected) this.binding.setLocation(place);
    }

    // What the package's manifest hands to the page, or "".
    get launchData() {
      return this.connected ? this.binding.launchData() : '';
    }

    // The share of points that passes, from 0 to 1: the LMS's own, or this one.
    passMark(otherwise) {
      const mark = this.connected ? this.binding.passMark() : NaN;
      return Number.isFinite(mark) ? mark : otherwise;
    }

    complete() {
      this.done = true;
      if (!this.connected) return;
      this.binding.complete();
      this.binding.commit();
    }

    // Completes the visit with a score from 0 to 1.
    grade(score, passed) {
      this.done = true;
      if (!this.connected) return;
      this.binding.grade(score, passed);
      this.binding.commit();
    }

    // Ends the session, once: an LMS takes nothing after that.
    end() {
      if (!this.connected) return;
      this.connected = false;
      this.binding.end((Date.now() - this.startedAt) / 1000, this.done);
    }
  }

  window.lms = new Session(window.ScormBinding);
  window.addEventListener('pagehide', () => window.lms.end());
})();
