#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace mox::filters {

/// Objects that one thread at a time works with, kept for its next leaf. A leaf takes an object out of its thread's
/// store and puts it back at its end: an image whose row operation runs tasks of its own may start a second leaf on
/// the thread that is in the middle of a first.
class ThreadStore {
public:
    struct Item {
        virtual ~Item() = default;
    };

    ThreadStore();
    ~ThreadStore();

    /// An object that this thread has put back, or null. The caller then makes one and brings it back, for which
    /// there is room.
    std::unique_ptr<Item> take();
    void putBack(std::unique_ptr<Item> item) noexcept;

    /// All objects that have been put back. To be called when no leaf runs.
    std::vector<Item*> all() const;

private:
    struct PerThread;
    std::unique_ptr<PerThread> perThread_;
};

/// An object of a thread's store for the time of a leaf; made when the thread has none to spare.
template <class T>
class Borrowed {
public:
    template <class Make>
    Borrowed(ThreadStore& store, Make&& make)
        : store_(store)
        , item_(store.take())
    {
        if (!item_) {
            item_ = std::forward<Make>(make)();
        }
    }
    Borrowed(Borrowed const&) = delete;
    Borrowed& operator=(Borrowed const&) = delete;
    ~Borrowed() { store_.putBack(std::move(item_)); }

    T& operator*() const { return static_cast<T&>(*item_); }
    T* operator->() const { return &**this; }

private:
    ThreadStore& store_;
    std::unique_ptr<ThreadStore::Item> item_;
};

} // namespace mox::filters
