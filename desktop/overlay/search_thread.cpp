#include "desktop/overlay/search_thread.h"

#include <utility>

namespace pelorin::desktop {

SearchThread::~SearchThread() {
  if (thread_ == nullptr) return;
  thread_->requestInterruption();
  thread_->wait();
}

void SearchThread::Begin(std::function<void(const align::AfterStep&)> work) {
  isEnded_ = false;
  trouble_ = nullptr;
  thread_.reset(QThread::create([this, work = std::move(work)] {
    QThread* self = QThread::currentThread();
    int told = 0;
    try {
      work([&](double share) {
        const int percent = static_cast<int>(100 * share);
        if (percent > told) Q_EMIT Progressed(told = percent);
        return !self->isInterruptionRequested();
      });
    } catch (...) {
      trouble_ = std::current_exception();
    }
  }));
  connect(thread_.get(), &QThread::finished, this, &SearchThread::ThreadFinished);
  thread_->start(QThread::LowPriority);
}

void SearchThread::End() {
  isEnded_ = true;
  if (thread_ != nullptr) thread_->requestInterruption();
}

void SearchThread::ThreadFinished() {
  thread_->wait();
  // It may still be telling others that it has finished.
  thread_.release()->deleteLater();
  Q_EMIT Finished();
}

bool SearchThread::TakeOutcome() {
  if (auto trouble = std::exchange(trouble_, nullptr); trouble && !isEnded_) std::rethrow_exception(trouble);
  return !isEnded_;
}

}  // namespace pelorin::desktop
