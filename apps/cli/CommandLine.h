// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>

/// Runs the command that the arguments name, and returns the program's exit status: what an `ExitStatus`
/// says, whatever happens. Results go to the first stream, messages to the second.
int RunCommandLine(int argumentCount, const char* const* arguments, std::ostream& results,
                   std::ostream& messages);
