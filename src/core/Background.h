#pragma once

#include "core/Error.h"

#include <chrono>
#include <functional>
#include <future>

namespace core {

/// Work on a thread of its own, so that the window that shows it stays alive. Waits for its end when it goes.
template <typename Result>
class Background
{
public:
    explicit Background(std::function<Result()> work)
        : m_result(std::async(std::launch::async, std::move(work)))
    {}

    bool isDone() const { return m_result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }

    /// Once it is done, and once only. Throws core::Error for whatever it failed with, be it want of memory.
    Result take()
    {
        try {
            return m_result.get();
        } catch (const Error &) {
            throw;
        } catch (const std::exception &failure) {
            throw Error(0, QString::fromLocal8Bit(failure.what()));
        }
    }

private:
    std::future<Result> m_result;
};

} // namespace core
