// SPDX-License-Identifier: Apache-2.0
//
// The words of SCORM 1.2 for what lms.js says.
window.ScormBinding = class {
  static apiName = 'API';

  constructor(api) {
    this.api = api;
  }

  initialize() {
    return String(this.api.LMSInitialize('')) === 'true';
  }

  // Tells the LMS that the visit has begun; true if an earlier one was complete. A status that
  // says how an earlier visit ended is kept.
  begin() {
    const status = this.get('cmi.core.lesson_status');
    const done = ['completed', 'passed', 'failed'].includes(status);
    if (!done) this.set('cmi.core.lesson_status', 'incomplete');
    return done;
  }

  location() {
    return this.get('cmi.core.lesson_location');
  }

  setLocation(place) {
    this.set('cmi.core.lesson_location', place);
  }

  launchData() {
    return this.get('cmi.launch_data');
  }

  passMark() {
    return parseFloat(this.get('cmi.student_data.mastery_score')) / 100;
  }

  // One status serves completion and success: a result of a quiz is not overwritten.
  complete() {
    const status = this.get('cmi.core.lesson_status');
    if (status !== 'passed' && status !== 'failed') this.set('cmi.core.lesson_status', 'completed');
  }

  grade(score, passed) {
    this.set('cmi.core.score.min', '0');
    this.set('cmi.core.score.max', '100');
    this.set('cmi.core.score.raw', String(Math.round(score * 100)));
    this.set('cmi.core.lesson_status', passed ? 'passed' : 'failed');
  }

  commit() {
    this.api.LMSCommit('');
  }

  end(seconds, done) {
    this.set('cmi.core.session_time', this.timespan(Math.round(seconds)));
    this.set('cmi.core.exit', done ? '' : 'suspend');
    this.commit();
    this.api.LMSFinish('');
  }

  timespan(seconds) {
    const part = (value) => String(value).padStart(2, '0');
    return [seconds / 3600, (seconds / 60) % 60, seconds % 60].map(Math.floor).map(part).join(':');
  }

  get(element) {
    return String(this.api.LMSGetValue(element));
  }

  set(element, value) {
    this.api.LMSSetValue(element, value);
  }
};
