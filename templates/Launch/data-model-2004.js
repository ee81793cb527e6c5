// SPDX-License-Identifier: Apache-2.0
//
// The data model of the SCORM 2004 3rd Edition Run-Time Environment (4.2). The lengths of its texts are
// the least that an LMS must keep, so longer ones are taken.
const PlexoModel2004 = (function () {
  'use strict';

  const accept = (test) => (value) => (test(value) ? null : 'type');
  const pattern = (expression) => accept((value) => expression.test(value));
  const words = (list) => accept((value) => list.indexOf(value) >= 0);

  const isReal = (value) => /^[+-]?(\d+\.?\d*|\.\d+)$/.test(value);
  const within = (least, most) => (value) => {
    if (!isReal(value)) return 'type';
    return Number(value) >= least && Number(value) <= most ? null : 'range';
  };

  const language = /^([A-Za-z]{2,3}|[ix])(-[A-Za-z0-9]{2,8})*$/;
  const isLocalized = (value) => {
    const match = /^\{lang=([^}]*)\}/.exec(value);
    return !match || language.test(match[1]);
  };
  const isIdentifier = (value) => /^[^\s\u0000-\u001f\u007f]{1,4000}$/.test(value) &&
      (!/^urn:/i.test(value) || /^urn:[a-z0-9][a-z0-9-]{1,31}:\S+$/i.test(value));
  const isShortIdentifier = (value) => value.length <= 250 && isIdentifier(value);
  const isUnique = (list) => list.every((value, index) => list.indexOf(value) === index);
  const areChoices = (list) => isUnique(list) && list.every(isShortIdentifier);
  const isPair = (value) => value.split('[.]').length === 2 && value.split('[.]').every(isShortIdentifier);
  const isStep = (value) => value.split('[.]').length === 2 && value !== '[.]';
  const withoutSettings = (value) => value.replace(/^(\{(case_matters|order_matters)=(true|false)\})*/, '');

  const text = accept(() => true);
  const localized = accept(isLocalized);
  const identifier = accept(isIdentifier);
  const real = accept(isReal);
  const clock = '([01]\\d|2[0-3])(:[0-5]\\d(:[0-5]\\d(\\.\\d{1,2})?)?)?(Z|[+-]([01]\\d|2[0-3])(:[0-5]\\d)?)?';
  const timestamp = pattern(new RegExp(
      `^(19[7-9]\\d|20[0-2]\\d|203[0-8])(-(0[1-9]|1[0-2])(-(0[1-9]|[12]\\d|3[01])(T${clock})?)?)?$`));
  const duration = pattern(/^P(?=.)(\d+Y)?(\d+M)?(\d+D)?(T(?=\d)(\d+H)?(\d+M)?(\d+(\.\d{1,2})?S)?)?$/);
  const completionStatus = words(['completed', 'incomplete', 'not attempted', 'unknown']);
  const successStatus = words(['passed', 'failed', 'unknown']);
  const results = ['correct', 'incorrect', 'unanticipated', 'neutral'];

  // A response's format, by the type of its interaction (RTE 4.2.9.1).
  const responses = {
    'true-false': (value) => value === 'true' || value === 'false',
    choice: (value) => value === '' || areChoices(value.split('[,]')),
    'fill-in': (value) => value.split('[,]').every(isLocalized),
    'long-fill-in': isLocalized,
    likert: (value) => value === '' || isShortIdentifier(value),  // a survey has no right answer
    matching: (value) => value.split('[,]').every(isPair),
    performance: (value) => value.split('[,]').every(isStep),
    sequencing: (value) => value.split('[,]').every(isShortIdentifier),
    numeric: isReal,
    other: () => true,
  };
  const isRange = (value) => value.split('[:]').length === 2 &&
      value.split('[:]').every((limit) => limit === '' || isReal(limit));
  const patterns = Object.assign({}, responses, {
    'fill-in': (value) => responses['fill-in'](withoutSettings(value)),
    'long-fill-in': (value) => isLocalized(withoutSettings(value)),
    performance: (value) => responses.performance(withoutSettings(value)),
    numeric: isRange,
  });
  const formatOf = (table) => (value, name, record) => {
    const interaction = name.split('.').slice(0, 3).join('.');
    return table[record.peek(`${interaction}.type`)](value) ? null : 'type';
  };

  // Types of which only one pattern can be right, and types whose patterns differ from each other.
  const single = ['true-false', 'likert', 'numeric', 'other'];
  const distinct = ['choice', 'sequencing'];

  const otherEntries = (record, array, index, leaf) => {
    const found = [];
    for (let at = 0; at < record.count(array); ++at) {
      if (at !== index) found.push(record.peek(`${array}.${at}.${leaf}`));
    }
    return found;
  };

  function patternFault(record, interaction, level, value) {
    const type = record.peek(`${interaction}.type`);
    if (type === undefined) return 'dependency';
    if (single.indexOf(type) >= 0 && level.index > 0) return 'rule';
    const repeated = otherEntries(record, level.array, level.index, 'pattern').indexOf(value) >= 0;
    return distinct.indexOf(type) >= 0 && repeated ? 'rule' : null;
  }

  // What must be set before what: an entry begins with its id, and an interaction's type precedes its
  // responses. Ids of objectives are for good, and no two are alike.
  function rule(record, name, value) {
    const levels = PlexoDataModel.parse(name).levels;
    if (levels.length === 0 || /^cmi\.comments/.test(name)) return null;
    const outer = levels[0];
    const inner = levels[1];
    const entry = `${outer.array}.${outer.index}`;
    const leaf = name.slice(entry.length + 1);
    if (outer.index === record.count(outer.array) && leaf !== 'id') return 'dependency';
    if (leaf === 'learner_response') return record.peek(`${entry}.type`) === undefined ? 'dependency' : null;
    if (inner && /\.correct_responses$/.test(inner.array)) return patternFault(record, entry, inner, value);
    if (inner && otherEntries(record, inner.array, inner.index, 'id').indexOf(value) >= 0) return 'rule';
    if (leaf === 'id' && outer.array === 'cmi.objectives') {
      const known = record.peek(name);
      if (known !== undefined && known !== value) return 'rule';
      if (otherEntries(record, outer.array, outer.index, 'id').indexOf(value) >= 0) return 'rule';
    }
    return null;
  }

  const readOnly = { access: 'r' };
  const writeOnly = (type) => ({ access: 'w', type });
  const readWrite = (type, value) => ({ access: 'rw', type, value });
  const navigation = pattern(
      /^(continue|previous|exit|exitAll|abandon|abandonAll|suspendAll|_none_|\{target=[^}\s]+\}choice)$/);

  return new PlexoDataModel({
    'cmi._version': { access: 'r', value: '1.0' },
    'cmi.comments_from_learner.n.comment': readWrite(localized),
    'cmi.comments_from_learner.n.location': readWrite(text),
    'cmi.comments_from_learner.n.timestamp': readWrite(timestamp),
    'cmi.comments_from_lms.n.comment': readOnly,
    'cmi.comments_from_lms.n.location': readOnly,
    'cmi.comments_from_lms.n.timestamp': readOnly,
    'cmi.completion_status': readWrite(completionStatus, 'unknown'),
    'cmi.completion_threshold': readOnly,
    'cmi.credit': readOnly,
    'cmi.entry': readOnly,
    'cmi.exit': writeOnly(words(['time-out', 'suspend', 'logout', 'normal', ''])),
    'cmi.interactions.n.id': readWrite(identifier),
    'cmi.interactions.n.type': readWrite(words(Object.keys(responses))),
    'cmi.interactions.n.objectives.n.id': readWrite(identifier),
    'cmi.interactions.n.timestamp': readWrite(timestamp),
    'cmi.interactions.n.correct_responses.n.pattern': readWrite(formatOf(patterns)),
    'cmi.interactions.n.weighting': readWrite(real),
    'cmi.interactions.n.learner_response': readWrite(formatOf(responses)),
    'cmi.interactions.n.result': readWrite(accept((value) => results.indexOf(value) >= 0 || isReal(value))),
    'cmi.interactions.n.latency': readWrite(duration),
    'cmi.interactions.n.description': readWrite(localized),
    'cmi.launch_data': readOnly,
    'cmi.learner_id': readOnly,
    'cmi.learner_name': readOnly,
    'cmi.learner_preference.audio_level': readWrite(within(0, Infinity), '1'),
    'cmi.learner_preference.language': readWrite(accept((value) => value === '' || language.test(value)), ''),
    'cmi.learner_preference.delivery_speed': readWrite(within(0, Infinity), '1'),
    'cmi.learner_preference.audio_captioning': readWrite(words(['-1', '0', '1']), '0'),
    'cmi.location': readWrite(text),
    'cmi.max_time_allowed': readOnly,
    'cmi.mode': readOnly,
    'cmi.objectives.n.id': readWrite(identifier),
    'cmi.objectives.n.score.scaled': readWrite(within(-1, 1)),
    'cmi.objectives.n.score.raw': readWrite(real),
    'cmi.objectives.n.score.min': readWrite(real),
    'cmi.objectives.n.score.max': readWrite(real),
    'cmi.objectives.n.success_status': readWrite(successStatus, 'unknown'),
    'cmi.objectives.n.completion_status': readWrite(completionStatus, 'unknown'),
    'cmi.objectives.n.description': readWrite(localized),
    'cmi.progress_measure': readWrite(within(0, 1)),
    'cmi.scaled_passing_score': readOnly,
    'cmi.score.scaled': readWrite(within(-1, 1)),
    'cmi.score.raw': readWrite(real),
    'cmi.score.min': readWrite(real),
    'cmi.score.max': readWrite(real),
    'cmi.session_time': writeOnly(duration),
    'cmi.success_status': readWrite(successStatus, 'unknown'),
    'cmi.suspend_data': readWrite(text),
    'cmi.time_limit_action': { access: 'r', value: 'continue,no message' },
    'cmi.total_time': { access: 'r', value: 'PT0H0M0S' },
    'adl.nav.request': readWrite(navigation, '_none_'),
    'adl.nav.request_valid.continue': { access: 'r', value: 'unknown' },
    'adl.nav.request_valid.previous': { access: 'r', value: 'unknown' },
    'adl.nav.request_valid.choice.{target}': { access: 'r', value: 'unknown' },
  }, rule);
})();
