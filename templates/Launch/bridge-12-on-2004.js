// SPDX-License-Identifier: Apache-2.0
const PlexoBridge12On2004 = (function () {
  'use strict';

  const longestComment = 4000;      // of SCORM 2004
  const longestText = 4096;         // of SCORM 1.2

  const sameElements = {
    'cmi.core.student_id': 'cmi.learner_id',
    'cmi.core.student_name': 'cmi.learner_name',
    'cmi.core.lesson_location': 'cmi.location',
    'cmi.core.credit': 'cmi.credit',
    'cmi.core.entry': 'cmi.entry',
    'cmi.core.lesson_mode': 'cmi.mode',
    'cmi.core.score.raw': 'cmi.score.raw',
    'cmi.core.score.min': 'cmi.score.min',
    'cmi.core.score.max': 'cmi.score.max',
    'cmi.suspend_data': 'cmi.suspend_data',
    'cmi.student_preference.text': 'cmi.learner_preference.audio_captioning',
  };
  const scoreElements = ['cmi.core.score.raw', 'cmi.core.score.min', 'cmi.core.score.max'];
  const statusElements = ['cmi.core.lesson_status', 'cmi.core.score.raw'];

  function statusIn12(completion, success) {
    if (completion === 'incomplete') return 'incomplete';
    if (success === 'passed' || success === 'failed') return success;
    return completion === 'completed' ? 'completed' : 'not attempted';
  }

  const preferenceOf = (name) => PlexoBridge.preferences.find((preference) => preference.of12 === name);
  const language = 'cmi.student_preference.language';
  const languageCode = /^([A-Za-z]{2,3}(-[A-Za-z0-9]{2,8})*)?$/;

  const withoutLanguage = (text) => text.replace(/^\{lang=[^}]*\}/, '');

  // SCORM 1.2 content on an LMS of SCORM 2004.
  return class PlexoBridge12On2004 extends PlexoBridge {
    constructor(lms, settings) {
      super(PlexoModel12, lms, settings);
      this.objectives = null;
    }

    read(name) {
      if (sameElements[name]) return this.lms.get(sameElements[name]);
      if (preferenceOf(name)) return this.readPreference(preferenceOf(name));
      switch (name) {
        case 'cmi.core.lesson_status': return this.readStatus();
        case 'cmi.core.total_time':
          return PlexoTimeFormats.timespanOfDuration(this.lms.get('cmi.total_time')) || '0000:00:00';
        case 'cmi.launch_data': return this.lms.launchData(this.settings);
        case 'cmi.comments': return this.readComments('cmi.comments_from_learner').slice(-longestText);
        case 'cmi.comments_from_lms': return this.readComments('cmi.comments_from_lms').slice(0, longestText);
        case 'cmi.student_data.mastery_score': return this.readMasteryScore();
        case 'cmi.student_data.max_time_allowed':
          return this.settings.maxTimeAllowed ||
              PlexoTimeFormats.timespanOfDuration(this.lms.get('cmi.max_time_allowed')) || '';
        case 'cmi.student_data.time_limit_action':
          return this.settings.timeLimitAction || this.lms.get('cmi.time_limit_action');
        case language: return this.lms.get('cmi.learner_preference.language');
        default: return undefined;
      }
    }

    // Where completing counts as passing, the pass was ours: the content said "completed".
    readStatus() {
      const status = statusIn12(this.lms.get('cmi.completion_status'), this.lms.get('cmi.success_status'));
      return status === 'passed' && this.passing.completionPasses ? 'completed' : status;
    }

    readPreference(preference) {
      const value = this.lms.get(preference.of2004);
      return value === '' ? '' : String(preference.in12(Number(value)));
    }

    readMasteryScore() {
      const scaled = this.lms.get('cmi.scaled_passing_score');
      if (this.settings.masteryScore !== undefined) return this.settings.masteryScore;
      return scaled === '' ? '' : PlexoBridge.decimal(Number(scaled) * 100);
    }

    readComments(array) {
      const comments = [];
      for (let at = 0; at < this.lms.count(array); ++at) {
        comments.push(withoutLanguage(this.lms.get(`${array}.${at}.comment`)));
      }
      return comments.join(array === 'cmi.comments_from_lms' ? '\n' : '');
    }

    fill(array) {
      if (array === 'cmi.interactions') this.record.setCount(array, this.lms.count(array) || 0);
      if (array === 'cmi.objectives') this.fillObjectives();
    }

    fillObjectives() {
      this.objectives = new PlexoObjectivesOn2004(this.lms);
      this.objectives.names.forEach((name, n) => {
        const from = this.objectives.entryOf(name);
        const to = `cmi.objectives.${n}`;
        this.record.put(`${to}.id`, name);
        for (const part of ['raw', 'min', 'max']) {
          this.record.put(`${to}.score.${part}`, this.lms.get(`${from}.score.${part}`));
        }
        const completion = this.lms.get(`${from}.completion_status`);
        const success = this.lms.get(`${from}.success_status`);
        const isSet = [completion, success].some((status) => status !== '' && status !== 'unknown');
        this.record.put(`${to}.status`, isSet ? statusIn12(completion, success) : '');
      });
    }

    tellNow(name, value) {
      if (name === 'cmi.suspend_data') this.warnOfLongData(value);
      if (name === 'cmi.comments') return this.tellComment(value);
      const preference = preferenceOf(name);
      if (preference) return this.tell(preference.of2004, PlexoBridge.decimal(preference.in2004(Number(value))));
      // 1.2 takes any name of a language; what is no code stays with the content.
      if (name === language) {
        return languageCode.test(value) ? this.tell('cmi.learner_preference.language', value) : null;
      }
      const isScore = scoreElements.indexOf(name) >= 0;
      return sameElements[name] && !isScore ? this.tell(sameElements[name], value) : null;
    }

    // Each comment is added to those before it.
    keep(name, value) {
      super.keep(name, name === 'cmi.comments' ? (this.record.peek(name) + value).slice(-longestText) : value);
    }

    tellComment(text) {
      this.record.peek('cmi.comments');
      for (let start = 0; start < text.length; start += longestComment) {
        const entry = `cmi.comments_from_learner.${this.lms.count('cmi.comments_from_learner') || 0}`;
        const refusal = this.tell(`${entry}.comment`, text.slice(start, start + longestComment));
        if (refusal) return refusal;
        this.tellDetail(`${entry}.timestamp`, PlexoTimeFormats.timestamp(new Date()));
      }
      return null;
    }

    tellChanges() {
      const hasStatus = this.set.has('cmi.core.lesson_status');
      if (hasStatus && this.hasChanged(statusElements)) this.tellStatus(this.lessonStatus(false));
      if (this.hasChanged(scoreElements)) this.tellScore('cmi.core', 'cmi', this.tellResult);
      this.tellObjectives();
      this.changedEntries('cmi.interactions').forEach((n) => this.tellInteraction(n));
      this.tellTimeAndExit();
    }

    // The two statuses of 2004 always follow the one of 1.2, so that a result that the content takes back
    // is taken back.
    tellStatus(status) {
      const [completion, success] = PlexoBridge.statuses[status];
      const reported = this.passing.reportedSuccess(completion, success);
      const known = () => /^(passed|failed)$/.test(this.lms.get('cmi.success_status'));
      this.tellResult('cmi.completion_status', completion);
      if (reported !== 'unknown' || known()) this.tellResult('cmi.success_status', reported);
    }

    tellScore(from, to, tell) {
      const [raw, min, max] = ['raw', 'min', 'max'].map((part) => this.record.peek(`${from}.score.${part}`));
      if (raw !== '') tell.call(this, `${to}.score.raw`, raw);
      if (min !== '') tell.call(this, `${to}.score.min`, min);
      if (max !== '') tell.call(this, `${to}.score.max`, max);
      if (raw !== '') {
        tell.call(this, `${to}.score.scaled`, PlexoBridge.decimal(PlexoBridge.scaled(raw, min, max)));
      } else if (this.changed.has(`${from}.score.raw`)) {
        this.withdrawScore(to, tell);
      }
    }

    // In 2004 a score can't be unset: it becomes 0.
    withdrawScore(to, tell) {
      this.pending.delete(`${to}.score.raw`);
      this.pending.delete(`${to}.score.scaled`);
      if (this.lms.get(`${to}.score.raw`) === '') return;
      this.warn(`${to}.score`, 'SCORM 2004 can\'t unset the score that the content has withdrawn: it becomes 0');
      tell.call(this, `${to}.score.raw`, '0');
      tell.call(this, `${to}.score.scaled`, '0');
    }

    tellObjectives() {
      const changed = this.changedEntries('cmi.objectives');
      if (changed.length === 0) return;
      const tell = (element, value) => this.tellDetail(element, value);
      const current = new Set();
      for (let n = 0; n < this.record.count('cmi.objectives'); ++n) current.add(this.nameOfObjective(n));
      for (const n of changed) {
        const before = this.objectives.nameAt(n);
        if (before === undefined || current.has(before)) continue;
        this.objectives.withdraw(before, tell);
        this.withdrawScore(this.objectives.entryOf(before), tell);
      }
      changed.forEach((n) => this.tellObjective(n, tell));
    }

    nameOfObjective(n) {
      return this.record.peek(`cmi.objectives.${n}.id`) || `objective-${n}`;
    }

    tellObjective(n, tell) {
      const from = `cmi.objectives.${n}`;
      const to = this.objectives.add(n, this.nameOfObjective(n), tell);
      if (to === null) return;
      const status = this.record.peek(`${from}.status`);
      if (status !== '') {
        tell(`${to}.completion_status`, PlexoBridge.statuses[status][0]);
        tell(`${to}.success_status`, PlexoBridge.statuses[status][1]);
      }
      this.tellScore(from, to, tell);
    }

    tellInteraction(n) {
      const entry = `cmi.interactions.${n}`;
      const stored = (leaf) => this.record.stored(`${entry}.${leaf}`);
      const tell = (leaf, value) => value === undefined || this.tellDetail(`${entry}.${leaf}`, value);
      const converted = (leaf, convert) => (stored(leaf) === undefined ? undefined : convert(stored(leaf)));
      const list = (array, leaf) => Array.from({ length: this.record.count(`${entry}.${array}`) },
          (unused, at) => stored(`${array}.${at}.${leaf}`));

      if (!tell('id', PlexoInteractions.identifier(stored('id') || `interaction-${n}`))) return;
      list('objectives', 'id').map(PlexoInteractions.identifier)
          .forEach((id, at) => tell(`objectives.${at}.id`, id));
      const type = stored('type');
      const response = stored('student_response');
      const patterns = list('correct_responses', 'pattern');
      if (type !== undefined || response !== undefined || patterns.length > 0) {
        const answers = PlexoInteractions.answersIn2004(type, response, patterns);
        tell('type', answers.type);
        answers.patterns.forEach((pattern, at) => tell(`correct_responses.${at}.pattern`, pattern));
        tell('learner_response', answers.response);
      }
      tell('result', converted('result', PlexoInteractions.resultIn2004));
      tell('weighting', stored('weighting'));
      tell('latency', converted('latency', PlexoTimeFormats.durationOfTimespan));
      tell('timestamp', converted('time', (time) => PlexoTimeFormats.timestampOfTime(time, new Date())));
    }

    lessonStatus(isFinished) {
      const peek = (name) => this.record.peek(name);
      return this.passing.lessonStatus({
        isFinished,
        status: peek('cmi.core.lesson_status'),
        statusSet: this.set.has('cmi.core.lesson_status'),
        exit: peek('cmi.core.exit'),
        mode: peek('cmi.core.lesson_mode'),
        credit: peek('cmi.core.credit'),
        masteryScore: peek('cmi.student_data.mastery_score'),
        raw: this.set.has('cmi.core.score.raw') ? peek('cmi.core.score.raw') : '',
      });
    }

    // An LMS of 1.2 keeps the data of every visit, one of 2004 only those of a suspended one. So every visit
    // ends suspended, a finished one too and whatever exit the content sets: the result is there when the
    // learner comes back, and "logout" doesn't end the whole course.
    tellTimeAndExit() {
      const time = this.record.peek('cmi.core.session_time');
      if (time !== '') this.tellResult('cmi.session_time', PlexoTimeFormats.durationOfTimespan(time));
      this.tellResult('cmi.exit', 'suspend');
    }

    tellEnd(isFinished) {
      const status = this.lessonStatus(isFinished);
      if (isFinished && status !== this.record.peek('cmi.core.lesson_status')) {
        this.keep('cmi.core.lesson_status', status);
      }
    }

    leave() {
      this.end(false);
    }
  };
})();
