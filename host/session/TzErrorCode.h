// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What a host operation came to. 0 is success; callers that only ask "did it work" test for that.
enum TzErrorCodeEnum : int {
  kTzSuccess = 0,
  /// It didn't work, for a reason that the caller can't act on.
  kTzFailure = 1,
  /// What was read isn't what it should be: a damaged or hostile archive, a malformed document.
  kTzBadContent = 2,
  /// The machine refused: no space, no permission, a device error.
  kTzMachineFailure = 3,
  /// The progress sink asked to stop.
  kTzCancelled = 4,
};
