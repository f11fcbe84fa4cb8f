#pragma once

#include <chrono>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>

namespace quorvel {

using Context = css::uno::Reference<css::uno::XComponentContext>;

// Runs `task` on the application's main thread, soon. Callable on any thread.
void Post(const Context& context, std::function<void()> task);

// Calls `on_tick` on the main thread every `interval` while it lives. A tick that is still waiting for the
// main thread is not doubled. Created and destroyed on the main thread.
class MainThreadTimer {
 public:
  MainThreadTimer(const Context& context, std::chrono::milliseconds interval, std::function<void()> on_tick);
  MainThreadTimer(const MainThreadTimer&) = delete;
  MainThreadTimer& operator=(const MainThreadTimer&) = delete;
  ~MainThreadTimer();

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace quorvel
