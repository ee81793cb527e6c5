// SPDX-License-Identifier: Apache-2.0
#include <iostream>

#include "apps/cli/CommandFailure.h"
#include "apps/cli/CommandLine.h"
#include "apps/cli/Interrupt.h"

int main(int argumentCount, char** arguments) {
  Interrupt::Watch();
  const int status = RunCommandLine(argumentCount, arguments, std::cout, std::cerr);
  // A signal that came too late to stop the command changes nothing of its result.
  if (status == static_cast<int>(ExitStatus::Interrupted)) Interrupt::PassOn();
  return status;
}
