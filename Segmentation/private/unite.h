#pragma once

#include <utility>

namespace mox::segmentation {

/// Joins two trees of a union-find forest in which no parent is larger than its child, so that the root of a tree is
/// its smallest member. False when they are one already. Rem's algorithm with splicing.
template <class Index>
bool unite(Index* parents, Index a, Index b)
{
    while (parents[a] != parents[b]) {
        if (parents[a] < parents[b]) {
            std::swap(a, b);
        }
        if (parents[a] == a) {
            parents[a] = parents[b];
            return true;
        }
        a = std::exchange(parents[a], parents[b]);
    }
    return false;
}

} // namespace mox::segmentation
