#include "hosts/console/interrupts.h"

#include <csignal>

namespace quorvel {

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): all that a signal handler can reach
volatile std::sig_atomic_t g_interrupts = 0;

extern "C" void CountInterrupt(int /*signal*/) {
  g_interrupts = g_interrupts + 1;
}

}  // namespace

void InstallInterrupts() {
  struct sigaction action {};
  action.sa_handler = CountInterrupt;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);  // no SA_RESTART: a prompt gives up
}

int PendingInterrupts() {
  return g_interrupts;
}

void ClearInterrupts() {
  g_interrupts = 0;
}

}  // namespace quorvel
