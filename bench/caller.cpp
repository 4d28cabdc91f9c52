#include "bench/caller.h"

#include <atomic>

#include "bench/signal.h"

namespace bench {

namespace {

class Run {
  public:
    Run(Caller& caller, int count) : caller_(caller), unstarted_(count), unanswered_(count) {}

    void startNext() {
        if (unstarted_.fetch_sub(1) > 0) caller_.call([this] { answered(); });
    }
    void awaitEnd() { ended_.await(); }

  private:
    void answered() {
        startNext();
        if (unanswered_.fetch_sub(1) == 1) ended_.raise();
    }

    Caller& caller_;
    std::atomic<int> unstarted_;
    std::atomic<int> unanswered_;
    Signal ended_;
};

}  // namespace

void callInTurn(Caller& caller, int count) {
    Signal answered;
    for (int i = 0; i < count; ++i) {
        caller.call([&] { answered.raise(); });
        answered.await();
    }
}

void callAtOnce(Caller& caller, int count, int width) {
    Run run(caller, count);
    for (int i = 0; i < width; ++i) run.startNext();
    run.awaitEnd();
}

}  // namespace bench
