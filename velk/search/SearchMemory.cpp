#include <velk/search/SearchMemory.h>

#include <utility>

namespace Velk {

namespace {

/// Without a destructor, so that it can be asked at any time.
struct KeptMemory
{
    SearchMemory *memory;
    bool isReleased;
};

thread_local KeptMemory kept = {nullptr, false};

/// Lives as long as the objects of its thread.
struct ReleaseAtEnd
{
    ~ReleaseAtEnd()
    {
        delete std::exchange(kept.memory, nullptr);
        kept.isReleased = true;
    }
};
}

BorrowedMemory::BorrowedMemory()
    : borrowed(std::exchange(kept.memory, nullptr))
{
    if (!borrowed)
        borrowed = std::make_unique<SearchMemory>();
}

BorrowedMemory::~BorrowedMemory()
{
    if (kept.isReleased || kept.memory)
        return;
    borrowed->paths.clear();
    thread_local const ReleaseAtEnd releaseAtEnd;
    kept.memory = borrowed.release();
}
}
