// SPDX-License-Identifier: Apache-2.0
//
// What the pages around movies and documents share: the visit that the learning platform records, the way to the
// package's players, the movie and the document. In the JavaScript of old browsers, in some of which movies run
// without our player.

// The run-time API that a learning platform offers, of either edition. An api that throws has refused.
var PlexoPlatform = (function () {
  'use strict';

  var maxHops = 50;
  var calls = {
    '1.2': { name: 'API', open: 'LMSInitialize', close: 'LMSFinish', get: 'LMSGetValue', set: 'LMSSetValue',
      save: 'LMSCommit' },
    2004: { name: 'API_1484_11', open: 'Initialize', close: 'Terminate', get: 'GetValue', set: 'SetValue',
      save: 'Commit' }
  };

  function PlexoPlatform(edition, api) {
    this.edition = edition;
    this.api = api;
  }

  // Part of a window, or null where another origin keeps it from us.
  function look(at, name) {
    try {
      return at[name] || null;
    } catch (notOurs) {
      return null;
    }
  }

  // In this window or in one around it.
  function findFrom(at, name) {
    for (var hops = 0; at && hops < maxHops; ++hops) {
      var api = look(at, name);
      if (api) return api;
      var parent = look(at, 'parent');
      at = parent === at ? null : parent;
    }
    return null;
  }

  function findAround(page, name) {
    var api = null;
    for (var at = page, hops = 0; !api && at && hops < maxHops; ++hops) {
      api = findFrom(at, name);
      at = look(at, 'opener') || look(look(at, 'top') || {}, 'opener');
    }
    return api;
  }

  // The platform around this window, in the first of these editions that it offers; null if there is none.
  PlexoPlatform.find = function (page, editions) {
    for (var i = 0; i < editions.length; ++i) {
      var api = findAround(page, calls[editions[i]].name);
      if (api) return new PlexoPlatform(editions[i], api);
    }
    return null;
  };

  PlexoPlatform.prototype = {
    open: function () { return this.call('open', '') === 'true'; },
    save: function () { return this.call('save', '') === 'true'; },
    close: function () { return this.call('close', '') === 'true'; },
    get: function (element) { return this.call('get', element); },
    set: function (element, value) { return this.call('set', element, value) === 'true'; },

    call: function (what, first, second) {
      var name = calls[this.edition][what];
      try {
        var answer = what === 'set' ? this.api[name](first, second) : this.api[name](first);
        return answer === null || answer === undefined ? '' : String(answer);
      } catch (failure) {
        return '';
      }
    }
  };
  return PlexoPlatform;
})();

// One visit of the learner, from the page's opening to its end, as the platform records it. Without a platform
// (null) all works and nothing is kept.
var PlexoVisit = (function () {
  'use strict';

  var saveDelay = 5000;  // milliseconds: a platform's commit is mostly a request to its server
  var editions = {
    '1.2': { location: 'cmi.core.lesson_location', suspendData: 'cmi.suspend_data', mode: 'cmi.core.lesson_mode',
      exit: 'cmi.core.exit', time: 'cmi.core.session_time', score: 'cmi.core.score.',
      status: 'cmi.core.lesson_status', normalExit: '', limits: { location: 255, suspendData: 4096 } },
    2004: { location: 'cmi.location', suspendData: 'cmi.suspend_data', mode: 'cmi.mode', exit: 'cmi.exit',
      time: 'cmi.session_time', score: 'cmi.score.', status: 'cmi.completion_status',
      success: 'cmi.success_status', progress: 'cmi.progress_measure', normalExit: 'normal',
      limits: { location: 1000, suspendData: 4000 } }
  };

  function PlexoVisit(page, platform) {
    this.page = page;
    this.platform = platform;
    this.names = editions[platform ? platform.edition : '2004'];
    this.values = {};
    this.started = Date.now();
    this.goesOn = true;
    this.isUnsaved = false;
  }

  // Opens the visit on the platform around this window, and ends it with the page.
  PlexoVisit.begin = function (page, preferredEditions) {
    var platform = PlexoPlatform.find(page, preferredEditions);
    var visit = new PlexoVisit(page, platform && platform.open() ? platform : null);
    visit.restore();
    visit.followPage();
    return visit;
  };

  function twoDigits(number) {
    return (number < 10 ? '0' : '') + number;
  }

  // A real(10,7) without an exponent.
  function decimal(number) {
    return number.toFixed(7).replace(/\.?0+$/, '');
  }

  function within(least, number, most) {
    return Math.min(Math.max(number, least), most);
  }

  PlexoVisit.prototype = {
    restore: function () {
      var mode = this.get(this.names.mode);
      var status = this.get(this.names.status);
      var success = this.names.success ? this.get(this.names.success) : status;
      this.counts = mode === '' || mode === 'normal';
      this.isBrowsed = mode === 'browse' && !this.names.success;
      this.success = success === 'passed' || success === 'failed' ? success : '';
      this.isComplete = status === 'completed' || (!this.names.success && this.success !== '');
      if (!this.isComplete) this.writeStatus();
      // Whoever comes again finds the place and the result of this visit.
      this.set(this.names.exit, 'suspend');
    },

    followPage: function () {
      var visit = this;
      var page = this.page;
      function keep() { visit.keep(); }
      page.addEventListener('beforeunload', keep);
      page.document.addEventListener('visibilitychange', function () { if (page.document.hidden) visit.keep(); });
      page.addEventListener('pagehide', function () { visit.leave(); });
      // A page that the browser has kept and shows again has no visit any more.
      page.addEventListener('pageshow', function (event) { if (event.persisted) page.location.reload(); });
    },

    isRecorded: function () { return this.platform !== null; },
    location: function () { return this.get(this.names.location); },
    suspendData: function () { return this.get(this.names.suspendData); },
    setLocation: function (text) { return this.setText('location', text); },
    setSuspendData: function (text) { return this.setText('suspendData', text); },

    // Nothing is cut off: a text over the edition's limit is refused.
    setText: function (field, text) {
      text = String(text);
      return text.length <= this.names.limits[field] && this.set(this.names[field], text);
    },

    // "completed", "passed", "failed" or "incomplete". What the learner has completed, in this visit or an
    // earlier one, isn't taken back, and completing says nothing against a pass or a failure.
    setStatus: function (word) {
      if (word === 'passed' || word === 'failed') this.success = word;
      else if (word !== 'completed' && word !== 'incomplete') return false;
      if (word !== 'incomplete') this.isComplete = true;
      this.writeStatus();
      this.keep();
      return true;
    },

    // All of the content was seen. In SCORM 2004 this passes too: what waits in a forced course for this
    // content waits for a success status that is known.
    complete: function () {
      this.setStatus('completed');
      if (this.names.success && this.success === '') this.setStatus('passed');
    },

    writeStatus: function () {
      if (this.isBrowsed) this.set(this.names.status, 'browsed');
      if (!this.counts) return;
      var completion = this.isComplete ? 'completed' : 'incomplete';
      this.set(this.names.status, this.names.success ? completion : this.success || completion);
      if (this.names.success && this.success) this.set(this.names.success, this.success);
    },

    // Least and most are 0 and 100 where they aren't given.
    setScore: function (raw, least, most) {
      raw = parseFloat(raw);
      least = isFinite(parseFloat(least)) ? parseFloat(least) : 0;
      most = isFinite(parseFloat(most)) ? parseFloat(most) : 100;
      if (!isFinite(raw) || least >= most) return false;
      if (!this.counts) return true;
      var scaled = within(0, (raw - least) / (most - least), 1);
      if (this.names.success) {
        this.set(this.names.score + 'scaled', decimal(scaled));
      } else {
        // In SCORM 1.2 scores go from 0 to 100, and so do the pass marks that they are held against.
        raw = scaled * 100;
        least = 0;
        most = 100;
      }
      this.set(this.names.score + 'min', decimal(least));
      this.set(this.names.score + 'max', decimal(most));
      this.set(this.names.score + 'raw', decimal(raw));
      return true;
    },

    // From 0 to 1; SCORM 1.2 has no place for it.
    setProgress: function (fraction) {
      if (this.names.progress) this.set(this.names.progress, (Math.floor(fraction * 10000) / 10000).toString());
    },

    // Has the platform store what it doesn't have yet.
    keep: function () {
      if (!this.isUnsaved || !this.goesOn) return;
      this.isUnsaved = false;
      if (!this.platform) return;
      this.platform.set(this.names.time, this.time());
      this.platform.save();
    },

    // The content says itself that the learner is through: the next visit begins anew.
    finish: function () {
      this.set(this.names.exit, this.names.normalExit);
      this.leave();
    },

    leave: function () {
      if (!this.goesOn) return;
      this.isUnsaved = true;
      this.keep();
      this.goesOn = false;
      if (this.platform) this.platform.close();
    },

    get: function (element) {
      if (this.platform && !this.values.hasOwnProperty(element)) return this.platform.get(element);
      return this.values[element] || '';
    },

    set: function (element, value) {
      if (!this.goesOn) return false;
      if (this.values[element] === value) return true;
      if (this.platform && !this.platform.set(element, value)) return false;
      this.values[element] = value;
      if (!this.isUnsaved) {
        var visit = this;
        this.isUnsaved = true;
        this.page.setTimeout(function () { visit.keep(); }, saveDelay);
      }
      return true;
    },

    // The time since the visit began: CMITimespan or timeinterval(second,10,2).
    time: function () {
      var seconds = Math.max(0, Math.round((Date.now() - this.started) / 1000));
      var hours = Math.floor(seconds / 3600);
      var minutes = Math.floor(seconds / 60) % 60;
      seconds %= 60;
      if (this.names.success) return 'PT' + hours + 'H' + minutes + 'M' + seconds + 'S';
      return ('000' + hours).slice(-4) + ':' + twoDigits(minutes) + ':' + twoDigits(seconds);
    }
  };
  return PlexoVisit;
})();

// What both kinds of page are made of.
var PlexoPage = (function () {
  'use strict';

  // A package has its players once; a page lies two or three folders down.
  var places = ['../../plexo_players/', '../../../plexo_players/'];

  function tryPlaces(file, isThere, then, otherwise, at) {
    if (at === places.length) {
      otherwise();
      return;
    }
    var script = document.createElement('script');
    function next() { tryPlaces(file, isThere, then, otherwise, at + 1); }
    if (/viewer\.js$/.test(file)) script.type = 'module';
    script.onload = function () { (isThere() ? then : next)(); };
    script.onerror = next;
    script.src = PlexoPage.up + places[at] + file;
    document.body.appendChild(script);
  }

  return {
    up: '',  // from this page to the folder of the SCO

    // The visit that the edition's support file has begun; a package may have lost that file.
    visit: function () {
      return window.plexoVisit || PlexoVisit.begin(window, ['2004', '1.2']);
    },

    // Takes a player's script from the package, and calls `then`; or `otherwise`, where it can't be had.
    loadPlayer: function (file, isThere, then, otherwise) {
      tryPlaces(file, isThere, then, otherwise, 0);
    },

    // Names of files stand in the page as plain text: they may hold any character but "/".
    fileName: function (id) {
      return document.getElementById(id).textContent;
    },

    address: function (name) {
      return encodeURIComponent(name);
    },

    title: function (name) {
      if (!document.title) document.title = name.replace(/\.[^.]*$/, '');
      return document.title;
    },

    say: function (text) {
      var message = document.getElementById('message');
      message.textContent = text;
      message.hidden = false;
    }
  };
})();

// The movie of a page, and what it may call there.
var PlexoMovie = (function () {
  'use strict';

  // As large as the window allows, in the movie's proportions.
  function fit(stage, width, height) {
    var scale = Math.min(window.innerWidth / width, window.innerHeight / height);
    stage.style.width = Math.floor(width * scale) + 'px';
    stage.style.height = Math.floor(height * scale) + 'px';
  }

  function offer(visit) {
    window.plexoSetScore = function (raw, least, most) { return visit.setScore(raw, least, most); };
    window.plexoSetStatus = function (word) { return visit.setStatus(String(word)); };
    window.plexoGetLocation = function () { return visit.location(); };
    window.plexoSetLocation = function (text) { return visit.setLocation(text); };
    window.plexoFinish = function () { visit.finish(); };
  }

  function complain(stage) {
    stage.parentNode.removeChild(stage);
    PlexoPage.say('This interaction can\'t be played in this browser. Please try it in another one, or tell whoever ' +
        'made the course.');
  }

  function play(stage, address, color) {
    var player = window.RufflePlayer.newest().createPlayer();
    player.style.width = player.style.height = '100%';
    stage.appendChild(player);
    player.ruffle().load({ url: address, allowScriptAccess: true, autoplay: 'on', unmuteOverlay: 'hidden',
      backgroundColor: color, splashScreen: false, letterbox: 'off' }).then(null, function () { complain(stage); });
  }

  return {
    // Plays the page's movie. The page's object element shows it where the browser has a player for its class
    // identifier; anywhere else it makes room for the player of the package.
    start: function (look) {
      var name = PlexoPage.fileName('movie-name');
      var address = PlexoPage.address(name);
      var stage = document.getElementById('stage');
      var movie = document.getElementById('movie');
      movie.title = PlexoPage.title(name);
      offer(PlexoPage.visit());
      if (look.width > 0 && look.height > 0) {
        fit(stage, look.width, look.height);
        window.addEventListener('resize', function () { fit(stage, look.width, look.height); });
      }
      if (typeof movie.PercentLoaded !== 'undefined') {
        movie.LoadMovie(0, address);
        return;
      }
      stage.removeChild(movie);
      window.RufflePlayer = { config: { polyfills: false } };
      PlexoPage.loadPlayer('ruffle/ruffle.js', function () { return Boolean(window.RufflePlayer.newest); },
        function () { play(stage, address, look.color); }, function () { complain(stage); });
    }
  };
})();

// The document of a page.
var PlexoDocument = (function () {
  'use strict';

  // The tracking address that the platform gave to the page, for the scripts inside the document.
  function tracking(query) {
    var found = [];
    ['aicc_url', 'aicc_sid'].forEach(function (name) {
      var value = new RegExp('[?&]' + name + '=([^&#]*)', 'i').exec(query);
      if (value) found.push(name + '=' + value[1]);
    });
    return found.length ? '?' + found.join('&') : '';
  }

  // Which pages are read, only our viewer knows: here the learner says so.
  function askLearner(visit) {
    var bar = document.getElementById('confirm');
    var button = bar.querySelector('button');
    button.textContent = 'I have read this document';
    button.addEventListener('click', function () {
      visit.complete();
      button.disabled = true;
      button.textContent = 'Read';
    });
    bar.hidden = visit.isComplete;
  }

  function showInBrowser(visit, name) {
    var frame = document.createElement('object');
    var link = document.createElement('a');
    frame.type = 'application/pdf';
    frame.data = PlexoPage.address(name) + tracking(window.location.search);
    frame.setAttribute('aria-label', document.title);
    link.href = frame.data;
    link.target = '_blank';
    link.textContent = 'Open the document';
    frame.appendChild(link);
    if (visit.isRecorded()) askLearner(visit);
    document.getElementById('viewer').appendChild(frame);
  }

  return {
    tracking: tracking,

    // Shows the page's document, in our viewer or, where that doesn't run, in the browser's.
    start: function () {
      var visit = PlexoPage.visit();
      var name = PlexoPage.fileName('document-name');
      PlexoPage.title(name);
      function otherwise() { showInBrowser(visit, name); }
      if (!('noModule' in document.createElement('script'))) {
        otherwise();
        return;
      }
      PlexoPage.loadPlayer('pdfjs/viewer/viewer.js', function () { return Boolean(window.PlexoPdfViewer); },
        function () {
          var place = document.getElementById('viewer');
          new window.PlexoPdfViewer(place, visit).open(PlexoPage.address(name)).then(null, function () {
            place.textContent = '';
            otherwise();
          });
        }, otherwise);
    }
  };
})();
