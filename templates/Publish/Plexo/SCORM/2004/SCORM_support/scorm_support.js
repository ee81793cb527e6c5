// SPDX-License-Identifier: Apache-2.0
//
// The visit of a page in a course of SCORM 2004. A platform that offers the other edition only does as well.
var plexoVisit = PlexoVisit.begin(window, ['2004', '1.2']);
