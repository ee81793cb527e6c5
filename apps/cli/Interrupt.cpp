// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace {

volatile std::sig_atomic_t askedBy = 0;

void Remember(int signal) { askedBy = signal; }

}  // namespace

void Interrupt::Watch() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = &Remember;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigaction(signal, &action, nullptr);
  }
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

bool Interrupt::IsAsked() { return askedBy != 0; }

int Interrupt::GetStatus() {
  constexpr int kSignalled = 128;
  return askedBy == 0 ? 0 : kSignalled + askedBy;
}

void Interrupt::PassOn() {
  if (askedBy == 0) return;
  std::signal(askedBy, SIG_DFL);
  std::raise(askedBy);
}
