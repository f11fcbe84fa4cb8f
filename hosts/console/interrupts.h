#pragma once

namespace quorvel {

// Counts Ctrl-C in place of ending the program, from InstallInterrupts on. A read from the terminal is
// interrupted by it.
void InstallInterrupts();

[[nodiscard]] int PendingInterrupts();
void ClearInterrupts();

}  // namespace quorvel
