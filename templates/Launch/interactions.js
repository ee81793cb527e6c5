// SPDX-License-Identifier: Apache-2.0
//
// The answers of interactions in the formats of both editions: SCORM 1.2 RTE 3.4.4 (CMIFeedback) and
// SCORM 2004 3rd Edition RTE 4.2.9.1.
const PlexoInteractions = (function () {
  'use strict';

  const longestFeedback = 255;  // of SCORM 1.2
  const shortIdentifier = 250;  // of SCORM 2004, as the length of one text of a fill-in
  const single = ['true-false', 'likert', 'numeric'];  // types with one pattern at most in 2004
  const maxPieces = { choice: 36, sequencing: 36, matching: 36 };

  // A "%" is escaped too, so that no two names of 1.2 become one.
  function escaped(name) {
    const whole = name.replace(/[\ud800-\udbff][\udc00-\udfff]|[\ud800-\udfff]/g,
        (found) => (found.length === 2 ? found : '?'));
    return encodeURIComponent(whole);
  }

  function short(name) {
    const id = escaped(name.trim());
    return id !== '' && id.length <= shortIdentifier ? id : null;
  }

  // All converted pieces in one text, or null if one can't be converted or there are too many.
  function joined(type, pieces, convert) {
    const converted = pieces.map(convert);
    return converted.length > maxPieces[type] || converted.indexOf(null) >= 0 ? null : converted.join('[,]');
  }

  const pieces = (text) => text.replace(/^\{(.*)\}$/, '$1').split(',');
  const isDecimal = (text) => /^-?(\d+\.?\d*|\.\d+)$/.test(text);
  const unlessLong = (text) => (text.length <= shortIdentifier ? text : null);

  function pair(text) {
    const dot = text.indexOf('.');
    const source = dot < 0 ? null : short(text.slice(0, dot));
    const target = dot < 0 ? null : short(text.slice(dot + 1));
    return source && target ? `${source}[.]${target}` : null;
  }

  const to2004 = {
    'true-false': (text) => (/^[t1]/i.test(text) ? 'true' : /^[f0]/i.test(text) ? 'false' : null),
    choice: (text) => {
      const chosen = pieces(text).filter((piece, index, all) => all.indexOf(piece) === index);
      return text === '' ? '' : joined('choice', chosen, short);
    },
    'fill-in': unlessLong,
    matching: (text) => joined('matching', pieces(text), pair),
    performance: (text) => (text === '' ? null : unlessLong(`[.]${text}`)),
    sequencing: (text) => joined('sequencing', pieces(text), short),
    likert: short,
    numeric: (text) => (isDecimal(text) ? text : null),
  };

  const plain = (text) => text.replace(/^(\{(case_matters|order_matters)=(true|false)\})*/, '')
      .split('[,]').map((piece) => piece.replace(/^\{lang=[^}]*\}/, '')).join(',');

  const to12 = {
    'true-false': (text) => text.charAt(0),
    choice: (text) => text.split('[,]').join(','),
    'fill-in': plain,
    'long-fill-in': plain,
    matching: (text) => text.split('[,]').map((piece) => piece.split('[.]').join('.')).join(','),
    performance: (text) => text.split('[,]')
        .map((step) => plain(step).split('[.]').filter(Boolean).join('.')).join(','),
    sequencing: (text) => text.split('[,]').join(','),
    likert: (text) => text,
    numeric: (text) => {
      const range = text.split('[:]');
      return range.length < 2 || range[0] === range[1] ? range[0] : range.join(':');
    },
    other: (text) => text,
  };

  return class PlexoInteractions {
    // An identifier of 1.2 as one that every LMS of 2004 takes.
    static identifier(name) {
      return escaped(name);
    }

    // The name that identifier() was given.
    static nameOfIdentifier(id) {
      try {
        return decodeURIComponent(id);
      } catch (notOurs) {
        return id;
      }
    }

    // The type, the response and the patterns (undefined where there are none) in words of 2004. An answer
    // that isn't in its type's format would be refused, as would a second pattern where one is allowed:
    // such an interaction becomes one of type "other", with all its answers as they are. An empty text that
    // the format doesn't know is no answer.
    static answersIn2004(type, givenResponse, givenPatterns) {
      const convert = to2004[type] || (() => null);
      const isAnswer = (text) => text !== undefined && (text !== '' || convert(text) !== null);
      const response = isAnswer(givenResponse) ? givenResponse : undefined;
      const patterns = givenPatterns.filter(isAnswer);
      const asPattern = (text) => (type === 'numeric' && isDecimal(text) ? `${text}[:]${text}` : convert(text));
      const answers = {
        type,
        response: response === undefined ? undefined : convert(response),
        patterns: patterns.map(asPattern),
      };
      const isWhole = answers.response !== null && answers.patterns.indexOf(null) < 0 &&
          (patterns.length < 2 || single.indexOf(type) < 0);
      const onePattern = patterns.length > 0 ? [patterns.join('[,]')] : [];
      return isWhole ? answers : { type: 'other', response, patterns: onePattern };
    }

    // The type in 1.2: a text where 1.2 has no word for it.
    static typeIn12(type) {
      return type === 'long-fill-in' || type === 'other' ? 'fill-in' : type;
    }

    // A response or pattern in the format of 1.2, however long.
    static answerIn12(type, text) {
      return to12[type](text);
    }

    static get longestAnswerIn12() { return longestFeedback; }

    static resultIn2004(result) { return result === 'wrong' ? 'incorrect' : result; }
    static resultIn12(result) { return result === 'incorrect' ? 'wrong' : result; }
  };
})();
