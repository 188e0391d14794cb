#pragma once

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstddef>
#include <exception>
#include <functional>
#include <iterator>
#include <new>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace zvi::lib::base {

/// Threads that share work. Each writes what is its own alone, so that what they make does not depend on their number.
/// With one of them, and where there is little to do, all is done on the thread of the call.
class Workers {
public:
    /// At most so many, the thread of the call among them; 0 stands for as many as the machine has.
    explicit Workers(int threads = 1) {
        // 0 once more where the machine does not tell.
        int const asked = threads == 0 ? static_cast<int>(std::thread::hardware_concurrency()) : threads;
        m_count = static_cast<std::size_t>(std::clamp(asked, 1, kMostThreads));
    }

    std::size_t Count() const { return m_count; }

    /// No more of them than so many things keep busy.
    Workers For(std::size_t things) const {
        Workers some;
        some.m_count = PartsOf(things);
        return some;
    }

    /// Calls `task(i)` for the numbers below `tasks`, which are worth a thread each, in no fixed order, and returns
    /// when all have ended. What tasks throw goes to the caller, that of the lowest number; those behind it may be left
    /// out. A thread that cannot be started is done without.
    void Do(std::size_t tasks, std::function<void(std::size_t i)> const &task) const {
        if (m_count == 1 || tasks < 2) {
            for (std::size_t i = 0; i < tasks; ++i)
                task(i);
            return;
        }
        TaskList list(tasks, task);
        std::vector<std::thread> threads;
        threads.reserve(std::min(m_count, tasks) - 1);
        try {
            while (threads.size() + 1 < std::min(m_count, tasks))
                threads.emplace_back([&list] { list.Work(); });
        } catch (std::system_error const &) { // as many as there are do it
        } catch (std::bad_alloc const &) {
        }
        list.Work();
        for (std::thread &thread : threads)
            thread.join();
        list.Rethrow();
    }

    /// How many parts of neighbours `count` things are cut into: 1 where they are few.
    std::size_t PartsOf(std::size_t count) const { return std::clamp(count / kFewestThings, std::size_t{1}, m_count); }

    /// Calls `work(part, begin, end)` for the parts of the numbers below `count`, each a task.
    template <typename Work>
    void ForEachPart(std::size_t count, Work work) const {
        std::size_t const parts = PartsOf(count);
        if (parts == 1)
            work(std::size_t{0}, std::size_t{0}, count);
        else
            Do(parts, [&](std::size_t i) { work(i, BeginOf(i, parts, count), BeginOf(i + 1, parts, count)); });
    }

    /// Calls `work(i)` for the numbers below `count`, those of a part in their order.
    template <typename Work>
    void ForEach(std::size_t count, Work work) const {
        ForEachPart(count, [&](std::size_t, std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i)
                work(i);
        });
    }

    /// What `look(i, things)` adds to `things` for the numbers below `count`, in their order.
    template <typename Thing, typename Look>
    std::vector<Thing> Collect(std::size_t count, Look look) const {
        std::vector<std::vector<Thing>> parts(PartsOf(count));
        ForEachPart(count, [&](std::size_t part, std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i)
                look(i, parts[part]);
        });
        return Joined(std::move(parts));
    }

    /// Sorts things of which `isLess` holds no two for equal, so that there is one order alone.
    template <typename Thing, typename IsLess>
    void Sort(std::vector<Thing> &things, IsLess isLess) const {
        std::size_t const count = things.size(), parts = PartsOf(count);
        auto const at = [&](std::size_t part) {
            return things.begin() + static_cast<std::ptrdiff_t>(BeginOf(std::min(part, parts), parts, count));
        };
        ForEachPart(count,
                    [&](std::size_t part, std::size_t, std::size_t) { std::sort(at(part), at(part + 1), isLess); });
        for (std::size_t width = 1; width < parts; width *= 2)
            for (std::size_t part = 0; part + width < parts; part += 2 * width)
                std::inplace_merge(at(part), at(part + width), at(part + 2 * width), isLess);
    }

    /// The things of all parts, of which there is one at least, one part behind the other.
    template <typename Thing>
    static std::vector<Thing> Joined(std::vector<std::vector<Thing>> parts) {
        assert(!parts.empty());
        std::vector<Thing> all = std::move(parts.front());
        std::size_t count = all.size();
        for (std::size_t part = 1; part < parts.size(); ++part)
            count += parts[part].size();
        all.reserve(count);
        for (std::size_t part = 1; part < parts.size(); ++part)
            all.insert(all.end(), std::make_move_iterator(parts[part].begin()),
                       std::make_move_iterator(parts[part].end()));
        return all;
    }

private:
    /// Fewer things than this are not worth a thread, which takes some 100 microseconds to start and to end; a thing
    /// takes some 50 nanoseconds.
    static constexpr std::size_t kFewestThings = 4096;

    /// More threads than this are never started.
    static constexpr int kMostThreads = 256;

    /// Tasks that threads take one by one, in order, up to the first that throws.
    class TaskList {
    public:
        TaskList(std::size_t count, std::function<void(std::size_t)> const &task)
            : m_task(task), m_failures(count), m_end(count) {}

        void Work() noexcept {
            for (std::size_t i = m_next++; i < m_end; i = m_next++)
                try {
                    m_task(i);
                } catch (...) {
                    m_failures[i] = std::current_exception();
                    EndAt(i);
                }
        }

        void Rethrow() const {
            if (m_end < m_failures.size())
                std::rethrow_exception(m_failures[m_end]);
        }

    private:
        /// What comes before is still done, for it may throw as well.
        void EndAt(std::size_t i) {
            std::size_t end = m_end;
            while (i < end && !m_end.compare_exchange_weak(end, i))
                continue;
        }

        std::function<void(std::size_t)> const &m_task;
        std::vector<std::exception_ptr> m_failures; ///< of each task
        std::atomic<std::size_t> m_next{0};
        std::atomic<std::size_t> m_end; ///< of those that are done
    };

    /// Of a part below `parts`; `count` for `parts` itself.
    static std::size_t BeginOf(std::size_t part, std::size_t parts, std::size_t count) {
        assert(part <= parts && parts > 0);
        return count / parts * part + std::min(part, count % parts);
    }

    std::size_t m_count;
};

} // namespace zvi::lib::base
