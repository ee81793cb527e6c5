// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Clears the course's dirty mark when the course holds nothing to lose: no SCO in a flat course, no module
/// with a SCO that its template uses. Titles and weightages alone are no work.
void ClearDirtyIfNothingToLose();
