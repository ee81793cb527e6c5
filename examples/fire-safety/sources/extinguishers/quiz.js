// SPDX-License-Identifier: Apache-2.0
//
// Grades the questions and reports the share that is right. The pass mark is the LMS's, if it has
// one. Launch data of "feedback=none" keeps the answers to itself.
(function () {
  'use strict';

  const usualPassMark = 0.7;
  const quiz = document.getElementById('quiz');
  const questions = [...quiz.querySelectorAll('fieldset')];
  const result = document.getElementById('result');

  function isRight(question) {
    return question.querySelector('input:checked').hasAttribute('data-right');
  }

  function explain(question) {
    const note = question.querySelector('.note');
    question.classList.add(isRight(question) ? 'right' : 'wrong');
    note.prepend(isRight(question) ? 'Right. ' : 'Not right. ');
    note.hidden = false;
  }

  quiz.addEventListener('submit', (event) => {
    event.preventDefault();
    const right = questions.filter(isRight).length;
    const score = right / questions.length;
    const passed = score >= window.lms.passMark(usualPassMark);
    window.lms.grade(score, passed);

    if (window.lms.launchData !== 'feedback=none') questions.forEach(explain);
    questions.forEach((question) => { question.disabled = true; });
    quiz.querySelector('button').disabled = true;
    result.textContent = `${right} of ${questions.length} right: ${passed ? 'passed' : 'not passed'}`;
  });
})();
