#include "Core/private/filters/ThreadStore.h"

#include <tbb/cache_aligned_allocator.h>
#include <tbb/enumerable_thread_specific.h>

#include <algorithm>
#include <iterator>

namespace mox::filters {

namespace {

struct Shelf {
    std::vector<std::unique_ptr<ThreadStore::Item>> items;
    std::size_t made = 0;
};

} // namespace

struct ThreadStore::PerThread {
    tbb::enumerable_thread_specific<Shelf, tbb::cache_aligned_allocator<Shelf>> shelves;
};

ThreadStore::ThreadStore()
    : perThread_(std::make_unique<PerThread>())
{
}

ThreadStore::~ThreadStore() = default;

std::unique_ptr<ThreadStore::Item> ThreadStore::take()
{
    Shelf& shelf = perThread_->shelves.local();
    if (shelf.items.empty()) {
        shelf.items.reserve(shelf.made + 1);
        ++shelf.made;
        return nullptr;
    }
    auto item = std::move(shelf.items.back());
    shelf.items.pop_back();
    return item;
}

void ThreadStore::putBack(std::unique_ptr<Item> item) noexcept
{
    perThread_->shelves.local().items.push_back(std::move(item));
}

std::vector<ThreadStore::Item*> ThreadStore::all() const
{
    std::vector<Item*> items;
    for (Shelf const& shelf : perThread_->shelves) {
        std::transform(shelf.items.begin(), shelf.items.end(), std::back_inserter(items),
                       [](auto const& item) { return item.get(); });
    }
    return items;
}

} // namespace mox::filters
