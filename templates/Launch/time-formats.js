// SPDX-License-Identifier: Apache-2.0
//
// Times as the two editions write them: CMITimespan (HHHH:MM:SS.SS) and CMITime of SCORM 1.2,
// timeinterval(second,10,2) and time(second,10,0) of SCORM 2004.
const PlexoTimeFormats = (function () {
  'use strict';

  const longestTimespan = 9999 * 360000 + 59 * 6000 + 5999;  // hundredths of a second

  const durationParts = new RegExp('^P(?=.)(?:(\\d+)Y)?(?:(\\d+)M)?(?:(\\d+)D)?' +
      '(?:T(?=\\d)(?:(\\d+)H)?(?:(\\d+)M)?(?:(\\d+(?:\\.\\d+)?)S)?)?$');

  const part = (value, width) => `0000${value}`.slice(-Math.max(width, String(value).length));

  // Whole seconds with up to two decimals, from hundredths.
  const seconds = (hundredths) => String(Math.floor(hundredths / 100)) +
      (hundredths % 100 === 0 ? '' : `.${part(hundredths % 100, 2)}`.replace(/0$/, ''));

  return class PlexoTimeFormats {
    // The duration for a timespan; null if it is none.
    static durationOfTimespan(timespan) {
      const match = /^(\d{2,4}):(\d{2}):(\d{2}(?:\.\d{1,2})?)$/.exec(timespan);
      if (!match) return null;
      const total = Math.round((Number(match[1]) * 3600 + Number(match[2]) * 60 + Number(match[3])) * 100);
      return `PT${Math.floor(total / 360000)}H${Math.floor(total / 6000) % 60}M${seconds(total % 6000)}S`;
    }

    // The timespan for a duration, at most 9999:59:59.99; null if it is none. Years and months have no
    // fixed length: they count 365 and 30 days.
    static timespanOfDuration(duration) {
      const match = durationParts.exec(duration);
      if (!match) return null;
      const count = match.slice(1).map((digits) => Number(digits || 0));
      const days = count[0] * 365 + count[1] * 30 + count[2];
      const exact = Math.round((days * 86400 + count[3] * 3600 + count[4] * 60 + count[5]) * 100);
      const total = Math.min(exact, longestTimespan);
      const minutes = Math.floor(total / 6000);
      const clock = `${part(minutes % 60, 2)}:${part(Math.floor(total / 100) % 60, 2)}`;
      const whole = `${part(Math.floor(minutes / 60), 4)}:${clock}`;
      return total % 100 === 0 ? whole : `${whole}.${part(total % 100, 2)}`;
    }

    // The moment at which the clock last showed this time of day: what happened at 23:59 and is
    // reported at 00:01 was yesterday.
    static timestampOfTime(time, now) {
      const clock = time.slice(0, 8);
      const shown = `${part(now.getHours(), 2)}:${part(now.getMinutes(), 2)}:${part(now.getSeconds(), 2)}`;
      const day = new Date(now.getFullYear(), now.getMonth(), now.getDate() - (clock > shown ? 1 : 0));
      return `${day.getFullYear()}-${part(day.getMonth() + 1, 2)}-${part(day.getDate(), 2)}T${clock}`;
    }

    // The present moment.
    static timestamp(now) {
      return PlexoTimeFormats.timestampOfTime(now.toTimeString(), now);
    }

    // The time of day in a timestamp, or null where it has none.
    static timeOfTimestamp(timestamp) {
      const match = /T(\d{2})(?::(\d{2}))?(?::(\d{2}))?/.exec(timestamp);
      return match ? `${match[1]}:${match[2] || '00'}:${match[3] || '00'}` : null;
    }
  };
})();
