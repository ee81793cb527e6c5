// SPDX-License-Identifier: Apache-2.0
//
// The words of SCORM 2004 3rd Edition for what lms.js says.
window.ScormBinding = class {
  static apiName = 'API_1484_11';

  constructor(api) {
    this.api = api;
  }

  initialize() {
    return String(this.api.Initialize('')) === 'true';
  }

  // Tells the LMS that the visit has begun; true if an earlier one was complete.
  begin() {
    const done = this.get('cmi.completion_status') === 'completed';
    if (!done) this.set('cmi.completion_status', 'incomplete');
    return done;
  }

  location() {
    return this.get('cmi.location');
  }

  setLocation(place) {
    this.set('cmi.location', place);
  }

  launchData() {
    return this.get('cmi.launch_data');
  }

  passMark() {
    return parseFloat(this.get('cmi.scaled_passing_score'));
  }

  // A lesson that is read is passed too: a course in forced order opens the next item once the status of
  // this one's objective is known, which completion alone doesn't tell.
  complete() {
    this.set('cmi.success_status', 'passed');
    this.set('cmi.completion_status', 'completed');
  }

  grade(score, passed) {
    this.set('cmi.score.min', '0');
    this.set('cmi.score.max', '100');
    this.set('cmi.score.raw', String(Math.round(score * 100)));
    this.set('cmi.score.scaled', String(Math.round(score * 100) / 100));
    this.set('cmi.success_status', passed ? 'passed' : 'failed');
    this.set('cmi.completion_status', 'completed');
  }

  commit() {
    this.api.Commit('');
  }

  end(seconds, done) {
    this.set('cmi.session_time', `PT${Math.round(seconds)}S`);
    this.set('cmi.exit', done ? 'normal' : 'suspend');
    this.commit();
    this.api.Terminate('');
  }

  get(element) {
    return String(this.api.GetValue(element));
  }

  set(element, value) {
    this.api.SetValue(element, value);
  }
};
