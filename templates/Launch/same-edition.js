// SPDX-License-Identifier: Apache-2.0
const PlexoSameEdition = (function () {
  'use strict';

  const status12 = 'cmi.core.lesson_status';
  const completion2004 = 'cmi.completion_status';
  const success2004 = 'cmi.success_status';
  // The content's list begins with the primary objective that its manifest declares.
  const primary = 'cmi.objectives.0';

  // The LMS's own API, passed on to content of its edition, but for what the content's manifest said and
  // the course's doesn't, and for who has passed. Only the content ends a visit: LMSFinish completes content
  // that has set no status, and Terminate ends an attempt that isn't suspended.
  return class PlexoSameEdition {
    constructor(edition, lms, settings) {
      this.lms = lms;
      this.settings = settings;
      this.is12 = edition === '1.2';
      this.passing = new PlexoPassing(settings);
      this.objectives = new PlexoPresetObjectives(lms, settings);
      this.said = new Map();
      this.told = new Map();
      this.isRunning = false;
      this.isUnsaved = false;
      this.isOwnAnswer = false;
      this.api = this.functions(PlexoLms.calls(edition));
    }

    functions(calls) {
      const own = (word) => () => (this.isOwnAnswer ? word : null);
      const passed = (call, answer) => (code) => {
        const mine = answer ? answer() : null;
        return mine === null ? this.lms.call(call, code) : mine;
      };
      return {
        [calls.open]: (argument) => this.open(argument),
        [calls.close]: (argument) => this.close(argument),
        [calls.get]: (name) => this.get(String(name)),
        [calls.set]: (name, value) => this.set(String(name), value),
        [calls.save]: (argument) => this.save(argument),
        [calls.lastError]: passed('lastError', own('0')),
        [calls.errorString]: passed('errorString'),
        [calls.diagnostic]: passed('diagnostic'),
      };
    }

    // The page may soon be gone.
    keep() {
      if (this.isRunning && this.isUnsaved) this.save('');
    }

    // The page is gone, and the content hasn't finished.
    leave() {
      if (!this.isRunning) return;
      this.settle(false);
      if (this.isUnsaved) this.lms.save();
      this.isRunning = false;
    }

    open(argument) {
      const answer = this.pass('open', argument);
      if (String(answer) !== 'true') return answer;
      this.isRunning = true;
      if (!this.is12) this.objectives.open();
      return answer;
    }

    close(argument) {
      if (this.isRunning) this.settle(true);
      if (this.isRunning && this.isUnsaved) this.lms.save();
      const answer = this.pass('close', argument);
      if (String(answer) === 'true') this.isRunning = false;
      return answer;
    }

    save(argument) {
      if (this.isRunning) this.settle(false);
      const answer = this.pass('save', argument);
      if (String(answer) === 'true') this.isUnsaved = false;
      return answer;
    }

    set(name, value) {
      const answer = this.pass('set', this.objectives.inLms(name), value);
      if (String(answer) !== 'true') return answer;
      this.said.set(name, String(value));
      this.told.delete(name);
      this.isUnsaved = true;
      return answer;
    }

    get(name) {
      const own = this.isRunning ? this.answer(name) : undefined;
      if (own === undefined) {
        return this.objectives.value(name, this.pass('get', this.objectives.inLms(name)));
      }
      this.isOwnAnswer = true;
      return own;
    }

    // What the page answers itself; undefined where the LMS does.
    answer(name) {
      switch (name) {
        case 'cmi.launch_data': return this.lms.launchData(this.settings) || undefined;
        case 'cmi.student_data.mastery_score': return this.is12 ? this.settings.masteryScore : undefined;
        case 'cmi.student_data.max_time_allowed': return this.is12 ? this.settings.maxTimeAllowed : undefined;
        case 'cmi.student_data.time_limit_action': return this.is12 ? this.settings.timeLimitAction : undefined;
        case 'cmi.scaled_passing_score': return this.is12 ? undefined : this.passing.passingScore;
        case 'cmi.completion_threshold': return this.is12 ? undefined : this.passing.completionThreshold;
        case 'cmi.max_time_allowed': return this.is12 ? undefined : this.settings.maxTimeAllowed;
        case 'cmi.time_limit_action': return this.is12 ? undefined : this.settings.timeLimitAction;
        case status12: return this.is12 && this.passing.completionPasses ? this.ownStatus() : undefined;
        default: return undefined;
      }
    }

    // A pass that we have reported was a completion in the content's words.
    ownStatus() {
      if (this.said.has(status12)) return this.said.get(status12);
      const status = this.lms.get(status12);
      return status === 'passed' ? 'completed' : status;
    }

    settle(isEnd) {
      if (this.is12) this.settle12(isEnd);
      else this.settle2004();
    }

    settle12(isEnd) {
      const said = this.said.get(status12);
      if (said === undefined && !isEnd) return;
      const current = said === undefined ? this.lms.get(status12) : said;
      const status = this.lessonStatus(isEnd, current, said !== undefined);
      const isNews = said !== undefined || status !== current;
      const passes = isNews && this.passing.reportedSuccess(status, status) === 'passed';
      if (passes && current !== 'passed') this.tell(status12, 'passed');
      else if (status !== current && status === 'failed') this.tell(status12, status);
    }

    lessonStatus(isFinished, status, statusSet) {
      return this.passing.lessonStatus({
        isFinished,
        status,
        statusSet,
        exit: this.said.get('cmi.core.exit'),
        mode: this.lms.get('cmi.core.lesson_mode'),
        credit: this.lms.get('cmi.core.credit'),
        masteryScore: this.settings.masteryScore,
        raw: this.said.get('cmi.core.score.raw'),
      });
    }

    settle2004() {
      const found = this.lms.get(completion2004);
      const judged = this.passing.completion(found, this.said.get('cmi.progress_measure'));
      if (judged !== found) this.tell(completion2004, judged);
      const current = this.lms.get(success2004);
      const own = this.ownSuccess(current);
      const success = this.passing.reportedSuccess(judged, own);
      if (success !== current) this.tell(success2004, success);
    }

    // In 2004 the status of the primary objective is that of the content.
    ownSuccess(current) {
      const own = this.passing.success(current, this.said.get('cmi.score.scaled'));
      const isJudged = own !== current || this.said.has(success2004);
      if (isJudged || !this.settings.primaryObjective) return own;
      return this.passing.success(this.said.get(`${primary}.success_status`) || own,
          this.said.get(`${primary}.score.scaled`));
    }

    tell(element, value) {
      if (this.told.get(element) === value) return;
      if (this.lms.set(element, value)) {
        this.told.set(element, value);
        this.isUnsaved = true;
      } else {
        console.warn(`${element}: ${this.lms.refusal().why}`);
      }
    }

    pass(call, first, second) {
      this.isOwnAnswer = false;
      return this.lms.call(call, first, second);
    }
  };
})();
