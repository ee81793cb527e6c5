// SPDX-License-Identifier: Apache-2.0
const PlexoRuntime = (function () {
  'use strict';

  // What an edition answers: a call's error code in each state, the code for each fault of a record, the
  // code for what the LMS refused, and the words.
  const editions = {
    '1.2': {
      before: { get: '301', set: '301', save: '301', close: '301' },
      running: { open: '101' },
      after: { open: '101', get: '301', set: '301', save: '301', close: '301' },
      failed: { open: '101', save: '101', close: '101' },
      noName: { get: '201', set: '201' },
      get: { unknown: '401', noChildren: '202', noCount: '203', noEntry: '201', writeOnly: '404', unset: '0' },
      set: {
        unknown: '401', keyword: '402', readOnly: '403', noEntry: '201', type: '405', range: '405', rule: '201',
      },
      refused: (code) => (['405', '406', '407'].indexOf(code) >= 0 ? '405' : '101'),
      strings: {
        0: 'No error', 101: 'General exception', 201: 'Invalid argument error',
        202: 'Element cannot have children', 203: 'Element not an array. Cannot have count',
        301: 'Not initialized', 401: 'Not implemented error', 402: 'Invalid set value, element is a keyword',
        403: 'Element is read only', 404: 'Element is write only', 405: 'Incorrect Data Type',
      },
    },
    2004: {
      before: { get: '122', set: '132', save: '142', close: '112' },
      running: { open: '103' },
      after: { open: '104', get: '123', set: '133', save: '143', close: '113' },
      failed: { open: '102', save: '391', close: '111' },
      noName: { get: '301', set: '351' },
      get: { unknown: '401', noChildren: '301', noCount: '301', noEntry: '301', writeOnly: '405', unset: '403' },
      set: {
        unknown: '401', keyword: '404', readOnly: '404', noEntry: '351', type: '406', range: '407', rule: '351',
        dependency: '408',
      },
      refused: () => '351',
      strings: {
        0: 'No Error', 101: 'General Exception', 102: 'General Initialization Failure',
        103: 'Already Initialized', 104: 'Content Instance Terminated', 111: 'General Termination Failure',
        112: 'Termination Before Initialization', 113: 'Termination After Termination',
        122: 'Retrieve Data Before Initialization', 123: 'Retrieve Data After Termination',
        132: 'Store Data Before Initialization', 133: 'Store Data After Termination',
        142: 'Commit Before Initialization', 143: 'Commit After Termination', 201: 'General Argument Error',
        301: 'General Get Failure', 351: 'General Set Failure', 391: 'General Commit Failure',
        401: 'Undefined Data Model Element', 402: 'Unimplemented Data Model Element',
        403: 'Data Model Element Value Not Initialized', 404: 'Data Model Element Is Read Only',
        405: 'Data Model Element Is Write Only', 406: 'Data Model Element Type Mismatch',
        407: 'Data Model Element Value Out Of Range', 408: 'Data Model Dependency Not Established',
      },
    },
  };

  // Content often leaves out the empty argument.
  const textOf = (argument) => (argument === undefined || argument === null ? '' : String(argument));

  // The run-time API of an edition, offered to the content: its states and error codes. What is got and set
  // goes to the visit, a PlexoBridge.
  return class PlexoRuntime {
    constructor(edition, visit) {
      this.words = editions[edition];
      this.visit = visit;
      this.state = 'before';
      this.succeed('');
      this.api = this.functions(PlexoLms.calls(edition));
    }

    functions(calls) {
      return {
        [calls.open]: (argument) => this.open(argument),
        [calls.close]: (argument) => this.close(argument),
        [calls.get]: (name) => this.get(textOf(name)),
        [calls.set]: (name, value) => this.set(textOf(name), textOf(value)),
        [calls.save]: (argument) => this.save(argument),
        [calls.lastError]: () => this.error,
        [calls.errorString]: (code) => this.string(textOf(code)),
        [calls.diagnostic]: (code) => this.diagnostic(textOf(code)),
      };
    }

    // The page may soon be gone.
    keep() {
      if (this.state === 'running' && this.visit.hasUnsaved()) this.visit.save();
    }

    // The page is gone, and the content hasn't finished.
    leave() {
      if (this.state !== 'running') return;
      this.visit.leave();
      this.state = 'after';
    }

    open(argument) {
      if (!this.allows('open', argument)) return 'false';
      const refusal = this.visit.open();
      if (refusal) return this.fail(this.words.failed.open, refusal.why);
      this.state = 'running';
      return this.succeed('true');
    }

    close(argument) {
      if (!this.allows('close', argument)) return 'false';
      const refusal = this.visit.close();
      if (this.visit.isOver) this.state = 'after';
      return refusal ? this.fail(this.words.failed.close, refusal.why) : this.succeed('true');
    }

    save(argument) {
      if (!this.allows('save', argument)) return 'false';
      const refusal = this.visit.save();
      return refusal ? this.fail(this.words.failed.save, refusal.why) : this.succeed('true');
    }

    get(name) {
      if (!this.allowsName('get', name)) return '';
      const answer = this.visit.get(name);
      if (answer.fault) this.fail(this.words.get[answer.fault], name);
      else this.succeed('');
      return answer.fault ? '' : answer.value;
    }

    set(name, value) {
      if (!this.allowsName('set', name)) return 'false';
      const refusal = this.visit.put(name, value);
      if (!refusal) return this.succeed('true');
      if (refusal.fault === 'refused') return this.fail(this.words.refused(refusal.code), refusal.why);
      return this.fail(this.words.set[refusal.fault], `${name} = '${value.slice(0, 100)}'`);
    }

    allows(call, argument) {
      const error = this.words[this.state][call];
      if (!error && textOf(argument) === '') return true;
      this.fail(error || '201', 'the argument must be ""');
      return false;
    }

    allowsName(call, name) {
      const error = this.words[this.state][call] || (name === '' ? this.words.noName[call] : null);
      if (error) this.fail(error, name);
      return !error;
    }

    diagnostic(code) {
      return code === '' || code === this.error ? this.why : this.string(code);
    }

    string(code) {
      return /^\d+$/.test(code) && this.words.strings[code] ? this.words.strings[code] : '';
    }

    succeed(answer) {
      this.error = '0';
      this.why = '';
      return answer;
    }

    fail(code, why) {
      this.error = code;
      this.why = code === '0' ? '' : `${this.words.strings[code]}: ${why}`.slice(0, 255);
      return 'false';
    }
  };
})();
