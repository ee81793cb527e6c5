// SPDX-License-Identifier: Apache-2.0
//
// The lesson is complete when its last line has come into view.
(function () {
  'use strict';

  const end = document.getElementById('end');

  function finish() {
    end.textContent = 'You have completed this lesson.';
    if (!window.lms.done) window.lms.complete();
  }

  const watcher = new IntersectionObserver((entries) => {
    if (!entries.some((entry) => entry.isIntersecting)) return;
    watcher.disconnect();
    finish();
  });
  watcher.observe(end);
})();
