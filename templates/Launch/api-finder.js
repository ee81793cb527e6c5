// SPDX-License-Identifier: Apache-2.0
const PlexoApiFinder = (function () {
  'use strict';

  const maxHops = 50;

  // Part of a window, or null where another origin keeps it from us.
  function look(at, name) {
    try {
      return at[name] || null;
    } catch (notOurs) {
      return null;
    }
  }

  function parentOf(at) {
    const parent = look(at, 'parent');
    return parent === at ? null : parent;
  }

  // In this window or in one around it.
  function findFrom(start, name) {
    for (let at = start, hops = 0; at && hops < maxHops; at = parentOf(at), ++hops) {
      const api = look(at, name);
      if (api) return api;
    }
    return null;
  }

  function openerOf(at) {
    return look(at, 'opener') || look(look(at, 'top') || {}, 'opener');
  }

  // Finds the object that an LMS offers to its content.
  return class PlexoApiFinder {
    // The object of this name in the frames around this window, then around the window that opened it,
    // and so on. The window's own is never it: that is the one offered to the content.
    static find(page, name) {
      let api = findFrom(parentOf(page), name);
      for (let at = openerOf(page), hops = 0; !api && at && at !== page && hops < maxHops; ++hops) {
        api = findFrom(at, name);
        at = openerOf(at);
      }
      return api;
    }
  };
})();
