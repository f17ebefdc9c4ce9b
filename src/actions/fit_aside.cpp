#include "actions/fit_aside.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "fit/door/fit.h"

namespace tavlo {

namespace {

/// Stands for the companion on the thread of the fit. A question waits until the calling
/// thread has answered it.
class Relay : public Companion {
 public:
  explicit Relay(Companion& companion) : companion_(companion) { look_up(); }

  bool stop_wanted() override { return stop_; }
  bool fault(const char* where, const RunTimeError& error) override {
    return ask([&] { return companion_.fault(where, error); });
  }
  bool doubt(Doubt code) override {
    return ask([&] { return companion_.doubt(code); });
  }

  void finish() {
    const std::lock_guard lock(guard_);
    finished_ = true;
    changed_.notify_all();
  }

  /// On the calling thread, until the fit is over.
  void attend() {
    constexpr std::chrono::milliseconds between_turns{4};
    std::unique_lock lock(guard_);
    while (!finished_) {
      changed_.wait_for(lock, between_turns, [this] { return finished_ || question_; });
      if (finished_) return;
      const auto question = std::exchange(question_, nullptr);
      lock.unlock();
      const bool answer = heard(question);
      lock.lock();
      if (question) answer_ = answer;
      changed_.notify_all();
    }
  }

  /// What was thrown on the calling thread; it has ended the fit.
  std::exception_ptr failure() const { return failure_; }

 private:
  bool heard(const std::function<bool()>& question) {
    if (failure_) return false;
    try {
      const bool answer = question && question();
      look_up();
      return answer;
    } catch (...) {
      failure_ = std::current_exception();
      stop_ = true;
      return false;
    }
  }

  void look_up() {
    companion_.turn();
    stop_ = companion_.stop_wanted();
  }

  bool ask(std::function<bool()> question) {
    std::unique_lock lock(guard_);
    question_ = std::move(question);
    answer_.reset();
    changed_.notify_all();
    changed_.wait(lock, [this] { return answer_.has_value(); });
    return *answer_;
  }

  Companion& companion_;
  std::mutex guard_;
  std::condition_variable changed_;
  std::function<bool()> question_;
  std::optional<bool> answer_;
  bool finished_ = false;
  std::atomic<bool> stop_{false};
  std::exception_ptr failure_;  ///< of the calling thread
};

}  // namespace

FitAnswer fit_aside(const Sample& sample, const FitRequest& request, Companion& companion) {
  Relay relay(companion);
  std::optional<FitAnswer> answer;
  std::exception_ptr failure;
  std::jthread worker([&] {
    try {
      answer.emplace(fit(sample, request, relay));
    } catch (...) {
      failure = std::current_exception();
    }
    relay.finish();
  });
  relay.attend();
  worker.join();
  if (relay.failure()) std::rethrow_exception(relay.failure());
  if (failure) std::rethrow_exception(failure);
  return *std::move(answer);
}

}  // namespace tavlo
