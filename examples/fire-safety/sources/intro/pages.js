// SPDX-License-Identifier: Apache-2.0
//
// Shows one section of the page at a time. A later visit opens where the last one stopped; the
// lesson is complete when its last section has been shown.
(function () {
  'use strict';

  const sections = [...document.querySelectorAll('section')];
  const back = document.getElementById('back');
  const next = document.getElementById('next');
  const place = document.getElementById('place');
  let current = 0;

  function show(index) {
    current = index;
    sections.forEach((section, at) => { section.hidden = at !== index; });
    back.disabled = index === 0;
    next.disabled = index === sections.length - 1;
    place.textContent = `${index + 1} of ${sections.length}`;
    window.scrollTo(0, 0);
    window.lms.location = String(index + 1);
    if (next.disabled && !window.lms.done) window.lms.complete();
  }

  back.addEventListener('click', () => show(current - 1));
  next.addEventListener('click', () => show(current + 1));

  const kept = Number.parseInt(window.lms.location, 10);
  show(kept >= 1 && kept <= sections.length ? kept - 1 : 0);
})();
