// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <unistd.h>

#include <iostream>

#include "apps/cli/CommandFailure.h"
#include "apps/cli/CommandLine.h"
#include "apps/cli/Interrupt.h"

namespace {

/// In the place of a stream that the program was started without, the next file that it opens would stand,
/// and be written into. All are opened for reading, so that results which nobody can get are still noticed.
void FillStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) == -1) open("/dev/null", O_RDONLY);
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  FillStandardStreams();
  Interrupt::Watch();
  const int status = RunCommandLine(argumentCount, arguments, std::cout, std::cerr);
  // A signal that came too late to stop the command changes nothing of its result.
  if (status == static_cast<int>(ExitStatus::Interrupted)) Interrupt::PassOn();
  return status;
}
