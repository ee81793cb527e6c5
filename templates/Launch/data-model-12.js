// SPDX-License-Identifier: Apache-2.0
//
// The data model of the SCORM 1.2 Run-Time Environment (3.4). An element that nobody has set is "".
const PlexoModel12 = (function () {
  'use strict';

  const accept = (test) => (value) => (test(value) ? null : 'type');
  const pattern = (expression) => accept((value) => expression.test(value));
  const words = (list) => accept((value) => list.indexOf(value) >= 0);
  const text = (limit) => accept((value) => value.length <= limit);
  const isDecimal = (value) => /^-?(\d+\.?\d*|\.\d+)$/.test(value);

  const identifier = pattern(/^[^\s\u0000-\u001f\u007f]{1,255}$/);
  const decimal = accept(isDecimal);
  const isPercentage = (value) => isDecimal(value) && Number(value) >= 0 && Number(value) <= 100;
  const score = accept((value) => value === '' || isPercentage(value));
  const integer = (least, most) =>
    accept((value) => /^-?\d{1,5}$/.test(value) && Number(value) >= least && Number(value) <= most);
  const time = pattern(/^([01]\d|2[0-3]):[0-5]\d:[0-5]\d(\.\d{1,2})?$/);
  const timespan = pattern(/^\d{2,4}:\d{2}:\d{2}(\.\d{1,2})?$/);

  // Content can't take an attempt back: "not attempted" is the LMS's own word for a lesson.
  const lessonStatuses = ['passed', 'completed', 'failed', 'incomplete', 'browsed'];
  const results = ['correct', 'wrong', 'unanticipated', 'neutral'];
  const types = ['true-false', 'choice', 'fill-in', 'matching', 'performance', 'sequencing', 'likert',
    'numeric'];

  // Suspend data has no limit here: many LMSs take more than the 4096 characters of 1.2, and content relies
  // on it.
  const readOnly = { access: 'r', value: '' };
  const writeOnly = (type) => ({ access: 'w', type, value: '' });
  const readWrite = (type) => ({ access: 'rw', type, value: '' });

  // The format of a response depends on its type, which may be set after it: any short text is taken.
  const feedback = text(255);

  return new PlexoDataModel({
    'cmi._version': { access: 'r', value: '3.4' },
    'cmi.core.student_id': readOnly,
    'cmi.core.student_name': readOnly,
    'cmi.core.lesson_location': readWrite(text(255)),
    'cmi.core.credit': readOnly,
    'cmi.core.lesson_status': readWrite(words(lessonStatuses)),
    'cmi.core.entry': readOnly,
    'cmi.core.score.raw': readWrite(score),
    'cmi.core.score.min': readWrite(score),
    'cmi.core.score.max': readWrite(score),
    'cmi.core.total_time': readOnly,
    'cmi.core.lesson_mode': readOnly,
    'cmi.core.exit': writeOnly(words(['time-out', 'suspend', 'logout', ''])),
    'cmi.core.session_time': writeOnly(timespan),
    'cmi.suspend_data': readWrite(text(Infinity)),
    'cmi.launch_data': readOnly,
    'cmi.comments': readWrite(text(4096)),
    'cmi.comments_from_lms': readOnly,
    'cmi.objectives.n.id': readWrite(identifier),
    'cmi.objectives.n.score.raw': readWrite(score),
    'cmi.objectives.n.score.min': readWrite(score),
    'cmi.objectives.n.score.max': readWrite(score),
    'cmi.objectives.n.status': readWrite(words(lessonStatuses.concat('not attempted'))),
    'cmi.student_data.mastery_score': readOnly,
    'cmi.student_data.max_time_allowed': readOnly,
    'cmi.student_data.time_limit_action': readOnly,
    'cmi.student_preference.audio': readWrite(integer(-1, 100)),
    'cmi.student_preference.language': readWrite(text(255)),
    'cmi.student_preference.speed': readWrite(integer(-100, 100)),
    'cmi.student_preference.text': readWrite(integer(-1, 1)),
    'cmi.interactions.n.id': writeOnly(identifier),
    'cmi.interactions.n.objectives.n.id': writeOnly(identifier),
    'cmi.interactions.n.time': writeOnly(time),
    'cmi.interactions.n.type': writeOnly(words(types)),
    'cmi.interactions.n.correct_responses.n.pattern': writeOnly(feedback),
    'cmi.interactions.n.weighting': writeOnly(decimal),
    'cmi.interactions.n.student_response': writeOnly(feedback),
    'cmi.interactions.n.result': writeOnly(accept((value) => results.indexOf(value) >= 0 || isDecimal(value))),
    'cmi.interactions.n.latency': writeOnly(timespan),
  });
})();
