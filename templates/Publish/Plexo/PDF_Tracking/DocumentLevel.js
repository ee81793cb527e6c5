// SPDX-License-Identifier: Apache-2.0
//
// Reports to an LMS which pages of this document were seen: a client of the AICC's HTTP protocol (HACP) that
// runs in a PDF viewer. The page that launches the document gives it the LMS's address and a session id in its
// own address; requests are form submissions, and answers arrive in the form field "connectresponse".
//
// Viewers' engines are old: the language here is ECMAScript 3. The globals and functions are the document's own,
// for a viewer runs timers and page actions as texts that name them.

var acCrLf = '\r\n';
var acCr = '\r';

var tracking_bln = false;
var trackingURL_str = '';
var trackingSID_str = '';
var trackingVersion_str = '2.0';
var trackingFDF_str = 'true';

var timeInitial_int = Math.round(new Date().getTime());
var time_int = timeInitial_int;

// Requests that are to be sent, each an array: the function that sends it, its command, its data, and whether
// the next request waits for its answer.
var lmsQueue = [];
var lmsQueueBusy = false;
var lmsTimerAllowed = 15 * 1000;
var lmsTimer = 0;
var myInterval = 0;

var error = 0;
var error_text = 'none';

var lesson_location = '';
var lesson_status = '';
var score = 0;
var time = '';

// Of each page: 1 viewed, -1 not.
var pageArray = [];
var pageString = '';
var pageLast = 0;
// From this number of pages on, a document reports no more than so many views as interactions.
var pageDataToSend = 160;
var pageDataSent_int = 0;
var numPages_int = this.numPages;

// What an answer of the LMS may set. It names it as we do; capitals don't count, for not every LMS keeps them.
var answerNames = ['error', 'error_text', 'lesson_location', 'lesson_status', 'score', 'time', 'pageArray',
  'pageString', 'pageLast'];

var trackedDocument = this;

function fieldValue(name_str) {
  var field = trackedDocument.getField(name_str);
  return field && field.value !== undefined && field.value !== null ? String(field.value) : '';
}

function setFieldValue(name_str, value_str) {
  var field = trackedDocument.getField(name_str);
  if (field) field.value = value_str;
}

function trim(text_str) {
  return text_str.replace(/^\s+|\s+$/g, '');
}

// What follows the name and one more character. An empty value reads as all that follows it.
function getURLParameter(URL_str, value_str) {
  var start = URL_str.toLowerCase().indexOf(value_str.toLowerCase());
  if (start < 0) return '';
  var rest = URL_str.substring(start + value_str.length + 1);
  var end = rest.indexOf('&');
  return unescape(end > 0 ? rest.substring(0, end) : rest);
}

function initialize() {
  resetPages();
  trackingURL_str = getURLParameter(String(trackedDocument.path), 'aicc_url');
  trackingSID_str = getURLParameter(String(trackedDocument.path), 'aicc_sid');
  if (trackingURL_str === '' || trackingSID_str === '') {
    error = -1;
    error_text = 'Tracking URL or SID is not available';
    return;
  }
  // The answer is form data, to be filled into this document's fields.
  trackingURL_str += '#FDF';
  setFieldValue('aicc_url', trackingURL_str);
  setFieldValue('aicc_sid', trackingSID_str);
  setFieldValue('session_id', trackingSID_str);
  setFieldValue('version', trackingVersion_str);
  setFieldValue('isfdf', trackingFDF_str);
  getTrackingData();
  tracking_bln = error === 0;
}

// ---- Page views

function sendPageView(pageNum_int) {
  setPageViewed(pageNum_int);
  sendPageData(pageNum_int);
  sendTrackingData();
}

function resetPages() {
  pageArray = fitPages([]);
}

// A record of another number of pages, which an LMS may have kept of an earlier edition of the document.
function fitPages(values) {
  var fitted = [];
  for (var page = 0; page < numPages_int; page++) {
    var value = page < values.length ? Number(values[page]) : -1;
    fitted.push(value === 1 || value === 0 ? value : -1);
  }
  return fitted;
}

function isLongDocument() {
  return numPages_int >= pageDataToSend;
}

function setPageViewed(pageNum_int) {
  if (isLongDocument() && pageArray[pageNum_int] <= 0) pageDataSent_int++;
  pageArray[pageNum_int] = 1;
  lesson_location = String(pageNum_int);
}

function countViewedPages() {
  var count = 0;
  for (var page = 0; page < pageArray.length; page++) {
    if (pageArray[page] >= 1) count++;
  }
  return count;
}

function sendPageData(pageNum_int) {
  if (isLongDocument() && pageDataSent_int >= pageDataToSend) return;
  addToQueue('postToLMS', 'putInteractions', createInteractionData(pageNum_int), false);
}

// The data is made when the request is sent, so one that waits will tell the latest.
function sendTrackingData() {
  for (var place = 1; place < lmsQueue.length; place++) {
    if (lmsQueue[place][1].toLowerCase() === 'putparam') return;
  }
  addToQueue('postToLMS', 'putParam', 'createTrackingData()', true);
}

function getTrackingData() {
  addToQueue('postToLMS', 'getParam', acCrLf, true);
}

// ---- What is sent

function createTrackingData() {
  pageString = compressData(convertDataAryToStr(pageArray));
  var lines = [
    '[CORE]',
    'lesson_location=' + lesson_location,
    'lesson_status=' + getLessonStatus(),
    // No score: a document is read, not answered.
    'time=' + getTime(),
    '[CORE_LESSON]',
    'pageString=' + pageString,
    'pageLast=' + lesson_location
  ];
  return lines.join(acCrLf) + acCrLf;
}

// A page that was seen is one interaction, answered correctly. Date and ids mean nothing and never change.
function createInteractionData(pageNum_int) {
  var names = ['course_id', 'student_id', 'date', 'time', 'interaction_id', 'objective_id', 'type_interaction',
    'correct_response', 'student_response', 'result', 'weighting', 'latency'];
  var values = ['0', '0', '06/25/2007', '00:00:00', 'lantern-slide-' + pageNum_int, '0', 'slide-view', pageNum_int,
    pageNum_int, 'correct', '1', '00:00:00'];
  return '"' + names.join('","') + '"' + acCrLf + '"' + values.join('","') + '"' + acCrLf;
}

// What the LMS has kept counts only until here: a document that it called completed is incomplete as long as a
// page is left.
function getLessonStatus() {
  if (!lesson_status || String(lesson_status).charAt(0).toLowerCase() === 'n') lesson_status = 'incomplete';
  lesson_status = 'completed';
  for (var page = 0; page < pageArray.length; page++) {
    if (pageArray[page] < 1) lesson_status = 'incomplete';
  }
  return lesson_status;
}

function getTime() {
  time_int = Math.round(new Date().getTime());
  return formatTime(Math.floor((time_int - timeInitial_int) / 1000));
}

// Days are dropped.
function formatTime(seconds_int) {
  var hours = Math.floor(seconds_int / 3600) % 24;
  return formatNum(hours) + ':' + formatNum(Math.floor(seconds_int / 60) % 60) + ':' + formatNum(seconds_int % 60);
}

function formatNum(number_int) {
  return number_int < 10 ? '0' + number_int : String(number_int);
}

// ---- Packing of the page record

function convertDataAryToStr(values) {
  var text = '';
  for (var page = 0; page < values.length; page++) {
    var value = Number(values[page]);
    text += value === 1 ? '01' : value === -1 ? '10' : '00';
  }
  return text;
}

function convertDataStrToAry(text_str) {
  var values = [];
  for (var place = 0; place + 1 < text_str.length; place += 2) {
    var pair = text_str.substring(place, place + 2);
    values.push(pair === '01' ? 1 : pair === '10' ? -1 : 0);
  }
  return values;
}

// What each letter stands for, from 'a' on. Each round halves the runs of a letter that stand for like pages.
var packedPatterns = ['01', '10', 'aa', 'bb', 'cc', 'dd', 'ee', 'ff', 'gg', 'hh', 'ii', 'jj', 'kk', 'll', 'mm', 'nn',
  'oo', 'pp'];
var packedLetters = 'abcdefghijklmnopqr';

function compressData(text_str) {
  for (var round = 0; round < packedPatterns.length; round++) {
    text_str = text_str.replace(new RegExp(packedPatterns[round], 'g'), packedLetters.charAt(round));
  }
  return text_str;
}

function decompressData(text_str) {
  for (var round = packedPatterns.length - 1; round >= 0; round--) {
    text_str = text_str.replace(new RegExp(packedLetters.charAt(round), 'g'), packedPatterns[round]);
  }
  return text_str;
}

// ---- The queue: one request at a time is on its way

function addToQueue(method_str, command_str, data_str, wait_bln) {
  lmsQueue.push([method_str, command_str, data_str, wait_bln]);
  checkQueue();
}

function checkQueue() {
  if (lmsQueueBusy || lmsQueue.length === 0) return;
  lmsQueueBusy = true;
  setFieldValue('connectresponse', '');
  var entry = lmsQueue[0];
  try {
    eval(entry[0] + '(entry[1], entry[2])');
  } catch (failure) {
    // A viewer may forbid the submission. The request is given up like one without an answer.
    error_text = String(failure);
  }
  if (entry[3] === undefined || entry[3]) {
    lmsTimer = app.setTimeOut('removeFromQueue()', lmsTimerAllowed);
    myInterval = app.setInterval('doWait()', 100);
  } else {
    removeFromQueue();
  }
}

function stopTimers() {
  if (lmsTimer) app.clearTimeOut(lmsTimer);
  if (myInterval) app.clearInterval(myInterval);
  lmsTimer = 0;
  myInterval = 0;
}

function removeFromQueue() {
  stopTimers();
  setFieldValue('connectresponse', '');
  lmsQueue.shift();
  lmsQueueBusy = false;
  checkQueue();
}

function postToLMS(myCommand, data) {
  var command = myCommand.toLowerCase();
  if (!tracking_bln && command !== 'getparam') return;
  setFieldValue('command', myCommand);
  setFieldValue('aicc_data', command === 'putparam' ? eval(data) : data);
  setFieldValue('isfdf', trackingFDF_str);
  trackedDocument.submitForm({
    cURL: trackingURL_str,
    cSubmitAs: 'HTML',
    aFields: ['command', 'version', 'session_id', 'aicc_data', 'isfdf']
  });
}

// ---- The answer

function doWait() {
  var answer = fieldValue('connectresponse');
  if (answer === '') return;
  if (myInterval) app.clearInterval(myInterval);
  myInterval = 0;
  setFieldValue('connectresponse', '');
  var jumps = readAnswer(answer);
  if (!jumps && lmsQueue.length > 0 && lmsQueue[0][1] === 'getParam') {
    pageLast = 0;
    jumps = true;
  }
  if (jumps) goToPage(pageLast);
  removeFromQueue();
}

// True if the answer tells the last page.
function readAnswer(answer_str) {
  var lines = answer_str.split(acCr);
  var tellsPage = false;
  for (var line = 0; line < lines.length; line++) {
    // A value ends at a second '='.
    var parts = lines[line].split('=');
    if (parts.length < 2) continue;
    var name = findAnswerName(trim(parts[0]));
    storeAnswer(name, trim(parts[1]));
    if (name === 'pageLast') tellsPage = true;
  }
  return tellsPage;
}

// '' for a name that isn't ours.
function findAnswerName(name_str) {
  for (var place = 0; place < answerNames.length; place++) {
    if (answerNames[place].toLowerCase() === name_str.toLowerCase()) return answerNames[place];
  }
  return '';
}

function storeAnswer(name_str, value_str) {
  if (name_str === '') return;
  if (name_str === 'pageArray') {
    pageArray = fitPages(value_str.split(','));
  } else {
    eval(name_str + ' = value_str');
  }
  if (name_str !== 'pageString') return;
  pageArray = fitPages(convertDataStrToAry(decompressData(value_str)));
  if (isLongDocument()) pageDataSent_int = countViewedPages();
}

function goToPage(pageNum_str) {
  var page = Number(pageNum_str);
  trackedDocument.pageNum = page >= 0 && page < numPages_int ? Math.floor(page) : 0;
}

// ---- For whoever looks for a fault in the viewer's console

function getLastError() {
  if (Number(error) !== 0) app.alert('an error occurred: ' + error_text);
}

initialize();
