// SPDX-License-Identifier: Apache-2.0
//
// The launch page of adopted content: shows it in a frame, and offers it the run-time API of its own
// edition on top of the one that the learning platform offers to the course.
(function () {
  'use strict';

  // Why the settings can't be used, or null.
  function complaint(settings) {
    const isEdition = (edition) => edition === '1.2' || edition === '2004';
    if (!settings || typeof settings !== 'object') return 'its settings (settings.js) are missing or damaged';
    if (!isEdition(settings.contentEdition) || !isEdition(settings.courseEdition)) {
      return 'its settings name no known edition of SCORM';
    }
    const isPage = typeof settings.content === 'string' && settings.content !== '' &&
        (!/^[a-z][a-z0-9+.-]*:/i.test(settings.content) || /^https?:/i.test(settings.content));
    return isPage ? null : 'its settings name no page to show';
  }

  function visitOf(settings) {
    const name = PlexoLms.calls(settings.courseEdition).name;
    const api = PlexoApiFinder.find(window, name);
    if (!api) console.warn(`no learning platform offers ${name}: nothing of this visit is kept`);
    const lms = new PlexoLms(settings.courseEdition, api);
    if (api && settings.contentEdition === settings.courseEdition) {
      return new PlexoSameEdition(settings.contentEdition, lms, settings);
    }
    const Bridge = settings.contentEdition === '1.2' ? PlexoBridge12On2004 : PlexoBridge2004On12;
    return new PlexoRuntime(settings.contentEdition, new Bridge(lms, settings));
  }

  function show(settings, visit) {
    const frame = document.getElementById('content');
    document.title = settings.title || document.title;
    frame.title = document.title;
    frame.hidden = false;
    frame.addEventListener('load', () => { if (frame.contentWindow) frame.contentWindow.focus(); });
    frame.src = settings.content;

    window.addEventListener('beforeunload', () => visit.keep());
    document.addEventListener('visibilitychange', () => { if (document.hidden) visit.keep(); });
    // Browsers differ in whether the page or its frame hears first that it is left. Taking the frame away
    // runs the content's own handlers, so that it has the last word before the visit ends.
    window.addEventListener('pagehide', () => {
      frame.remove();
      visit.leave();
    });
    // A page that the browser has kept and shows again has no visit any more.
    window.addEventListener('pageshow', (event) => { if (event.persisted) window.location.reload(); });
  }

  const settings = window.plexoLaunch;
  const wrong = complaint(settings);
  if (wrong) {
    const message = document.getElementById('message');
    message.textContent = `This content can't be shown: ${wrong}. Please tell whoever made the course.`;
    message.hidden = false;
    return;
  }
  const visit = visitOf(settings);
  window[PlexoLms.calls(settings.contentEdition).name] = visit.api;
  show(settings, visit);
})();
