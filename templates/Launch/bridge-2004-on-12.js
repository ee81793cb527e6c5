// SPDX-License-Identifier: Apache-2.0
const PlexoBridge2004On12 = (function () {
  'use strict';

  const longestComments = 4096;  // these three of SCORM 1.2
  const longestIdentifier = 255;
  const longestLocation = 255;

  const sameElements = {
    'cmi.learner_id': 'cmi.core.student_id',
    'cmi.learner_name': 'cmi.core.student_name',
    'cmi.credit': 'cmi.core.credit',
    'cmi.entry': 'cmi.core.entry',
    'cmi.mode': 'cmi.core.lesson_mode',
  };
  // "" in 1.2 is "not set" in 2004.
  const sameIfSet = {
    'cmi.location': 'cmi.core.lesson_location',
    'cmi.suspend_data': 'cmi.suspend_data',
    'cmi.score.raw': 'cmi.core.score.raw',
    'cmi.score.min': 'cmi.core.score.min',
    'cmi.score.max': 'cmi.core.score.max',
    'cmi.learner_preference.language': 'cmi.student_preference.language',
    'cmi.learner_preference.audio_captioning': 'cmi.student_preference.text',
  };
  const statusElements = ['cmi.completion_status', 'cmi.success_status', 'cmi.score.scaled',
    'cmi.progress_measure'];
  const scoreElements = ['cmi.score.scaled', 'cmi.score.raw', 'cmi.score.min', 'cmi.score.max'];

  const preferenceOf = (name) => PlexoBridge.preferences.find((preference) => preference.of2004 === name);

  // 1.2 has one status for both: a result says more than a completion. Null where there is nothing to say.
  function statusIn12(completion, success) {
    if (success === 'passed' || success === 'failed') return success;
    return completion === 'completed' || completion === 'incomplete' ? completion : null;
  }

  // { raw, min, max } of 1.2, where a score lies between 0 and 100 and an LMS takes it as a percentage, or
  // null: the content's own if it is counted so, else its scaled score, else its own in these limits.
  function scoreIn12(scaled, raw, min, max) {
    const isPercentage = raw !== undefined && Number(raw) >= 0 && Number(raw) <= 100 &&
        Number(min || 0) === 0 && Number(max === undefined ? 100 : max) === 100;
    if (isPercentage) return { raw, min, max };
    const hasLimits = raw !== undefined && max !== undefined && Number(max) > Number(min || 0);
    if (scaled === undefined && !hasLimits) return null;
    const part = scaled === undefined ? PlexoBridge.scaled(raw, min, max) : Number(scaled);
    return { raw: PlexoBridge.decimal(Math.max(0, part) * 100), min: '0', max: '100' };
  }

  // SCORM 2004 content on an LMS of SCORM 1.2. What 1.2 can't hold is kept for the visit.
  return class PlexoBridge2004On12 extends PlexoBridge {
    constructor(lms, settings) {
      super(PlexoModel2004, lms, settings);
      this.commentsTold = false;
      this.primary = null;
    }

    read(name) {
      if (sameElements[name]) return this.lms.get(sameElements[name]);
      if (sameIfSet[name]) return this.lms.get(sameIfSet[name]) || undefined;
      if (preferenceOf(name)) return this.readPreference(preferenceOf(name));
      switch (name) {
        case 'cmi.completion_status': return this.readStatuses()[0];
        case 'cmi.success_status': return this.readStatuses()[1];
        case 'cmi.score.scaled': return this.readScaled('cmi.core.score');
        case 'cmi.completion_threshold': return this.settings.completionThreshold;
        case 'cmi.scaled_passing_score': return this.readPassingScore();
        case 'cmi.launch_data': return this.lms.launchData(this.settings) || undefined;
        case 'cmi.max_time_allowed':
          return this.settings.maxTimeAllowed || this.readDuration('cmi.student_data.max_time_allowed');
        case 'cmi.time_limit_action':
          return this.settings.timeLimitAction ||
              this.lms.get('cmi.student_data.time_limit_action') || undefined;
        case 'cmi.total_time': return this.readDuration('cmi.core.total_time');
        default: return undefined;
      }
    }

    readDuration(element) {
      return PlexoTimeFormats.durationOfTimespan(this.lms.get(element)) || undefined;
    }

    // 2004 says "unknown" of what nobody has said anything about.
    readStatuses() {
      const status = this.lms.get('cmi.core.lesson_status');
      return (status !== 'not attempted' && PlexoBridge.statuses[status]) || ['unknown', 'unknown'];
    }

    readScaled(from) {
      const [raw, min, max] = ['raw', 'min', 'max'].map((part) => this.lms.get(`${from}.${part}`));
      return raw === '' ? undefined : PlexoBridge.decimal(PlexoBridge.scaled(raw, min, max));
    }

    readPassingScore() {
      const mastery = this.lms.get('cmi.student_data.mastery_score');
      if (this.passing.passingScore !== undefined) return this.passing.passingScore;
      return mastery === '' ? undefined : PlexoBridge.decimal(Number(mastery) / 100);
    }

    readPreference(preference) {
      const value = this.lms.get(preference.of12);
      return value === '' ? undefined : PlexoBridge.decimal(preference.in2004(Number(value)));
    }

    fill(array) {
      if (array === 'cmi.interactions') this.record.setCount(array, this.lms.count(array) || 0);
      if (array === 'cmi.objectives') this.fillObjectives();
      if (array === 'cmi.comments_from_learner') this.fillComments(array, 'cmi.comments');
      if (array === 'cmi.comments_from_lms') this.fillComments(array, 'cmi.comments_from_lms');
    }

    fillComments(array, from) {
      const text = this.lms.get(from);
      if (text !== '') this.record.put(`${array}.0.comment`, text);
    }

    // The objectives of the content's manifest that the LMS lacks come after those that it has.
    fillObjectives() {
      const known = new Set();
      const count = this.lms.count('cmi.objectives') || 0;
      for (let at = 0; at < count; ++at) {
        this.fillObjective(`cmi.objectives.${at}`);
        known.add(this.record.peek(`cmi.objectives.${at}.id`));
      }
      PlexoPresetObjectives.ids(this.settings).filter((id) => !known.has(id))
          .forEach((id, at) => this.record.put(`cmi.objectives.${count + at}.id`, id));
    }

    fillObjective(entry) {
      const put = (leaf, value) => this.record.put(`${entry}.${leaf}`, value === '' ? undefined : value);
      const id = this.lms.get(`${entry}.id`);
      put('id', id);
      this.told.set(`${entry}.id`, id);
      for (const part of ['raw', 'min', 'max']) put(`score.${part}`, this.lms.get(`${entry}.score.${part}`));
      put('score.scaled', this.readScaled(`${entry}.score`));
      const status = PlexoBridge.statuses[this.lms.get(`${entry}.status`)];
      if (!status) return;
      put('completion_status', status[0]);
      put('success_status', status[1]);
    }

    // The content's statuses, judged by its own manifest as an LMS of 2004 judges them.
    get(name) {
      const answer = super.get(name);
      if (name === 'cmi.completion_status') answer.value = this.statuses().completion;
      if (name === 'cmi.success_status') answer.value = this.statuses().success;
      return answer;
    }

    statuses() {
      const peek = (name) => this.record.peek(name);
      return {
        completion: this.passing.completion(peek('cmi.completion_status'), peek('cmi.progress_measure')),
        success: this.passing.success(peek('cmi.success_status'), peek('cmi.score.scaled')),
      };
    }

    tellNow(name, value) {
      if (name === 'cmi.location' && value.length > longestLocation) {
        const why = `${name} has ${value.length} characters; the course's SCORM 1.2 holds ${longestLocation}`;
        this.warn(name, why);
        return { why };
      }
      if (name === 'cmi.suspend_data') this.warnOfLongData(value);
      if (name === 'cmi.location' || name === 'cmi.suspend_data') return this.tell(sameIfSet[name], value);
      const preference = preferenceOf(name);
      if (preference) {
        this.tellDetail(preference.of12, PlexoBridge.decimal(preference.in12(Number(value))));
      } else if (/^cmi\.learner_preference\./.test(name)) {
        this.tellDetail(sameIfSet[name], value);
      }
      return null;
    }

    tellChanges() {
      if (this.hasChanged(this.statusElements())) this.tellStatus();
      if (this.hasChanged(scoreElements)) this.tellScore('cmi.score', 'cmi.core.score', this.tellResult);
      this.tellObjectives();
      this.changedEntries('cmi.interactions').forEach((n) => this.tellInteraction(n));
      this.tellTimeAndExit();
    }

    statusElements() {
      const entry = this.primaryEntry();
      const ofPrimary = entry ? [`${entry}.success_status`, `${entry}.score.scaled`] : [];
      return statusElements.concat(ofPrimary);
    }

    // SCORM 1.2 has no "unknown": a status that becomes unknown again is told as "incomplete".
    tellStatus() {
      const element = 'cmi.core.lesson_status';
      const { completion, success } = this.statuses();
      const own = success === 'unknown' ? this.primarySuccess() : success;
      const isPremature = own === 'failed' && completion === 'incomplete' && !this.saysFailed();
      const status = isPremature ? 'incomplete' :
        statusIn12(completion, this.passing.reportedSuccess(completion, own));
      if (status || this.told.has(element)) this.tellResult(element, status || 'incomplete');
    }

    // The content itself says so, and not only its score. Where 2004 has "failed" beside "incomplete", the one
    // status of 1.2 would mean that the content is finished.
    saysFailed() {
      const words = ['cmi.success_status'].concat(this.primary ? `${this.primary}.success_status` : []);
      return words.some((word) => this.record.peek(word) === 'failed');
    }

    // In 2004 the status of the primary objective is that of the content.
    primarySuccess() {
      const entry = this.primaryEntry();
      if (!entry) return 'unknown';
      return this.passing.success(this.record.peek(`${entry}.success_status`),
          this.record.peek(`${entry}.score.scaled`));
    }

    // The entry of the manifest's primary objective, or null. Ids are permanent.
    primaryEntry() {
      const { primaryObjective } = this.settings;
      if (!primaryObjective || this.primary) return this.primary;
      for (let n = 0; n < this.record.count('cmi.objectives') && !this.primary; ++n) {
        const entry = `cmi.objectives.${n}`;
        if (this.record.peek(`${entry}.id`) === primaryObjective) this.primary = entry;
      }
      return this.primary;
    }

    tellTimeAndExit() {
      const time = this.record.stored('cmi.session_time');
      if (time !== undefined) {
        this.tellResult('cmi.core.session_time', PlexoTimeFormats.timespanOfDuration(time));
      }
      const exit = this.record.stored('cmi.exit');
      if (exit !== undefined) this.tellResult('cmi.core.exit', exit === 'normal' ? '' : exit);
    }

    tellScore(from, to, tell) {
      const [scaled, raw, min, max] = ['scaled', 'raw', 'min', 'max']
          .map((part) => this.record.peek(`${from}.${part}`));
      const score = scoreIn12(scaled, raw, min, max);
      if (!score) {
        if (raw !== undefined) this.warn(from, `the score ${raw} isn't within the 0 to 100 of SCORM 1.2`);
        return;
      }
      for (const part of ['raw', 'min', 'max']) {
        if (score[part] !== undefined) tell.call(this, `${to}.${part}`, score[part]);
      }
    }

    // An LMS takes entries in order only, so it is told of those before a changed one first.
    tellObjectives() {
      const changed = this.changedEntries('cmi.objectives');
      for (let n = 0; n < changed[changed.length - 1]; ++n) {
        const id = `cmi.objectives.${n}.id`;
        this.tellIdentifier(id, this.record.peek(id));
      }
      changed.forEach((n) => this.tellObjective(n));
    }

    tellObjective(n) {
      const entry = `cmi.objectives.${n}`;
      const peek = (leaf) => this.record.peek(`${entry}.${leaf}`);
      if (!this.tellIdentifier(`${entry}.id`, peek('id'))) return;
      const completion = peek('completion_status');
      const notAttempted = completion === 'not attempted' ? completion : null;
      const status = statusIn12(completion, peek('success_status')) || notAttempted;
      if (status) this.tellDetail(`${entry}.status`, status);
      this.tellScore(`${entry}.score`, `${entry}.score`, this.tellDetail);
    }

    tellIdentifier(element, id) {
      if (id === undefined) return true;
      if (id.length <= longestIdentifier) return this.tellDetail(element, id);
      this.warn(element, `the id has ${id.length} characters; SCORM 1.2 holds ${longestIdentifier}`);
      return false;
    }

    tellInteraction(n) {
      const entry = `cmi.interactions.${n}`;
      const stored = (leaf) => this.record.stored(`${entry}.${leaf}`);
      const tell = (leaf, value) => {
        if (value !== undefined && value !== null) this.tellDetail(`${entry}.${leaf}`, value);
      };
      const converted = (leaf, convert) => (stored(leaf) === undefined ? undefined : convert(stored(leaf)));
      const each = (array, act) => {
        for (let at = 0; at < this.record.count(`${entry}.${array}`); ++at) act(`${array}.${at}`);
      };

      if (!this.tellIdentifier(`${entry}.id`, stored('id'))) return;
      each('objectives', (at) => this.tellIdentifier(`${entry}.${at}.id`, stored(`${at}.id`)));
      tell('type', converted('type', PlexoInteractions.typeIn12));
      const answer = (leaf) => this.answerIn12(stored('type'), stored(leaf), entry);
      each('correct_responses', (at) => tell(`${at}.pattern`, answer(`${at}.pattern`)));
      tell('student_response', answer('learner_response'));
      tell('result', converted('result', PlexoInteractions.resultIn12));
      tell('weighting', stored('weighting'));
      tell('latency', converted('latency', PlexoTimeFormats.timespanOfDuration));
      tell('time', converted('timestamp', PlexoTimeFormats.timeOfTimestamp));
    }

    answerIn12(type, text, entry) {
      if (text === undefined) return undefined;
      const longest = PlexoInteractions.longestAnswerIn12;
      const answer = PlexoInteractions.answerIn12(type, text);
      if (answer.length > longest) {
        this.warn(entry, `an answer of ${answer.length} characters is cut: SCORM 1.2 holds ${longest}`);
      }
      return answer.slice(0, longest);
    }

    tellEnd(isFinished) {
      this.tellComments();
      if (isFinished && this.record.peek('cmi.exit') === 'suspend') this.tellIncomplete();
    }

    // LMSFinish would complete suspended content that has no status.
    tellIncomplete() {
      const element = 'cmi.core.lesson_status';
      if (['not attempted', ''].indexOf(this.lms.get(element)) < 0) return;
      this.tellStatus();
      if (!this.told.has(element)) this.tellResult(element, 'incomplete');
    }

    // Without LMSFinish, by which the LMS would complete content without a status, and judge a score that
    // isn't final.
    leave() {
      this.tellEnd(false);
      this.save();
    }

    // Some LMS add to the comments that they have, some replace them: the earlier ones are put back where
    // they are lost.
    tellComments() {
      const isComment = (name) => /^cmi\.comments_from_learner\.\d+\.comment$/.test(name);
      const fresh = Array.from(this.set).filter(isComment);
      if (fresh.length === 0 || this.commentsTold) return;
      this.commentsTold = true;
      const all = fresh.map((name) => this.record.peek(name)).join('\n');
      const text = all.slice(0, longestComments);
      if (text !== all) {
        this.warn('cmi.comments', `${all.length} characters are cut: SCORM 1.2 holds ${longestComments}`);
      }
      const before = this.lms.get('cmi.comments');
      if (!this.tellDetail('cmi.comments', text) || before === '') return;
      const both = `${before}\n${text}`;
      if (this.lms.get('cmi.comments') !== text || both.length > longestComments) return;
      this.tellDetail('cmi.comments', both);
    }
  };
})();
