// SPDX-License-Identifier: Apache-2.0
//
// The visit of a page in a course of SCORM 1.2. A platform that offers the other edition only does as well.
var plexoVisit = PlexoVisit.begin(window, ['1.2', '2004']);
