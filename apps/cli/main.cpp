// SPDX-License-Identifier: Apache-2.0
#include <iostream>

#include "apps/cli/CommandLine.h"
#include "apps/cli/Interrupt.h"

int main(int argumentCount, char** arguments) {
  Interrupt::Watch();
  const int status = RunCommandLine(argumentCount, arguments, std::cout, std::cerr);
  Interrupt::PassOn();
  return status;
}
