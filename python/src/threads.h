// Blocks of objects in as many threads as korm's own calls would take.
#pragma once

#include "view.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

namespace korm::python {

// Hands out blocks of 0 to count - 1 in ascending order, to any thread. What is a block doesn't depend on the number of threads.
class Blocks {
public:
    Blocks(Index count, Index block) : count(count), block(block) {}

    bool take(Index& first, Index& objects) {
        first = next.fetch_add(block);
        objects = std::min(block, count - first);
        return objects > 0;
    }

private:
    Index count, block;
    std::atomic<Index> next = 0;
};

// Calls run(blocks), in several threads at once where `elements`, those of one object, make that worth while.
void inBlocks(Index count, Index block, Index elements, const std::function<void(Blocks&)>& run);

// Numbers of objects, from any thread.
class Numbers {
public:
    void add(Index number) {
        const std::lock_guard<std::mutex> guard(lock);
        all.push_back(number);
    }
    std::vector<Index> sorted() {
        std::sort(all.begin(), all.end());
        return all;
    }
    Index lowest() const { return all.empty() ? -1 : *std::min_element(all.begin(), all.end()); }

private:
    std::mutex lock;
    std::vector<Index> all;
};

}
