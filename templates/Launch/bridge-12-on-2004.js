// SPDX-License-Identifier: Apache-2.0
const PlexoBridge12On2004 = (function () {
  'use strict';

  const longestComment = 4000;      // of SCORM 2004
  const longestText = 4096;         // of SCORM 1.2
  const longestDescription = 250;   // of SCORM 2004

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
      this.objectivePlaces = null;
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

    // The LMS's list begins with the objectives of the course's manifest, which aren't the content's. Ours
    // have a description.
    fillObjectives() {
      for (let at = 0, n = 0; at < this.lms.count('cmi.objectives'); ++at) {
        const from = `cmi.objectives.${at}`;
        if (this.lms.get(`${from}.description`) === '') continue;
        const to = `cmi.objectives.${n++}`;
        this.record.put(`${to}.id`, PlexoInteractions.nameOfIdentifier(this.lms.get(`${from}.id`)));
        for (const part of ['raw', 'min', 'max']) {
          this.record.put(`${to}.score.${part}`, this.lms.get(`${from}.score.${part}`));
        }
        const completion = this.lms.get(`${from}.completion_status`);
        const success = this.lms.get(`${from}.success_status`);
        const isSet = [completion, success].some((status) => status !== '' && status !== 'unknown');
        this.record.put(`${to}.status`, isSet ? statusIn12(completion, success) : '');
      }
    }

    tellNow(name, value) {
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
      if (this.hasChanged(['cmi.core.lesson_status'])) this.tellStatus();
      if (this.hasChanged(scoreElements)) this.tellScore('cmi.core', 'cmi', this.tellResult);
      this.changedEntries('cmi.objectives').forEach((n) => this.tellObjective(n));
      this.changedEntries('cmi.interactions').forEach((n) => this.tellInteraction(n));
    }

    // The two statuses of 2004 always follow the one of 1.2, so that a result that the content takes back
    // is taken back.
    tellStatus() {
      const [completion, success] = PlexoBridge.statuses[this.record.peek('cmi.core.lesson_status')];
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
      if (raw === '') return;
      tell.call(this, `${to}.score.scaled`, PlexoBridge.decimal(PlexoBridge.scaled(raw, min, max)));
    }

    tellObjective(n) {
      const from = `cmi.objectives.${n}`;
      const name = this.record.peek(`${from}.id`) || `objective-${n}`;
      const to = this.placeOfObjective(name);
      if (to === null) return;
      const status = this.record.peek(`${from}.status`);
      if (status !== '') {
        this.tellDetail(`${to}.completion_status`, PlexoBridge.statuses[status][0]);
        this.tellDetail(`${to}.success_status`, PlexoBridge.statuses[status][1]);
      }
      this.tellScore(from, to, this.tellDetail);
    }

    // Where the LMS keeps the objective of this name: at its own index, for the ids of 2004 are for good
    // and the manifest's come first. Null if the LMS refuses it.
    placeOfObjective(name) {
      const id = PlexoInteractions.identifier(name);
      if (!this.objectivePlaces) {
        this.objectivePlaces = new Map();
        for (let at = 0; at < this.lms.count('cmi.objectives'); ++at) {
          this.objectivePlaces.set(this.lms.get(`cmi.objectives.${at}.id`), at);
        }
      }
      const isNew = !this.objectivePlaces.has(id);
      const place = isNew ? this.objectivePlaces.size : this.objectivePlaces.get(id);
      const entry = `cmi.objectives.${place}`;
      if (isNew && !this.tellDetail(`${entry}.id`, id)) return null;
      this.objectivePlaces.set(id, place);
      this.tellDetail(`${entry}.description`, name.slice(0, longestDescription));
      return entry;
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

    tellEnd() {
      const peek = (name) => this.record.peek(name);
      const status = this.passing.statusAtFinish({
        status: peek('cmi.core.lesson_status'),
        statusSet: this.set.has('cmi.core.lesson_status'),
        mode: peek('cmi.core.lesson_mode'),
        credit: peek('cmi.core.credit'),
        masteryScore: peek('cmi.student_data.mastery_score'),
        raw: this.set.has('cmi.core.score.raw') ? peek('cmi.core.score.raw') : '',
      });
      if (status !== peek('cmi.core.lesson_status')) this.keep('cmi.core.lesson_status', status);
      const time = peek('cmi.core.session_time');
      if (time !== '') this.tellResult('cmi.session_time', PlexoTimeFormats.durationOfTimespan(time));
      this.tellResult('cmi.exit', this.exit(status));
    }

    // An LMS of 1.2 keeps the data of every visit, one of 2004 only those of a suspended one: what isn't
    // finished is suspended however it ends, or the learner would begin anew.
    exit(status) {
      const exit = this.record.peek('cmi.core.exit');
      const isFinished = ['passed', 'completed', 'failed'].indexOf(status) >= 0;
      return isFinished ? exit || 'normal' : 'suspend';
    }
  };
})();
