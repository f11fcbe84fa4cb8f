#include "hosts/calc/main_thread.h"

#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/awt/XRequestCallback.hpp>
#include <condition_variable>
#include <cppuhelper/implbase1.hxx>
#include <mutex>
#include <thread>
#include <utility>

#include "hosts/calc/uno_errors.h"
#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

class Task : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Task(std::function<void()> task) : task_(std::move(task)) {}

  void SAL_CALL notify(const css::uno::Any& /*data*/) override { AtEntry("task", task_); }

 private:
  std::function<void()> task_;
};

using Queue = css::uno::Reference<css::awt::XRequestCallback>;

Queue MainThreadQueue(const Context& context) {
  return CreateService<css::awt::XRequestCallback>(context, "com.sun.star.awt.AsyncCallback");
}

void Add(const Queue& queue, std::function<void()> task) {
  queue->addCallback(new Task(std::move(task)), css::uno::Any());
}

}  // namespace

void Post(const Context& context, std::function<void()> task) {
  Add(MainThreadQueue(context), std::move(task));
}

// Owned by the timer and by the ticks under way, so that either may go first.
struct MainThreadTimer::Shared : std::enable_shared_from_this<Shared> {
  void Run(std::chrono::milliseconds interval) {
    std::unique_lock lock(mutex);
    auto next = std::chrono::steady_clock::now() + interval;
    while (!stop.wait_until(lock, next, [this] { return stopped; })) {
      next += interval;
      if (std::exchange(waiting, true)) continue;
      lock.unlock();
      AtEntry("timer", [this] { Add(queue, [self = shared_from_this()] { self->Tick(); }); });
      lock.lock();
    }
  }

  void Tick() {
    {
      const std::scoped_lock lock(mutex);
      waiting = false;
      if (stopped) return;
    }
    on_tick();
  }

  Queue queue;  // made on the main thread: its thread must not wait for the one that joins it
  std::function<void()> on_tick;
  std::mutex mutex;
  std::condition_variable stop;
  bool stopped = false;
  bool waiting = false;  // for the main thread to take the last tick
  std::thread thread;
};

MainThreadTimer::MainThreadTimer(const Context& context, std::chrono::milliseconds interval,
                                 std::function<void()> on_tick)
    : shared_(std::make_shared<Shared>()) {
  shared_->queue = MainThreadQueue(context);
  shared_->on_tick = std::move(on_tick);
  shared_->thread = std::thread([shared = shared_.get(), interval] { shared->Run(interval); });
}

MainThreadTimer::~MainThreadTimer() {
  {
    const std::scoped_lock lock(shared_->mutex);
    shared_->stopped = true;
  }
  shared_->stop.notify_all();
  shared_->thread.join();
}

}  // namespace quorvel
