// SPDX-License-Identifier: Apache-2.0
const PlexoLms = (function () {
  'use strict';

  const calls = {
    '1.2': {
      name: 'API', open: 'LMSInitialize', close: 'LMSFinish', get: 'LMSGetValue', set: 'LMSSetValue',
      save: 'LMSCommit', lastError: 'LMSGetLastError', errorString: 'LMSGetErrorString',
      diagnostic: 'LMSGetDiagnostic',
    },
    2004: {
      name: 'API_1484_11', open: 'Initialize', close: 'Terminate', get: 'GetValue', set: 'SetValue',
      save: 'Commit', lastError: 'GetLastError', errorString: 'GetErrorString', diagnostic: 'GetDiagnostic',
    },
  };

  // What stands in for the answers of an LMS where there is none: a first visit that counts.
  const firstVisit = {
    'cmi.core.entry': 'ab-initio', 'cmi.core.credit': 'credit', 'cmi.core.lesson_mode': 'normal',
    'cmi.core.lesson_status': 'not attempted',
    'cmi.entry': 'ab-initio', 'cmi.credit': 'credit', 'cmi.mode': 'normal',
  };

  // The LMS around the page, in its own edition's elements. Without one (a null api) every call works
  // and nothing is kept. An LMS that throws has refused.
  return class PlexoLms {
    // The names of the edition's functions, by what they do.
    static calls(edition) {
      return calls[edition];
    }

    constructor(edition, api) {
      this.words = calls[edition];
      this.api = api;
    }

    open() { return this.does('open', ''); }
    save() { return this.does('save', ''); }
    close() { return this.does('close', ''); }
    set(element, value) { return this.does('set', element, value); }

    // "" where the LMS has no value.
    get(element) {
      if (!this.api) return firstVisit[element] || '';
      const value = this.call('get', element);
      return value === null || value === undefined ? '' : String(value);
    }

    // The launch data that the course has for the content, or else the content's own. A course in SCORM 1.2
    // says "." where it has none.
    launchData(settings) {
      const given = this.get('cmi.launch_data');
      return given === '' || given === '.' ? settings.dataFromLms || '' : given;
    }

    // The number of entries; NaN where the LMS doesn't keep this collection.
    count(collection) {
      return this.api ? parseInt(this.get(`${collection}._count`), 10) : 0;
    }

    // Why the last call was refused: the LMS's error code, and words for a diagnostic.
    refusal() {
      const code = String(this.call('lastError') || '');
      const text = String(this.call('errorString', code) || '');
      return { code, why: `the learning platform refused it: ${code} ${text}`.trim() };
    }

    does(what, first, second) {
      return !this.api || String(this.call(what, first, second)) === 'true';
    }

    call(what, first, second) {
      try {
        if (what === 'lastError') return this.api[this.words[what]]();
        if (what === 'set') return this.api[this.words[what]](first, second);
        return this.api[this.words[what]](first);
      } catch (failure) {
        return '';
      }
    }
  };
})();
