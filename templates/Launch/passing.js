// SPDX-License-Identifier: Apache-2.0
//
// Who has completed and who has passed: the rules that an LMS of the content's own edition would
// apply, and the author's wish that completing counts as passing.
const PlexoPassing = (function () {
  'use strict';

  const isNumber = (text) => text !== undefined && text !== null && text !== '' && isFinite(Number(text));
  const finalStatuses = ['passed', 'completed', 'failed'];

  return class PlexoPassing {
    constructor(settings) {
      this.completionPasses = settings.completionPasses === true;
      this.masteryScore = settings.masteryScore;
      this.passingScore = settings.scaledPassingScore === undefined ?
        settings.minNormalizedMeasure : settings.scaledPassingScore;
      this.completionThreshold = settings.completionThreshold;
    }

    // The lesson_status that an LMS keeps of a SCORM 1.2 visit (SCORM 1.2 RTE 3.4.4, cmi.core.lesson_status).
    // LMSFinish completes content that has never set a status (browsed, in browse mode). Where the visit
    // counts, a mastery score is given and the visit has set a raw score, the score decides, but not before
    // the content is finished: by LMSFinish, unless it pauses, or by a final status set in this visit.
    lessonStatus(visit) {
      let status = visit.status;
      if (visit.isFinished && !visit.statusSet && (status === 'not attempted' || status === '')) {
        status = visit.mode === 'browse' ? 'browsed' : 'completed';
      }
      const pauses = status === 'incomplete' && (visit.exit === 'suspend' || visit.exit === 'logout');
      const isDone = visit.isFinished ? !pauses : visit.statusSet && finalStatuses.indexOf(status) >= 0;
      if (isDone && visit.credit === 'credit' && isNumber(visit.masteryScore) && isNumber(visit.raw)) {
        status = Number(visit.raw) >= Number(visit.masteryScore) ? 'passed' : 'failed';
      }
      return status;
    }

    // The completion_status of SCORM 2004 content (RTE 3rd Edition 4.2.4.1). With a threshold but no
    // progress measure the content's own word stands.
    completion(said, progress) {
      if (!isNumber(this.completionThreshold) || !isNumber(progress)) return said;
      return Number(progress) >= Number(this.completionThreshold) ? 'completed' : 'incomplete';
    }

    // The success_status of SCORM 2004 content (RTE 3rd Edition 4.2.22.1). Without a scaled score the
    // content's own word stands.
    success(said, scaled) {
      if (!isNumber(this.passingScore) || !isNumber(scaled)) return said;
      return Number(scaled) >= Number(this.passingScore) ? 'passed' : 'failed';
    }

    // What is reported as success: the content's own word, or, if it has none and the author asks for
    // it, its completion.
    reportedSuccess(completion, success) {
      const known = success === 'passed' || success === 'failed';
      return !known && this.completionPasses && completion === 'completed' ? 'passed' : success;
    }
  };
})();
