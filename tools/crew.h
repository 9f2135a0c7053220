// Work spread over threads, each of which has a worker of its own; results come back in the order of the tasks.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tool {

template <class Worker, class Result> class Crew {
public:
    explicit Crew(size_t threads, const std::function<std::unique_ptr<Worker>()>& hire)
    {
        for (size_t i = 0; i < threads; ++i)
            workers_.push_back(hire());
        try {
            for (const auto& worker : workers_)
                threads_.emplace_back([this, &worker] { serve(*worker); });
        } catch (...) { // fewer threads than asked for: those that run must end
            close();
            throw;
        }
    }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;
    // Tasks that nobody has begun are dropped.
    ~Crew() { close(); }

    void submit(std::function<Result(Worker&)> task)
    {
        std::packaged_task<Result(Worker&)> packaged(std::move(task));
        results_.push_back(packaged.get_future());
        {
            const std::lock_guard lock(mutex_);
            tasks_.push_back(std::move(packaged));
        }
        wake_.notify_one();
    }
    size_t pending() const { return results_.size(); }
    // Waits for the oldest result, or throws what its task threw.
    Result take()
    {
        std::future<Result> oldest = std::move(results_.front());
        results_.pop_front();
        return oldest.get();
    }

private:
    void close()
    {
        {
            const std::lock_guard lock(mutex_);
            closed_ = true;
        }
        wake_.notify_all();
    }
    void serve(Worker& worker)
    {
        for (;;) {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return closed_ || !tasks_.empty(); });
            if (closed_)
                return;
            std::packaged_task<Result(Worker&)> task = std::move(tasks_.front());
            tasks_.pop_front();
            lock.unlock();
            task(worker);
        }
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::packaged_task<Result(Worker&)>> tasks_;
    bool closed_ = false;
    std::deque<std::future<Result>> results_; // the submitting thread's
    std::vector<std::unique_ptr<Worker>> workers_;
    std::vector<std::jthread> threads_; // last, so that they end before what they use
};

} // namespace tool
